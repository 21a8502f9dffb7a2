// All rows of a list are collected before any is written, since it may have any order: what they are sorted
// by is first turned into ranks, and then the ranks are sorted. Texts are looked up when a row is written.
#include "books/reports/movement/MovementDetail.h"

#include <algorithm>
#include <compare>
#include <unordered_map>
#include <utility>

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
  bool allItems = true;  // all there are
};

struct DetailRow {
  const StockItem* item = nullptr;
  Move move;
  Sums balance;  // of the item, behind the movement
};

// Where a row comes among those that wait: by its group, in it by what the report is sorted by, and in the
// order of reading where both are the same.
struct RowOrder {
  std::int64_t group = 0;
  std::int64_t rank = 0;
  std::size_t row = 0;

  friend auto operator<=>(const RowOrder&, const RowOrder&) = default;
};

struct Totals {
  Sums receipts;
  Sums issues;

  void Add(const Move& move) { (move.receipt ? receipts : issues) += move.sums; }
};

using Ranks = std::unordered_map<std::int64_t, std::int64_t>;
enum class EqualTexts { kTogether, kApart };

// Ranks what `idOf` says of the rows by the order of its texts; equal texts share a rank, or follow in the
// order of their ids.
template <class IdOf, class TextOf>
Ranks RanksOf(const std::vector<DetailRow>& rows, const IdOf& idOf, const TextOf& textOf, EqualTexts equal) {
  Ranks ranks;
  for (const DetailRow& row : rows) ranks.try_emplace(idOf(row.move));
  std::vector<std::pair<std::string, std::int64_t>> texts;
  texts.reserve(ranks.size());
  for (const auto& each : ranks) texts.emplace_back(textOf(each.first), each.first);
  std::ranges::sort(texts);
  std::int64_t rank = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0 && (equal == EqualTexts::kApart || texts[i].first != texts[i - 1].first)) ++rank;
    ranks[texts[i].second] = rank;
  }
  return ranks;
}

// Balances are told item by item, and decide with chkNoBal. A list without them is read without.
MovementParts PartsOf(const DetailShape& shape) {
  return {.openings = shape.byItem || shape.hidesEmpty ? Openings::kSum : Openings::kNone,
          .warehouses = shape.group == DetailGroup::kWarehouse};
}

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
  const Range items = asked.NumberRange("ItemNumber");
  shape.allItems = goods == MovementGoods::kAll && items.from.empty() && items.to.empty();
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
    MovementReader reader(store_, choice_, PartsOf(shape_));
    if (TellsMostBills()) facts_.ReadBills(choice_.base.from, choice_.lastDay);
    for (const StockItem& item : items_.All()) ReadItem(item, reader.Read(item.id));
    if (!shape_.byItem) WriteMoves();
    if (hasTotal_) WriteTotal();
    return rows_;
  }

 private:
  bool TellsMostBills() const {
    return shape_.allItems && choice_.warehouses.all && choice_.batches.all && choice_.auxiliaries.all &&
           !choice_.byBill;
  }
  void ReadItem(const StockItem& item, const ItemMovement& movement);
  bool IsShown(const StockItem& item, bool moved, const Sums& closing) const;
  std::vector<RowOrder> SortedMoves();
  void WriteMoves();
  void WriteItem(const StockItem& item, const Sums& opening, const Sums& closing, const Totals& totals);
  void WriteTotal();
  std::int64_t GroupOf(const Move& move) const;
  std::int64_t OrderIdOf(const Move& move) const;
  std::string GroupNameOf(const Move& move);

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

std::int64_t MovementDetail::OrderIdOf(const Move& move) const {
  switch (shape_.order) {
    case DetailOrder::kDate:
      return move.date.Days();
    case DetailOrder::kBillNumber:
      return move.billId;
    case DetailOrder::kBillType:
      return move.billClass;
    default:
      return 0;  // the order of reading
  }
}

// Days are their own ranks, and so is what all rows have in common.
std::vector<RowOrder> MovementDetail::SortedMoves() {
  const auto groupOf = [this](const Move& move) { return GroupOf(move); };
  const auto orderOf = [this](const Move& move) { return OrderIdOf(move); };
  Ranks groups;
  Ranks orders;
  if (shape_.group == DetailGroup::kWarehouse || shape_.group == DetailGroup::kAuxiliary) {
    groups = RanksOf(
        moves_, groupOf, [this](std::int64_t id) { return facts_.BaseDataOf(id).number; },
        EqualTexts::kApart);
  }
  if (shape_.order == DetailOrder::kBillNumber) {
    orders = RanksOf(
        moves_, orderOf, [this](std::int64_t id) { return platform::ToUpperAscii(facts_.BillOf(id).number); },
        EqualTexts::kTogether);
  } else if (shape_.order == DetailOrder::kBillType) {
    orders = RanksOf(
        moves_, orderOf, [this](std::int64_t id) { return facts_.ClassName(static_cast<std::int32_t>(id)); },
        EqualTexts::kTogether);
  }
  const auto rankIn = [](const Ranks& ranks, std::int64_t id) { return ranks.empty() ? id : ranks.at(id); };
  std::vector<RowOrder> sorted(moves_.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const std::int64_t rank = rankIn(orders, orderOf(moves_[i].move));
    sorted[i] = {
        .group = rankIn(groups, groupOf(moves_[i].move)), .rank = shape_.descending ? -rank : rank, .row = i};
  }
  std::ranges::sort(sorted);
  return sorted;
}

// Writes what waits, with a sum behind every group.
void MovementDetail::WriteMoves() {
  const std::vector<RowOrder> sorted = SortedMoves();
  Totals group;
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const auto& [item, move, balance] = moves_[sorted[i].row];
    fields_.AddMove(*item, move, shape_.byItem ? std::optional(balance) : std::nullopt);
    if (shape_.group == DetailGroup::kNone) continue;
    group.Add(move);
    if (i + 1 < sorted.size() && sorted[i + 1].group == sorted[i].group) continue;
    const std::string name = GroupNameOf(move);
    fields_.AddSum({.caption = name.empty() ? "小计" : name + " 小计",
                    .sumSort = kGroupSort,
                    .item = shape_.byItem ? item : nullptr,
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
