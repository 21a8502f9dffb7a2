#pragma once

#include <functional>

#include "component/frame/clsPass.h"
#include "component/frame/frmProgBar.h"

namespace component {

// The report's side of the progress box. Show returns only when the box is gone; everything else happens in
// onActive, which must end in Unload. A Bar can show a box again and again, a fresh one each time. Without a
// box up, Unload does nothing and every other call raises kObjectNotSet.
class Bar final : public platform::Exposed<Bar> {
 public:
  platform::Variant HideProgBar();
  platform::Variant SetBarMaxValue(std::int32_t value);
  platform::Variant SetBarMinValue(std::int32_t value);
  platform::Variant SetBarValue(std::int32_t value);
  platform::Variant SetBarValueWithMax();
  platform::Variant SetMsg(const std::string& message);
  platform::Variant SetMsgHead(const std::string& head);
  // An error that onActive raises leaves through here, with the box closed.
  platform::Variant Show();
  platform::Variant ShowProgBar();
  platform::Variant Unload();

  bool IsUp() const { return static_cast<bool>(pass_); }

  std::function<void()> onActive;

  static constexpr std::string_view kClassName = "TOVStockRpt.Bar";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Bar::HideProgBar>("HideProgBar"),
      platform::Method<&Bar::SetBarMaxValue>("SetBarMaxValue", "Value"),
      platform::Method<&Bar::SetBarMinValue>("SetBarMinValue", "Value"),
      platform::Method<&Bar::SetBarValue>("SetBarValue", "Value"),
      platform::Method<&Bar::SetBarValueWithMax>("SetBarValueWithMax"),
      platform::Method<&Bar::SetMsg>("SetMsg", "Message"),
      platform::Method<&Bar::SetMsgHead>("SetMsgHead", "Head"), platform::Method<&Bar::Show>("Show"),
      platform::Method<&Bar::ShowProgBar>("ShowProgBar"), platform::Method<&Bar::Unload>("Unload"));

 private:
  clsPass& Pass() const;

  platform::Ref<clsPass> pass_;
  platform::Ref<frmProgBar> box_;
};

}  // namespace component
