#include "component/frame/frmProgBar.h"

#include <array>

#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"

namespace component {

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
  pass_->onTold = [this](std::string_view operation, const Variant& value) { Hear(operation, value); };
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

void frmProgBar::Hear(std::string_view operation, const Variant& value) {
  struct Effect {
    std::string_view operation;
    void (*apply)(frmProgBar& box, const Variant& value);
  };
  static constexpr std::array kEffects = {
      Effect{"HideProgBar", [](frmProgBar& box, const Variant&) { box.bar_.SetVisible(false); }},
      Effect{"ShowProgBar", [](frmProgBar& box, const Variant&) { box.bar_.SetVisible(true); }},
      Effect{"SetBarMaxValue",
             [](frmProgBar& box, const Variant& top) {
               // The bar counts in single precision.
               box.bar_.max = static_cast<double>(static_cast<float>(platform::ToInt32(top)));
             }},
      Effect{"SetBarMinValue",
             [](frmProgBar& box, const Variant& least) { box.bar_.min = platform::ToDouble(least); }},
      Effect{"SetBarValue",
             [](frmProgBar& box, const Variant& now) { box.bar_.value = platform::ToDouble(now); }},
      Effect{"SetBarValueWithMax", [](frmProgBar& box, const Variant&) { box.bar_.value = box.bar_.max; }},
      Effect{"SetMsg",
             [](frmProgBar& box, const Variant& text) {
               box.message_.SetCaption(box.head_ + platform::ToText(text));
             }},
      Effect{"SetMsgHead", [](frmProgBar& box, const Variant& text) { box.head_ = platform::ToText(text); }},
      Effect{"Unload",
             [](frmProgBar& box, const Variant&) {
               box.bar_.value = box.bar_.max;
               box.Unload();
             }},
  };
  for (const Effect& effect : kEffects) {
    if (effect.operation != operation) continue;
    effect.apply(*this, value);
    Screen::Current().TellProgress(operation, value);
    Screen::Current().RunPendingEvents();
    return;
  }
}

}  // namespace component
