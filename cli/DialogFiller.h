#pragma once

#include <string>
#include <utility>
#include <vector>

#include "desk/HeadlessScreen.h"

namespace cli {

// The screen of a report that is run from the command line: its dialog is reset to the defaults, filled in by
// filter key, and confirmed. What a dialog says before it refuses is kept for the message.
class DialogFiller final : public desk::HeadlessScreen {
 public:
  using Keys = std::vector<std::pair<std::string, std::string>>;

  explicit DialogFiller(Keys keys) : keys_(std::move(keys)) {}

  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override;

  // After the dialog: the keys that no field took, and the keys of its fields.
  const Keys& Left() const { return keys_; }
  const std::vector<std::string>& FieldKeys() const { return fieldKeys_; }
  // Why the dialog could not be filled in or confirmed; empty when it was.
  const std::string& Problem() const { return problem_; }

 private:
  void Fill(platform::Form& form);
  void FillField(platform::Form& form, const platform::Control& field);
  void Confirm(platform::Form& form);

  Keys keys_;
  std::vector<std::string> fieldKeys_;
  std::string problem_;
  std::string lastMessage_;
};

}  // namespace cli
