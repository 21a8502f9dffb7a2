#include "books/reports/ledger/Data10402.h"

#include <algorithm>

#include "books/reports/ReportSql.h"
#include "books/reports/ledger/LedgerReader.h"
#include "books/schema/Codes.h"
#include "platform/rows/RowAppender.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::reports {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using services::Kept;
using services::RowField;

constexpr RowField kItemFields[] = {
    {"FItemID", Kept::kInteger},     {"FNumber", Kept::kText},
    {"FShortNumber", Kept::kText},   {"FName", Kept::kText},
    {"FModel", Kept::kText},         {"FTrackName", Kept::kText},
    {"FTrack", Kept::kInteger},      {"FBatchManager", Kept::kBoolean},
    {"FQtyDecimal", Kept::kInteger}, {"FPriceDecimal", Kept::kInteger},
    {"FUnitID", Kept::kText},        {"FClassName", Kept::kText},
    {"FHighLimit", Kept::kQuantity}, {"FLowLimit", Kept::kQuantity},
    {"FErpName", Kept::kText},       {"FAcctNumber", Kept::kText},
};

constexpr std::string_view kItemSql = R"sql(
SELECT t0.FItemID, t0.FNumber, t0.FShortNumber, t0.FName, i.model, v.name, i.valuation, i.batch_managed,
       i.quantity_decimals, i.price_decimals, u.name, COALESCE(c.name, ''), i.max_quantity, i.min_quantity,
       '', ''
FROM t_Item t0
JOIN item i ON i.id = t0.FItemID
JOIN valuation_method v ON v.id = i.valuation
JOIN unit u ON u.id = i.unit_id
LEFT JOIN base_data c ON c.id = t0.FParentID
WHERE {items} AND {batches} AND {balances}
ORDER BY {order}
)sql";

constexpr RowField kYearFields[] = {{"FItemID", Kept::kInteger},  {"FInQty", Kept::kQuantity},
                                    {"FInAmount", Kept::kAmount}, {"FInDiff", Kept::kAmount},
                                    {"FOutQty", Kept::kQuantity}, {"FOutAmount", Kept::kAmount},
                                    {"FOutDiff", Kept::kAmount}};

std::string ChosenWarehouses(const LedgerChoice& choice, std::string_view column) {
  if (choice.everyWarehouse) return "1";
  std::string list;
  for (const std::int64_t id : choice.warehouses) list += (list.empty() ? "" : ", ") + std::to_string(id);
  return std::string(column) + " IN (" + list + ")";
}

Conditions BatchCondition(const LedgerChoice& choice) {
  Conditions batches;
  if (!choice.HasBatchRange()) return batches;
  Conditions range;
  range.AddRange("x.number", choice.batches);
  batches.Add({.sql = "EXISTS (SELECT 1 FROM batch x WHERE x.item_id = t0.FItemID AND " + range.Sql() + ")",
               .parameters = range.Parameters()});
  return batches;
}

Conditions BalanceCondition(const LedgerChoice& choice) {
  Conditions balances;
  if (!choice.leavesOutZero || choice.lastPeriod == 0) return balances;
  balances.Add({.sql = "(SELECT COALESCE(SUM(x.quantity) <> 0 OR SUM(x.amount) <> 0, 0) FROM balance x "
                       "WHERE x.item_id = t0.FItemID AND x.period = "
                       "MIN(CAST(? AS INTEGER), (SELECT balances_until FROM book_state)) AND " +
                       ChosenWarehouses(choice, "x.warehouse_id") + ")",
                .parameters = {choice.lastPeriod}});
  return balances;
}

// The read-ahead: an item's ledger over the rest of its range, handed out period after period. It goes on
// only while the same filter asks for the same item's next period; anything else is a new page, read anew.
class LedgerAhead {
 public:
  explicit LedgerAhead(services::Store& store) : reader_(store) {}

  LedgerReader& Reader() { return reader_; }

  void BeginOutput() {
    next_ = 0;
    reader_.BeginOutput();
  }

  Ref<Dictionary> Serve(std::int32_t itemId, std::int32_t period, const Variant& filter) {
    const bool goesOn = itemId == itemId_ && period == next_ && period <= last_ && mark_.Fits(filter);
    if (!goesOn) ReadAhead(itemId, period, filter);
    const auto at = static_cast<std::size_t>(period - first_);
    next_ = period + 1;
    const PeriodDays days = reader_.DaysOf(period);
    const Ref<Dictionary> answer = FreeAnswer();
    answer->Set("rsBegBal", ledger_.opening.Of(at));
    answer->Set("rsHappen", ledger_.happened.Of(at));
    answer->Set("rsEndBal", ledger_.closing.Of(at));
    answer->Set("BDate", days.first);
    answer->Set("EDate", days.past);
    return answer;
  }

 private:
  // The last answer once more when its caller has let go of it, as it was made; otherwise a new one.
  Ref<Dictionary> FreeAnswer() {
    constexpr std::int32_t kKeys = 5;
    const bool isFree = answer_ && answer_->Holders() == 1 && answer_->Count() == kKeys;
    if (!isFree) answer_ = MakeRef<Dictionary>();
    return answer_;
  }
  void ReadAhead(std::int32_t itemId, std::int32_t period, const Variant& filter) {
    next_ = 0;
    // A range far beyond the book, as dates may give it, is read part by part.
    constexpr std::int32_t kMost = 240;
    const std::int32_t last = std::clamp(LastPeriodOf(filter), period, period + kMost);
    reader_.Read(itemId, period, last, filter, ledger_);
    mark_.Take(filter);
    itemId_ = itemId;
    first_ = period;
    last_ = last;
  }

  LedgerReader reader_;
  LedgerFilterMark mark_;
  ItemLedger ledger_;
  Ref<Dictionary> answer_;
  std::int32_t itemId_ = 0;
  std::int32_t first_ = 0;
  std::int32_t last_ = -1;
  std::int32_t next_ = 0;  // the period that may be asked for next; 0 for none
};

// The year's movements before a period, item by item.
Ref<Recordset> YearBefore(const std::vector<std::int32_t>& items, std::int32_t period, const Variant& filter,
                          LedgerReader& reader) {
  Ref<Recordset> rows = services::NewRows(kYearFields);
  const std::int32_t first = period - schema::NumberOf(period) + 1;
  if (first == period) return rows;
  platform::RowAppender row(*rows);
  for (const std::int32_t item : items) {
    ItemLedger ledger;
    reader.Read(item, first, period - 1, filter, ledger);
    const Recordset& moved = *ledger.happened.rows;
    if (moved.ViewCount() == 0) continue;
    row.SetInteger(0, item);
    std::size_t field = 1;
    for (const std::string side : {"FIn", "FOut"}) {
      const std::size_t quantity = moved.FieldIndex(side + "Qty");
      const std::size_t amount = moved.FieldIndex(side + "Amount");
      database::Quantity quantities;
      platform::Currency amounts;
      for (std::size_t i = 0; i < moved.ViewCount(); ++i) {
        quantities += database::Quantity::FromDouble(moved.DoubleAt(quantity, i));
        amounts += moved.CurrencyAt(amount, i);
      }
      row.SetDouble(field++, quantities.ToDouble());
      row.SetCurrency(field++, amounts);
      row.SetCurrency(field++, platform::Currency());
    }
    row.CommitRow();
  }
  return rows;
}

std::vector<std::int32_t> ItemsOf(services::Store& store, const std::string& condition) {
  const ItemCondition asked = ReadItemCondition(condition, "v3");
  Conditions conditions;
  conditions.Add(asked.where);
  database::Statement rows =
      store.Reading().Prepare("SELECT v3.FItemID FROM t_Item v3 JOIN item i ON i.id = v3.FItemID WHERE " +
                              conditions.Sql() + " ORDER BY v3.FNumber, v3.FItemID");
  services::BindAll(rows, conditions.Parameters());
  std::vector<std::int32_t> items;
  while (rows.Step()) items.push_back(rows.Int32(0));
  return items;
}

Ref<Dictionary> ServeAll(services::Store& store, std::int32_t period, const std::string& condition,
                         const Variant& filter) {
  LedgerReader& reader = store.Kept<LedgerAhead>().Reader();
  const std::vector<std::int32_t> items = ItemsOf(store, condition);
  const ItemLedger ledger = reader.ReadAll(items, period, filter);
  const PeriodDays days = reader.DaysOf(period);
  Ref<Dictionary> answer = MakeRef<Dictionary>();
  answer->Set("rsBegBal", ledger.opening.rows);
  answer->Set("rsHappen", ledger.happened.rows);
  answer->Set("rsEndBal", ledger.closing.rows);
  answer->Set("BDate", days.first);
  answer->Set("EDate", days.past);
  answer->Set("rsYtdBal", YearBefore(items, period, filter, reader));
  answer->Set("rsYtdBals", services::NewRows(kYearFields));
  if (const Ref<Dictionary> keys = filter.AsRef<Dictionary>(); keys && !keys->Exists("startYear")) {
    const std::string year = store.Profile("IC", "StartYear").value_or("0");
    keys->Set("startYear", static_cast<std::int32_t>(platform::LeadingNumber(year)));
  }
  return answer;
}

}  // namespace

Ref<Recordset> Data10402::GetItems(const std::string& /*props*/, const std::string& condition,
                                   Variant& filter) {
  store_->Kept<LedgerAhead>().BeginOutput();
  const LedgerChoice choice(*store_, filter);
  const ItemCondition asked = ReadItemCondition(condition, "t0");
  Conditions items;
  items.Add(asked.where);
  const Slot slots[] = {
      {"items", items},
      {"batches", BatchCondition(choice)},
      {"balances", BalanceCondition(choice)},
      {"order", (asked.order.empty() ? std::string("t0.FNumber") : asked.order) + ", t0.FItemID"}};
  return store_->Fetch(Compose(kItemSql, slots), kItemFields);
}

Ref<Dictionary> Data10402::GetPerioddata(const std::string& /*props*/, std::int32_t& itemId,
                                         std::int16_t& year, std::int16_t& period,
                                         const std::string& condition, Variant& filter) {
  if (year < 100 || year > 9998 || period < 1 || period > 12) {
    throw platform::Error(
        platform::ErrorNumber::kBadArgument, std::string(kClassName),
        "没有这样的会计期间：" + std::to_string(year) + "年第" + std::to_string(period) + "期");
  }
  const std::int32_t number = schema::PeriodOf(year, period);
  if (itemId == 0) return ServeAll(*store_, number, condition, filter);
  return store_->Kept<LedgerAhead>().Serve(itemId, number, filter);
}

}  // namespace books::reports
