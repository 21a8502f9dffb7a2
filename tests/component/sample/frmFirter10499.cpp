#include "tests/component/sample/frmFirter10499.h"

#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using platform::TextBox;

constexpr DialogField kFields[] = {
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "chkNoCode", .kind = FieldKind::kCheck, .label = "只列没有条形码的商品", .key = "chkNoCode"},
    {.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
    {.control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
};

constexpr SortChoice kSortChoices[] = {
    {.caption = "商品代码", .field = "FItemNumber"},
    {.caption = "条形码", .field = "FBarCode"},
};

}  // namespace

frmFirter10499::frmFirter10499()
    : TOVRptFilterDialog(
          {.name = "frmFirter10499", .filterControl = "TOVRptFilter", .reportTitle = "商品条码清单"},
          kFields) {}

void frmFirter10499::SetUp() { FillSort(Field<platform::ComboBox>("cboSort"), kSortChoices); }

bool frmFirter10499::Validate() {
  const std::string from = Field<TextBox>("txtItem(0)").Text();
  const std::string to = Field<TextBox>("txtItem(1)").Text();
  if (to.empty() || from <= to) return true;
  platform::Screen::Current().Ask({.text = ResString("起始商品代码不能大于截止商品代码!"),
                                   .title = ResString("信息提示"),
                                   .icon = platform::MessageIcon::kInformation});
  return false;
}

void frmFirter10499::AddKeys(platform::Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", 0);
  filter.Set("ShowTypeValue", "");
  filter.Set("OrderBy", OrderByText(Field<platform::ComboBox>("cboSort"),
                                    Field<platform::OptionButton>("OptSortD").IsOn()));
  filter.Set("RptID", std::int16_t{10499});
}

}  // namespace component
