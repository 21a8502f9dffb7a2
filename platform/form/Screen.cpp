#include "platform/form/Screen.h"

namespace platform {
namespace {

// A process that nobody looks at.
class NoScreen final : public Screen {
 public:
  void ShowModal(Form& form) override { Refuse("the form " + form.Name()); }
  Answer Ask(const MessageBox& box) override { Refuse("the message '" + box.text + "'"); }
  void RunPendingEvents() override {}
  void SetPointer(Pointer) override {}
  void TellProgress(std::string_view, const Variant&) override {}

 private:
  [[noreturn]] static void Refuse(const std::string& what) {
    throw Error(ErrorNumber::kInvalidCall, "Screen", "there is no screen to show " + what + " on");
  }
};

Screen* used = nullptr;  // by the one thread that the user is served by

}  // namespace

Screen& Screen::Current() {
  if (used != nullptr) return *used;
  static NoScreen none;
  return none;
}

void Screen::Use(Screen* screen) { used = screen; }

std::string_view ToString(Answer answer) {
  switch (answer) {
    case Answer::kOk:
      return "ok";
    case Answer::kCancel:
      return "cancel";
    case Answer::kYes:
      return "yes";
    case Answer::kNo:
      return "no";
  }
  return "unknown";
}

std::string_view ToString(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kOk:
      return "ok";
    case MessageButtons::kOkCancel:
      return "okcancel";
    case MessageButtons::kYesNo:
      return "yesno";
  }
  return "unknown";
}

std::string_view ToString(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kNone:
      return "none";
    case MessageIcon::kInformation:
      return "information";
    case MessageIcon::kQuestion:
      return "question";
  }
  return "unknown";
}

std::string_view ToString(Pointer pointer) {
  switch (pointer) {
    case Pointer::kDefault:
      return "default";
    case Pointer::kHourglass:
      return "hourglass";
  }
  return "unknown";
}

}  // namespace platform
