#pragma once

#include <functional>

#include "platform/form/Screen.h"

namespace desk {

// Runs a progress box: its activation does the work and ends with the box unloaded. A box that is still up
// afterwards, also after an error, is closed, and `onAbandoned` is told when given; an error goes on.
void RunProgressBox(platform::Form& form, const std::function<void()>& onAbandoned = {});

// The screen of a run without a user: progress boxes do their work, a message box takes its default button,
// and a dialog is refused.
class HeadlessScreen : public platform::Screen {
 public:
  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override { return box.standard; }
  void RunPendingEvents() override {}
  void SetPointer(platform::Pointer /*pointer*/) override {}
  void TellProgress(std::string_view /*operation*/, const platform::Variant& /*value*/) override {}
};

}  // namespace desk
