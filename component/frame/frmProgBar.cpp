#include "component/frame/frmProgBar.h"

#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

// Told with every row of a ledger, by the report itself as a rule.
double NumberOf(const platform::Variant& value) {
  const auto* number = value.As<std::int32_t>();
  return number == nullptr ? platform::ToDouble(value) : *number;
}

}  // namespace

using platform::Dictionary;
using platform::Ref;
using platform::Screen;
using platform::Variant;

frmProgBar::frmProgBar(const Ref<clsPass>& pass)
    : Form("frmProgBar", platform::FormRole::kProgress),
      pass_(pass),
      bar_(Add<platform::ProgressBar>("ProgressBar1")),
      message_(Add<platform::Label>("lblMsg")) {
  Add<platform::Frame>("Animation1");
  pass_->onTold = [this](BarCall call, const Variant& value) { Hear(call, value); };
}

frmProgBar::~frmProgBar() { pass_->onTold = {}; }

void frmProgBar::OnLoad() {
  platform::SkipErrors([&] {
    Ref<Dictionary> resources;
    LoadFormResources(Ref<Object>(this), resources, Name());
  });
}

// Each activation starts the work, not only the first one.
void frmProgBar::OnActivate() { pass_->SetActive(); }

void frmProgBar::Hear(BarCall call, const Variant& value) {
  Apply(call, value);
  Screen& screen = Screen::Current();
  screen.TellProgress(NameOf(call), value);
  screen.RunPendingEvents();
}

void frmProgBar::Apply(BarCall call, const Variant& value) {
  switch (call) {
    case BarCall::kHideProgBar:
      return bar_.SetVisible(false);
    case BarCall::kShowProgBar:
      return bar_.SetVisible(true);
    case BarCall::kSetBarMaxValue:
      bar_.max = static_cast<double>(static_cast<float>(platform::ToInt32(value)));  // in single precision
      return;
    case BarCall::kSetBarMinValue:
      bar_.min = NumberOf(value);
      return;
    case BarCall::kSetBarValue:
      bar_.value = NumberOf(value);
      return;
    case BarCall::kSetBarValueWithMax:
      bar_.value = bar_.max;
      return;
    case BarCall::kSetMsg:
      caption_ = head_;
      if (const auto* text = value.As<std::string>()) caption_ += *text;
      return message_.SetCaption(caption_);
    case BarCall::kSetMsgHead:
      head_ = platform::ToText(value);
      return;
    case BarCall::kUnload:
      bar_.value = bar_.max;
      Unload();
  }
}

}  // namespace component
