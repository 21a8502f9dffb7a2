#include "benches/platform/LedgerRows.h"

#include <random>

namespace bench {
namespace {

using platform::Currency;
using platform::Date;

LedgerRow RowOf(std::int32_t number, std::mt19937& random) {
  constexpr const char* kKinds[] = {"外购入库", "产品入库", "销售出库", "生产领料", "期初结存", "本期合计"};
  constexpr const char* kProperties[] = {"", "红色/大号", "蓝色/中号", "白色/小号"};
  constexpr const char* kNotes[] = {"", "", "", "月末盘点调整", "急件，客户自提"};
  LedgerRow row;
  row.year = static_cast<std::int16_t>(2024 + number / 3000);
  row.period = static_cast<std::int16_t>(number / 250 % 12 + 1);
  row.periodName = std::to_string(row.year) + "." + std::to_string(row.period);
  row.id = number / 3;
  row.entryId = number % 3 + 1;
  row.date = Date::Of(row.year, row.period, static_cast<int>(random() % 28 + 1));
  row.voucherNo = "记-" + std::to_string(number / 20);
  row.batchNo = random() % 2 == 0 ? "" : "B2024" + std::to_string(random() % 60);
  row.billNo = "WIN" + std::to_string(1000000 + number / 3);
  row.tranTypeName = kKinds[random() % std::size(kKinds)];
  row.classTypeId = 1020001 + static_cast<std::int32_t>(random() % 9);
  row.auxName = kProperties[random() % std::size(kProperties)];
  row.qtyDecimal = 2;
  row.priceDecimal = 4;
  row.inQty = static_cast<double>(random() % 1000);
  row.inPrice = 3.75;
  row.inAmount = Currency::FromDouble(row.inQty * row.inPrice);
  row.outQty = static_cast<double>(random() % 1000);
  row.outPrice = 3.8;
  row.outAmount = Currency::FromDouble(row.outQty * row.outPrice);
  row.balQty = row.inQty - row.outQty;
  row.balPrice = 3.77;
  row.balAmount = row.inAmount - row.outAmount;
  row.note = kNotes[random() % std::size(kNotes)];
  return row;
}

}  // namespace

const std::vector<LedgerRow>& LedgerSource() {
  static const std::vector<LedgerRow> source = [] {
    std::mt19937 random(20240302);
    std::vector<LedgerRow> rows;
    for (std::int32_t number = 0; number < 6000; ++number) rows.push_back(RowOf(number, random));
    return rows;
  }();
  return source;
}

platform::Ref<platform::Recordset> NewLedger() {
  using enum platform::FieldType;
  const platform::Field fields[] = {{"FYear", kInt16},
                                    {"FPeriod", kInt16},
                                    {"FPeriodName", kText, 30},
                                    {"FID", kInt32},
                                    {"FEntryID", kInt32},
                                    {"FDate", kDate},
                                    {"FVoucherNo", kWideText, 50},
                                    {"FBatchNo", kText, 350},
                                    {"FBillNo", kText, 255},
                                    {"FTranTypeName", kWideText, 355},
                                    {"FClassTypeID", kInt32},
                                    {"FAuxName", kWideText, 355},
                                    {"FQtyDecimal", kInt16},
                                    {"FPriceDecimal", kInt16},
                                    {"FInQty", kDouble},
                                    {"FInPrice", kDouble},
                                    {"FInAmount", kCurrency},
                                    {"FInDiff", kCurrency},
                                    {"FOutQty", kDouble},
                                    {"FOutPrice", kDouble},
                                    {"FOutAmount", kCurrency},
                                    {"FOutDiff", kCurrency},
                                    {"FBalQty", kDouble},
                                    {"FBalPrice", kDouble},
                                    {"FBalAmount", kCurrency},
                                    {"FBalDiff", kCurrency},
                                    {"FNote", kText, 355},
                                    {"FSumSort", kInt32}};
  platform::Ref<platform::Recordset> ledger = platform::MakeRef<platform::Recordset>();
  for (const platform::Field& field : fields) ledger->AppendField(field.name, field.type, field.width);
  ledger->Open();
  return ledger;
}

void AppendLedger(platform::Recordset& ledger, std::size_t count) {
  const std::vector<LedgerRow>& source = LedgerSource();
  platform::RowAppender rows(ledger);
  for (std::size_t i = 0, from = 0; i < count; ++i, from = from + 1 == source.size() ? 0 : from + 1) {
    const LedgerRow& row = source[from];
    rows.SetInteger(0, row.year);
    rows.SetInteger(1, row.period);
    rows.SetText(2, row.periodName);
    rows.SetInteger(3, row.id);
    rows.SetInteger(4, row.entryId);
    rows.SetDate(5, row.date);
    rows.SetText(6, row.voucherNo);
    rows.SetText(7, row.batchNo);
    rows.SetText(8, row.billNo);
    rows.SetText(9, row.tranTypeName);
    rows.SetInteger(10, row.classTypeId);
    rows.SetText(11, row.auxName);
    rows.SetInteger(12, row.qtyDecimal);
    rows.SetInteger(13, row.priceDecimal);
    rows.SetDouble(14, row.inQty);
    rows.SetDouble(15, row.inPrice);
    rows.SetCurrency(16, row.inAmount);
    rows.SetCurrency(17, row.inDiff);
    rows.SetDouble(18, row.outQty);
    rows.SetDouble(19, row.outPrice);
    rows.SetCurrency(20, row.outAmount);
    rows.SetCurrency(21, row.outDiff);
    rows.SetDouble(22, row.balQty);
    rows.SetDouble(23, row.balPrice);
    rows.SetCurrency(24, row.balAmount);
    rows.SetCurrency(25, row.balDiff);
    rows.SetText(26, row.note);
    rows.SetInteger(27, row.sumSort);
    rows.CommitRow();
  }
}

}  // namespace bench
