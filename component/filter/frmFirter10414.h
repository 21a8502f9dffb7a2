#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the over and short stock report: ranges of items and warehouses, and a sort order. Empty
// ranges mean all, and nothing is refused.
class frmFirter10414 final : public TOVRptFilterDialog {
 public:
  frmFirter10414();

 protected:
  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
};

}  // namespace component
