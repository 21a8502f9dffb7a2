#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "books/reader/Catalog.h"
#include "platform/rows/Field.h"
#include "platform/value/Variant.h"

// The component hands statements and conditions over as SQL text of its own dialect. They are read by a
// grammar of exactly the shapes that it sends, their names are checked against a list, and they are written
// out anew for the database: no character of the text gets there but names from the list and aliases of
// plain letters, and every literal is a bound parameter. Anything else raises kBadArgument, which tells the
// place and what was expected. Nothing but a select can be written.
namespace books::reader {

// A text for the database, with a `?` for each parameter in order.
struct SqlText {
  std::string sql;
  std::vector<platform::Variant> parameters;  // texts and 64-bit integers
};

struct SqlStatement : SqlText {
  std::vector<platform::Field> fields;  // of the rows that it answers
};

SqlStatement ReadStatement(std::string_view text);

// An alias that a condition may use, and the table that stands behind it in the surrounding statement, where
// it must have the same alias. `bare` lets the table's columns be named without the alias too.
struct ConditionAlias {
  std::string_view alias;
  const Table& table;
  bool bare = false;
};

// A condition as SQL in parentheses, to be joined with AND; "" for a text of blanks.
SqlText ReadConditionText(std::string_view text, std::span<const ConditionAlias> aliases);

}  // namespace books::reader
