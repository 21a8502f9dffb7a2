#pragma once

#include "component/filter/ReportFilterDialog.h"

namespace component {

// The filter of the stock ledger: a range of dates, ranges of items, warehouses and batches, and what to
// leave out. Neither the order of the dates nor that of the ranges is checked.
class frmFirter10402 final : public ReportFilterDialog {
 public:
  frmFirter10402();

 protected:
  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
  void ResetFields() override;

 private:
  void HideBatchFilter() const;

  platform::Frame& frazc_;
};

}  // namespace component
