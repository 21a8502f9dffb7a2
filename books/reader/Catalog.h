#pragma once

#include <span>
#include <string_view>

#include "platform/rows/Field.h"

namespace books::reader {

struct Column {
  std::string_view name;
  platform::FieldType type;
};

struct Table {
  std::string_view name;
  std::span<const Column> columns;

  const Column* Find(std::string_view column) const;  // without regard to case; null when it has none
};

// The tables that a statement may name, in any case; null for every other name.
const Table* FindTable(std::string_view name);

// What a condition of the component may name behind an alias: the base data row that a right clause or a
// lookup's filter speaks of, and the batch list's stock row.
const Table& BaseDataTable();
const Table& BatchStockTable();

}  // namespace books::reader
