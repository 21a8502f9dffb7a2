#pragma once

#include <string>
#include <string_view>

#include "component/filter/FilterDialog.h"

namespace component {

// A dialog on the filter control that has pages of schemes but no buttons: the dialog brings its own OK and
// Cancel. Scheme values are texts, and so are the filter's values that come from the scheme.
class TOVRptFilterDialog : public FilterDialog {
 protected:
  struct Design {
    std::string_view name;           // of the form
    std::string_view filterControl;  // the control's name in the form
    std::string_view reportTitle;    // under which the control keeps its schemes
    bool checksCost = false;         // values new business after the dialog was confirmed
  };

  TOVRptFilterDialog(const Design& design, std::span<const DialogField> fields);

  void OnLoad() override;
  void OnActivate() override;

  // The lists of the dialog, once, at the first activation.
  virtual void SetUp() {}
  // Refuses, with its own message, by answering false; the dialog then stays open.
  virtual bool Validate() { return true; }
  // The same once the filter is collected: a refused one stays in Result, the dialog open.
  virtual bool AcceptCollected(platform::Dictionary& /*filter*/) { return true; }
  // Adds the keys that the scheme does not hold.
  virtual void AddKeys(platform::Dictionary& filter) = 0;
  virtual void ResetFields() { ResetFieldValues(); }
  virtual void OnSchemeActivated();
  // A field as scheme text, and back.
  virtual std::string SchemeText(const DialogField& field) const;
  virtual platform::Variant FromScheme(const DialogField& /*field*/, const platform::Variant& stored) {
    return stored;
  }

  // Batches are chosen from the batch list, cut down to the range of items in txtItem(0) and txtItem(1).
  std::optional<std::string> LookUpNumber(const DialogField& field, const std::string& text) override;
  void OnFilterEvent(std::string_view event, std::span<platform::Variant> arguments) override;

 private:
  void Confirm();
  void Cancel();
  void SaveScheme(const std::string& section);
  void LoadScheme(const std::string& section);

  Design design_;
  bool firstTime_ = true;
};

}  // namespace component
