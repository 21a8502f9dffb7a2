#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// What the grammar reads: a text as a tree of plain records. `position` is where a thing stood in the text,
// for messages. Names are as they were written; nothing here is checked against tables yet.
namespace books::reader {

struct Select;

struct Expression {
  enum class Kind {
    kInteger,     // number
    kText,        // name is the literal's text
    kVariable,    // name with its @
    kColumn,      // qualifier (may be empty), name
    kCall,        // name in capitals, operands; CONVERT keeps its type in `qualifier`
    kArithmetic,  // name is + or -, two operands
    kComparison,  // name is the sign, two operands
    kLike,        // two operands, negated
    kIn,          // the first operand in the others, or in `select`; negated
    kAll,         // operands joined with AND
    kAny,         // operands joined with OR
    kSelect,      // a select in parentheses with one value
  };

  Kind kind = Kind::kInteger;
  std::size_t position = 0;
  std::string name;
  std::string qualifier;
  std::int64_t number = 0;
  bool negated = false;
  std::vector<Expression> operands;
  std::shared_ptr<const Select> select;
};

struct Output {
  Expression value;
  std::string alias;  // empty without AS
};

struct Source {
  std::string table;
  std::string alias;  // empty without one
  std::size_t position = 0;
  bool joined = false;  // INNER JOIN … ON, not a comma
  Expression on;        // of a joined one
};

struct OrderKey {
  Expression column;
  bool descending = false;
};

struct Select {
  std::size_t position = 0;
  std::string assigns;  // the variable of SELECT @Year = …, empty for a select that answers rows
  bool distinct = false;
  std::vector<Output> outputs;
  std::vector<Source> sources;
  bool hasWhere = false;
  Expression where;
  std::vector<Select> unions;  // what follows by UNION
  std::vector<OrderKey> orderBy;
};

// Declared variables with the selects that give them their values, then the select that answers.
struct Batch {
  std::vector<std::string> variables;
  std::vector<Select> assignments;
  Select result;
};

}  // namespace books::reader
