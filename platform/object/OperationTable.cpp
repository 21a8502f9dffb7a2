#include "platform/object/OperationTable.h"

namespace platform {
namespace {

std::string Place(std::string_view className, std::string_view member) {
  return std::string(className) + "." + std::string(member);
}

bool Answers(CallKind offered, CallKind wanted) {
  return offered == wanted || (offered != CallKind::kPut && wanted != CallKind::kPut);
}

}  // namespace

namespace detail {

void RaiseMissing(const ArgumentPlace& place, std::size_t position) {
  throw Error(ErrorNumber::kArgumentCount, std::string(place.className),
              Place(place.className, place.member) + ": argument " + std::to_string(position + 1) +
                  " is not optional");
}

void RaiseBadArgument(const ArgumentPlace& place, std::size_t position, const Error& cause) {
  throw Error(cause.Number(), std::string(place.className),
              Place(place.className, place.member) + ": argument " + std::to_string(position + 1) + ": " +
                  cause.Description());
}

void RaiseWrongObject(const Variant& value) {
  const auto* object = value.As<Ref<Object>>();
  const std::string found = object == nullptr ? std::string(ToString(value.GetKind()))
                                              : "an object of class " + (*object)->ClassName();
  throw Error(ErrorNumber::kTypeMismatch, "Argument", "type mismatch: " + found + " does not fit here");
}

}  // namespace detail

std::size_t Operation::RequiredCount() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(parameters, [](const Parameter& p) { return !p.optional; }));
}

const Operation* ClassInfo::Find(std::string_view member, CallKind kind) const {
  const std::size_t mask = buckets.size() - 1;
  const Operation* found = nullptr;
  for (std::size_t bucket = detail::NameHash(member) & mask; buckets[bucket] != 0;
       bucket = (bucket + 1) & mask) {
    const Operation& operation = operations[buckets[bucket] - 1U];
    if (!Answers(operation.kind, kind) || !EqualsIgnoreCase(operation.name, member)) continue;
    if (operation.kind == kind) return &operation;
    found = &operation;
  }
  return found;
}

Variant InvokeOperation(const ClassInfo& info, Object& self, std::string_view member, CallKind kind,
                        std::span<Variant> arguments) {
  return InvokeFound(info, info.Find(member, kind), self, member, kind, arguments);
}

Variant InvokeFound(const ClassInfo& info, const Operation* operation, Object& self, std::string_view member,
                    CallKind kind, std::span<Variant> arguments) {
  if (operation == nullptr) {
    throw Error(ErrorNumber::kUnknownMember, std::string(info.name),
                Place(info.name, member) + ": the object has no such " +
                    (kind == CallKind::kMethod ? "method" : "property") + " that can be " +
                    (kind == CallKind::kMethod ? "called"
                     : kind == CallKind::kGet  ? "read"
                                               : "written"));
  }
  if (arguments.size() > operation->parameters.size() || arguments.size() < operation->RequiredCount()) {
    throw Error(ErrorNumber::kArgumentCount, std::string(info.name),
                Place(info.name, operation->name) + ": wrong number of arguments, " +
                    std::to_string(arguments.size()) + " given, " +
                    std::to_string(operation->parameters.size()) + " declared");
  }
  return operation->call(self, *operation, info.name, arguments);
}

}  // namespace platform
