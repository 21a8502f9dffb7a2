// The two builders that fetch each period for all items at once.
#include "component/frame/ProcessState.h"
#include "component/ledger/LedgerBatch.h"
#include "component/ledger/Rpt10402.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Object;
using platform::Recordset;
using platform::Ref;

// Mode 0 selects a range of items, any other a whole class of items by the beginning of its number.
std::string BatchCondition(const Dictionary& filter, const std::string& field) {
  auto text = [&filter](std::string_view key) { return platform::ToText(filter.Value(key)); };
  std::string condition;
  if (platform::ToInt32(filter.Value("Mode")) != 0) {
    const std::string itemClass = text("ItemClassNumber");
    return itemClass.empty() ? condition : " AND v3." + field + "  Like '" + itemClass + ".%'";
  }
  if (const std::string from = text("BItemNumber"); !from.empty()) {
    condition += " AND v3." + field + ">='" + from + "'";
  }
  if (const std::string to = text("EItemNumber"); !to.empty()) {
    condition += " AND v3." + field + "<='" + to + "'";
  }
  return condition;
}

}  // namespace

void Rpt10402::BuildBatchByItem() { BuildBatch(Order::kByItem); }

void Rpt10402::BuildBatchByPeriod() { BuildBatch(Order::kByPeriod); }

void Rpt10402::BuildBatch(Order order) {
  try {
    const std::string field = ProcessState::Get().isLongNumber ? "FNumber" : "FShortNumber";
    const std::string condition = BatchCondition(RequireFilter(), field);
    const LedgerRange range = FilterRange();
    const bool showNoHappen = ShowsNoHappen();
    const Ref<Recordset> page = NewBatchLedgerRs();
    rowBreakRs_ = platform::MakeRef<Recordset>();
    rowBreakRs_->AppendField("FBreakRow", platform::FieldType::kInt32);
    rowBreakRs_->Open();
    const Ref<Object> data = platform::CreateObject(Facts().dataComponent);
    if (!items_)
      throw platform::Error(platform::ErrorNumber::kObjectNotSet, std::string(kClassName), "no items");
    LedgerProgress progress(ProgBar());
    const LedgerBatch::Request request = {.range = range,
                                          .filter = Filter(),
                                          .items = items_->Clone(),
                                          .showNoHappen = showNoHappen,
                                          .captionWord = captionWord_,
                                          .numberField = field,
                                          .listDecimals = HasItems() ? ItemDecimals() : LedgerDecimals()};
    if (request.items->RecordCount() > 0) {
      progress.Range(request.items->RecordCount());
      progress.ShowBar();
    }
    {
      const LedgerTitles titles = TitlesOf(multiPage_ ? Title() : Ref<platform::Vector>());
      LedgerPage rows(*page, &titles);
      LedgerBatch batch(request, periodData_, progress, rows, *rowBreakRs_,
                        [&](std::int16_t year, std::int16_t period) {
                          return GetPerioddata(*data, 0, year, period, condition);
                        });
      if (order == Order::kByItem) {
        batch.RunByItem();
      } else {
        batch.RunByPeriod();
      }
      rows.Finish();
    }
    if (page->RecordCount() > 0) page->MoveLast();
    ProgBar().Unload();
    mutilPageRs_ = page;
    SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
    ProgBar().Unload();
  }
}

}  // namespace component
