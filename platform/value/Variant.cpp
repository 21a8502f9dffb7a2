#include "platform/value/Variant.h"

namespace platform {

Object& Variant::AsObject() const {
  const Ref<Object>* object = As<Ref<Object>>();
  if (object == nullptr) {
    throw Error(ErrorNumber::kObjectRequired, "Variant",
                "object required: the value is of kind " + std::string(ToString(GetKind())));
  }
  if (!*object) throw Error(ErrorNumber::kObjectNotSet, "Variant", "object variable not set");
  return **object;
}

std::string_view ToString(Variant::Kind kind) {
  switch (kind) {
    case Variant::Kind::kEmpty:
      return "empty";
    case Variant::Kind::kNull:
      return "database null";
    case Variant::Kind::kMissing:
      return "missing";
    case Variant::Kind::kBoolean:
      return "boolean";
    case Variant::Kind::kInt16:
      return "16-bit integer";
    case Variant::Kind::kInt32:
      return "32-bit integer";
    case Variant::Kind::kInt64:
      return "64-bit integer";
    case Variant::Kind::kDouble:
      return "double";
    case Variant::Kind::kCurrency:
      return "currency";
    case Variant::Kind::kDate:
      return "date";
    case Variant::Kind::kText:
      return "text";
    case Variant::Kind::kObject:
      return "object";
  }
  return "unknown";
}

}  // namespace platform
