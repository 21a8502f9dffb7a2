#pragma once

#include <string_view>

#include "books/reader/Tree.h"

namespace books::reader {

// The grammar: exactly the shapes that the component sends. Both raise kBadArgument with the place and what
// was expected there.
//
//   batch      [DECLARE @v INT {, @v INT}] {SELECT @v = value FROM … WHERE …} select
//   select     SELECT [DISTINCT] output {, output} FROM source {, source | INNER JOIN source ON condition}
//              [WHERE condition] {UNION select} [ORDER BY column [ASC|DESC] {, …}]
//   condition  comparisons joined with AND and OR, in parentheses where needed
//   comparison value =|<>|<|>|<=|>= value | value [NOT] IN (literal {, literal} | select)
//              | value [NOT] LIKE 'text'
//   value      literal | column | @v | (value) | (select) | value + value | value - value
//              | CHARINDEX('text'|column, 'text'|column) | ISNULL(value, value) | CONVERT(INT|DATETIME,
//              value) | in an output MAX(value) | COUNT(*)
Batch ReadBatch(std::string_view text);

// A condition by itself: no select and no variable in it.
Expression ReadCondition(std::string_view text);

}  // namespace books::reader
