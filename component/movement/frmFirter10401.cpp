#include "component/movement/frmFirter10401.h"

#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using platform::ComboBox;
using platform::Frame;

constexpr DialogField kFields[] = {
    {.control = "DtpDate",
     .index = 0,
     .kind = FieldKind::kDate,
     .label = "起始日期:",
     .key = "BDate",
     .date = DateDefault::kStockStart},
    {.control = "DtpDate", .index = 1, .kind = FieldKind::kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "部门代码:", .key = "BDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 4, .label = "业务员代码:", .key = "BEmpNumber", .dataType = kEmployee},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
    {.control = "txtItem", .index = 6, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 8, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 9, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
    {.control = "chkitem",
     .index = 0,
     .kind = FieldKind::kCheck,
     .label = "无发生额不显示",
     .key = "ShowNoHappen"},
    {.control = "chkitem",
     .index = 1,
     .kind = FieldKind::kCheck,
     .label = "仅显示汇总行",
     .key = "OnlyTotal"},
    {.control = "chkitem",
     .index = 2,
     .kind = FieldKind::kCheck,
     .label = "余额为零不显示",
     .key = "Balance"},
    {.control = "optItem",
     .index = 0,
     .kind = FieldKind::kOption,
     .label = "升序",
     .key = "Asc",
     .standard = 1},
    {.control = "optItem", .index = 1, .kind = FieldKind::kOption, .label = "降序", .key = "Desc"},
    {.control = "cmbitem", .index = 0, .kind = FieldKind::kCombo, .label = "汇总依据:", .key = "SumItem"},
    {.control = "cmbitem", .index = 1, .kind = FieldKind::kCombo, .label = "排序:", .key = "SortItem"},
    {.control = "chkMultiLevel", .kind = FieldKind::kCheck, .label = "分级汇总", .key = "MultiLevel"},
    {.control = "txtMultiLevelBegin", .label = "类别级别:", .key = "MultiLevelBegin"},
    {.control = "txtMultiLevelEnd", .label = "至:", .key = "MultiLevelEnd"},
    {.control = "chkNoDB", .kind = FieldKind::kCheck, .label = "同价调拨不显示", .standard = 1},
};

constexpr std::string_view kGroups[] = {"商品", "仓库", "商品批次"};
constexpr std::size_t kGroupsWithoutBatches = 2;
constexpr std::string_view kSorts[] = {"商品", "业务员", "部门", "商品类别"};

}  // namespace

frmFirter10401::frmFirter10401() : ReportFilterDialog("frmFirter10401", kFields) {
  // The form's design spells these keys in its own way.
  Find("optItem(0)")->SetTag("ASC");
  Find("optItem(1)")->SetTag("DESC");
  auto& sort = Add<Frame>("fraSort");
  sort.SetEnabled(false);
  for (const char* part : {"lbl_cmbitem(1)", "cmbitem(1)", "optItem(0)", "optItem(1)"}) {
    Find(part)->PlaceInside(&sort);
  }
  Find("optItem(0)")->SetValue(true);
  Find("chkNoDB")->SetEnabled(false);
  group_.Attach(*this, Field<ComboBox>("cmbitem(0)"), Add<Frame>("frmMultiLevel"));
}

void frmFirter10401::SetUp() {
  const bool withBatches = GetAppType() != 1;
  group_.Fill(std::span(kGroups).first(withBatches ? std::size(kGroups) : kGroupsWithoutBatches), 0);
  FillCombo(Field<ComboBox>("cmbitem(1)"), kSorts);
  if (!withBatches) HideCodes({8, 9});
}

void frmFirter10401::AddKeys(platform::Dictionary& filter) {
  filter.Set("BItemClass", "");
  filter.Set("InvoiceStyle", group_.InvoiceStyle());
  filter.Set("ShowTypeValue", group_.ShowTypeValue());
  filter.Set("OrderBy", "FItemNumber ASC ");
  filter.Set("SumBy", group_.SumBy());
}

void frmFirter10401::ResetFields() { ResetFieldValues({"BDate", "EDate", "SumItem", "SortItem"}); }

platform::Variant frmFirter10401::LoadDefault(const DialogField& field) const {
  if (field.kind == FieldKind::kOption) return ControlOf(field)->Value();
  if (field.key == "MultiLevelBegin" || field.key == "MultiLevelEnd") return "1";
  return ReportFilterDialog::LoadDefault(field);
}

}  // namespace component
