#pragma once

#include <string>
#include <string_view>

#include "platform/form/Form.h"

namespace platform {

enum class Answer { kOk, kCancel, kYes, kNo };
enum class MessageButtons { kOk, kOkCancel, kYesNo };
enum class MessageIcon { kNone, kInformation, kQuestion };
enum class Pointer { kDefault, kHourglass };

std::string_view ToString(Answer answer);
std::string_view ToString(MessageButtons buttons);
std::string_view ToString(MessageIcon icon);
std::string_view ToString(Pointer pointer);

struct MessageBox {
  std::string text;
  std::string title;  // empty: the host's own title
  MessageButtons buttons = MessageButtons::kOk;
  MessageIcon icon = MessageIcon::kNone;
  Answer standard = Answer::kOk;  // the default button
};

// The only door to the user. A page, a script player and a test each implement it; code that shows something
// goes through Current() and never learns which.
class Screen {
 public:
  Screen() = default;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  Screen(Screen&&) = delete;
  Screen& operator=(Screen&&) = delete;
  virtual ~Screen() = default;

  // Activates the form and serves its user until it is no longer visible. Called by Form::Show only.
  virtual void ShowModal(Form& form) = 0;
  virtual Answer Ask(const MessageBox& box) = 0;
  // Lets user-interface events that wait be handled now.
  virtual void RunPendingEvents() = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  // What a progress box has just been told, after its controls show it. `value` is Missing for an operation
  // without one.
  virtual void TellProgress(std::string_view operation, const Variant& value) = 0;

  // The process's screen. Without one, showing anything raises kInvalidCall, and pending events are none.
  static Screen& Current();
  // Borrowed until the next call; null removes it.
  static void Use(Screen* screen);
};

}  // namespace platform
