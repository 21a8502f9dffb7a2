#pragma once

#include <functional>

#include "platform/object/OperationTable.h"

namespace component {

// A pair of hands between the report's side of the progress box (Bar) and the box (frmProgBar): each call is
// an event on the other side, so that neither holds the other's type.
class clsPass final : public platform::Exposed<clsPass> {
 public:
  void HideProgBar() { Tell("HideProgBar"); }
  void SetActive() {
    if (onActive) onActive();
  }
  void SetBarMaxValue(std::int32_t value) { Tell("SetBarMaxValue", value); }
  void SetBarMinValue(std::int32_t value) { Tell("SetBarMinValue", value); }
  void SetBarValue(std::int32_t value) { Tell("SetBarValue", value); }
  void SetBarValueWithMax() { Tell("SetBarValueWithMax"); }
  void SetMsg(const std::string& message) { Tell("SetMsg", message); }
  void SetMsgHead(const std::string& head) { Tell("SetMsgHead", head); }
  void ShowProgBar() { Tell("ShowProgBar"); }
  void Unload() { Tell("Unload"); }

  // Heard by Bar.
  std::function<void()> onActive;
  // Heard by the box: every other call, with its argument; Missing for a call without one.
  std::function<void(std::string_view operation, const platform::Variant& value)> onTold;

  static constexpr std::string_view kClassName = "TOVStockRpt.clsPass";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&clsPass::HideProgBar>("HideProgBar"),
      platform::Method<&clsPass::SetActive>("SetActive"),
      platform::Method<&clsPass::SetBarMaxValue>("SetBarMaxValue", "Value"),
      platform::Method<&clsPass::SetBarMinValue>("SetBarMinValue", "Value"),
      platform::Method<&clsPass::SetBarValue>("SetBarValue", "Value"),
      platform::Method<&clsPass::SetBarValueWithMax>("SetBarValueWithMax"),
      platform::Method<&clsPass::SetMsg>("SetMsg", "Message"),
      platform::Method<&clsPass::SetMsgHead>("SetMsgHead", "Head"),
      platform::Method<&clsPass::ShowProgBar>("ShowProgBar"), platform::Method<&clsPass::Unload>("Unload"));

 private:
  void Tell(std::string_view operation, const platform::Variant& value = platform::Missing()) {
    if (onTold) onTold(operation, value);
  }
};

}  // namespace component
