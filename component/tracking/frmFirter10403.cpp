#include "component/tracking/frmFirter10403.h"

#include <array>

#include "component/filter/ClsDtpickerRange.h"
#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using enum FieldKind;
using platform::ComboBox;
using platform::DatePicker;

// Lookups of account items that bills are linked to; the last digit is the kind of base data. Those of
// departments and employees as partners exist in name only: nothing is offered for them.
constexpr auto kLinkedCustomer = static_cast<DataType>(104031);
constexpr auto kLinkedDepartment = static_cast<DataType>(104032);
constexpr auto kLinkedEmployee = static_cast<DataType>(104033);
constexpr auto kLinkedSupplier = static_cast<DataType>(104038);
constexpr auto kMatchedCustomer = static_cast<DataType>(1040301);
constexpr auto kDepartmentAsPartner = static_cast<DataType>(1040302);
constexpr auto kEmployeeAsPartner = static_cast<DataType>(1040303);
constexpr auto kMatchedSupplier = static_cast<DataType>(1040308);

struct LinkedItem {
  std::string_view caption;
  DataType partner;
};
constexpr std::array kLinkedItems = {
    LinkedItem{"客户", kLinkedCustomer},      LinkedItem{"供应商", kLinkedSupplier},
    LinkedItem{"匹配客户", kMatchedCustomer}, LinkedItem{"匹配供应商", kMatchedSupplier},
    LinkedItem{"部门", kDepartmentAsPartner}, LinkedItem{"业务员", kEmployeeAsPartner},
};
constexpr std::int32_t kByDepartment = 4;
constexpr std::int32_t kByEmployee = 5;

constexpr std::string_view kSorts[] = {"单据日期",   "单据类型", "单据编号",   "客户代码",
                                       "供应商代码", "部门代码", "业务员代码", "商品代码"};

// The partner range stands the wrong way round in the control array: it begins in 7 and ends in 6.
constexpr int kPartnerBegin = 7;
constexpr int kPartnerEnd = 6;
constexpr int kPropertyBegin = 10;
constexpr int kPropertyEnd = 11;

constexpr DialogField kFields[] = {
    {.control = "DtpBDate",
     .kind = kDate,
     .label = "起始日期:",
     .key = "BDate",
     .date = DateDefault::kStockStart},
    {.control = "DtpEDate", .kind = kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 4, .label = "部门代码:", .key = "BDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EDeptNumber", .dataType = kDepartment},
    {.control = "txtItem",
     .index = kPartnerBegin,
     .label = "往来单位:",
     .key = "BCustNumber",
     .dataType = kLinkedCustomer},
    {.control = "txtItem",
     .index = kPartnerEnd,
     .label = "至:",
     .key = "ECustNumber",
     .dataType = kLinkedCustomer},
    {.control = "txtItem", .index = 8, .label = "业务员代码:", .key = "BEmpNumber", .dataType = kEmployee},
    {.control = "txtItem", .index = 9, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
    {.control = "txtItem",
     .index = kPropertyBegin,
     .label = "辅助属性:",
     .key = "BAuxPropNumber",
     .dataType = kAuxiliaryProperty},
    {.control = "txtItem",
     .index = kPropertyEnd,
     .label = "至:",
     .key = "EAuxPropNumber",
     .dataType = kAuxiliaryProperty},
    {.control = "cboByItem", .kind = kCombo, .label = "核算项目:", .key = "cboByItem", .keptOnReset = true},
    {.control = "cboSort", .kind = kCombo, .label = "排序:", .key = "cboSort"},
    {.control = "OptSortD", .kind = kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    {.control = "OptSortA", .kind = kOption, .label = "降序", .key = "OptSortA"},
    {.control = "chkShowItem",
     .kind = kCheck,
     .label = "按核算项目+商品显示",
     .key = "chkShowItem",
     .keptOnReset = true},
};

}  // namespace

frmFirter10403::frmFirter10403()
    : TOVRptFilterDialog({.name = "frmFirter10403",
                          .filterControl = "TOVRptFilter",
                          .reportTitle = "其他出入库单关联表",
                          .checksCost = true},
                         kFields) {
  Field<ComboBox>("cboByItem").onClick = [this] { FollowLinkedItem(); };
}

void frmFirter10403::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  AttachDateRange(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), std::to_string(RptID()));
  if (GetAppType() == 1) HideCodes({kPropertyBegin, kPropertyEnd});
}

void frmFirter10403::SetUp() {
  auto& linked = Field<ComboBox>("cboByItem");
  for (const LinkedItem& item : kLinkedItems) linked.AddEntry(ResString(item.caption));
  auto& sort = Field<ComboBox>("cboSort");
  for (const std::string_view caption : kSorts) sort.AddEntry(ResString(caption));
  linked.SetListIndex(0);
  sort.SetListIndex(0);
}

// By department or employee the fields of these ask for the account item, and no partner is left to ask for.
void frmFirter10403::FollowLinkedItem() {
  const std::int32_t linked = Field<ComboBox>("cboByItem").ListIndex();
  const bool hasPartner = linked != kByDepartment && linked != kByEmployee;
  for (const int index : {kPartnerEnd, kPartnerBegin}) {
    const std::string suffix = "(" + std::to_string(index) + ")";
    auto& code = Field<platform::TextBox>("txtItem" + suffix);
    code.SetEnabled(hasPartner);
    Find("cmdItem" + suffix)->SetEnabled(hasPartner);
    code.SetText("");
  }
}

DataType frmFirter10403::LookupTypeOf(const DialogField& field) const {
  const std::int32_t linked = Field<ComboBox>("cboByItem").ListIndex();
  if (field.dataType == kDepartment && linked == kByDepartment) return kLinkedDepartment;
  if (field.dataType == kEmployee && linked == kByEmployee) return kLinkedEmployee;
  if (field.index != kPartnerBegin && field.index != kPartnerEnd) return field.dataType;
  if (linked < 0 || linked >= static_cast<std::int32_t>(kLinkedItems.size())) return field.dataType;
  return kLinkedItems[static_cast<std::size_t>(linked)].partner;
}

std::optional<std::string> frmFirter10403::LookUpNumber(const DialogField& field, const std::string& text) {
  DialogField asked = field;
  asked.dataType = LookupTypeOf(field);
  return TOVRptFilterDialog::LookUpNumber(asked, text);
}

bool frmFirter10403::Validate() {
  return CheckDayOrder(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), "摩文提示");
}

void frmFirter10403::AddKeys(platform::Dictionary& filter) {
  const auto& linked = Field<ComboBox>("cboByItem");
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", linked.ListIndex());
  filter.Set("ShowTypeValue", DescribeComboItems(linked, "InvoiceStyle"));
  filter.Set("OrderBy", Field<ComboBox>("cboSort").ListIndex());  // a number here, no clause
  filter.Set("RptID", std::int16_t{10403});
  filter.Set("chkShowTran", 1);
}

}  // namespace component
