#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "books/check/Violation.h"  // IWYU pragma: export
#include "books/demo/Demo.h"        // IWYU pragma: export
#include "books/import/Import.h"    // IWYU pragma: export
#include "books/users/Users.h"      // IWYU pragma: export
#include "platform/object/Object.h"
#include "platform/value/Date.h"
#include "platform/value/Variant.h"

namespace platform {
class Recordset;
}

namespace books {

// One row of a base data lookup or tree. Groups have detail false; a group stands before what is in it.
struct BaseDataRow {
  std::int32_t id = 0;
  std::int32_t parentId = 0;  // 0 at the root
  std::string number;         // full number, dotted: "01.02.003"
  std::string shortNumber;
  std::string name;
  std::string model;  // items only
  bool detail = true;
  bool deleted = false;  // disabled, still in use by old bills
};

struct BaseDataQuery {
  std::int32_t dataType =
      4;                    // 1 customer, 2 department, 3 employee, 4 item, 5 stock, 8 supplier, 10 property
  std::string search;       // occurs in number, short number, name, model or barcode; empty finds all
  std::string filter;       // a condition over t1 as the component sends it; empty for none
  std::int32_t userId = 0;  // whose rights restrict the rows; 0 for no restriction
  bool detailOnly = true;   // false: groups too, for a tree
  std::int32_t limit = 200;
};

struct BatchQuery {
  std::string
      filterItem;  // conditions over t1 (the batch's stock) and t3 (its item), as the component sends them
  std::string filter;
  std::string keyWord;      // occurs in the batch number
  std::int32_t userId = 0;  // whose rights to warehouses restrict the rows; 0 for no restriction
  std::int32_t limit = 500;
};

struct BookUser {
  std::int32_t id = 0;
  std::string name;
};

// A saved filter scheme: the raw values of a dialog by key, in the order in which they were written.
using SchemeValues = std::vector<std::pair<std::string, platform::Variant>>;

// A stock book: the one opening through which a host reaches the data components and services behind the
// reports. Reading goes through a connection that cannot write; what writes (usage, schemes, cost
// calculation) opens a connection of its own for the moment. A Book is a handle: copies share the open book,
// and so do the components that it made, which may outlive it. For one thread.
//
// Failures are platform::Error; a text that is refused (SQL, conditions) names the place and what was
// expected there.
class Book {
 public:
  // Raises for a file that is missing, no book, of a newer version, damaged or locked, and says which.
  static Book Open(const std::filesystem::path& file);

  // A data component by programmatic id ("TOVMStockRpt.Data10414"); null for a class that no book serves.
  platform::Ref<platform::Object> CreateComponent(std::string_view programmaticId) const;

  // Runs a text that the component sends to the connection or class information service.
  platform::Ref<platform::Recordset> Execute(std::string_view sql) const;

  // The system profile's value as text; Null for a key that is not set.
  platform::Variant Profile(std::string_view category, std::string_view key) const;
  std::optional<platform::Date> PeriodFirstDay(std::int32_t year, std::int32_t period) const;

  // Whether data rights restrict this user: those that the book restricts, and those that it does not know.
  // 0, who is no user but holds the file, is free. The classes that rights are kept for are a text: "4,5".
  bool NeedRight(std::int32_t userId) const;
  std::string RightClasses() const;

  // Rows in number order.
  std::vector<BaseDataRow> BaseData(const BaseDataQuery& query) const;
  // The list of the item information service: FItemID, FParentID, FNumber, FShortNumber, FName, FDetail,
  // FDeleted; a parent stands before its children. `filter` as in BaseDataQuery, without alias allowed.
  platform::Ref<platform::Recordset> ItemList(std::int32_t dataType, std::string_view filter = {},
                                              std::int32_t userId = 0) const;
  // FBatchNo, FStockPlaceID, FKFPeriod, FKFDate, FStockID, FAuxPropID, FQty, FItemNumber, FItemName: batches
  // as they lie in stock; one that lies nowhere has FStockID 0 and FQty 0.
  platform::Ref<platform::Recordset> Batches(const BatchQuery& query) const;

  // Values the business that waits for a cost calculation.
  void QuickCalculate() const;
  void WriteUsage(std::int32_t userId, std::string_view code, std::string_view text) const;

  std::vector<std::string> SchemeNames(std::int32_t userId, std::string_view dialog) const;
  // Nothing for a scheme that does not exist.
  std::optional<SchemeValues> LoadScheme(std::int32_t userId, std::string_view dialog,
                                         std::string_view name) const;
  // Replaces a scheme of the same name.
  void SaveScheme(std::int32_t userId, std::string_view dialog, std::string_view name,
                  const SchemeValues& values) const;
  // True when there was one.
  bool DeleteScheme(std::int32_t userId, std::string_view dialog, std::string_view name) const;

  std::vector<BookUser> Users() const;

  // What of the book does not hold that always should, at most `limit` findings a rule; empty for a sound
  // one.
  std::vector<check::Violation> Check(std::size_t limit = 100) const;

 private:
  class State;
  explicit Book(std::shared_ptr<State> state) : state_(std::move(state)) {}

  std::shared_ptr<State> state_;
};

}  // namespace books
