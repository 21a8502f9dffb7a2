#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "component/ledger/LedgerWalk.h"
#include "platform/rows/Dictionary.h"

namespace component {

// The pages of all items from fetches that bring a period for every item at once. A fuller ledger than the
// walk over one item: cost differences roll, the period's total shows the balance, and every period with
// movements has a year-to-date row that reaches back to the start of the year. A period without a row of an
// item is left out, whatever the filter says.
class LedgerBatch {
 public:
  using Fetch = std::function<platform::Variant(std::int16_t year, std::int16_t period)>;

  struct Request {
    LedgerRange range;
    platform::Ref<platform::Dictionary> filter;
    platform::Ref<platform::Recordset> items;  // walked; the caller's own cursor stays if it is a clone
    bool showNoHappen = false;
    std::string captionWord;  // what the titles call an item
    std::string numberField;
    LedgerDecimals listDecimals;  // those of the list's current item, which year-to-date rows show
  };

  LedgerBatch(const Request& request, PeriodData& data, LedgerProgress progress, LedgerPage& page,
              platform::Recordset& breaks, Fetch fetch);

  // All periods of the first item, then of the next; everything is fetched first.
  void RunByItem();
  // All items of the first period, then of the next.
  void RunByPeriod();

 private:
  enum Kind : std::uint8_t { kOpening, kHappened, kClosing, kYearToDate, kYearToDateStart, kKinds };
  using Tables = std::array<platform::Ref<platform::Recordset>, kKinds>;

  void EachPeriod(const std::function<void(std::int16_t year, std::int16_t period)>& visit) const;
  // What one fetch answers; the year-to-date start is read in the start year only.
  Tables TablesOf(const platform::Variant& answer, std::int16_t year) const;
  bool IsStartYear(std::int16_t year, const char* key) const;
  void AddItemPeriod(const Tables& tables, const std::string& condition, std::int16_t year,
                     std::int16_t period);
  void AddRows(std::int16_t year, std::int16_t period);
  void AddYearToDate(const Tables& tables, std::int16_t year, std::int16_t period);
  void AddBreak();
  LedgerTitles Titles() const;
  std::string ItemText(std::string_view field) const;
  LedgerDecimals Decimals() const;

  const Request& request_;
  PeriodData& data_;
  LedgerProgress progress_;
  LedgerPage& page_;
  platform::Recordset& breaks_;
  Fetch fetch_;
  LedgerTitles titles_;
  PeriodRows rows_;
};

}  // namespace component
