#include "component/ledger/frmFirter10402.h"

#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "component/frame/VEZPublic.h"
#include "platform/value/Clock.h"

namespace component {
namespace {

constexpr DialogField kFields[] = {
    {.control = "DtpDate", .index = 0, .kind = FieldKind::kDate, .label = "起始日期:", .key = "BDate"},
    {.control = "DtpDate", .index = 1, .kind = FieldKind::kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 4, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
    {.control = "chkitem",
     .index = 0,
     .kind = FieldKind::kCheck,
     .label = "无发生额不显示",
     .key = "ShowNoHappen"},
    {.control = "chkitem",
     .index = 1,
     .kind = FieldKind::kCheck,
     .label = "余额为零不显示",
     .key = "Balance"},
};

constexpr std::int32_t kAppTypeWithoutBatches = 1;

}  // namespace

frmFirter10402::frmFirter10402()
    : ReportFilterDialog("frmFirter10402", kFields), frazc_(Add<platform::Frame>("frazc")) {
  // The form's design has this label without a field behind it.
  auto& itemClass = Add<platform::Label>("lblItemClass");
  itemClass.SetCaption("物料类别代码:");
  itemClass.SetVisible(false);
  auto& note = Add<platform::Label>("lblzc");
  note.SetCaption(
      ResString("    请注意：由于当前账套设置为总仓核算，所有先进先出计价的商品将限制只能按全部仓库查询。"));
  note.PlaceInside(&frazc_);
}

void frmFirter10402::HideBatchFilter() const {
  if (GetAppType() == kAppTypeWithoutBatches) HideCodes({4, 5});
}

// The note stands unless every warehouse has a cost of its own, also when that cannot be read.
void frmFirter10402::SetUp() {
  platform::SkipErrors([&] { HideBatchFilter(); });
  platform::SkipErrors([&] {
    const platform::Ref<platform::Recordset> rows =
        ExecuteSql("select FValue from t_systemprofile where fcategory='IC' and fkey = 'CalculateType'");
    const bool byWarehouse = rows && !rows->AtEnd() && platform::ToBoolean(rows->Value(std::size_t{0}));
    frazc_.SetVisible(!byWarehouse);
  });
}

void frmFirter10402::AddKeys(platform::Dictionary& filter) {
  filter.Set("BItemClass", "");
  filter.Set("InvoiceStyle", 0);
  filter.Set("ShowTypeValue", "");
  filter.Set("OrderBy", "FItemNumber ASC ");
  filter.Set("CalculateType", frazc_.Visible());
  ParsePropsString(GetPropsString());
  WriteUserID(filter);
}

void frmFirter10402::ResetFields() {
  for (const char* id : {"DtpDate(0)", "DtpDate(1)"}) Find(id)->SetValue(platform::Clock::Today());
}

}  // namespace component
