#include "books/database/IntegerRows.h"

#include <algorithm>
#include <string>

namespace books::database {
namespace {

constexpr std::size_t kBlock = 16;

std::size_t CountColumns(std::string_view columns) {
  return static_cast<std::size_t>(std::ranges::count(columns, ',')) + 1;
}

std::string InsertOf(std::string_view table, std::string_view columns, std::size_t rows) {
  std::string row = "(?";
  for (std::size_t column = 1; column < CountColumns(columns); ++column) row += ", ?";
  row += ')';
  std::string sql = "INSERT INTO " + std::string(table) + " (" + std::string(columns) + ") VALUES " + row;
  for (std::size_t more = 1; more < rows; ++more) sql += ", " + row;
  return sql;
}

void Run(Statement& statement, const std::int64_t* values, std::size_t count) {
  for (std::size_t index = 0; index < count; ++index) {
    statement.BindAt(static_cast<int>(index), values[index]);
  }
  statement.Step();
  statement.Reset();
}

}  // namespace

IntegerRows::IntegerRows(Connection& connection, std::string_view table, std::string_view columns)
    : width_(CountColumns(columns)),
      block_(connection.Prepare(InsertOf(table, columns, kBlock))),
      single_(connection.Prepare(InsertOf(table, columns, 1))) {
  waiting_.reserve(width_ * kBlock);
}

void IntegerRows::Add(std::initializer_list<std::int64_t> row) {
  waiting_.insert(waiting_.end(), row);
  if (waiting_.size() < width_ * kBlock) return;
  Run(block_, waiting_.data(), waiting_.size());
  waiting_.clear();
}

void IntegerRows::Flush() {
  for (std::size_t row = 0; row < waiting_.size(); row += width_) Run(single_, waiting_.data() + row, width_);
  waiting_.clear();
}

}  // namespace books::database
