#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 库存商品明细账: the list of items, and what a period did to one item or to all of them.
//
// - Filter keys: BStockNumber, EStockNumber, BBatchNo, EBatchNo, DataRightWhere (on v4, the warehouse),
// BYear,
//   BPeriod, EYear, EPeriod, Balance. Only what lies and moves in the selected warehouses that the user may
//   see, and in the selected batches, counts.
// - Opening and closing come from the stored closing balances: one row a batch, one without a number for all
//   that has none. An opening of 0 is no row; a closing of 0 is one where the batch moved, unless Balance
//   asks to leave zero balances out.
// - Movements are those of audited bills, in the order of costing. FDate is the bill's day, FNote its
//   explanation, a price is amount ÷ quantity. Cost differences are 0: the book costs at actual cost.
// - EDate is one day past the last day of the period; a period that the book does not know is the calendar
//   month, and has no rows.
//
// An object serves one call. What a first call of an item reads ahead for the rest of its range is kept with
// the book, handed out period after period, and given up at the first call that does not continue it.
class Data10402 final : public platform::Exposed<Data10402> {
 public:
  explicit Data10402(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // The items that `condition` selects (comparisons on t0 and an order, as the report writes it), those with
  // a batch in the range where one is set, and with Balance those alone that have a balance at the end of the
  // range.
  platform::Ref<platform::Recordset> GetItems(const std::string& props, const std::string& condition,
                                              platform::Variant& filter);
  // A dictionary "rsBegBal", "rsHappen", "rsEndBal", "BDate", "EDate". Item 0 asks for all items that
  // `condition` (on v3) selects: every recordset then has FItemID, and "rsYtdBal" holds the year's figures of
  // each item before the period, "rsYtdBals" those before accounting began, of which a book has none. A
  // filter without "startYear" gets it.
  platform::Ref<platform::Dictionary> GetPerioddata(const std::string& props, std::int32_t& itemId,
                                                    std::int16_t& year, std::int16_t& period,
                                                    const std::string& condition, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10402";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data10402::GetItems>("GetItems", "Props", "Condition", "Filter"),
                           platform::Method<&Data10402::GetPerioddata>(
                               "GetPerioddata", "Props", "ItemID", "Year", "Period", "Condition", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
