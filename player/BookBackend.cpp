#include "player/BookBackend.h"

#include "books/Book.h"
#include "desk/lookup/BatchForm.h"
#include "desk/lookup/LookupForm.h"
#include "platform/value/Convert.h"

namespace player {
namespace {

using platform::Date;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using UserIdReader = std::function<std::int32_t()>;

// The schemes of one user in a book.
class BookSchemes final : public desk::SchemeStore {
 public:
  BookSchemes(books::Book book, UserIdReader userId) : book_(std::move(book)), userId_(std::move(userId)) {}

  std::vector<std::string> Names(std::string_view dialog) const override {
    return book_.SchemeNames(userId_(), dialog);
  }
  std::optional<desk::SchemeValues> Load(std::string_view dialog, std::string_view name) const override {
    return book_.LoadScheme(userId_(), dialog, name);
  }
  void Save(std::string_view dialog, std::string_view name, const desk::SchemeValues& values) override {
    book_.SaveScheme(userId_(), dialog, name, values);
  }
  bool Delete(std::string_view dialog, std::string_view name) override {
    return book_.DeleteScheme(userId_(), dialog, name);
  }

 private:
  books::Book book_;
  UserIdReader userId_;
};

class BookBackend final : public desk::DataBackend {
 public:
  BookBackend(books::Book book, const UserIdReader& userId)
      : book_(std::move(book)), userId_(userId), schemes_(book_, userId) {}

  Ref<Object> CreateComponent(std::string_view programmaticId) override {
    return book_.CreateComponent(programmaticId);
  }

  Variant SessionValue(std::string_view key) override {
    if (platform::EqualsIgnoreCase(key, "UserID")) return userId_();
    if (platform::EqualsIgnoreCase(key, "PropsString")) return "UserID=" + std::to_string(userId_()) + ";";
    return {};
  }
  Variant OuterLogin() override { return 0; }
  Variant Profile(std::string_view category, std::string_view key) override {
    return book_.Profile(category, key);
  }
  bool NeedRight() override { return book_.NeedRight(userId_()); }
  std::string RightClasses() override { return book_.RightClasses(); }

  Ref<Recordset> Execute(const std::string& sql) override { return book_.Execute(sql); }
  Ref<Recordset> ItemList(std::int32_t dataType, const std::string& filter) override {
    return book_.ItemList(dataType, filter, NeedRight() ? userId_() : 0);
  }
  Date PeriodFirstDay(std::int32_t year, std::int32_t period) override {
    // A period that the book does not keep is taken for the month of its number.
    const std::optional<Date> day = book_.PeriodFirstDay(year, period);
    return day ? *day : Date::Of(year, period, 1);
  }

  // On a screen without a user the forms are refused, and with them the lookup.
  std::optional<desk::Picked> PickBaseData(const desk::LookupQuery& query) override {
    return desk::PickBaseData(*this, query);
  }
  Ref<Recordset> PickBatch(const desk::BatchQuery& query) override { return desk::PickBatch(*this, query); }
  Ref<Recordset> Batches(const desk::BatchQuery& query) override {
    return book_.Batches(
        {.filterItem = query.filterItem, .filter = query.filter, .keyWord = platform::ToText(query.keyWord)});
  }
  std::vector<desk::BaseDataRow> BaseData(const desk::BaseDataQuery& query) override;

  void QuickCalculate() override { book_.QuickCalculate(); }
  void WriteUsage(const std::string& code, const std::string& text) override {
    book_.WriteUsage(userId_(), code, text);
  }
  desk::SchemeStore& Schemes() override { return schemes_; }

 private:
  books::Book book_;
  UserIdReader userId_;
  BookSchemes schemes_;
};

std::vector<desk::BaseDataRow> BookBackend::BaseData(const desk::BaseDataQuery& query) {
  std::vector<desk::BaseDataRow> rows;
  for (const books::BaseDataRow& row : book_.BaseData({.dataType = query.dataType,
                                       .search = query.search,
                                       .filter = query.filter,
                                       .userId = NeedRight() ? userId_() : 0,
                                       .detailOnly = !query.withGroups,
                                       .limit = query.limit})) {
    rows.push_back({.id = row.id,
                    .parentId = row.parentId,
                    .number = row.number,
                    .shortNumber = row.shortNumber,
                    .name = row.name,
                    .detail = row.detail,
                    .disabled = row.deleted});
  }
  return rows;
}

}  // namespace

std::unique_ptr<desk::DataBackend> OpenBook(const std::string& file, const UserIdReader& userId) {
  return std::make_unique<BookBackend>(books::Book::Open(file), userId);
}

}  // namespace player
