#pragma once

#include "component/filter/TOVRptFilterDialog.h"
#include "component/movement/GroupChoice.h"

namespace component {

// The filter of the movement summary of goods kept in batches: the fields of frmFirter10412, with the group
// fixed on the batch. A range of dates that ends before it begins is put right, and the dialog stays open.
class frmFirter10416 final : public TOVRptFilterDialog {
 public:
  frmFirter10416();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;

 private:
  GroupChoice group_;
};

}  // namespace component
