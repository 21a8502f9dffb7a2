#include "component/movement/frmFirter10412.h"

#include "component/frame/MMTS.h"
#include "component/movement/MovementColumns.h"
#include "component/movement/SummaryFields.h"

namespace component {
namespace {

using platform::ComboBox;

constexpr auto kFields = SummaryFields(kByItem);
constexpr std::size_t kGroupsWithoutBatches = 2;

}  // namespace

frmFirter10412::frmFirter10412() : ReportFilterDialog("frmFirter10412", kFields) {
  group_.Attach(*this, Field<ComboBox>("cmbGroup"), Add<platform::Frame>("frmMultiLevel"));
  group_.onChosen = [this](std::int32_t group) { FillSortByGroup(Field<ComboBox>("cboSort"), group); };
}

void frmFirter10412::SetUp() {
  const bool withBatches = GetAppType() != 1;
  const std::span<const std::string_view> groups = kSummaryGroups;
  group_.Fill(groups.first(withBatches ? groups.size() : kGroupsWithoutBatches), kByItem);
  if (!withBatches) HideCodes({2, 3});
}

// What is computed stands before the category levels.
void frmFirter10412::SaveFields(platform::Dictionary& filter) {
  for (const DialogField& field : Fields()) {
    if (field.key == "MultiLevel") AddKeys(filter);
    filter.Set(field.key, FieldValue(field));
  }
}

void frmFirter10412::AddKeys(platform::Dictionary& filter) {
  filter.Set("OrderBy", ChosenOrder());
  filter.Set("SumBy", group_.SumBy());
  filter.Set("ShowTypeValue", group_.ShowTypeValue());
  filter.Set("InvoiceStyle", group_.InvoiceStyle());
}

void frmFirter10412::ResetFields() { ResetFieldValues({"BDate", "EDate", "cmbGroup", "cboSort"}); }

}  // namespace component
