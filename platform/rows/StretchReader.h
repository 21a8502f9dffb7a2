#pragma once

#include <cstddef>

#include "platform/rows/RowReader.h"
#include "platform/rows/RowStretches.h"

namespace platform {

// Reads the columns of neighbouring rows, column by column: the quickest way where many fields of a few rows
// are wanted. take(i, value) is called for each row in turn; values read and errors raise as with RowReader.
// The recordset must outlive the reader and keep the rows.
class StretchReader {
 public:
  // Rows are named by their numbers. Raises kObjectClosed, or kNoCurrentRow for rows that are not there.
  StretchReader(const Recordset& recordset, std::size_t firstRow, std::size_t count)
      : recordset_(&recordset), rows_(*recordset.rows_), first_(firstRow), count_(count) {
    if (count > 0) recordset.RequireRow(firstRow + count - 1);
  }

  std::size_t Count() const { return count_; }

  // Columns are those of Recordset::FieldIndex; one that the recordset does not have is the caller's fault.
  template <class Take>
  void Texts(std::size_t column, Take take) const {
    if (!IsTextType(rows_.Type(column))) {
      return RowByRow([&](std::size_t i, const RowReader& row) { take(i, RowText(row.Text(column))); });
    }
    const TextStore& texts = *rows_.Texts();
    rows_.Each(column, first_, count_, rows_.EmptyId(column),
               [&](std::size_t i, TextStore::Id id) { take(i, RowText(texts, id)); });
  }
  template <class Take>
  void Integers(std::size_t column, Take take) const {
    if (rows_.Type(column) == FieldType::kInt32) return rows_.Each(column, first_, count_, 0, take);
    RowByRow([&](std::size_t i, const RowReader& row) { take(i, row.Integer(column)); });
  }
  template <class Take>
  void Doubles(std::size_t column, Take take) const {
    const FieldType type = rows_.Type(column);
    if (type == FieldType::kDouble || type == FieldType::kNumeric) {
      return rows_.Each(column, first_, count_, 0.0, take);
    }
    if (type == FieldType::kCurrency) {
      return rows_.Each(column, first_, count_, Currency(),
                        [&](std::size_t i, Currency amount) { take(i, amount.ToDouble()); });
    }
    RowByRow([&](std::size_t i, const RowReader& row) { take(i, row.Double(column)); });
  }
  template <class Take>
  void Amounts(std::size_t column, Take take) const {
    if (rows_.Type(column) == FieldType::kCurrency) {
      return rows_.Each(column, first_, count_, Currency(), take);
    }
    RowByRow([&](std::size_t i, const RowReader& row) { take(i, row.Amount(column)); });
  }
  template <class Take>
  void Days(std::size_t column, Take take) const {
    if (rows_.Type(column) == FieldType::kDate) return rows_.Each(column, first_, count_, Date(), take);
    RowByRow([&](std::size_t i, const RowReader& row) { take(i, row.Day(column)); });
  }
  template <class Take>
  void RowByRow(Take take) const {
    for (std::size_t i = 0; i < count_; ++i) take(i, RowReader(*recordset_, first_ + i));
  }

 private:
  const Recordset* recordset_;
  const RowStore& rows_;
  std::size_t first_;
  std::size_t count_;
};

}  // namespace platform
