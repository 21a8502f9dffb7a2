#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the link report: a range of dates, ranges of items, batches, departments, partners, employees
// and auxiliary properties, and the kind of account item that the bills are linked to. The kind decides what
// the partner fields look up; by department or employee they are out of use.
class frmFirter10403 final : public TOVRptFilterDialog {
 public:
  frmFirter10403();

 protected:
  void OnLoad() override;
  void SetUp() override;
  bool Validate() override;
  void AddKeys(platform::Dictionary& filter) override;
  std::optional<std::string> LookUpNumber(const DialogField& field, const std::string& text) override;

 private:
  void FollowLinkedItem();
  // The kind of base data that a code field looks up at present.
  DataType LookupTypeOf(const DialogField& field) const;
};

}  // namespace component
