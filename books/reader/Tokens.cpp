#include "books/reader/Tokens.h"

#include <algorithm>
#include <array>

#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::reader {
namespace {

constexpr std::size_t kLongestText = 262144;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

// One pass over the text; each Take… leaves the position behind what it took.
class Cutter {
 public:
  explicit Cutter(std::string_view text) : text_(text) {}

  std::vector<Token> Cut() {
    if (text_.size() > kLongestText) Refuse(text_, kLongestText, "the text is too long");
    std::vector<Token> tokens;
    do {
      while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
      tokens.push_back(Take());
    } while (tokens.back().kind != Token::Kind::kEnd);
    return tokens;
  }

 private:
  Token Take() {
    if (at_ == text_.size()) return {Token::Kind::kEnd, {}, at_, {}};
    const char c = text_[at_];
    if (IsLetter(c)) return TakeName(Token::Kind::kName, at_);
    if (c == '@' && at_ + 1 < text_.size() && IsLetter(text_[at_ + 1])) {
      return TakeName(Token::Kind::kVariable, at_ + 1);
    }
    if (IsDigit(c)) return TakeInteger();
    if (c == '\'') return TakeQuoted();
    return TakeSymbol();
  }

  Token TakeName(Token::Kind kind, std::size_t from) {
    std::size_t end = from;
    while (end < text_.size() && (IsLetter(text_[end]) || IsDigit(text_[end]))) ++end;
    if (end < text_.size() && text_[end] == '\'') Refuse(text_, end, "a quote may not follow a name");
    return TakeTo(kind, end);
  }

  Token TakeInteger() {
    std::size_t end = at_;
    while (end < text_.size() && IsDigit(text_[end])) ++end;
    if (end < text_.size() && (IsLetter(text_[end]) || text_[end] == '.')) {
      Refuse(text_, at_, "expected a whole number");
    }
    return TakeTo(Token::Kind::kInteger, end);
  }

  Token TakeQuoted() {
    std::string value;
    for (std::size_t i = at_ + 1; i < text_.size(); ++i) {
      if (static_cast<unsigned char>(text_[i]) < ' ') Refuse(text_, i, "a control character in quotes");
      if (text_[i] == '\'') {
        if (i + 1 == text_.size() || text_[i + 1] != '\'') {
          Token token = TakeTo(Token::Kind::kText, i + 1);
          token.value = std::move(value);
          return token;
        }
        ++i;  // a doubled quote stands for one
      }
      value += text_[i];
    }
    Refuse(text_, at_, "a quote that is not closed");
  }

  Token TakeSymbol() {
    static constexpr std::array<std::string_view, 13> kSymbols = {"<>", "<=", ">=", "(", ")", ",", ".",
                                                                  "=",  "<",  ">",  "+", "-", "*"};
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("--") || rest.starts_with("/*")) Refuse(text_, at_, "comments are not accepted");
    if (rest.starts_with(";")) Refuse(text_, at_, "only one statement is accepted, without a semicolon");
    const auto* const symbol =
        std::ranges::find_if(kSymbols, [&](std::string_view each) { return rest.starts_with(each); });
    if (symbol == kSymbols.end()) Refuse(text_, at_, "this character has no place outside quotes");
    return TakeTo(Token::Kind::kSymbol, at_ + symbol->size());
  }

  Token TakeTo(Token::Kind kind, std::size_t end) {
    const std::size_t from = at_;
    at_ = end;
    return {kind, text_.substr(from, end - from), from, {}};
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

// A few characters from a place on, never a part of one.
std::string Excerpt(std::string_view text, std::size_t position) {
  constexpr std::size_t kLength = 24;
  std::size_t end = std::min(text.size(), position + kLength);
  while (end > position && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
    --end;
  std::string excerpt(text.substr(position, end - position));
  std::ranges::replace_if(
      excerpt, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return excerpt;
}

}  // namespace

bool Token::IsWord(std::string_view word) const {
  return kind == Kind::kName && platform::EqualsIgnoreCase(source, word);
}

std::vector<Token> Tokenize(std::string_view text) { return Cutter(text).Cut(); }

void Refuse(std::string_view text, std::size_t position, std::string_view reason) {
  const std::size_t at = std::min(position, text.size());
  const auto characters = 1 + std::ranges::count_if(text.substr(0, at), [](char c) {
                            return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
                          });
  const std::string excerpt = Excerpt(text, at);
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books::reader",
                        "SQL text refused at character " + std::to_string(characters) +
                            (excerpt.empty() ? " (its end)" : " (\"" + excerpt + "\")") + ": " +
                            std::string(reason));
}

}  // namespace books::reader
