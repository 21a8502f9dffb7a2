#pragma once

#include "component/filter/ReportFilterDialog.h"
#include "component/movement/GroupChoice.h"

namespace component {

// The filter of the business summary: a range of dates, ranges of items, departments, employees, warehouses
// and batches, what rows are summed up by and what to leave out. The order cannot be chosen: rows come by
// item number, whatever the sort fields hold.
class frmFirter10401 final : public ReportFilterDialog {
 public:
  frmFirter10401();

 protected:
  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
  void ResetFields() override;
  platform::Variant LoadDefault(const DialogField& field) const override;

 private:
  GroupChoice group_;
};

}  // namespace component
