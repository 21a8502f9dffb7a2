#include "books/services/SchemeStore.h"

#include <algorithm>
#include <functional>

#include "platform/value/Convert.h"

namespace books::services {
namespace {

using database::Connection;
using database::Statement;
using database::Transaction;
using platform::Variant;
using Kind = Variant::Kind;

// How a value of a kind is written and read back. One row a kind that a scheme may hold.
struct StoredKind {
  std::string_view name;
  Kind kind;
  Variant (*read)(const std::string& text);
};

constexpr StoredKind kStoredKinds[] = {
    {"text", Kind::kText, [](const std::string& text) { return Variant(text); }},
    {"empty", Kind::kEmpty, [](const std::string&) { return Variant(); }},
    {"null", Kind::kNull, [](const std::string&) { return Variant(platform::Null{}); }},
    {"boolean", Kind::kBoolean, [](const std::string& text) { return Variant(platform::ToBoolean(text)); }},
    {"smallint", Kind::kInt16, [](const std::string& text) { return Variant(platform::ToInt16(text)); }},
    {"integer", Kind::kInt32, [](const std::string& text) { return Variant(platform::ToInt32(text)); }},
    {"double", Kind::kDouble, [](const std::string& text) { return Variant(platform::ToDouble(text)); }},
    {"currency", Kind::kCurrency,
     [](const std::string& text) { return Variant(platform::ToCurrency(text)); }},
    {"date", Kind::kDate, [](const std::string& text) { return Variant(platform::ToDate(text)); }},
};

const StoredKind& StoredKindOf(const std::string& key, const Variant& value) {
  const auto* const found = std::ranges::find(kStoredKinds, value.GetKind(), &StoredKind::kind);
  if (found == std::end(kStoredKinds)) {
    throw platform::Error(platform::ErrorNumber::kTypeMismatch, "books::services",
                          "a filter scheme cannot hold the value of " + key + ": " +
                              std::string(platform::ToString(value.GetKind())));
  }
  return *found;
}

bool Remove(Connection& connection, std::int32_t userId, std::string_view dialog, std::string_view name) {
  connection.Execute(
      "DELETE FROM filter_scheme_value WHERE scheme_id IN "
      "(SELECT id FROM filter_scheme WHERE user_id = ? AND dialog = ? AND name = ?)",
      userId, dialog, name);
  return connection.Execute("DELETE FROM filter_scheme WHERE user_id = ? AND dialog = ? AND name = ?", userId,
                            dialog, name) > 0;
}

}  // namespace

std::vector<std::string> SchemeNames(Store& store, std::int32_t userId, std::string_view dialog) {
  std::vector<std::string> names;
  Statement row = store.Reading().Query(
      "SELECT name FROM filter_scheme WHERE user_id = ? AND dialog = ? ORDER BY name", userId, dialog);
  while (row.Step()) names.push_back(row.Text(0));
  return names;
}

std::optional<SchemeValues> LoadScheme(Store& store, std::int32_t userId, std::string_view dialog,
                                       std::string_view name) {
  const Transaction onePicture(store.Reading(), Transaction::Kind::kRead);
  Statement scheme = store.Reading().Query(
      "SELECT id FROM filter_scheme WHERE user_id = ? AND dialog = ? AND name = ?", userId, dialog, name);
  if (!scheme.Step()) return std::nullopt;
  SchemeValues values;
  Statement row = store.Reading().Query(
      "SELECT key, kind, value FROM filter_scheme_value WHERE scheme_id = ? ORDER BY position",
      scheme.Integer(0));
  while (row.Step()) {
    const auto* const kind = std::ranges::find(kStoredKinds, row.TextView(1), &StoredKind::name);
    const std::string text = row.Text(2);
    values.emplace_back(row.Text(0), kind == std::end(kStoredKinds) ? Variant(text) : kind->read(text));
  }
  return values;
}

void SaveScheme(const Store& store, std::int32_t userId, std::string_view dialog, std::string_view name,
                const SchemeValues& values) {
  Connection connection = store.OpenForWriting();
  Transaction transaction(connection);
  Remove(connection, userId, dialog, name);
  Statement scheme =
      connection.Query("INSERT INTO filter_scheme (user_id, dialog, name) VALUES (?, ?, ?) RETURNING id",
                       userId, dialog, name);
  scheme.Step();
  const std::int64_t id = scheme.Integer(0);
  Statement insert = connection.Prepare(
      "INSERT INTO filter_scheme_value (scheme_id, position, key, kind, value) VALUES (?, ?, ?, ?, ?)");
  std::int32_t position = 0;
  for (const auto& [key, value] : values) {
    const StoredKind& kind = StoredKindOf(key, value);
    insert.Run(id, position++, key, kind.name, value.IsNull() ? std::string() : platform::ToText(value));
  }
  scheme.Reset();
  transaction.Commit();
}

bool DeleteScheme(const Store& store, std::int32_t userId, std::string_view dialog, std::string_view name) {
  Connection connection = store.OpenForWriting();
  Transaction transaction(connection);
  const bool existed = Remove(connection, userId, dialog, name);
  transaction.Commit();
  return existed;
}

}  // namespace books::services
