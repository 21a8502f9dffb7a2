// Both orders fetch a period for all items at once and cut an item's rows out with a filter. They differ in
// their loops and in where a period's dates come from; what they do for one item and period is the same.
#include "component/ledger/LedgerBatch.h"

#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

// The year's figures up to a period, as the server has them in the first row of a recordset, if it has one.
void AddBase(LedgerFigures& in, LedgerFigures& out, const Ref<Recordset>& base) {
  if (!base || base->RecordCount() == 0) return;
  const std::size_t row = base->RowAt(0);
  auto add = [&](LedgerFigures& side, const std::string& name) {
    side.quantity += base->DoubleAt(base->FieldIndex(name + "Qty"), row);
    side.amount += base->CurrencyAt(base->FieldIndex(name + "Amount"), row);
    side.diff += base->CurrencyAt(base->FieldIndex(name + "Diff"), row);
  };
  add(in, "FIn");
  add(out, "FOut");
}

void SetItemFilter(const Ref<Recordset>& table, const std::string& condition) {
  if (table) table->SetFilter(condition);
}

}  // namespace

LedgerBatch::LedgerBatch(const Request& request, PeriodData& data, LedgerProgress progress, LedgerPage& page,
                         Recordset& breaks, Fetch fetch)
    : request_(request),
      data_(data),
      progress_(std::move(progress)),
      page_(page),
      breaks_(breaks),
      fetch_(std::move(fetch)),
      rows_(data, PeriodRows::Differences::kRolled,
            [this](const LedgerRow& row) { page_.AddLedgerRowTitled(row, titles_); }) {}

void LedgerBatch::EachPeriod(const std::function<void(std::int16_t year, std::int16_t period)>& visit) const {
  for (LedgerPeriod at(request_.range); !at.IsPastEnd(); at.NextYear()) {
    do {
      visit(at.Year(), at.Period());
    } while (at.NextInYear());
  }
}

bool LedgerBatch::IsStartYear(std::int16_t year, const char* key) const {
  const Variant start = request_.filter->Value(key);
  return !start.IsEmpty() && platform::ToInt32(start) == year;
}

LedgerBatch::Tables LedgerBatch::TablesOf(const Variant& answer, std::int16_t year) const {
  const KeyedAnswer keyed(answer);
  Tables tables = {keyed.Rows("rsBegBal"), keyed.Rows("rsHappen"), keyed.Rows("rsEndBal"),
                   keyed.Rows("rsYtdBal"), nullptr};
  if (IsStartYear(year, "StartYear")) tables[kYearToDateStart] = keyed.Rows("rsYtdBals");
  return tables;
}

void LedgerBatch::RunByItem() {
  Tables gathered;
  // By the number of the period alone: a range over two years keeps the later year's dates.
  const Ref<Dictionary> dates = MakeRef<Dictionary>();
  EachPeriod([&](std::int16_t year, std::int16_t period) {
    const Variant answer = fetch_(year, period);
    const Tables fetched = TablesOf(answer, year);
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
      if (fetched[kind]) MergeRecord(gathered[kind], *fetched[kind], year, period);
    }
    for (const char* key : {"BDate", "EDate"}) {
      dates->Set(key + std::to_string(period), KeyedAnswer(answer).Value(key));
    }
  });
  if (request_.items->RecordCount() == 0) return;
  for (request_.items->MoveFirst(); !request_.items->AtEnd(); request_.items->MoveNext()) {
    progress_.Message(ResString("正在计算所选期间物料") + ItemText("FName") + ResString("..."));
    EachPeriod([&](std::int16_t year, std::int16_t period) {
      const std::string number = std::to_string(period);
      data_.firstDay = platform::ToDate(dates->Value("BDate" + number));
      data_.lastDay = platform::ToDate(dates->Value("EDate" + number)).AddDays(-1);
      AddItemPeriod(
          gathered,
          "FitemID=" + ItemText("FItemID") + " AND FYear=" + std::to_string(year) + " AND FPeriod=" + number,
          year, period);
    });
    AddBreak();
  }
}

void LedgerBatch::RunByPeriod() {
  EachPeriod([&](std::int16_t year, std::int16_t period) {
    const Variant answer = fetch_(year, period);
    const Tables tables = TablesOf(answer, year);
    data_.firstDay = platform::ToDate(KeyedAnswer(answer).Value("BDate"));
    data_.lastDay = platform::ToDate(KeyedAnswer(answer).Value("EDate")).AddDays(-1);
    if (request_.items->RecordCount() == 0) return;
    for (request_.items->MoveFirst(); !request_.items->AtEnd(); request_.items->MoveNext()) {
      progress_.BeginItem(year, period, ItemText("FName"));
      AddItemPeriod(tables, "FitemID=" + ItemText("FItemID"), year, period);
      AddBreak();
    }
  });
}

void LedgerBatch::AddItemPeriod(const Tables& tables, const std::string& condition, std::int16_t year,
                                std::int16_t period) {
  const bool isStartYear = IsStartYear(year, "StartYear");
  std::size_t rowCount = 0;
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    if (kind == kYearToDateStart && !isStartYear) continue;
    SetItemFilter(tables[kind], condition);
    if (tables[kind]) rowCount += tables[kind]->ViewCount();
  }
  titles_ = Titles();
  if (rowCount == 0) return;
  data_.opening.Take(tables[kOpening]);
  data_.happened.Take(tables[kHappened]);
  data_.differences.Take(tables[kHappened]);
  data_.closing.Take(tables[kClosing]);
  AddRows(year, period);
  if (data_.happened.Count() > 0) AddYearToDate(tables, year, period);
}

void LedgerBatch::AddRows(std::int16_t year, std::int16_t period) {
  rows_.Begin(year, period, Decimals());
  if (data_.opening.Count() == 0 && request_.showNoHappen) rows_.AddEmptyOpening();
  for (std::size_t i = 0; i < data_.opening.Count(); ++i) rows_.AddOpening(i);
  for (std::size_t i = 0; i < data_.happened.Count(); ++i) rows_.AddMovement(i);
  if (data_.happened.Count() > 0) {
    LedgerFigures balance = rows_.Balance();
    balance.price = SafePrice(balance.quantity, balance.amount);
    rows_.AddPeriodTotal(balance);
  }
  if (data_.closing.Count() == 0 && request_.showNoHappen) rows_.AddClosing({}, {});
  for (std::size_t i = 0; i < data_.closing.Count(); ++i) {
    const LedgerBalance& closing = data_.Closing(i);
    rows_.AddClosing(closing.batchNo, closing.figures);
  }
}

// The whole start year counts as the first period ("第一期"), any other as a normal one ("正常期"): in the
// start year the server's figures from before the start are added too. The two kinds take different roads to
// the page, and so their titles may differ.
void LedgerBatch::AddYearToDate(const Tables& tables, std::int16_t year, std::int16_t period) {
  LedgerFigures in = rows_.Totals().In();
  LedgerFigures out = rows_.Totals().Out();
  AddBase(in, out, tables[kYearToDate]);
  const bool isFirstPeriod = IsStartYear(year, "startYear");
  if (isFirstPeriod) AddBase(in, out, tables[kYearToDateStart]);
  LedgerRow row = SummaryRow(LedgerRowKind::kYearToDate, year, period, data_.lastDay);
  row.qtyDecimal = request_.listDecimals.quantity;
  row.priceDecimal = request_.listDecimals.price;
  row.in = in;
  row.in.price = SafePrice(in.quantity, in.amount);
  row.out = out;
  row.out.price = SafePrice(out.quantity, out.amount);
  if (isFirstPeriod) {
    page_.AddLedgerRowTitled(row, titles_);
  } else {
    page_.AddLedgerRow(row);
  }
}

void LedgerBatch::AddBreak() {
  if (page_.RowCount() > 0) {
    breaks_.AddNew();
    breaks_.SetInteger(0, page_.RowCount());
    breaks_.Update();
  }
  progress_.Value(request_.items->AbsolutePosition());
}

std::string LedgerBatch::ItemText(std::string_view field) const {
  const Variant value = request_.items->Value(field);
  return value.IsNull() ? std::string() : platform::ToText(value);
}

LedgerDecimals LedgerBatch::Decimals() const {
  auto read = [this](std::string_view field) {
    const Variant value = request_.items->Value(field);
    return value.IsNull() ? std::int16_t{0} : platform::ToInt16(value);
  };
  return {.quantity = read("FQtyDecimal"), .price = read("FPriceDecimal")};
}

LedgerTitles LedgerBatch::Titles() const {
  auto period = [this](std::string_view caption, const std::string& side) {
    return ResString(caption) + platform::ToText(request_.filter->Value(side + "Year")) + ResString("年 第") +
           platform::ToText(request_.filter->Value(side + "Period")) + ResString("期");
  };
  const std::string& word = request_.captionWord;
  return {period("起始期间：", "B"),
          period("截止期间：", "E"),
          word + ResString("名称：") + ItemText("FName") + "(" + ItemText(request_.numberField) + ")",
          ResString("计量单位：") + ItemText("FUnitID"),
          ResString("计价方法：") + ItemText("FTrackName"),
          word + ResString("类别：") + ItemText("FClassName"),
          ResString("最高存量：") + ItemText("FHighLimit"),
          ResString("最低存量：") + ItemText("FLowLimit"),
          ResString("规格型号：") + ItemText("FModel"),
          word + ResString("属性：") + ItemText("FErpName"),
          ResString("存货科目代码：") + ItemText("FAcctNumber")};
}

}  // namespace component
