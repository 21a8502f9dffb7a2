#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/object/OperationTable.h"

namespace component {

// What the report's side may tell the box, in the order of their names.
enum class BarCall : std::uint8_t {
  kHideProgBar,
  kSetBarMaxValue,
  kSetBarMinValue,
  kSetBarValue,
  kSetBarValueWithMax,
  kSetMsg,
  kSetMsgHead,
  kShowProgBar,
  kUnload,
};
inline constexpr std::string_view kBarCallNames[] = {"HideProgBar", "SetBarMaxValue",     "SetBarMinValue",
                                                     "SetBarValue", "SetBarValueWithMax", "SetMsg",
                                                     "SetMsgHead",  "ShowProgBar",        "Unload"};
constexpr std::string_view NameOf(BarCall call) { return kBarCallNames[static_cast<std::size_t>(call)]; }

// A pair of hands between the report's side of the progress box (Bar) and the box (frmProgBar): each call is
// an event on the other side, so that neither holds the other's type.
class clsPass final : public platform::Exposed<clsPass> {
 public:
  void HideProgBar() { Tell(BarCall::kHideProgBar); }
  void SetActive() {
    if (onActive) onActive();
  }
  void SetBarMaxValue(std::int32_t value) { Tell(BarCall::kSetBarMaxValue, value); }
  void SetBarMinValue(std::int32_t value) { Tell(BarCall::kSetBarMinValue, value); }
  void SetBarValue(std::int32_t value) { Tell(BarCall::kSetBarValue, value); }
  void SetBarValueWithMax() { Tell(BarCall::kSetBarValueWithMax); }
  void SetMsg(const std::string& message) { Tell(BarCall::kSetMsg, message); }
  void SetMsgHead(const std::string& head) { Tell(BarCall::kSetMsgHead, head); }
  void ShowProgBar() { Tell(BarCall::kShowProgBar); }
  void Unload() { Tell(BarCall::kUnload); }

  // Heard by Bar.
  std::function<void()> onActive;
  // Heard by the box: every other call, with its argument; Missing for a call without one.
  std::function<void(BarCall call, const platform::Variant& value)> onTold;

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
  void Tell(BarCall call, const platform::Variant& value = platform::Missing()) {
    if (onTold) onTold(call, value);
  }
};

}  // namespace component
