#pragma once

#include <string>
#include <string_view>

#include "component/filter/FilterDialog.h"

namespace component {

// A dialog on the filter control that has its own OK and Cancel. The fields go in and out through
// dictionaries with values of their own kinds; codes are trimmed.
class ReportFilterDialog : public FilterDialog {
 public:
  std::int32_t AutoFilter() const { return autoFilter_; }
  void SetAutoFilter(std::int32_t autoFilter) { autoFilter_ = autoFilter; }
  // The control has told the dialog of the cancel; the fields stay for the next showing.
  void CloseByUser() override { Hide(); }

 protected:
  ReportFilterDialog(std::string name, std::span<const DialogField> fields);

  void OnLoad() override;

  // The lists and rules of the dialog, at the end of Load.
  virtual void SetUp() {}
  // Adds the keys without a field of their own.
  virtual void AddKeys(platform::Dictionary& filter) = 0;
  virtual void SaveFields(platform::Dictionary& filter);
  virtual void LoadFields(const platform::Dictionary& filter);
  virtual void SaveQuery(platform::Dictionary& /*filter*/) {}
  virtual void LoadQuery(const platform::Dictionary& /*filter*/) {}
  virtual void ResetFields() { ResetFieldValues(); }
  // Runs first when the control is done, whatever the outcome.
  virtual void OnDone() {}
  // Runs when the user confirmed, before the filter is collected.
  virtual void OnConfirmed() {}
  // Adds to the filter that the control has delivered, whatever it holds.
  virtual void OnCollected(platform::Dictionary& /*filter*/) {}
  // The value of a field as the filter holds it; category levels read 0 while they are off.
  virtual platform::Variant FieldValue(const DialogField& field) const;
  // What loading falls back on for a key that the dictionary has not got.
  virtual platform::Variant LoadDefault(const DialogField& field) const;
  // The designer's settings of the control that differ from the family's.
  virtual void AdjustSettings(platform::Dictionary& /*settings*/) {}

  void OnFilterEvent(std::string_view event, std::span<platform::Variant> arguments) override;

 private:
  void FilterDone(std::int32_t cancelCode);
  void GetDataType(std::span<platform::Variant> arguments) const;
  platform::Ref<platform::Dictionary> Settings();

  std::int32_t autoFilter_ = -1;
};

}  // namespace component
