// All rows are collected before any is written, since a list over several items may have any order. Texts are
// looked up when a row is written, or compared.
#include "books/reports/movement/MovementDetail.h"

#include <algorithm>
#include <tuple>

#include "books/database/Connection.h"
#include "books/reports/movement/DetailFields.h"
#include "platform/value/Convert.h"

namespace books::reports {
namespace {

using platform::MakeRef;
using platform::Recordset;
using platform::Ref;

constexpr std::int32_t kOpeningSort = 1;
constexpr std::int32_t kGroupSort = 2;
constexpr std::int32_t kItemSort = 100;
constexpr std::int32_t kTotalSort = 101;

enum class DetailGroup : std::int32_t { kNone, kDay, kWarehouse, kAuxiliary };
enum class DetailOrder { kDate, kBillNumber, kBillType, kItem };

constexpr SortField kSortFields[] = {{"T1.FDate", "date"},
                                     {"T1.FBillNo", "bill"},
                                     {"T1.FBillType", "type"},
                                     {"T2.FNumber", "number"},
                                     {"T2.FName", "name"}};

struct DetailShape {
  MovementGoods goods = MovementGoods::kAll;
  DetailGroup group = DetailGroup::kNone;
  DetailOrder order = DetailOrder::kDate;
  bool descending = false;
  ItemSort items;
  bool byItem = false;
  bool hidesBalances = false;
  bool hidesUnmoved = false;
  bool hidesEmpty = false;
  bool hidesIdle = false;
};

struct DetailRow {
  const StockItem* item = nullptr;
  Move move;
  Sums balance;  // of the item, behind the movement
};

struct Totals {
  Sums receipts;
  Sums issues;

  void Add(const Move& move) { (move.receipt ? receipts : issues) += move.sums; }
};

DetailShape ShapeOf(const ReportFilter& asked, MovementGoods goods, bool shortNumbers) {
  constexpr std::int32_t kGroupings = 4;
  DetailShape shape;
  shape.goods = goods;
  shape.group = static_cast<DetailGroup>(ChoiceOf(asked, "cmbGroup", kGroupings));
  shape.byItem = FlagOf(asked, "chkGroupByGood");
  shape.hidesBalances = FlagOf(asked, "chkOnlyTotal");
  shape.hidesUnmoved = FlagOf(asked, "chkNoAmt");
  shape.hidesEmpty = FlagOf(asked, "chkNoBal");
  shape.hidesIdle = FlagOf(asked, "chkNoZero");
  const std::string order = asked.OrderBy(kSortFields, "");
  const bool byName = order.starts_with("name");
  shape.descending = order.find(" DESC") != std::string::npos;
  if (order.starts_with("bill")) shape.order = DetailOrder::kBillNumber;
  if (order.starts_with("type")) shape.order = DetailOrder::kBillType;
  if (byName || order.starts_with("number")) shape.order = DetailOrder::kItem;
  shape.items.descending = shape.descending && shape.order == DetailOrder::kItem;
  const std::string direction = shape.items.descending ? " DESC" : " ASC";
  const std::string number = (shortNumbers ? "b.short_number" : "b.number") + direction;
  shape.items.sql = (byName ? "b.name" + direction + ", " : "") + number + ", b.id";
  return shape;
}

class MovementDetail {
 public:
  MovementDetail(services::Store& store, const ReportFilter& asked, const DetailShape& shape)
      : store_(store),
        shape_(shape),
        choice_(store, asked, "t4"),
        items_(store, MovementItems(asked, shape.goods, store.UsesShortNumbers()), shape.items, {}),
        facts_(store),
        rows_(MakeRef<Recordset>()),
        fields_(*rows_, facts_) {}

  Ref<Recordset> Read() {
    MovementReader reader(store_, choice_, {});
    for (const StockItem& item : items_.All()) ReadItem(item, reader.Read(item.id));
    if (!shape_.byItem) WriteMoves();
    if (hasTotal_) WriteTotal();
    return rows_;
  }

 private:
  void ReadItem(const StockItem& item, const ItemMovement& movement);
  bool IsShown(const StockItem& item, bool moved, const Sums& closing) const;
  void Sort();
  void WriteMoves();
  void WriteItem(const StockItem& item, const Sums& opening, const Sums& closing, const Totals& totals);
  void WriteTotal();
  std::int64_t GroupOf(const Move& move) const;
  std::string GroupNameOf(const Move& move);
  // What rows of one group have in common, in the order of the groups.
  std::tuple<std::string, std::int64_t> GroupRank(const Move& move);

  services::Store& store_;
  DetailShape shape_;
  MovementChoice choice_;
  StockItems items_;
  DetailFacts facts_;
  Ref<Recordset> rows_;
  DetailFields fields_;
  std::vector<DetailRow> moves_;  // that wait to be written
  Totals total_;
  Sums totalClosing_;
  bool hasTotal_ = false;
};

bool MovementDetail::IsShown(const StockItem& item, bool moved, const Sums& closing) const {
  if (shape_.hidesEmpty && closing.IsNothing(shape_.goods)) return false;
  if (moved) return true;
  if (!shape_.byItem || shape_.hidesUnmoved) return false;
  if (!closing.IsNothing(shape_.goods)) return true;
  const bool noWarehouse = !choice_.warehouses.all && choice_.warehouses.ids.empty();
  const bool wholeItems = choice_.batches.all && choice_.auxiliaries.all && !noWarehouse;
  return !shape_.hidesIdle && !item.disabled && wholeItems;
}

void MovementDetail::ReadItem(const StockItem& item, const ItemMovement& movement) {
  Sums opening;
  for (const OpeningFigures& each : movement.opening) opening += each.sums;
  Sums balance = opening;
  Totals totals;
  const std::size_t first = moves_.size();
  for (const Move& move : movement.moves) {
    balance += move.receipt ? move.sums : -move.sums;
    totals.Add(move);
    moves_.push_back({.item = &item, .move = move, .balance = balance});
  }
  if (!IsShown(item, !movement.moves.empty(), balance)) {
    moves_.resize(first);
    return;
  }
  total_.receipts += totals.receipts;
  total_.issues += totals.issues;
  totalClosing_ += balance;
  if (shape_.byItem) WriteItem(item, opening, balance, totals);
  hasTotal_ = hasTotal_ || !movement.moves.empty() || !shape_.hidesBalances;
}

void MovementDetail::WriteItem(const StockItem& item, const Sums& opening, const Sums& closing,
                               const Totals& totals) {
  if (!shape_.hidesBalances) {
    fields_.AddSum({.caption = "期初结存",
                    .sumSort = kOpeningSort,
                    .item = &item,
                    .receipts = {},
                    .issues = {},
                    .balance = opening});
  }
  WriteMoves();
  if (!shape_.hidesBalances) {
    fields_.AddSum({.caption = "本期合计",
                    .sumSort = kItemSort,
                    .item = &item,
                    .receipts = totals.receipts,
                    .issues = totals.issues,
                    .balance = closing});
  }
}

void MovementDetail::WriteTotal() {
  fields_.AddSum({.caption = "合计",
                  .sumSort = kTotalSort,
                  .receipts = total_.receipts,
                  .issues = total_.issues,
                  .balance = shape_.byItem ? std::optional(totalClosing_) : std::nullopt});
}

std::int64_t MovementDetail::GroupOf(const Move& move) const {
  switch (shape_.group) {
    case DetailGroup::kDay:
      return move.date.Days();
    case DetailGroup::kWarehouse:
      return move.place.warehouseId;
    case DetailGroup::kAuxiliary:
      return move.place.auxId;
    default:
      return 0;
  }
}

std::string MovementDetail::GroupNameOf(const Move& move) {
  if (shape_.group == DetailGroup::kDay) return move.date.ToText();
  return facts_.BaseDataOf(GroupOf(move)).name;
}

std::tuple<std::string, std::int64_t> MovementDetail::GroupRank(const Move& move) {
  const std::int64_t group = GroupOf(move);
  if (shape_.group == DetailGroup::kDay) return {std::string(), group};
  return {facts_.BaseDataOf(group).number, group};
}

// The rows come in the order of items and of costing, which stays among equal ones.
void MovementDetail::Sort() {
  const auto sortBy = [this](const auto& key, bool descending) {
    std::ranges::stable_sort(moves_, [&](const DetailRow& left, const DetailRow& right) {
      return descending ? key(right) < key(left) : key(left) < key(right);
    });
  };
  switch (shape_.order) {
    case DetailOrder::kDate:
      sortBy([](const DetailRow& row) { return row.move.date; }, shape_.descending);
      break;
    case DetailOrder::kBillNumber:
      sortBy(
          [this](const DetailRow& row) {
            return platform::ToUpperAscii(facts_.BillOf(row.move.billId).number);
          },
          shape_.descending);
      break;
    case DetailOrder::kBillType:
      sortBy([this](const DetailRow& row) { return std::string_view(facts_.ClassName(row.move.billClass)); },
             shape_.descending);
      break;
    case DetailOrder::kItem:
      break;
  }
  if (shape_.group != DetailGroup::kNone) {
    sortBy([this](const DetailRow& row) { return GroupRank(row.move); }, false);
  }
}

// Writes what waits, with a sum behind every group.
void MovementDetail::WriteMoves() {
  Sort();
  Totals group;
  for (std::size_t i = 0; i < moves_.size(); ++i) {
    const DetailRow& row = moves_[i];
    fields_.AddMove(*row.item, row.move, shape_.byItem ? std::optional(row.balance) : std::nullopt);
    if (shape_.group == DetailGroup::kNone) continue;
    group.Add(row.move);
    if (i + 1 < moves_.size() && GroupOf(moves_[i + 1].move) == GroupOf(row.move)) continue;
    const std::string name = GroupNameOf(row.move);
    fields_.AddSum({.caption = name.empty() ? "小计" : name + " 小计",
                    .sumSort = kGroupSort,
                    .item = shape_.byItem ? row.item : nullptr,
                    .receipts = group.receipts,
                    .issues = group.issues,
                    .balance = {}});
    group = {};
  }
  moves_.clear();
}

}  // namespace

Ref<Recordset> ReadMovementDetail(services::Store& store, const platform::Variant& filter,
                                  MovementGoods goods) {
  const ReportFilter asked(filter);
  const database::Transaction onePicture(store.Reading(), database::Transaction::Kind::kRead);
  return MovementDetail(store, asked, ShapeOf(asked, goods, store.UsesShortNumbers())).Read();
}

}  // namespace books::reports
