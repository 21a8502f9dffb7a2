#pragma once

#include "component/filter/TOVRptFilterDialog.h"

namespace component {

// The filter of the stock structure analysis: ranges of items and warehouses, and what rows are summed up by.
// Empty ranges mean all, and nothing is refused.
class frmFirter303 final : public TOVRptFilterDialog {
 public:
  frmFirter303();

 protected:
  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
  void ResetFields() override;
  void OnSchemeActivated() override;
  std::string SchemeText(const DialogField& field) const override;
  platform::Variant FromScheme(const DialogField& field, const platform::Variant& stored) override;

 private:
  platform::ComboBox& Summary() const { return Field<platform::ComboBox>("cmbtype"); }
};

}  // namespace component
