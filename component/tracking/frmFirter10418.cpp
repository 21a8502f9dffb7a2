#include "component/tracking/frmFirter10418.h"

#include "component/filter/ClsDtpickerRange.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using enum FieldKind;
using platform::ComboBox;
using platform::DatePicker;

// Here alone the letters of the sort options and their captions match: the choice goes to the data component
// as it stands, and there is no sort clause.
constexpr DialogField kFields[] = {
    {.control = "DtpBDate",
     .kind = kDate,
     .label = "起始日期:",
     .key = "BDate",
     .date = DateDefault::kStockStart},
    {.control = "DtpEDate", .kind = kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "S/N号:", .key = "BSerialNo"},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "ESerialNo"},
    {.control = "txtItem", .index = 2, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 4, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 6, .label = "规格型号:", .key = "Model"},
    {.control = "txtItem", .index = 7, .label = "S/N号备注:", .key = "SerialNoNote"},
    {.control = "cboSerialNoStatus", .kind = kCombo, .label = "序列号状态:", .key = "cboSerialNoStatus"},
    {.control = "chkDetail", .kind = kCheck, .label = "显示出入库明细", .key = "chkDetail"},
    {.control = "chkAllDetailShow",
     .kind = kCheck,
     .label = "在明细行显示全部信息",
     .key = "chkAllDetailShow"},
    {.control = "txtItem",
     .index = 10,
     .label = "供应商代码:",
     .key = "BSupplyNumber",
     .dataType = kSupplier},
    {.control = "txtItem", .index = 11, .label = "至: ", .key = "ESupplyNumber", .dataType = kSupplier},
    {.control = "txtItem", .index = 12, .label = "客户代码:", .key = "BCustNumber", .dataType = kCustomer},
    {.control = "txtItem", .index = 13, .label = "至: ", .key = "ECustNumber", .dataType = kCustomer},
    {.control = "cboSort", .kind = kCombo, .label = "排序:", .key = "cboSort"},
    {.control = "OptSortD", .kind = kOption, .label = "降序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = kOption, .label = "升序", .key = "OptSortA"},
};

// The fields that say of themselves that they include what is typed: both ends of the numbers' range, and
// texts that are looked for inside others.
constexpr int kContained[] = {1, 6, 7};

constexpr std::string_view kStates[] = {"全部", "在库", "已出库"};
constexpr std::string_view kSorts[] = {"商品代码", "规格型号", "S/N号"};

}  // namespace

frmFirter10418::frmFirter10418()
    : TOVRptFilterDialog(
          {.name = "frmFirter10418", .filterControl = "TOVRptFilter", .reportTitle = "序列号跟踪分析表"},
          kFields) {
  for (const int contained : kContained) {
    Add<platform::Label>("lblContained", contained).SetCaption(ResString("（包含）"));
  }
}

void frmFirter10418::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  AttachDateRange(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), std::to_string(RptID()));
}

// These two lists speak past the translation.
void frmFirter10418::SetUp() {
  auto& states = Field<ComboBox>("cboSerialNoStatus");
  for (const std::string_view state : kStates) states.AddEntry(std::string(state));
  auto& sorts = Field<ComboBox>("cboSort");
  for (const std::string_view sort : kSorts) sorts.AddEntry(std::string(sort));
  states.SetListIndex(0);
  sorts.SetListIndex(0);
}

bool frmFirter10418::Validate() {
  return CheckDayOrder(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), "摩文提示");
}

void frmFirter10418::AddKeys(platform::Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("RptID", std::int16_t{10418});
}

}  // namespace component
