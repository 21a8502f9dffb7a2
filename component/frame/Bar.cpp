#include "component/frame/Bar.h"

#include "platform/form/Screen.h"

namespace component {

using platform::Error;
using platform::ErrorNumber;
using platform::MakeRef;
using platform::Ref;
using platform::Variant;

clsPass& Bar::Pass() const {
  if (!pass_) throw Error(ErrorNumber::kObjectNotSet, "Bar", "the progress box is not up");
  return *pass_;
}

Variant Bar::HideProgBar() {
  Pass().HideProgBar();
  return {};
}

Variant Bar::SetBarMaxValue(std::int32_t value) {
  Pass().SetBarMaxValue(value);
  return {};
}

Variant Bar::SetBarMinValue(std::int32_t value) {
  Pass().SetBarMinValue(value);
  return {};
}

Variant Bar::SetBarValue(std::int32_t value) {
  Pass().SetBarValue(value);
  return {};
}

Variant Bar::SetBarValueWithMax() {
  Pass().SetBarValueWithMax();
  return {};
}

Variant Bar::SetMsg(const std::string& message) {
  Pass().SetMsg(message);
  return {};
}

Variant Bar::SetMsgHead(const std::string& head) {
  Pass().SetMsgHead(head);
  return {};
}

Variant Bar::ShowProgBar() {
  Pass().ShowProgBar();
  return {};
}

Variant Bar::Show() {
  const Ref<Bar> kept(this);  // the work may drop the report that holds this
  const Ref<clsPass> pass = MakeRef<clsPass>();
  pass->onActive = [this] {
    if (onActive) onActive();
  };
  const Ref<frmProgBar> box = MakeRef<frmProgBar>(pass);
  pass_ = pass;
  box_ = box;
  // However the box ends, this Bar has none afterwards.
  struct DropAtEnd {
    Bar& bar;
    clsPass& pass;
    ~DropAtEnd() {
      pass.onActive = {};
      if (bar.pass_.Get() != &pass) return;
      bar.pass_ = nullptr;
      bar.box_ = nullptr;
    }
  };
  const DropAtEnd drop{*this, *pass};
  box->Show();
  return {};
}

Variant Bar::Unload() {
  if (!pass_) return {};
  pass_->Unload();
  pass_ = nullptr;
  box_ = nullptr;
  platform::Screen::Current().RunPendingEvents();
  return {};
}

}  // namespace component
