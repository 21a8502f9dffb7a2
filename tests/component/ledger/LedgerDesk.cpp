#include "tests/component/ledger/LedgerDesk.h"

#include "platform/rows/RowAppender.h"

namespace component {
namespace {

using platform::Currency;
using platform::Date;
using platform::Dictionary;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::RowAppender;
using platform::Variant;

Ref<Recordset> NewRows(std::initializer_list<std::pair<const char*, FieldType>> fields) {
  Ref<Recordset> rows = MakeRef<Recordset>();
  for (const auto& [name, type] : fields) rows->AppendField(name, type);
  rows->Open();
  return rows;
}

Ref<Recordset> Balances(const std::string& side) {
  Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FItemID", FieldType::kInt32);
  rows->AppendField("FBatchNo", FieldType::kText);
  rows->AppendField("F" + side + "Qty", FieldType::kNumeric);
  rows->AppendField("F" + side + "Amount", FieldType::kCurrency);
  rows->AppendField("F" + side + "Diff", FieldType::kCurrency);
  rows->Open();
  return rows;
}

void Add(Recordset& target, std::int32_t item, const std::vector<BalanceSpec>& specs) {
  RowAppender row(target);
  for (const BalanceSpec& each : specs) {
    row.SetInteger(0, item);
    row.SetText(1, each.batch);
    row.SetDouble(2, each.quantity);
    row.SetCurrency(3, Currency::FromDouble(each.amount));
    row.SetCurrency(4, Currency::FromDouble(each.diff));
    row.CommitRow();
  }
}

Ref<Recordset> Movements() {
  return NewRows({{"FItemID", FieldType::kInt32},
                  {"FInterID", FieldType::kInt32},
                  {"FEntryID", FieldType::kInt32},
                  {"FDate", FieldType::kDate},
                  {"FVoucherNo", FieldType::kText},
                  {"FBatchNo", FieldType::kText},
                  {"FNote", FieldType::kText},
                  {"FTranTypeName", FieldType::kText},
                  {"FAuxName", FieldType::kText},
                  {"FBillNo", FieldType::kText},
                  {"FTranType", FieldType::kInt32},
                  {"FInQty", FieldType::kDouble},
                  {"FInPrice", FieldType::kDouble},
                  {"FInAmount", FieldType::kCurrency},
                  {"FInDiff", FieldType::kCurrency},
                  {"FOutQty", FieldType::kDouble},
                  {"FOutPrice", FieldType::kDouble},
                  {"FOutAmount", FieldType::kCurrency},
                  {"FOutDiff", FieldType::kCurrency}});
}

double Price(double quantity, double amount) { return quantity == 0 ? 0 : amount / quantity; }

void Add(Recordset& target, std::int32_t item, std::int16_t year, std::int16_t period,
         const std::vector<MovementSpec>& specs) {
  RowAppender row(target);
  std::int32_t id = 0;
  for (const MovementSpec& each : specs) {
    row.SetInteger(0, item);
    row.SetInteger(1, ++id);
    row.SetInteger(2, 1);
    row.SetDate(3, Date::Of(year, period, 5, 13, 30));
    row.SetText(7, each.inQuantity != 0 ? "采购收货" : "销售发货");
    row.SetInteger(10, 1020002);
    row.SetDouble(11, each.inQuantity);
    row.SetDouble(12, Price(each.inQuantity, each.inAmount));
    row.SetCurrency(13, Currency::FromDouble(each.inAmount));
    row.SetCurrency(14, Currency::FromDouble(each.inDiff));
    row.SetDouble(15, each.outQuantity);
    row.SetDouble(16, Price(each.outQuantity, each.outAmount));
    row.SetCurrency(17, Currency::FromDouble(each.outAmount));
    row.SetCurrency(18, Currency::FromDouble(each.outDiff));
    row.CommitRow();
  }
}

Ref<Recordset> Years() {
  return NewRows({{"FItemID", FieldType::kInt32},
                  {"FInQty", FieldType::kDouble},
                  {"FInAmount", FieldType::kCurrency},
                  {"FInDiff", FieldType::kCurrency},
                  {"FOutQty", FieldType::kDouble},
                  {"FOutAmount", FieldType::kCurrency},
                  {"FOutDiff", FieldType::kCurrency}});
}

void Add(Recordset& target, std::int32_t item, const std::vector<YearSpec>& specs) {
  RowAppender row(target);
  for (const YearSpec& each : specs) {
    row.SetInteger(0, item);
    row.SetDouble(1, each.inQuantity);
    row.SetCurrency(2, Currency::FromDouble(each.inAmount));
    row.SetDouble(4, each.outQuantity);
    row.SetCurrency(5, Currency::FromDouble(each.outAmount));
    row.CommitRow();
  }
}

std::string Figures(const Recordset& page, std::size_t row, const std::string& side) {
  auto number = [&](const char* name) {
    return platform::NumberToText(page.DoubleAt(page.FieldIndex("F" + side + name), row));
  };
  return number("Qty") + "@" + number("Price") + "=" + number("Amount");
}

}  // namespace

Ref<Recordset> ItemList(std::int32_t count) {
  Ref<Recordset> items = NewRows({{"FItemID", FieldType::kInt32},
                                  {"FNumber", FieldType::kText},
                                  {"FShortNumber", FieldType::kText},
                                  {"FName", FieldType::kText},
                                  {"FModel", FieldType::kText},
                                  {"FTrackName", FieldType::kText},
                                  {"FTrack", FieldType::kInt32},
                                  {"FBatchManager", FieldType::kBoolean},
                                  {"FQtyDecimal", FieldType::kInt16},
                                  {"FPriceDecimal", FieldType::kInt16},
                                  {"FUnitID", FieldType::kText},
                                  {"FClassName", FieldType::kText},
                                  {"FHighLimit", FieldType::kDouble},
                                  {"FLowLimit", FieldType::kDouble},
                                  {"FErpName", FieldType::kText},
                                  {"FAcctNumber", FieldType::kText}});
  RowAppender row(*items);
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    row.SetInteger(0, i);
    row.SetText(1, "01." + number);
    row.SetText(2, number);
    row.SetText(3, "商品" + number);
    row.SetText(4, "M" + number);
    row.SetText(5, "移动加权平均");
    row.SetInteger(6, 78);
    row.SetBoolean(7, false);
    row.SetInteger(8, i);
    row.SetInteger(9, 4);
    row.SetText(10, "个");
    row.SetText(11, "食品");
    row.SetDouble(12, 60);
    row.SetDouble(13, 20);
    row.SetText(14, "外购");
    row.SetText(15, "1405");
    row.CommitRow();
  }
  return items;
}

LedgerTest::LedgerTest() {
  desk.On("TOVMStockRpt.Data10402", "GetPerioddata",
          [this](std::span<Variant> arguments) { return Answer(arguments); });
  report = MakeRef<Rpt10402>();
  report->Initialize();
}

Variant LedgerTest::Answer(std::span<Variant> arguments) {
  const std::int32_t asked = platform::ToInt32(arguments[1]);
  const std::int16_t year = platform::ToInt16(arguments[2]);
  const std::int16_t period = platform::ToInt16(arguments[3]);
  fetches.push_back(std::to_string(asked) + " " + std::to_string(year) + " " + std::to_string(period));
  const Ref<Recordset> opening = Balances("Beg");
  const Ref<Recordset> happened = Movements();
  const Ref<Recordset> closing = Balances("End");
  const Ref<Recordset> years = Years();
  const Ref<Recordset> starts = Years();
  for (const auto& [key, spec] : book) {
    const auto& [item, when] = key;
    if (when != year * 100 + period || (asked != 0 && item != asked)) continue;
    Add(*opening, item, spec.opening);
    Add(*happened, item, year, period, spec.happened);
    Add(*closing, item, spec.closing);
    Add(*years, item, spec.year);
    Add(*starts, item, spec.yearStart);
  }
  const bool isLast = period == 12;
  const Date past = isLast ? Date::Of(year + 1, 1, 1) : Date::Of(year, period + 1, 1);
  return Keys({{"rsBegBal", opening},
               {"rsHappen", happened},
               {"rsEndBal", closing},
               {"rsYtdBal", years},
               {"rsYtdBals", starts},
               {"BDate", Date::Of(year, period, 1)},
               {"EDate", past}});
}

Ref<Dictionary> LedgerTest::Months(std::int16_t beginYear, std::int16_t beginPeriod, std::int16_t endYear,
                                   std::int16_t endPeriod, std::int32_t showNoHappen) {
  return Keys({{"BDate", "B"},
               {"EDate", "E"},
               {"BYear", beginYear},
               {"BPeriod", beginPeriod},
               {"EYear", endYear},
               {"EPeriod", endPeriod},
               {"ShowNoHappen", showNoHappen}});
}

void LedgerTest::Open(std::int32_t count, const Ref<Dictionary>& filter) {
  desk.Answer("TOVMStockRpt.Data10402", "GetItems", ItemList(count));
  report->SetFilter(filter);
  report->GetReportData();
}

std::vector<std::string> LedgerTest::Lines(const Recordset& page) {
  std::vector<std::string> lines;
  for (std::size_t row = 0; row < page.ViewCount(); ++row) {
    lines.push_back(std::string(page.TextAt(page.FieldIndex("FPeriodName"), row)) + " " +
                    std::string(page.TextAt(page.FieldIndex("FTranTypeName"), row)) + " in " +
                    Figures(page, row, "In") + " out " + Figures(page, row, "Out") + " bal " +
                    Figures(page, row, "Bal"));
  }
  return lines;
}

std::vector<std::string> LedgerTest::Breaks() const {
  std::vector<std::string> breaks;
  const Ref<Recordset> rows = report->RowBreakRs();
  for (std::size_t i = 0; rows && i < rows->ViewCount(); ++i) {
    breaks.push_back(std::to_string(rows->IntegerAt(0, i)));
  }
  return breaks;
}

}  // namespace component
