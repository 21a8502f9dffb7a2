#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the bar code list: a range of items, whether only items without a bar code are wanted, and a
// sort order. A range that ends before it begins is refused.
class frmFirter10499 final : public TOVRptFilterDialog {
 public:
  frmFirter10499();

 protected:
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;
};

}  // namespace component
