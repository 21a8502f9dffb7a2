#include "browser/worker/PageScreen.h"

#include "browser/worker/FormText.h"
#include "desk/HeadlessScreen.h"
#include "platform/value/Convert.h"

namespace browser {
namespace {

using platform::Control;
using platform::ControlKind;
using platform::Form;

// The window goes on every way out.
class Shown {
 public:
  explicit Shown(Windows& windows) : windows_(windows) {}
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;
  Shown(Shown&&) = delete;
  Shown& operator=(Shown&&) = delete;
  ~Shown() { windows_.Close(); }

 private:
  Windows& windows_;
};

// What a field holds, as a user would write it into the address line; nothing for what is no field.
std::optional<std::string> FieldText(const Control& control) {
  if (control.Tag().empty()) return std::nullopt;
  switch (control.GetKind()) {
    case ControlKind::kCombo:
      return std::to_string(dynamic_cast<const platform::ComboBox&>(control).ListIndex());
    case ControlKind::kText:
    case ControlKind::kCheck:
    case ControlKind::kOption:
    case ControlKind::kDate:
      return platform::ToText(control.Value());
    default:
      return std::nullopt;
  }
}

}  // namespace

void PageScreen::FillNext(desk::FilterSettings settings) {
  filler_.Fill(std::move(settings));
  fillNext_ = true;
}

void PageScreen::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) return ShowProgress(form);
  if (std::exchange(fillNext_, false)) {
    filler_.ShowModal(form);
    return Remember(form);
  }
  try {
    ShowDialog(form);
  } catch (const platform::Error& error) {
    dialogError_ = error.Description();
    throw;
  }
}

void PageScreen::ShowProgress(Form& form) {
  windows_.OpenProgress(form);
  const Shown shown(windows_);
  cancelling_ = false;
  desk::RunProgressBox(form);
}

std::string PageScreen::Prepare(const Form& form) {
  desk::FilterControl* control = desk::FilterControlOf(form);
  if (control == nullptr || !control->TakeFirstShowing()) return {};
  control->Reset();
  const std::string standard = StandardScheme(schemes_, form.Name());
  const std::string scheme = standard.empty() ? std::string(kLastScheme) : standard;
  // A scheme of an older dialog may not fit; the defaults stand then.
  platform::SkipErrors([&] {
    if (schemes_.Load(form.Name(), scheme)) control->Load(schemes_, form.Name(), scheme);
  });
  return standard;
}

void PageScreen::ShowDialog(Form& form) {
  form.Activate();
  const std::string scheme = Prepare(form);
  windows_.OpenForm(form, desk::FilterControlOf(form) == nullptr ? 0 : report_, scheme);
  {
    const Shown shown(windows_);
    loop_.serveUntil([&] { return !form.IsVisible(); });
  }
  Remember(form);
}

// Keeps what the fields hold; whether it counts is known only when the report has taken the filter.
void PageScreen::Remember(const Form& form) {
  desk::FilterControl* control = desk::FilterControlOf(form);
  if (control == nullptr) return;
  LeftDialog left{.dialog = form.Name(), .fields = {}, .scheme = {}};
  for (const auto& field : form.Controls()) {
    if (std::optional<std::string> text = FieldText(*field)) {
      left.fields.emplace_back(field->Tag(), std::move(*text));
    }
  }
  platform::SkipErrors([&] {
    desk::MemorySchemes kept;
    control->Save(kept, form.Name(), std::string(kLastScheme));
    left.scheme = kept.Load(form.Name(), kLastScheme).value_or(desk::SchemeValues());
  });
  left_ = std::move(left);
}

platform::Answer PageScreen::Ask(const platform::MessageBox& box) {
  windows_.OpenMessage(box);
  const Shown shown(windows_);
  answer_.reset();
  buttons_ = box.buttons;
  loop_.serveUntil([this] { return answer_.has_value(); });
  return *std::exchange(answer_, std::nullopt);
}

bool PageScreen::Offers(platform::Answer answer) const {
  using platform::Answer;
  switch (buttons_) {
    case platform::MessageButtons::kOk:
      return answer == Answer::kOk;
    case platform::MessageButtons::kOkCancel:
      return answer == Answer::kOk || answer == Answer::kCancel;
    case platform::MessageButtons::kYesNo:
      return answer == Answer::kYes || answer == Answer::kNo;
  }
  return false;
}

void PageScreen::RunPendingEvents() {
  loop_.servePending();
  if (!cancelling_ || !windows_.HasProgress()) return;
  cancelling_ = false;
  cancelled_ = true;
  throw platform::Error(platform::ErrorNumber::kUserDefined, "browser", "查询已取消");
}

void PageScreen::SetPointer(platform::Pointer pointer) {
  Json message = Message("pointer");
  message["pointer"] = std::string(platform::ToString(pointer));
  wire_.Send(FrameKind::kMessage, ToText(message));
}

void PageScreen::TellProgress(std::string_view /*operation*/, const platform::Variant& /*value*/) {
  windows_.TellProgress();
}

}  // namespace browser
