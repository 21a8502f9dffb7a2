#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the movement detail of goods kept in batches: the fields of frmFirter10413. A range of dates
// that ends before it begins is put right, and the dialog stays open.
class frmFirter10417 final : public TOVRptFilterDialog {
 public:
  frmFirter10417();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;
};

}  // namespace component
