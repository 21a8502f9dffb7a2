#include "component/ledger/LedgerRow.h"

namespace component {
namespace {

struct KindFacts {
  std::int32_t id;
  std::string_view caption;
};

constexpr KindFacts FactsOf(LedgerRowKind kind) {
  switch (kind) {
    case LedgerRowKind::kMovement:
      break;
    case LedgerRowKind::kOpening:
      return {-1, "期初结存"};
    case LedgerRowKind::kPeriodTotal:
      return {-2, "本期合计"};
    case LedgerRowKind::kClosing:
      return {-3, "期末结存"};
    case LedgerRowKind::kYearTotal:
      return {-2, "本年累计"};
    case LedgerRowKind::kYearToDate:
      return {-4, "本年累计"};
  }
  return {};
}

}  // namespace

std::string_view CaptionOf(LedgerRowKind kind) { return FactsOf(kind).caption; }

LedgerRow SummaryRow(LedgerRowKind kind, std::int16_t year, std::int16_t period, platform::Date date) {
  LedgerRow row;
  row.kind = kind;
  row.year = year;
  row.period = period;
  row.id = FactsOf(kind).id;
  row.date = date;
  return row;
}

}  // namespace component
