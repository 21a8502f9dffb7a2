#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "desk/Backend.h"
#include "desk/Witness.h"
#include "platform/object/Object.h"

namespace desk {

// The closed services that stand around the component, made by programmatic id. Always held by a shared
// pointer: a service that the component keeps for the life of the process may outlive its host, and then
// finds the desk closed.
class Desk : public std::enable_shared_from_this<Desk> {
 public:
  // Answers for a service that the host replaces by an object of its own, and null for the others.
  using Replacement = std::function<platform::Ref<platform::Object>(std::string_view programmaticId)>;

  // Both are borrowed until Close.
  static std::shared_ptr<Desk> Open(Backend& backend, Witness& witness);
  // From here on services raise kObjectClosed, and nobody is told anything.
  void Close();

  // A service or a filter control; null for a class that the desk does not supply.
  platform::Ref<platform::Object> Create(std::string_view programmaticId);
  // The same for an object that another service hands out: its creation is told to nobody.
  platform::Ref<platform::Object> HandOut(std::string_view programmaticId);

  void SetReplacement(Replacement replacement) { replacement_ = std::move(replacement); }
  platform::Ref<platform::Object> ReplacementFor(std::string_view programmaticId) const;

  Backend& Behind() const;
  Witness& Told() const { return *witness_; }

 private:
  Desk(Backend& backend, Witness& witness) : backend_(&backend), witness_(&witness) {}

  Backend* backend_;
  Witness* witness_;
  Replacement replacement_;
};

}  // namespace desk
