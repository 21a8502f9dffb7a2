#include "component/movement/frmFirter10417.h"

#include "component/filter/ClsDtpickerRange.h"
#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/movement/DetailFields.h"

namespace component {
namespace {

using platform::ComboBox;
using platform::DatePicker;

// Not this report's own: to the title and the data component it runs as the detail of goods.
constexpr std::int16_t kReportNumber = 10413;

}  // namespace

frmFirter10417::frmFirter10417()
    : TOVRptFilterDialog({.name = "frmFirter10417",
                          .filterControl = "TOVRptFilter",
                          .reportTitle = "批号管理商品收发明细表"},
                         kDetailFields) {
  for (const char* fixed : {"cmbGroup", "chkOnlyTotal", "chkGroupByGood"}) Find(fixed)->SetEnabled(false);
  Field<ComboBox>("cmbGroup").onClick = [this] { FillSort(Field<ComboBox>("cboSort"), kDetailSorts); };
}

void frmFirter10417::OnLoad() {
  TOVRptFilterDialog::OnLoad();
  AttachDateRange(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), std::to_string(RptID()));
}

void frmFirter10417::SetUp() {
  FillCombo(Field<ComboBox>("cmbGroup"), kDetailGroups);
  if (GetAppType() != 1) return;
  HideCodes({10, 11});
  for (const char* check : {"chkGroupByGood", "chkNoZero"}) Find(check)->SetVisible(false);
}

bool frmFirter10417::Validate() {
  return CheckDayOrder(Field<DatePicker>("DtpBDate"), Field<DatePicker>("DtpEDate"), "摩文提示");
}

void frmFirter10417::AddKeys(platform::Dictionary& filter) {
  const auto& group = Field<ComboBox>("cmbGroup");
  WriteUserID(filter);
  filter.Set("OK", true);
  filter.Set("InvoiceStyle", group.ListIndex());
  filter.Set("ShowTypeValue", DescribeComboItems(group, "InvoiceStyle"));
  filter.Set("OrderBy", ChosenOrder());
  filter.Set("RptID", kReportNumber);
  filter.Set("chkShowTran", 1);
}

}  // namespace component
