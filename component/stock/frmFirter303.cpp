#include "component/stock/frmFirter303.h"

#include "component/frame/MRpt.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

constexpr DialogField kFields[] = {
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "cmbtype", .kind = FieldKind::kCombo, .label = "汇总:", .key = "cmbtype"},
    {.control = "chkonlysum", .kind = FieldKind::kCheck, .label = "仅显示汇总行", .key = "chkonlysum"},
};

constexpr Choice kSummaries[] = {
    {.data = 0, .caption = "商品一级类别"},
    {.data = 1, .caption = "商品二级类别", .mask = kWithAuxiliaryUnits},
    {.data = 2, .caption = "商品"},
    {.data = 3, .caption = "不汇总"},
};
constexpr std::int32_t kNoSummary = 3;

}  // namespace

frmFirter303::frmFirter303()
    : TOVRptFilterDialog({.name = "frmFirter303",
                          .filterControl = "TOVRptFilter1",
                          .reportTitle = "库存结构分析表",
                          .checksCost = true},
                         kFields) {
  Find("chkonlysum")->SetVisible(false);
}

void frmFirter303::SetUp() { FillComboByAppType(Summary(), kSummaries, kNoSummary); }

void frmFirter303::ResetFields() {
  ResetFieldValues();
  Summary().SetListIndex(FindComboItemData(&Summary(), kNoSummary));
}

// The scheme chosen is asked for, and the answer has no use.
void frmFirter303::OnSchemeActivated() {
  FilterControl().Get("CurrentScheme");
  TOVRptFilterDialog::OnSchemeActivated();
}

std::string frmFirter303::SchemeText(const DialogField& field) const {
  if (field.key != "cmbtype") return TOVRptFilterDialog::SchemeText(field);
  return Summary().ListIndex() < 0 ? std::string()
                                   : std::to_string(Summary().ItemData(Summary().ListIndex()));
}

platform::Variant frmFirter303::FromScheme(const DialogField& field, const platform::Variant& stored) {
  if (field.key != "cmbtype") return stored;
  return FindComboItemData(&Summary(), platform::ToInt32(stored));
}

void frmFirter303::AddKeys(platform::Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("BItemClass", "");
  filter.Set("InvoiceStyle", Summary().ItemData(Summary().ListIndex()));
  filter.Set("ShowTypeValue", DescribeComboItems(Summary(), "InvoiceStyle"));
  filter.Set("OrderBy", "FItemNumber ASC ");
  filter.Set("SumBy", Summary().Text());
}

}  // namespace component
