#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/object/Object.h"
#include "platform/value/Currency.h"
#include "platform/value/Date.h"
#include "platform/value/Error.h"

namespace platform {

struct Empty {
  friend constexpr bool operator==(Empty, Empty) = default;
};
// What a database answers for a field without a value. Not the same as Empty: it is passed on, and it
// converts to nothing but itself.
struct Null {
  friend constexpr bool operator==(Null, Null) = default;
};
// An optional argument that the caller left out.
struct Missing {
  friend constexpr bool operator==(Missing, Missing) = default;
};

// A value of any kind that crosses a border: filter keys, arguments, fields of a row. Texts are UTF-8.
// An object reference that holds nothing is of kind kObject ("nothing"), not kEmpty. Conversions between
// kinds are in Convert.h; a Variant itself never converts.
class Variant {
 public:
  enum class Kind {
    kEmpty,
    kNull,
    kMissing,
    kBoolean,
    kInt16,
    kInt32,
    kInt64,
    kDouble,
    kCurrency,
    kDate,
    kText,
    kObject,
  };

  Variant() = default;
  // NOLINTBEGIN(google-explicit-constructor): a Variant is made from any of its kinds without ceremony
  Variant(Empty) {}
  Variant(Null value) : value_(value) {}
  Variant(Missing value) : value_(value) {}
  template <class T>
  requires std::is_same_v<T, bool> Variant(T value) : value_(value) {}
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(std::int64_t value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(Currency value) : value_(value) {}
  Variant(Date value) : value_(value) {}
  Variant(std::string value) : value_(std::move(value)) {}
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(std::nullptr_t) : value_(Ref<Object>()) {}
  template <class T>
  requires std::is_base_of_v<Object, T> Variant(const Ref<T>& value) : value_(Ref<Object>(value)) {}
  // NOLINTEND(google-explicit-constructor)

  Kind GetKind() const { return static_cast<Kind>(value_.index()); }
  bool IsEmpty() const { return GetKind() == Kind::kEmpty; }
  bool IsNull() const { return GetKind() == Kind::kNull; }
  bool IsMissing() const { return GetKind() == Kind::kMissing; }
  bool IsText() const { return GetKind() == Kind::kText; }
  bool IsObject() const { return GetKind() == Kind::kObject; }
  bool IsNothing() const { return IsObject() && !*As<Ref<Object>>(); }

  // The value when it is of exactly this type, otherwise null. No conversion.
  template <class T>
  const T* As() const {
    return std::get_if<T>(&value_);
  }
  template <class T>
  T* As() {
    return std::get_if<T>(&value_);
  }
  // The object as a T; null when this holds nothing, no object, or an object of another class.
  template <class T>
  Ref<T> AsRef() const {
    const Ref<Object>* object = As<Ref<Object>>();
    return object == nullptr ? Ref<T>() : Ref<T>(ObjectAs<T>(object->Get()));
  }
  // The object; raises kObjectRequired for any other kind and kObjectNotSet for nothing.
  Object& AsObject() const;

  template <class Visitor>
  decltype(auto) Visit(Visitor&& visitor) const {
    return std::visit(std::forward<Visitor>(visitor), value_);
  }

  // Same kind and same value; objects are equal when they are the same object.
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  std::variant<Empty, Null, Missing, bool, std::int16_t, std::int32_t, std::int64_t, double, Currency, Date,
               std::string, Ref<Object>>
      value_;
};

// The kind's name in messages: "text", "integer", "nothing"…
std::string_view ToString(Variant::Kind kind);

namespace detail {

inline void WriteBack(Variant& from, Variant& to) { to = std::move(from); }
template <class Other>
void WriteBack(Variant&, Other&) {}

// Hands the arguments back to the caller's variables on every way out of the call.
template <class... Arguments>
struct ByReference {
  std::array<Variant, sizeof...(Arguments)>& from;
  std::tuple<Arguments&...> to;

  ~ByReference() { HandBack(std::index_sequence_for<Arguments...>{}); }
  template <std::size_t... I>
  void HandBack(std::index_sequence<I...>) {
    (WriteBack(std::get<I>(from), std::get<I>(to)), ...);
  }
};

}  // namespace detail

template <class... Arguments>
Variant Object::InvokeWith(std::string_view member, CallKind kind, Arguments&&... arguments) {
  const std::tuple<Arguments&...> callers(arguments...);
  std::array<Variant, sizeof...(Arguments)> values{Variant(std::forward<Arguments>(arguments))...};
  const detail::ByReference<Arguments...> handBack{values, callers};
  return Invoke(member, kind, values);
}

template <class... Arguments>
Variant Object::Call(std::string_view member, Arguments&&... arguments) {
  return InvokeWith(member, CallKind::kMethod, std::forward<Arguments>(arguments)...);
}

template <class... Arguments>
Variant Object::Get(std::string_view member, Arguments&&... arguments) {
  return InvokeWith(member, CallKind::kGet, std::forward<Arguments>(arguments)...);
}

template <class... Arguments>
void Object::Put(std::string_view member, Arguments&&... arguments) {
  InvokeWith(member, CallKind::kPut, std::forward<Arguments>(arguments)...);
}

}  // namespace platform
