#include "desk/HeadlessScreen.h"

namespace desk {

using platform::Error;
using platform::ErrorNumber;
using platform::Form;

void RunProgressBox(Form& form, const std::function<void()>& onAbandoned) {
  auto closeIfUp = [&] {
    if (!form.IsVisible()) return;
    form.CloseByUser();
    if (onAbandoned) onAbandoned();
  };
  try {
    form.Activate();
  } catch (...) {
    closeIfUp();
    throw;
  }
  closeIfUp();
}

void HeadlessScreen::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) return RunProgressBox(form);
  throw Error(ErrorNumber::kInvalidCall, "HeadlessScreen",
              "the form " + form.Name() + " needs a user, and this run has none");
}

}  // namespace desk
