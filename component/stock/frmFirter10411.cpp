#include "component/stock/frmFirter10411.h"

#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using enum FieldKind;
using platform::ComboBox;
using platform::DatePicker;

constexpr DialogField kFields[] = {
    {.control = "DtpEDate", .kind = kDate, .label = "到期日:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "cmbGroup", .kind = kCombo, .label = "分组依据:", .key = "cmbGroup"},
    {.control = "cboSort", .kind = kCombo, .label = "排序:", .key = "cboSort"},
    {.control = "OptSortD", .kind = kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = kOption, .label = "降序", .key = "OptSortA"},
    {.control = "chkHideForbiddenGood",
     .kind = kCheck,
     .label = "禁用商品不显示",
     .key = "chkHideForbiddenGood",
     .keptOnReset = true},
};

constexpr std::string_view kGroups[] = {"不分组", "按商品", "按仓库"};

constexpr SortChoice kSortChoices[] = {
    {.caption = "商品代码", .field = "FItemNumber"},
    {.caption = "数量", .field = "FQty"},
    {.caption = "成本金额", .field = "FBal"},
    {.caption = "超期天数", .field = "Overdays"},
};

}  // namespace

frmFirter10411::frmFirter10411()
    : TOVRptFilterDialog({.name = "frmFirter10411",
                          .filterControl = "TOVRptFilter1",
                          .reportTitle = "保质期清单",
                          .checksCost = true},
                         kFields) {}

void frmFirter10411::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  platform::SkipErrors([&] {
    std::string begin;
    std::string end;
    GetStockPeriodDates(begin, end);
    Field<DatePicker>("DtpEDate").SetDate(platform::ToDate(platform::Variant(begin)));
  });
}

void frmFirter10411::SetUp() {
  FillCombo(Field<ComboBox>("cmbGroup"), kGroups);
  FillSort(Field<ComboBox>("cboSort"), kSortChoices);
}

bool frmFirter10411::Validate() {
  auto& due = Field<DatePicker>("DtpEDate");
  const platform::Date start = GetStockStartDate();
  if (!(due.GetDate() < start)) return true;
  // This box alone speaks past the translation.
  platform::Screen::Current().Ask({.text = "[到期日]不能小于账套启用日期。",
                                   .title = "摩文提示",
                                   .icon = platform::MessageIcon::kInformation});
  due.SetDate(start);
  return false;
}

void frmFirter10411::AddKeys(platform::Dictionary& filter) {
  const auto& group = Field<ComboBox>("cmbGroup");
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", group.ListIndex());
  filter.Set("ShowTypeValue", DescribeComboItems(group, "InvoiceStyle"));
  filter.Set("OrderBy", ChosenOrder());
}

}  // namespace component
