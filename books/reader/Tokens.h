#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace books::reader {

struct Token {
  enum class Kind { kEnd, kName, kVariable, kInteger, kText, kSymbol };

  Kind kind = Kind::kEnd;
  std::string_view source;   // as it stands in the text
  std::size_t position = 0;  // of its first byte
  std::string value;         // of a kText: without its quotes, doubled quotes read as one

  bool IsSymbol(std::string_view symbol) const { return kind == Kind::kSymbol && source == symbol; }
  // Whether it is this word, in any case; `word` is written in capitals.
  bool IsWord(std::string_view word) const;
};

// Cuts a text into tokens; the last one is of kind kEnd. Raises for anything that no text of the component
// holds: comments, semicolons, characters outside ASCII other than in quotes, control characters.
std::vector<Token> Tokenize(std::string_view text);

// Raises kBadArgument: what was refused, at which character of `text`, and what could have stood there.
[[noreturn]] void Refuse(std::string_view text, std::size_t position, std::string_view reason);

}  // namespace books::reader
