#pragma once

#include "component/filter/ReportFilterDialog.h"
#include "component/movement/GroupChoice.h"

namespace component {

// The filter of the movement summary: a range of dates, ranges of items, batches, departments, warehouses and
// employees, what rows are summed up by, their order and what to leave out. Nothing is refused.
class frmFirter10412 final : public ReportFilterDialog {
 public:
  frmFirter10412();

 protected:
  void SetUp() override;
  void SaveFields(platform::Dictionary& filter) override;
  void AddKeys(platform::Dictionary& filter) override;
  void ResetFields() override;

 private:
  GroupChoice group_;
};

}  // namespace component
