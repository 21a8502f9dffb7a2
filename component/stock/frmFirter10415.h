#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the purchase price analysis: a range of dates and ranges of items, suppliers, departments,
// warehouses and employees. A range of dates that ends before it begins is put right, and the dialog stays
// open.
class frmFirter10415 final : public TOVRptFilterDialog {
 public:
  frmFirter10415();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;

 private:
  std::string periodStart_;
};

}  // namespace component
