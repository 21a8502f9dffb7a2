#include "books/Book.h"

#include "books/check/Check.h"
#include "books/posting/Posting.h"
#include "books/reader/SqlReader.h"
#include "books/reports/DataComponent.h"
#include "books/services/BaseDataList.h"
#include "books/services/SchemeStore.h"
#include "books/services/Session.h"
#include "books/services/Store.h"
#include "platform/rows/Recordset.h"

namespace books {
namespace {

services::RowField RowFieldOf(const platform::Field& field) {
  using services::Kept;
  switch (field.type) {
    case platform::FieldType::kInt32:
      return {field.name, Kept::kInteger};
    case platform::FieldType::kDouble:
      return {field.name, Kept::kReal};
    case platform::FieldType::kDate:
      return {field.name, Kept::kDate};
    default:
      return {field.name, Kept::kText};
  }
}

}  // namespace

class Book::State : public services::Store {
 public:
  using Store::Store;
};

Book Book::Open(const std::filesystem::path& file) { return Book(std::make_shared<State>(file)); }

platform::Ref<platform::Object> Book::CreateComponent(std::string_view programmaticId) const {
  return reports::CreateDataComponent(programmaticId, state_);
}

platform::Ref<platform::Recordset> Book::Execute(std::string_view sql) const {
  const reader::SqlStatement statement = reader::ReadStatement(sql);
  std::vector<services::RowField> fields;
  fields.reserve(statement.fields.size());
  for (const platform::Field& field : statement.fields) fields.push_back(RowFieldOf(field));
  return state_->Fetch(statement, fields);
}

platform::Variant Book::Profile(std::string_view category, std::string_view key) const {
  const std::optional<std::string> value = state_->Profile(category, key);
  return value ? platform::Variant(*value) : platform::Variant(platform::Null{});
}

std::optional<platform::Date> Book::PeriodFirstDay(std::int32_t year, std::int32_t period) const {
  return services::PeriodFirstDay(*state_, year, period);
}

bool Book::NeedRight(std::int32_t userId) const { return services::NeedRight(*state_, userId); }

std::string Book::RightClasses() const { return services::RightClasses(*state_); }

std::vector<BaseDataRow> Book::BaseData(const BaseDataQuery& query) const {
  return services::BaseData(*state_, query);
}

platform::Ref<platform::Recordset> Book::ItemList(std::int32_t dataType, std::string_view filter,
                                                  std::int32_t userId) const {
  return services::ItemList(*state_, dataType, filter, userId);
}

platform::Ref<platform::Recordset> Book::Batches(const BatchQuery& query) const {
  return services::Batches(*state_, query);
}

void Book::QuickCalculate() const {
  database::Connection connection = state_->OpenForWriting();
  posting::ValueWaitingBusiness(connection);
}

void Book::WriteUsage(std::int32_t userId, std::string_view code, std::string_view text) const {
  services::WriteUsage(*state_, userId, code, text);
}

std::vector<std::string> Book::SchemeNames(std::int32_t userId, std::string_view dialog) const {
  return services::SchemeNames(*state_, userId, dialog);
}

std::optional<SchemeValues> Book::LoadScheme(std::int32_t userId, std::string_view dialog,
                                             std::string_view name) const {
  return services::LoadScheme(*state_, userId, dialog, name);
}

void Book::SaveScheme(std::int32_t userId, std::string_view dialog, std::string_view name,
                      const SchemeValues& values) const {
  services::SaveScheme(*state_, userId, dialog, name, values);
}

bool Book::DeleteScheme(std::int32_t userId, std::string_view dialog, std::string_view name) const {
  return services::DeleteScheme(*state_, userId, dialog, name);
}

std::vector<BookUser> Book::Users() const { return services::Users(*state_); }

std::vector<check::Violation> Book::Check(std::size_t limit) const {
  return check::Check(state_->Reading(), limit);
}

}  // namespace books
