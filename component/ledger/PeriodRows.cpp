#include "component/ledger/PeriodRows.h"

namespace component {

void PeriodRows::Begin(std::int16_t year, std::int16_t period, LedgerDecimals decimals) {
  year_ = year;
  period_ = period;
  decimals_ = decimals;
  running_ = {};
  totals_ = {};
}

void PeriodRows::Add(LedgerRow& row) {
  row.qtyDecimal = decimals_.quantity;
  row.priceDecimal = decimals_.price;
  add_(row);
}

void PeriodRows::AddEmptyOpening() {
  LedgerRow row = SummaryRow(LedgerRowKind::kOpening, year_, period_, data_.firstDay);
  Add(row);
}

void PeriodRows::AddOpening(std::size_t position) {
  const LedgerBalance& opening = data_.Opening(position);
  LedgerRow row = SummaryRow(LedgerRowKind::kOpening, year_, period_, data_.firstDay);
  row.batchNo = opening.batchNo;
  row.balance = opening.figures;
  Add(row);
  LedgerFigures brought = opening.figures;
  if (!withDiff_) brought.diff = {};
  running_.Open(brought);
}

void PeriodRows::AddMovement(std::size_t position) {
  LedgerRow& row = data_.Movement(position, withDiff_);
  running_.Move(row.in, row.out);
  totals_.Add(row.in, row.out);
  row.year = year_;
  row.period = period_;
  row.balance = running_.Figures();
  Add(row);
}

void PeriodRows::AddPeriodTotal(const LedgerFigures& balance) {
  LedgerRow row = SummaryRow(LedgerRowKind::kPeriodTotal, year_, period_, data_.lastDay);
  row.in = totals_.In();
  row.out = totals_.Out();
  row.balance = balance;
  Add(row);
}

void PeriodRows::AddClosing(const platform::RowText& batchNo, const LedgerFigures& figures) {
  LedgerRow row = SummaryRow(LedgerRowKind::kClosing, year_, period_, data_.lastDay);
  row.batchNo = batchNo;
  row.balance = figures;
  Add(row);
}

}  // namespace component
