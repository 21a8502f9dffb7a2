#include "component/movement/frmFirter10413.h"

#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/movement/DetailFields.h"
#include "platform/object/ClassRegistry.h"

namespace component {

using platform::ComboBox;
using platform::Frame;

frmFirter10413::frmFirter10413() : ReportFilterDialog("frmFirter10413", kDetailFields) {
  for (const char* fixed : {"cmbGroup", "chkOnlyTotal", "chkGroupByGood", "chkNoZero"}) {
    Find(fixed)->SetEnabled(false);
  }
  auto& byGoods = Add<Frame>("Frame1");
  for (const char* check : {"chkGroupByGood", "chkNoZero"}) Find(check)->PlaceInside(&byGoods);
  Field<ComboBox>("cmbGroup").onClick = [this] { FillSort(Field<ComboBox>("cboSort"), kDetailSorts); };
}

void frmFirter10413::SetUp() {
  for (const char* check : {"chkGroupByGood", "chkNoZero"}) Find(check)->SetEnabled(true);
  platform::CreateObject("TOVMClass.ClassInfo");  // only to see that it is there
  FillCombo(Field<ComboBox>("cmbGroup"), kDetailGroups);
  if (GetAppType() != 1) return;
  HideCodes({10, 11, 2, 3});
  for (const char* part : {"chkGroupByGood", "chkNoZero", "Frame1"}) Find(part)->SetVisible(false);
}

void frmFirter10413::AddKeys(platform::Dictionary& filter) {
  const auto& group = Field<ComboBox>("cmbGroup");
  filter.Set("OrderBy", ChosenOrder());
  filter.Set("ShowTypeValue", DescribeComboItems(group, "InvoiceStyle"));
  filter.Set("InvoiceStyle", group.ListIndex());
  filter.Set("chkShowTran", 1);
}

// Beside chkNoDB, which says the reverse: transfers at the same price are always fetched.
void frmFirter10413::OnCollected(platform::Dictionary& filter) { filter.Set("chkShowTran", 1); }

void frmFirter10413::ResetFields() { ResetFieldValues({"BDate", "EDate", "cboSort", "chkNoDB"}); }

platform::Variant frmFirter10413::LoadDefault(const DialogField& field) const {
  return field.key == "chkNoDB" ? platform::Variant(1) : ReportFilterDialog::LoadDefault(field);
}

}  // namespace component
