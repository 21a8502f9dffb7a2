#pragma once

#include <string>

#include "component/filter/CategoryLevels.h"
#include "component/filter/ReportFilterDialog.h"

namespace component {

// The filter of the two instant stock reports: ranges, the closing date or "now", how items are listed and
// sorted, and a quick query pane with the ranges asked for most. Empty ranges mean all; nothing is refused.
class InstantStockDialog : public ReportFilterDialog {
 protected:
  explicit InstantStockDialog(std::string name);

  void SetUp() override;
  void AddKeys(platform::Dictionary& filter) override;
  void SaveFields(platform::Dictionary& filter) override;
  void LoadFields(const platform::Dictionary& filter) override;
  void SaveQuery(platform::Dictionary& filter) override;
  void LoadQuery(const platform::Dictionary& filter) override;
  void ResetFields() override;
  void OnDone() override;
  void OnConfirmed() override;
  platform::Variant FieldValue(const DialogField& field) const override;
  void AdjustSettings(platform::Dictionary& settings) override;

 private:
  void BuildPanels();
  void WatchFields();
  void HideBatchesAndProperties() const;
  void ShowTypeRule();
  void OnTimeRule(int clicked);
  platform::CheckBox& Check(int index) const;
  platform::ComboBox& Combo(int index) const;

  CategoryLevels levels_;
  bool quiet_ = false;    // fields change by themselves, not by the user
  bool touched_ = false;  // the user has clicked "show items without stock"
};

}  // namespace component
