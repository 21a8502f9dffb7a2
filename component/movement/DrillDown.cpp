#include "component/movement/DrillDown.h"

#include <string>

#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/movement/MovementColumns.h"
#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Screen;
using platform::Variant;

std::string StockNumberByID(std::int32_t id) {
  const Ref<Recordset> rows = ExecuteSql("Select Fnumber from t_stock where Fitemid=" + std::to_string(id));
  if (!rows || rows->AtEnd()) return {};
  const Variant number = rows->Value("FNumber");
  return number.IsNull() ? std::string() : platform::ToText(number);
}

bool SumsUpOthers(const Recordset& rows) {
  const Variant sort = rows.Value("FSumSort");
  return !sort.IsNull() && platform::ToDouble(sort) > 0;
}

// Every condition that a detail report knows, so that it asks its user nothing; what the summary has no say
// in stays away.
Ref<Dictionary> DetailFilter(const DetailReport& detail, const Dictionary& own, const Recordset& rows) {
  const Ref<Dictionary> filter = MakeRef<Dictionary>();
  auto take = [&](const char* key) { filter->Set(key, own.Value(key)); };
  const RowGroup group = FilterGroup(own, "cmbGroup");
  take("BDate");
  take("EDate");
  for (const char* key : {"BItemNumber", "EItemNumber"}) filter->Set(key, rows.Value("FItemNumber"));
  for (const char* key : {"BBatchNo", "EBatchNo"}) {
    filter->Set(key, group == kByBatch ? rows.Value("FBatchNo") : own.Value(key));
  }
  take("BDeptNumber");
  take("EDeptNumber");
  for (const char* key : {"BStockNumber", "EStockNumber"}) {
    // Looked up for each key and in every grouping, used or not.
    const std::string number = StockNumberByID(platform::ToInt32(rows.Value("FCommonID")));
    filter->Set(key, group == kByStock ? Variant(number) : own.Value(key));
  }
  take("BEmpNumber");
  take("EEmpNumber");
  filter->Set("BAuxPropNumber", "");
  filter->Set("EAuxPropNumber", "");
  filter->Set("chkOnlyTotal", "0");
  take("chkShowTran");
  filter->Set("chkGroupByGood", detail.groupByGood);
  filter->Set("chkNoZero", detail.noZero);
  take("chkNoAmt");
  take("chkNoBal");
  filter->Set("OrderBy", " T1.FDate ASC ");
  return filter;
}

Ref<Object> RunDetail(const DetailReport& detail, const Ref<Dictionary>& filter) {
  Ref<Object> report = platform::CreateObject(detail.programmaticId);
  report->Put("RptID", detail.rptId);
  report->Put("Filter", Variant(filter));
  report->Put("ExtFirter", detail.number);
  report->Call("GetReportData");
  const Ref<Dictionary> result = report->Get("Result").AsRef<Dictionary>();
  if (!result) {
    throw platform::Error(platform::ErrorNumber::kObjectNotSet, std::string(detail.programmaticId),
                          "the detail report tells no result");
  }
  if (platform::ToBoolean(result->Value("OK"))) return report;
  const std::string error = platform::ToText(result->Value("Error"));
  if (!error.empty()) {
    throw platform::Error(platform::ErrorNumber::kUserDefined, std::string(detail.programmaticId), error);
  }
  Screen::Current().SetPointer(platform::Pointer::kDefault);
  return {};
}

}  // namespace

Ref<Object> OpenDetail(const DetailReport& detail, const Ref<Dictionary>& filter, const Variant& rows,
                       std::int32_t row) {
  try {
    const Ref<Recordset> set = rows.AsRef<Recordset>();
    if (!set || !set->IsOpen() || set->AtEnd()) return {};
    set->MoveFirst();
    set->Move(row);
    if (SumsUpOthers(*set)) return {};
    if (!filter) {
      throw platform::Error(platform::ErrorNumber::kObjectNotSet, "GetDetailReport",
                            "the report has no filter");
    }
    return RunDetail(detail, DetailFilter(detail, *filter, *set));
  } catch (const std::exception& error) {
    Screen::Current().SetPointer(platform::Pointer::kDefault);
    Screen::Current().Ask(
        {.text = error.what(), .title = ResString("信息提示"), .icon = platform::MessageIcon::kInformation});
    return {};
  }
}

}  // namespace component
