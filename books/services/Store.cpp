#include "books/services/Store.h"

#include "books/schema/Schema.h"
#include "platform/value/Convert.h"

namespace books::services {

using database::Access;
using database::Statement;

Store::Store(std::filesystem::path file)
    : file_(std::move(file)), reading_(schema::OpenBook(file_, Access::kReadOnly)) {}

database::Connection Store::OpenForWriting() const { return schema::OpenBook(file_, Access::kReadWrite); }

platform::Ref<platform::Recordset> Store::Fetch(const reader::SqlText& text,
                                                std::span<const RowField> fields) {
  Statement statement = reading_.Prepare(text.sql);
  BindAll(statement, text.parameters);
  return ReadRows(statement, fields);
}

std::optional<std::string> Store::Profile(std::string_view category, std::string_view key) {
  Statement row =
      reading_.Query("SELECT FValue FROM t_SystemProfile WHERE FCategory = ? AND FKey = ?", category, key);
  if (!row.Step()) return std::nullopt;
  return row.Text(0);
}

bool Store::UsesShortNumbers() {
  const std::optional<std::string> value = Profile("IC", "UseShortNumber");
  return value && platform::LeadingNumber(*value) != 1;
}

}  // namespace books::services
