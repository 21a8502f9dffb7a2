#include "desk/Desk.h"

#include <array>

#include "desk/filter/ReportFilter.h"
#include "desk/filter/TOVRptFilter.h"
#include "desk/services/Data.h"
#include "desk/services/GLData.h"
#include "desk/services/GLView.h"
#include "desk/services/Session.h"

namespace desk {
namespace {

using platform::MakeRef;
using platform::Object;
using platform::Ref;

// A filter control is part of its form: it comes and goes with the dialog and is not announced.
enum class Announced { kYes, kNo };

struct ServiceClass {
  std::string_view programmaticId;
  Announced announced;
  Ref<Service> (*make)(const std::shared_ptr<Desk>& desk);
};

template <class C>
constexpr ServiceClass Serve(Announced announced = Announced::kYes) {
  return {C::kClassName, announced,
          [](const std::shared_ptr<Desk>& desk) -> Ref<Service> { return MakeRef<C>(desk); }};
}

constexpr std::array kServices = {
    Serve<CacheFacade>(),
    Serve<ShareProps>(),
    Serve<SystemProfile>(),
    Serve<SecurityInfo>(),
    Serve<GLData>(),
    Serve<GLView>(),
    Serve<AppConnection>(),
    Serve<FrameData>(),
    Serve<ItemInfo>(),
    Serve<ClassInfoService>(),
    Serve<BaseList>(),
    Serve<QuickCost>(),
    Serve<TOVRptFilter>(Announced::kNo),
    Serve<ReportFilter>(Announced::kNo),
};

const ServiceClass* FindService(std::string_view programmaticId) {
  for (const ServiceClass& service : kServices) {
    if (platform::EqualsIgnoreCase(service.programmaticId, programmaticId)) return &service;
  }
  return nullptr;
}

Witness& Mute() {
  static Witness mute;
  return mute;
}

}  // namespace

std::shared_ptr<Desk> Desk::Open(Backend& backend, Witness& witness) {
  return std::shared_ptr<Desk>(new Desk(backend, witness));
}

void Desk::Close() {
  backend_ = nullptr;
  witness_ = &Mute();
  replacement_ = {};
}

Ref<Object> Desk::Create(std::string_view programmaticId) {
  const ServiceClass* found = FindService(programmaticId);
  if (found == nullptr) return {};
  const Ref<Service> service = found->make(shared_from_this());
  if (found->announced == Announced::kYes) service->Announce();
  return service;
}

Ref<Object> Desk::HandOut(std::string_view programmaticId) {
  if (Ref<Object> replaced = ReplacementFor(programmaticId)) return replaced;
  const ServiceClass* found = FindService(programmaticId);
  return found == nullptr ? Ref<Object>() : Ref<Object>(found->make(shared_from_this()));
}

Ref<Object> Desk::ReplacementFor(std::string_view programmaticId) const {
  return replacement_ ? replacement_(programmaticId) : Ref<Object>();
}

Backend& Desk::Behind() const {
  if (backend_ == nullptr) {
    throw platform::Error(platform::ErrorNumber::kObjectClosed, "Desk",
                          "the services are closed: their host has ended");
  }
  return *backend_;
}

}  // namespace desk
