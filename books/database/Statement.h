#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "books/database/Backend.h"
#include "books/database/Quantity.h"
#include "platform/value/Currency.h"
#include "platform/value/Date.h"
#include "platform/value/Variant.h"

namespace books::database {

class Connection;

// A prepared statement on loan from its connection, to which it goes back when this is destroyed; it must not
// outlive the connection. Parameters (`?`) and columns count from 0.
//
//   Statement rows = connection.Query("SELECT number, amount FROM … WHERE item_id = ?", itemId);
//   while (rows.Step()) Use(rows.Text(0), rows.Amount(1));
//
// Values are stored by kind: amounts as ten-thousandths, quantities as millionths, dates as day numbers
// (their time of day is not stored), booleans as 0 or 1, texts as UTF-8.
class Statement {
 public:
  Statement(Statement&&) noexcept = default;
  Statement& operator=(Statement&&) noexcept = delete;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // Binds all values in order, resetting the statement first; their number must be that of the parameters.
  template <class... Values>
  Statement& Bind(const Values&... values) {
    ExpectParameters(sizeof...(Values));
    backend_->Reset(false);
    int parameter = 0;
    (BindAt(parameter++, values), ...);
    return *this;
  }
  // One value; the statement must be before its first row.
  template <class Value>
  void BindAt(int parameter, const Value& value) {
    if constexpr (std::same_as<Value, bool>) {
      backend_->BindInteger(parameter, value ? 1 : 0);
    } else if constexpr (std::integral<Value>) {
      backend_->BindInteger(parameter, static_cast<std::int64_t>(value));
    } else if constexpr (std::floating_point<Value>) {
      backend_->BindReal(parameter, static_cast<double>(value));
    } else if constexpr (std::is_enum_v<Value>) {
      backend_->BindInteger(parameter, static_cast<std::int64_t>(value));
    } else if constexpr (std::convertible_to<const Value&, std::string_view>) {
      backend_->BindText(parameter, value);
    } else {
      BindValue(parameter, value);
    }
  }

  // True when a row stands ready, false at the end.
  bool Step() { return backend_->Step(); }
  // Binds, runs to the end and drops any rows: for a statement that writes and is used many times.
  template <class... Values>
  void Run(const Values&... values) {
    Bind(values...);
    while (Step()) {
    }
    backend_->Reset(false);
  }
  // For very many rows of whole numbers: a statement `SELECT gather(column, …) FROM …` runs to its end and
  // adds the values of all rows to `values`, row after row, at about three quarters of what stepping through
  // them costs. They come as they are met: an order that matters is the caller's to see to.
  void Gather(std::vector<std::int64_t>& values) { backend_->Gather(values); }
  void Reset() { backend_->Reset(true); }

  int ColumnCount() const { return backend_->ColumnCount(); }
  std::string ColumnName(int column) const { return backend_->ColumnName(column); }
  bool IsNull(int column) const { return backend_->IsNull(column); }

  // A null reads as 0, false or the empty text; ask IsNull, or take an optional, where that matters.
  std::int64_t Integer(int column) const { return backend_->Integer(column); }
  std::int32_t Int32(int column) const { return static_cast<std::int32_t>(backend_->Integer(column)); }
  bool Boolean(int column) const { return backend_->Integer(column) != 0; }
  double Real(int column) const { return backend_->Real(column); }
  // Valid until the next step.
  std::string_view TextView(int column) const { return backend_->Text(column); }
  std::string Text(int column) const { return std::string(backend_->Text(column)); }
  platform::Currency Amount(int column) const {
    return platform::Currency::FromUnits(backend_->Integer(column));
  }
  Quantity GetQuantity(int column) const { return Quantity::FromUnits(backend_->Integer(column)); }
  platform::Date GetDate(int column) const { return platform::Date::FromDays(Int32(column)); }
  std::optional<std::int64_t> OptionalInteger(int column) const {
    return IsNull(column) ? std::nullopt : std::optional(Integer(column));
  }
  std::optional<platform::Currency> OptionalAmount(int column) const {
    return IsNull(column) ? std::nullopt : std::optional(Amount(column));
  }

 private:
  friend class Connection;
  struct Home;  // where the statement goes back to
  Statement(std::unique_ptr<StatementBackend> backend, std::shared_ptr<Home> home);

  void ExpectParameters(std::size_t count) const;
  void BindValue(int parameter, platform::Currency value) { backend_->BindInteger(parameter, value.Units()); }
  void BindValue(int parameter, Quantity value) { backend_->BindInteger(parameter, value.Units()); }
  void BindValue(int parameter, platform::Date value) { backend_->BindInteger(parameter, value.Days()); }
  void BindValue(int parameter, std::nullptr_t) { backend_->BindNull(parameter); }
  // Texts, numbers, amounts, dates, booleans and null; an object or a missing value raises kTypeMismatch.
  void BindValue(int parameter, const platform::Variant& value);
  template <class Value>
  void BindValue(int parameter, const std::optional<Value>& value) {
    if (value) {
      BindAt(parameter, *value);
    } else {
      backend_->BindNull(parameter);
    }
  }

  std::unique_ptr<StatementBackend> backend_;
  std::shared_ptr<Home> home_;
};

}  // namespace books::database
