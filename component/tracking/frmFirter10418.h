#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the serial number tracking: a range of dates, ranges of serial numbers, items, warehouses,
// suppliers and customers, texts that occur in the model and in the number's note, and the number's state.
class frmFirter10418 final : public TOVRptFilterDialog {
 public:
  frmFirter10418();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;
};

}  // namespace component
