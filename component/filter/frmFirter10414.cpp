#include "component/filter/frmFirter10414.h"

#include <array>

namespace component {
namespace {

constexpr DialogField kFields[] = {
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
    {.control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
};

constexpr SortChoice kSortChoices[] = {
    {.caption = "无", .field = "FItemNumber"},  // no sort is still by item number
    {.caption = "最高库存", .field = "FMostQty"}, {.caption = "最低库存", .field = "FLowerQty"},
    {.caption = "结存数量", .field = "FQty"},     {.caption = "超储短缺数量", .field = "FOverQty"},
};

}  // namespace

frmFirter10414::frmFirter10414()
    : TOVRptFilterDialog(
          {.name = "frmFirter10414", .filterControl = "TOVRptFilter", .reportTitle = "商品超储短缺表"},
          kFields) {
  // The form's design has this label without a field behind it.
  auto& itemClass = Add<platform::Label>("lblItemClass");
  itemClass.SetCaption("物料类别代码:    ");
  itemClass.SetVisible(false);
}

void frmFirter10414::SetUp() { FillSort(Field<platform::ComboBox>("cboSort"), kSortChoices); }

void frmFirter10414::AddKeys(platform::Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", 0);
  filter.Set("ShowTypeValue", "");
  filter.Set("OrderBy", ChosenOrder());
  filter.Set("RptID", std::int16_t{10414});  // whatever number the dialog was opened with
}

}  // namespace component
