#include "component/stock/frmFirter10415.h"

#include "component/filter/ClsDtpickerRange.h"
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using enum FieldKind;
using platform::CheckBox;
using platform::ComboBox;
using platform::DatePicker;

// Nothing fills cmbGroup, and with it cboSort: both stay empty, and a reset leaves them alone.
constexpr DialogField kFields[] = {
    {.control = "DtpBDate",
     .kind = kDate,
     .label = "起始日期:",
     .key = "BDate",
     .date = DateDefault::kPeriodFirstDay},
    {.control = "DtpEDate", .kind = kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "供应商代码:", .key = "BSupplyNumber", .dataType = kSupplier},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "ESupplyNumber", .dataType = kSupplier},
    {.control = "txtItem", .index = 4, .label = "部门代码:", .key = "BDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 6, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 8, .label = "业务员代码:", .key = "BEmpNumber", .dataType = kEmployee},
    {.control = "txtItem", .index = 9, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
    {.control = "cmbGroup", .kind = kCombo, .label = "汇总依据:", .key = "cmbGroup", .keptOnReset = true},
    {.control = "chkOnlyTotal", .kind = kCheck, .label = "仅显示汇总行", .key = "chkOnlyTotal"},
    {.control = "chkNoAmt", .kind = kCheck, .label = "无发生额不显示", .key = "chkNoAmt"},
    {.control = "chkNoBal", .kind = kCheck, .label = "余额为零不显示", .key = "chkNoBal"},
    {.control = "chkNoDB", .kind = kCheck, .label = "同价调拨不显示", .key = "chkNoDB"},
    {.control = "cboSort", .kind = kCombo, .label = "排序:", .key = "cboSort", .keptOnReset = true},
    {.control = "OptSortD", .kind = kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = kOption, .label = "降序", .key = "OptSortA"},
    {.control = "cboType", .kind = kCombo, .label = "单据类型:", .key = "cboType", .keptOnReset = true},
};

constexpr std::string_view kBillTypes[] = {"全部", "估价入库", "购货单"};

}  // namespace

frmFirter10415::frmFirter10415()
    : TOVRptFilterDialog(
          {.name = "frmFirter10415", .filterControl = "TOVRptFilter", .reportTitle = "采购价格分析表"},
          kFields) {
  // Set as the form opens and clear after a reset, hidden at all times.
  auto& sameValueTransfers = Field<CheckBox>("chkNoDB");
  sameValueTransfers.SetChecked(1);
  sameValueTransfers.SetVisible(false);
  for (const char* part : {"cboType", "lbl_cboType"}) Find(part)->SetVisible(false);
  auto& group = Field<ComboBox>("cmbGroup");
  group.onClick = [this, &group] { FillSortByGroup(Field<ComboBox>("cboSort"), group.ListIndex()); };
}

void frmFirter10415::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  std::string end;
  GetStockPeriodDates(periodStart_, end);
  AttachDateRange(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), std::to_string(RptID()));
}

void frmFirter10415::SetUp() { FillCombo(Field<ComboBox>("cboType"), kBillTypes); }

bool frmFirter10415::Validate() {
  return CheckDayOrder(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), "摩文提示");
}

void frmFirter10415::AddKeys(platform::Dictionary& filter) {
  const auto& group = Field<ComboBox>("cmbGroup");
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", group.ListIndex());
  filter.Set("ShowTypeValue", DescribeComboItems(group, "InvoiceStyle"));
  filter.Set("OrderBy", "");  // the rows keep the data component's order
}

}  // namespace component
