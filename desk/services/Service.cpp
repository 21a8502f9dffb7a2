#include "desk/services/Service.h"

namespace desk {

using platform::CallKind;
using platform::Object;
using platform::Variant;

Service::~Service() {
  if (!announcedAs_.empty()) desk_->Told().OnReleased(announcedAs_);
}

void Service::Announce() {
  announcedAs_ = ProgrammaticId();
  desk_->Told().OnCreated(announcedAs_);
}

void Service::Tell(const platform::Operation* operation, std::string_view member, CallKind kind,
                   std::span<const Variant> arguments) {
  Witness& witness = desk_->Told();
  switch (operation == nullptr ? kind : operation->kind) {
    case CallKind::kMethod:
      witness.OnCalled(ProgrammaticId(), member, arguments);
      TellMeaning(witness, ProgrammaticId(), member, arguments,
                  [this](std::string_view property) { return Written(property); });
      break;
    case CallKind::kGet:
      witness.OnGot(ProgrammaticId(), member, arguments);
      break;
    case CallKind::kPut:
      if (arguments.empty()) {
        witness.OnPut(ProgrammaticId(), member, {}, Variant());
      } else {
        witness.OnPut(ProgrammaticId(), member, arguments.first(arguments.size() - 1), arguments.back());
      }
      break;
  }
}

Object* Service::StandIn() {
  if (!standIn_) standIn_ = desk_->ReplacementFor(ProgrammaticId());
  return standIn_.Get();
}

}  // namespace desk
