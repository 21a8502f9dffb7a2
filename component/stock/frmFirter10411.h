#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the shelf life list: the due date, ranges of items and warehouses, grouping and sort order.
// A due date before the start of stock accounting is put right, and the dialog stays open.
class frmFirter10411 final : public TOVRptFilterDialog {
 public:
  frmFirter10411();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;
};

}  // namespace component
