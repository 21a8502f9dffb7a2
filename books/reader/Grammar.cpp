#include "books/reader/Grammar.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <utility>

#include "books/reader/Tokens.h"
#include "platform/value/Convert.h"

// Recursive descent, one function a rule of the grammar. Depth and number of parts are bounded well below
// what the database's own parser takes, so that what is accepted here can always be run.
namespace books::reader {
namespace {

constexpr int kDeepest = 12;
constexpr int kMostJoins = 400;  // AND, OR, + and - and UNION in one text
constexpr int kMostLiterals = 20000;
constexpr std::size_t kMostVariables = 8;  // declared, given values, and used
constexpr std::size_t kMostSources = 8;
constexpr std::size_t kMostOutputs = 64;

constexpr std::array<std::string_view, 19> kWords = {
    "SELECT", "DISTINCT", "FROM", "WHERE", "INNER", "JOIN", "ON",  "UNION", "ORDER",  "BY",
    "AND",    "OR",       "NOT",  "IN",    "LIKE",  "AS",   "ASC", "DESC",  "DECLARE"};

enum class Where { kStatement, kCondition };

class Parser {
 public:
  Parser(std::string_view text, Where where) : text_(text), where_(where), tokens_(Tokenize(text)) {}

  Batch WholeBatch() {
    Batch batch;
    if (TakeWord("DECLARE")) batch.variables = Variables();
    while (Next().kind == Token::Kind::kVariable) {
      if (batch.assignments.size() == kMostVariables) RefuseHere("too many variables");
      batch.assignments.push_back(Assignment(batch.variables));
    }
    declared_ = batch.variables;
    batch.result = SelectStatement();
    ExpectEnd();
    return batch;
  }

  Expression WholeCondition() {
    Expression condition = Condition();
    ExpectEnd();
    return condition;
  }

 private:
  class Level {
   public:
    explicit Level(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kDeepest) parser_.RefuseHere("nested too deeply");
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  const Token& Here() const { return tokens_[at_]; }
  const Token& Next() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
  const Token& Take() { return tokens_[at_++]; }
  bool TakeIf(bool matches) {
    if (matches) ++at_;
    return matches;
  }
  bool TakeWord(std::string_view word) { return TakeIf(Here().IsWord(word)); }
  bool TakeSymbol(std::string_view symbol) { return TakeIf(Here().IsSymbol(symbol)); }
  [[noreturn]] void RefuseHere(std::string_view reason) const { Refuse(text_, Here().position, reason); }
  void ExpectWord(std::string_view word) {
    if (!TakeWord(word)) RefuseHere("expected " + std::string(word));
  }
  void ExpectSymbol(std::string_view symbol) {
    if (!TakeSymbol(symbol)) RefuseHere("expected " + std::string(symbol));
  }
  void ExpectEnd() const {
    if (Here().kind != Token::Kind::kEnd) RefuseHere("expected the end of the text");
  }
  void CountJoin() {
    if (++joins_ > kMostJoins) RefuseHere("too many parts in one text");
  }
  bool AtName() const {
    return Here().kind == Token::Kind::kName &&
           std::ranges::none_of(kWords, [&](std::string_view word) { return Here().IsWord(word); });
  }
  std::string Name(std::string_view what) {
    if (!AtName()) RefuseHere("expected " + std::string(what));
    return std::string(Take().source);
  }

  Expression Begin(Expression::Kind kind) const {
    Expression expression;
    expression.kind = kind;
    expression.position = Here().position;
    return expression;
  }

  std::vector<std::string> Variables() {
    std::vector<std::string> variables;
    do {
      if (Here().kind != Token::Kind::kVariable) RefuseHere("expected a variable");
      if (variables.size() == kMostVariables) RefuseHere("too many variables");
      variables.emplace_back(Take().source);
      ExpectWord("INT");
    } while (TakeSymbol(","));
    return variables;
  }

  Select SelectStatement() {
    Select select = SelectCore();
    while (TakeWord("UNION")) {
      CountJoin();
      select.unions.push_back(SelectCore());
    }
    if (select.unions.empty() && TakeWord("ORDER")) {
      ExpectWord("BY");
      do {
        OrderKey key{.column = Column(), .descending = TakeWord("DESC")};
        if (!key.descending) TakeWord("ASC");
        select.orderBy.push_back(std::move(key));
        if (select.orderBy.size() > kMostSources) RefuseHere("too many sort fields");
      } while (TakeSymbol(","));
    }
    return select;
  }

  // What gives a variable its value names no variable itself.
  Select Assignment(const std::vector<std::string>& variables) {
    Select select;
    select.position = Here().position;
    ExpectWord("SELECT");
    declared_ = variables;
    select.assigns = Variable().name;
    declared_ = {};
    ExpectSymbol("=");
    select.outputs.push_back({Value(), {}});
    return Rest(std::move(select));
  }

  Select SelectCore() {
    const Level level(*this);
    Select select;
    select.position = Here().position;
    ExpectWord("SELECT");
    select.distinct = TakeWord("DISTINCT");
    Outputs(select);
    return Rest(std::move(select));
  }

  Select Rest(Select select) {
    Sources(select);
    select.hasWhere = TakeWord("WHERE");
    if (select.hasWhere) select.where = Condition();
    return select;
  }

  void Outputs(Select& select) {
    inOutput_ = true;
    do {
      if (select.outputs.size() == kMostOutputs) RefuseHere("too many columns");
      Output output{.value = Value(), .alias = {}};
      if (TakeWord("AS")) output.alias = Name("a column name");
      select.outputs.push_back(std::move(output));
    } while (TakeSymbol(","));
    inOutput_ = false;
  }

  void Sources(Select& select) {
    ExpectWord("FROM");
    bool joined = false;
    do {
      if (select.sources.size() == kMostSources) RefuseHere("too many tables");
      Source source;
      source.position = Here().position;
      source.table = Name("a table name");
      if (AtName()) source.alias = Take().source;
      source.joined = joined;
      if (joined) {
        ExpectWord("ON");
        source.on = Condition();
      }
      select.sources.push_back(std::move(source));
      joined = TakeWord("INNER");
      if (joined) ExpectWord("JOIN");
    } while (joined || TakeSymbol(","));
  }

  Expression Condition() { return Joined(Expression::Kind::kAny, "OR", &Parser::Conjunction); }
  Expression Conjunction() { return Joined(Expression::Kind::kAll, "AND", &Parser::ConditionPart); }

  Expression Joined(Expression::Kind kind, std::string_view word, Expression (Parser::*part)()) {
    const std::size_t position = Here().position;
    Expression first = (this->*part)();
    if (!Here().IsWord(word)) return first;
    Expression joined = Begin(kind);
    joined.position = position;
    joined.operands.push_back(std::move(first));
    while (TakeWord(word)) {
      CountJoin();
      joined.operands.push_back((this->*part)());
    }
    return joined;
  }

  // An opening parenthesis here always begins a group of conditions: no text of the component compares a
  // value that stands in parentheses on the left.
  Expression ConditionPart() {
    const Level level(*this);
    if (!TakeSymbol("(")) return Comparison();
    Expression group = Condition();
    ExpectSymbol(")");
    return group;
  }

  Expression Comparison() {
    Expression left = Value();
    Expression whole = Begin(Expression::Kind::kComparison);
    whole.negated = TakeWord("NOT");
    if (TakeWord("IN")) {
      whole.kind = Expression::Kind::kIn;
      whole.operands.push_back(std::move(left));
      Choices(whole);
    } else if (TakeWord("LIKE")) {
      whole.kind = Expression::Kind::kLike;
      whole.operands.push_back(std::move(left));
      if (Here().kind != Token::Kind::kText) RefuseHere("expected a text in quotes");
      whole.operands.push_back(Literal());
    } else {
      static constexpr std::array<std::string_view, 6> kSigns = {"=", "<>", "<", ">", "<=", ">="};
      const bool sign =
          std::ranges::any_of(kSigns, [&](std::string_view each) { return Here().IsSymbol(each); });
      if (whole.negated) RefuseHere("expected IN or LIKE");
      if (!sign) RefuseHere("expected a comparison: =, <>, <, >, <=, >=, IN, NOT IN or LIKE");
      whole.name = Take().source;
      whole.operands.push_back(std::move(left));
      whole.operands.push_back(Value());
    }
    return whole;
  }

  void Choices(Expression& whole) {
    ExpectSymbol("(");
    if (Here().IsWord("SELECT")) {
      whole.select = Nested();
    } else {
      do {
        whole.operands.push_back(Literal());
      } while (TakeSymbol(","));
    }
    ExpectSymbol(")");
  }

  std::shared_ptr<const Select> Nested() {
    if (where_ == Where::kCondition) RefuseHere("a condition may not hold a select");
    const bool inOutput = std::exchange(inOutput_, false);
    auto select = std::make_shared<const Select>(SelectCore());
    inOutput_ = inOutput;
    return select;
  }

  Expression Value() {
    const Level level(*this);
    Expression value = Operand();
    while (Here().IsSymbol("+") || Here().IsSymbol("-")) {
      CountJoin();
      Expression sum = Begin(Expression::Kind::kArithmetic);
      sum.name = Take().source;
      sum.operands.push_back(std::move(value));
      sum.operands.push_back(Operand());
      value = std::move(sum);
    }
    return value;
  }

  Expression Operand() {
    if (TakeSymbol("(")) {
      Expression value;
      if (Here().IsWord("SELECT")) {
        value = Begin(Expression::Kind::kSelect);
        value.select = Nested();
      } else {
        value = Value();
      }
      ExpectSymbol(")");
      return value;
    }
    if (Here().kind == Token::Kind::kVariable) return Variable();
    if (AtName() && Next().IsSymbol("(")) return Call();
    if (AtName()) return Column();
    return Literal();
  }

  Expression Variable() {
    const auto declared = [&](const std::string& each) {
      return platform::EqualsIgnoreCase(each, Here().source);
    };
    if (std::ranges::none_of(declared_, declared)) RefuseHere("this variable is not declared");
    if (++variableUses_ > kMostVariables) RefuseHere("variables are used too often");
    Expression variable = Begin(Expression::Kind::kVariable);
    variable.name = Take().source;
    return variable;
  }

  Expression Column() {
    Expression column = Begin(Expression::Kind::kColumn);
    column.name = Name("a column name");
    if (TakeSymbol(".")) {
      column.qualifier = std::exchange(column.name, {});
      column.name = Name("a column name");
    }
    return column;
  }

  Expression Literal() {
    Expression literal = Begin(Expression::Kind::kInteger);
    if (++literals_ > kMostLiterals) RefuseHere("too many values in one text");
    if (Here().kind == Token::Kind::kText) {
      literal.kind = Expression::Kind::kText;
      literal.name = Take().value;
      return literal;
    }
    const bool negative = TakeSymbol("-");
    if (Here().kind != Token::Kind::kInteger) {
      RefuseHere(inOutput_ ? "expected a column or a value"
                           : "expected a number, a text in quotes or a column");
    }
    const std::string_view digits = Here().source;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), literal.number);
    if (failure != std::errc()) RefuseHere("this number is too large");
    if (negative) literal.number = -literal.number;
    Take();
    return literal;
  }

  Expression Call() {
    Expression call = Begin(Expression::Kind::kCall);
    call.name = platform::ToUpperAscii(Here().source);
    const bool aggregate = call.name == "MAX" || call.name == "COUNT";
    if (call.name != "CHARINDEX" && call.name != "ISNULL" && call.name != "CONVERT" && !aggregate) {
      RefuseHere("this function is not known here");
    }
    if (aggregate && !inOutput_) RefuseHere("an aggregate may stand in a select's columns only");
    Take();
    ExpectSymbol("(");
    if (call.name == "COUNT") {
      ExpectSymbol("*");
    } else if (call.name == "MAX") {
      inOutput_ = false;  // no aggregate within an aggregate
      call.operands.push_back(Value());
      inOutput_ = true;
    } else if (call.name == "CHARINDEX") {
      call.operands.push_back(SearchText());
      ExpectSymbol(",");
      call.operands.push_back(SearchText());
    } else {
      if (call.name == "CONVERT") {
        if (!Here().IsWord("INT") && !Here().IsWord("DATETIME")) RefuseHere("expected INT or DATETIME");
        call.qualifier = platform::ToUpperAscii(Take().source);
      } else {
        call.operands.push_back(Value());
      }
      ExpectSymbol(",");
      call.operands.push_back(Value());
    }
    ExpectSymbol(")");
    return call;
  }

  Expression SearchText() {
    if (Here().kind == Token::Kind::kText) return Literal();
    if (!AtName() || Next().IsSymbol("(")) RefuseHere("expected a text in quotes or a column");
    return Column();
  }

  std::string_view text_;
  Where where_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
  int joins_ = 0;
  int literals_ = 0;
  std::size_t variableUses_ = 0;
  bool inOutput_ = false;
  std::span<const std::string> declared_;
};

}  // namespace

Batch ReadBatch(std::string_view text) { return Parser(text, Where::kStatement).WholeBatch(); }

Expression ReadCondition(std::string_view text) { return Parser(text, Where::kCondition).WholeCondition(); }

}  // namespace books::reader
