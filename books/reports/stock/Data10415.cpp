#include "books/reports/stock/Data10415.h"

#include <algorithm>
#include <array>
#include <vector>

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/Purchases.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {
namespace {

using database::Statement;
using platform::Currency;
using platform::FieldType;
using platform::RowAppender;

constexpr std::int32_t kGroupSort = 1;
constexpr std::int32_t kTotalSort = 101;
constexpr std::int32_t kGroups = 4;

enum Column : std::size_t {
  kRow,
  kCommonName,
  kItemNumber,
  kItemName,
  kModel,
  kBarcode,
  kUnitName,
  kQty,
  kAmount,
  kAvgPrice,
  kMaxPrice,
  kMinPrice,
  kFirstPrice,
  kSupplyName = kFirstPrice + Bought::kKeptPrices,
  kDate,
  kSumSort,
};

struct NamedField {
  std::string_view name;
  FieldType type = FieldType::kText;
};
// FID, Fbarcode and Fdate stand as the report's heading spells them.
constexpr std::array<NamedField, kSumSort + 1> kFields = {{
    {"FID", FieldType::kInt32},
    {"FCommonName"},
    {"FItemNumber"},
    {"FItemName"},
    {"FModel"},
    {"Fbarcode"},
    {"FUnitName"},
    {"FQty", FieldType::kDouble},
    {"FAmount", FieldType::kCurrency},
    {"FAvgPrice", FieldType::kDouble},
    {"FMaxPrice", FieldType::kDouble},
    {"FMinPrice", FieldType::kDouble},
    {"FPrice1", FieldType::kDouble},
    {"FPrice2", FieldType::kDouble},
    {"FPrice3", FieldType::kDouble},
    {"FPrice4", FieldType::kDouble},
    {"FPrice5", FieldType::kDouble},
    {"FPrice6", FieldType::kDouble},
    {"FPrice7", FieldType::kDouble},
    {"FSupplyName"},
    {"Fdate", FieldType::kDate},
    {"FSumSort", FieldType::kInt32},
}};

struct Named {
  std::string number;
  std::string name;
};
using Names = std::unordered_map<std::int64_t, Named>;

// Of departments, employees, warehouses and suppliers.
Names ReadNames(services::Store& store) {
  Statement row = store.Reading().Prepare(
      "SELECT id, number, name FROM base_data WHERE class_id IN (2, 3, 5, 8) AND detail <> 0");
  Names names;
  while (row.Step()) names[row.Integer(0)] = {.number = row.Text(1), .name = row.Text(2)};
  return names;
}

// The dialog leaves the list of groups empty, and its index is then −1.
PurchaseGroup GroupOf(const ReportFilter& filter) {
  if (filter.Text("cmbGroup") == "-1") return PurchaseGroup::kNothing;
  return static_cast<PurchaseGroup>(ChoiceOf(filter, "cmbGroup", kGroups));
}

bool AsksForPartners(const ReportFilter& filter) {
  return std::ranges::any_of(std::array{"SupplyNumber", "DeptNumber", "StockNumber", "EmpNumber"},
                             [&](std::string_view name) {
                               const Range range = filter.NumberRange(name);
                               return !range.from.empty() || !range.to.empty();
                             });
}

ItemSort SortOf(const ReportFilter& filter) {
  static constexpr SortField kSortFields[] = {{"FItemNumber", "b.number"}};
  return {.sql = filter.OrderBy(kSortFields, "b.number, b.id")};
}

struct Sum {
  std::int64_t quantity = 0;
  std::int64_t amount = 0;
};

class PriceRows {
 public:
  PriceRows(platform::Recordset& rows, Names names, bool onlySums)
      : to_(rows), names_(std::move(names)), onlySums_(onlySums) {}

  // Without purchases of a group the item stands alone.
  void Add(std::int64_t group, const StockItem& item, const Bought& bought) {
    sum_.quantity += bought.Quantity();
    sum_.amount += bought.Amount();
    any_ = true;
    if (onlySums_) return;
    to_.SetInteger(kRow, ++row_);
    to_.SetText(kCommonName, names_[group].name);
    to_.SetText(kItemNumber, item.number);
    to_.SetText(kItemName, item.name);
    to_.SetText(kModel, item.model);
    to_.SetText(kBarcode, item.barcode);
    to_.SetText(kUnitName, item.unit);
    SetPrices(bought);
    Commit({.quantity = bought.Quantity(), .amount = bought.Amount()}, 0);
  }

  void EndGroup(std::int64_t group, bool named) {
    total_.quantity += sum_.quantity;
    total_.amount += sum_.amount;
    if (named && any_) {
      to_.SetText(kCommonName, names_[group].name);
      to_.SetText(kItemNumber, "小计");
      Commit(sum_, kGroupSort);
    }
    anyAtAll_ = anyAtAll_ || any_;
    any_ = false;
    sum_ = {};
  }

  void AddTotal() {
    if (!anyAtAll_) return;
    to_.SetText(kItemNumber, "合计");
    Commit(total_, kTotalSort);
  }

 private:
  void SetPrices(const Bought& bought) {
    if (bought.Quantity() != 0) to_.SetDouble(kAvgPrice, PriceOf(bought.Amount(), bought.Quantity()));
    if (bought.KeptPrices() == 0) return;
    to_.SetDouble(kMaxPrice, bought.Highest());
    to_.SetDouble(kMinPrice, bought.Lowest());
    for (std::size_t i = 0; i < bought.KeptPrices(); ++i) to_.SetDouble(kFirstPrice + i, bought.Price(i));
    to_.SetText(kSupplyName, names_[bought.LowestSupplier()].name);
    to_.SetDate(kDate, bought.LowestDay());
  }

  void Commit(const Sum& sum, std::int32_t sort) {
    to_.SetDouble(kQty, AsQuantity(sum.quantity));
    to_.SetCurrency(kAmount, Currency::FromUnits(sum.amount));
    to_.SetInteger(kSumSort, sort);
    to_.CommitRow();
  }

  RowAppender to_;
  Names names_;
  bool onlySums_;
  std::int32_t row_ = 0;
  Sum sum_;
  Sum total_;
  bool any_ = false;
  bool anyAtAll_ = false;
};

// The groups that have purchases, by their numbers; without groups the one that stands for all.
std::vector<std::int64_t> GroupsOf(const Purchases& purchases, PurchaseGroup by, Names& names) {
  std::vector<std::int64_t> groups;
  if (by == PurchaseGroup::kNothing) return {0};
  for (const auto& [group, bought] : purchases) groups.push_back(group);
  std::ranges::sort(groups, {}, [&](std::int64_t group) { return std::pair(names[group].number, group); });
  return groups;
}

}  // namespace

platform::Ref<platform::Recordset> Data10415::GetRpt10415Data(const std::string& /*props*/,
                                                              platform::Variant& filter) {
  const database::Transaction onePicture(store_->Reading(), database::Transaction::Kind::kRead);
  const ReportFilter asked(filter);
  const PurchaseGroup by = GroupOf(asked);
  const bool noEmpty = FlagOf(asked, "chkNoAmt") || by != PurchaseGroup::kNothing || AsksForPartners(asked);
  const bool noBalance = FlagOf(asked, "chkNoBal");
  const bool onlySums = FlagOf(asked, "chkOnlyTotal");
  const auto stock = ReadStockSeen(*store_, asked);
  Purchases purchases = ReadPurchases(*store_, asked, by);
  const StockItems items(*store_, ItemConditions(asked, store_->UsesShortNumbers()), SortOf(asked), {});

  auto rows = platform::MakeRef<platform::Recordset>();
  for (const NamedField& field : kFields) rows->AppendField(field.name, field.type);
  rows->Open();
  if (!stock) return rows;
  Names names = ReadNames(*store_);
  const std::vector<std::int64_t> groups = GroupsOf(purchases, by, names);
  PriceRows to(*rows, std::move(names), onlySums);
  const auto lies = [&](const StockItem& item) {
    const auto found = stock->find(item.id);
    return found != stock->end() && found->second != 0;
  };
  for (const std::int64_t group : groups) {
    const auto& bought = purchases[group];
    for (const StockItem& item : items.All()) {
      const auto found = bought.find(item.id);
      if (found == bought.end() && (noEmpty || item.disabled)) continue;
      if (noBalance && !lies(item)) continue;
      to.Add(group, item, found == bought.end() ? Bought() : found->second);
    }
    to.EndGroup(group, by != PurchaseGroup::kNothing);
  }
  to.AddTotal();
  return rows;
}

}  // namespace books::reports
