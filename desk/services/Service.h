#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "desk/Desk.h"
#include "platform/object/OperationTable.h"

namespace desk {

// What the services share: the desk behind them, and that every call is told before it runs.
class Service : public platform::Object {
 public:
  explicit Service(std::shared_ptr<Desk> desk) : desk_(std::move(desk)) {}
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  Service(Service&&) = delete;
  Service& operator=(Service&&) = delete;
  ~Service() override;

  // Tells that the object was created by programmatic id; its end is then told as well.
  void Announce();

  // Tells of a call to this service or to an object that speaks for it. The operation that is going to
  // answer, null when there is none, decides whether the member is a method or a property, since a caller by
  // name may not know.
  void Tell(const platform::Operation* operation, std::string_view member, platform::CallKind kind,
            std::span<const platform::Variant> arguments);

 protected:
  Backend& Behind() const { return desk_->Behind(); }
  const std::shared_ptr<Desk>& GetDesk() const { return desk_; }
  // What was written to a property, for telling what a later call means; Empty when it does not matter.
  virtual platform::Variant Written(std::string_view /*property*/) const { return {}; }
  // The object that a host has put in this service's place since it was made; null when it has not.
  platform::Object* StandIn();
  virtual std::string_view ProgrammaticId() const = 0;

 private:
  std::shared_ptr<Desk> desk_;
  platform::Ref<platform::Object> standIn_;
  std::string_view announcedAs_;
};

// Makes C callable by name from its operation table, with every call told.
template <class C>
class Served : public platform::Exposed<C, Service> {
 public:
  using platform::Exposed<C, Service>::Exposed;

  platform::Variant Invoke(std::string_view member, platform::CallKind kind,
                           std::span<platform::Variant> arguments) override {
    if (platform::Object* standIn = this->StandIn()) return standIn->Invoke(member, kind, arguments);
    const platform::Operation* operation = C::Info().Find(member, kind);
    this->Tell(operation, member, kind, arguments);
    return platform::InvokeFound(C::Info(), operation, *this, member, kind, arguments);
  }

 protected:
  std::string_view ProgrammaticId() const override { return C::kClassName; }
};

// Tells what a call of a known service means beside the call itself: a text that is executed, a lookup, a
// usage record. For services and for whatever a host puts in their place; `property` reads what was
// written to the object before.
void TellMeaning(Witness& witness, std::string_view programmaticId, std::string_view method,
                 std::span<const platform::Variant> arguments,
                 const std::function<platform::Variant(std::string_view property)>& property);

}  // namespace desk
