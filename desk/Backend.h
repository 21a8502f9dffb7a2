#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desk/Schemes.h"
#include "platform/object/Object.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Date.h"
#include "platform/value/Variant.h"

namespace desk {

// Base data types of the lookups whose operation takes none, and of the batch list.
inline constexpr std::int32_t kUnitType = 7;
inline constexpr std::int32_t kCurrencyType = 12;
inline constexpr std::int32_t kAccountType = 13;
inline constexpr std::int32_t kBatchType = 21;
inline constexpr std::int32_t kSettlementType = 130;

// A lookup that a form has asked for. `kind` is the operation called ("ItemLookUp", "UnitLookup"…).
struct LookupQuery {
  std::string kind;
  std::int32_t dataType = 0;
  std::string text;
  std::string filter;
};

// What a user picked in a lookup.
struct Picked {
  platform::Variant number;
  platform::Variant shortNumber;
  platform::Variant detail;
};

// A batch list as the component asks for it: two conditions and the text typed so far.
struct BatchQuery {
  std::string filterItem;
  std::string filter;
  platform::Variant keyWord;
};

// A row of base data. A group, which has `detail` false, stands before what is in it.
struct BaseDataRow {
  std::int32_t id = 0;
  std::int32_t parentId = 0;  // 0 at the root
  std::string number;
  std::string shortNumber;
  std::string name;
  bool detail = true;
  bool disabled = false;  // out of use, kept for old bills
};

struct BaseDataQuery {
  std::int32_t dataType = 0;
  std::string search;  // occurs in a number or the name; empty finds all
  std::string filter;  // a condition as the component sends it; empty for none
  bool withGroups = false;
  std::int32_t limit = 200;
};

// What the desk asks of whoever stands behind it: a script, a stock book, or both. Failures are
// platform::Error and reach the component as the failure of the service that asked.
class Backend {
 public:
  Backend() = default;
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;
  Backend(Backend&&) = delete;
  Backend& operator=(Backend&&) = delete;
  virtual ~Backend() = default;

  // A value of the login, by "UserID", "PropsString" and the like; Empty for one that it has not got.
  virtual platform::Variant SessionValue(std::string_view key) = 0;
  // What the cache answers for "IsOuterLogin".
  virtual platform::Variant OuterLogin() = 0;
  // Null for a key that is not set.
  virtual platform::Variant Profile(std::string_view category, std::string_view key) = 0;
  virtual bool NeedRight() = 0;
  virtual std::string RightClasses() = 0;

  virtual platform::Ref<platform::Recordset> Execute(const std::string& sql) = 0;
  // FItemID, FParentID, FNumber, FName, FDetail, FDeleted; a parent stands before its children.
  virtual platform::Ref<platform::Recordset> ItemList(std::int32_t dataType, const std::string& filter) = 0;
  virtual platform::Date PeriodFirstDay(std::int32_t year, std::int32_t period) = 0;

  // Lets the user pick; nothing when the user cancelled.
  virtual std::optional<Picked> PickBaseData(const LookupQuery& query) = 0;
  // Positioned on the row picked; null when the user cancelled.
  virtual platform::Ref<platform::Recordset> PickBatch(const BatchQuery& query) = 0;
  // The batches that a batch list offers: FBatchNo, FQty and what else the component reads of the row picked.
  virtual platform::Ref<platform::Recordset> Batches(const BatchQuery& query) = 0;
  // The rows that a lookup form offers, in number order.
  virtual std::vector<BaseDataRow> BaseData(const BaseDataQuery& query) = 0;

  virtual void QuickCalculate() = 0;
  virtual void WriteUsage(const std::string& code, const std::string& text) = 0;

  virtual SchemeStore& Schemes() = 0;
};

}  // namespace desk
