#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "component/ledger/Rpt10402.h"
#include "tests/component/ComponentTest.h"

namespace component {

// A balance or a movement as a test writes it: figures as plain numbers, amounts with two decimals.
struct BalanceSpec {
  double quantity = 0;
  double amount = 0;
  std::string batch;
  double diff = 0;
};
struct MovementSpec {
  double inQuantity = 0;
  double inAmount = 0;
  double outQuantity = 0;
  double outAmount = 0;
  double inDiff = 0;
  double outDiff = 0;
};
struct YearSpec {
  double inQuantity = 0;
  double inAmount = 0;
  double outQuantity = 0;
  double outAmount = 0;
};
struct PeriodSpec {
  std::vector<BalanceSpec> opening;
  std::vector<MovementSpec> happened;
  std::vector<BalanceSpec> closing;
  std::vector<YearSpec> year;       // "rsYtdBal"
  std::vector<YearSpec> yearStart;  // "rsYtdBals"
};
// By item and year × 100 + period; a period that is not there is empty.
using BookSpec = std::map<std::pair<std::int32_t, std::int32_t>, PeriodSpec>;

platform::Ref<platform::Recordset> ItemList(std::int32_t count);

// A report on a scripted data component. Fetches are noted as "item year period".
class LedgerTest : public ComponentTest {
 protected:
  LedgerTest();

  // Fetches the items 1 to `count` and shows the first page.
  void Open(std::int32_t count, const platform::Ref<platform::Dictionary>& filter);
  static platform::Ref<platform::Dictionary> Months(std::int16_t beginYear, std::int16_t beginPeriod,
                                                    std::int16_t endYear, std::int16_t endPeriod,
                                                    std::int32_t showNoHappen = 0);
  platform::Ref<platform::Recordset> Page() const { return report->Rows().AsRef<platform::Recordset>(); }
  // A line a row: "2024.3 期初结存 in 0@0=0 out 0@0=0 bal 10@5=50".
  static std::vector<std::string> Lines(const platform::Recordset& page);
  std::vector<std::string> Lines() const { return Lines(*Page()); }
  std::vector<std::string> Breaks() const;
  std::string Result() const { return Spell(report->Result()); }

  BookSpec book;
  std::vector<std::string> fetches;
  platform::Ref<Rpt10402> report;

 private:
  platform::Variant Answer(std::span<platform::Variant> arguments);
};

}  // namespace component
