#pragma once

#include "component/filter/ReportFilterDialog.h"

namespace component {

// The filter of the movement detail: a range of dates, ranges of items, batches, departments, warehouses,
// employees and auxiliary properties, the order of the rows and what to leave out. Nothing is refused.
class frmFirter10413 final : public ReportFilterDialog {
 public:
  frmFirter10413();

 protected:
  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
  void OnCollected(platform::Dictionary& filter) override;
  void ResetFields() override;
  platform::Variant LoadDefault(const DialogField& field) const override;
};

}  // namespace component
