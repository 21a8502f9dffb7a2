#include "component/movement/frmFirter10416.h"

#include "component/filter/ClsDtpickerRange.h"
#include "component/movement/MovementColumns.h"
#include "component/movement/SummaryFields.h"

namespace component {
namespace {

using platform::ComboBox;
using platform::DatePicker;

constexpr auto kFields = SummaryFields(kByBatch);

}  // namespace

frmFirter10416::frmFirter10416()
    : TOVRptFilterDialog({.name = "frmFirter10416",
                          .filterControl = "TOVRptFilter",
                          .reportTitle = "批号管理商品收发汇总表"},
                         kFields) {
  auto& group = Field<ComboBox>("cmbGroup");
  group.SetEnabled(false);
  group_.Attach(*this, group, Add<platform::Frame>("frmMultiLevel"));
  group_.onChosen = [this](std::int32_t chosen) { FillSortByGroup(Field<ComboBox>("cboSort"), chosen); };
}

void frmFirter10416::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  AttachDateRange(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), std::to_string(RptID()));
}

void frmFirter10416::SetUp() { group_.Fill(kSummaryGroups, kByBatch); }

bool frmFirter10416::Validate() {
  return CheckDayOrder(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), "信息提示");
}

void frmFirter10416::AddKeys(platform::Dictionary& filter) {
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", group_.InvoiceStyle());
  filter.Set("ShowTypeValue", group_.ShowTypeValue());
  filter.Set("OrderBy", ChosenOrder());
  filter.Set("SumBy", group_.SumBy());
  group_.Levels().WriteTo(filter);
}

}  // namespace component
