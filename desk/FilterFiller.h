#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/form/Screen.h"

namespace desk {

// Filter keys and their values as a user writes them, by the key of a dialog's field: ("BItemNumber", "01").
using FilterSettings = std::vector<std::pair<std::string, std::string>>;

// The screen of a run without a user: in a filter dialog it sets the fields that are given, leaves the others
// at their defaults, and confirms. Message boxes take their default button.
class FilterFiller final : public platform::Screen {
 public:
  // For the next dialog.
  void Fill(FilterSettings settings);
  // What went wrong with it: a value that a field cannot take (kBadArgument), or the dialog's own refusal.
  const std::optional<platform::Error>& Failure() const { return failure_; }
  // The setting that its field cannot take, when that was it.
  const std::optional<std::pair<std::string, std::string>>& Refused() const { return refused_; }
  // What no field of the dialog took, and the keys of the fields that there are.
  const FilterSettings& Left() const { return left_; }
  const std::vector<std::string>& FieldKeys() const { return fieldKeys_; }

  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override;
  void RunPendingEvents() override {}
  void SetPointer(platform::Pointer /*pointer*/) override {}
  void TellProgress(std::string_view /*operation*/, const platform::Variant& /*value*/) override {}

 private:
  void FillIn(platform::Form& form);
  static void Confirm(platform::Form& form);

  FilterSettings settings_;
  FilterSettings left_;
  std::vector<std::string> fieldKeys_;
  std::optional<platform::Error> failure_;
  std::optional<std::pair<std::string, std::string>> refused_;
  std::string lastMessage_;
};

}  // namespace desk
