#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "platform/value/Variant.h"

namespace platform {

// The events of one object, by name, for one listener: a form listens to the controls that stand in it.
class EventSource {
 public:
  using Listener = std::function<void(std::string_view event, std::span<Variant> arguments)>;

  // Replaces the listener; an empty one stops listening. The caller sees to it that what the listener
  // refers to outlives it.
  void Listen(Listener listener) { listener_ = std::move(listener); }

  // Raises an event. What the listener takes by reference is in `arguments` afterwards; an error that it
  // raises comes out here. Without a listener nothing happens.
  void Raise(std::string_view event, std::span<Variant> arguments) const {
    if (!listener_) return;
    const Listener kept = listener_;  // a listener may stop listening while it runs
    kept(event, arguments);
  }
  template <class... Arguments>
  void RaiseWith(std::string_view event, Arguments&&... arguments) const {
    std::array<Variant, sizeof...(Arguments)> values{Variant(arguments)...};
    Raise(event, values);
  }

 private:
  Listener listener_;
};

}  // namespace platform
