#pragma once

// How one declared parameter takes its value from a Variant, and gives it back when it is by reference.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "platform/value/Convert.h"

namespace platform {

// The types that may cross an interface.
enum class ValueType {
  kNone,
  kVariant,
  kBoolean,
  kInt16,
  kInt32,
  kDouble,
  kCurrency,
  kDate,
  kText,
  kObject,
};

namespace detail {

template <class Function>
struct Signature;
template <class C, class R, class... P>
struct Signature<R (C::*)(P...)> {
  using Result = R;
  using Parameters = std::tuple<P...>;
  static constexpr std::size_t kArity = sizeof...(P);
};
template <class C, class R, class... P>
struct Signature<R (C::*)(P...) const> : Signature<R (C::*)(P...)> {};

template <class T>
struct RefTarget {
  static constexpr bool kIsRef = false;
};
template <class T>
struct RefTarget<Ref<T>> {
  static constexpr bool kIsRef = true;
  using Type = T;
};
template <class T>
struct OptionalOf {
  static constexpr bool kIsOptional = false;
  using Type = T;
};
template <class T>
struct OptionalOf<std::optional<T>> {
  static constexpr bool kIsOptional = true;
  using Type = T;
};

template <class T>
consteval ValueType TypeOf() {
  using Bare = typename OptionalOf<std::remove_cvref_t<T>>::Type;
  if constexpr (std::is_void_v<T>) {
    return ValueType::kNone;
  } else if constexpr (std::is_same_v<Bare, Variant>) {
    return ValueType::kVariant;
  } else if constexpr (std::is_same_v<Bare, bool>) {
    return ValueType::kBoolean;
  } else if constexpr (std::is_same_v<Bare, std::int16_t>) {
    return ValueType::kInt16;
  } else if constexpr (std::is_same_v<Bare, std::int32_t>) {
    return ValueType::kInt32;
  } else if constexpr (std::is_same_v<Bare, double>) {
    return ValueType::kDouble;
  } else if constexpr (std::is_same_v<Bare, Currency>) {
    return ValueType::kCurrency;
  } else if constexpr (std::is_same_v<Bare, Date>) {
    return ValueType::kDate;
  } else if constexpr (std::is_same_v<Bare, std::string>) {
    return ValueType::kText;
  } else {
    static_assert(RefTarget<Bare>::kIsRef, "this type cannot cross an interface");
    return ValueType::kObject;
  }
}

template <class T>
inline constexpr ValueType kTypeOf = TypeOf<T>();

// Where an argument stands, for messages: "TOVStockRpt.Rpt10414.RptID".
struct ArgumentPlace {
  std::string_view className;
  std::string_view member;
};

[[noreturn]] void RaiseMissing(const ArgumentPlace& place, std::size_t position);
[[noreturn]] void RaiseBadArgument(const ArgumentPlace& place, std::size_t position, const Error& cause);
[[noreturn]] void RaiseWrongObject(const Variant& value);

template <class T>
T FromVariant(const Variant& value) {
  if constexpr (std::is_same_v<T, Variant>) {
    return value;
  } else if constexpr (std::is_same_v<T, bool>) {
    return ToBoolean(value);
  } else if constexpr (std::is_same_v<T, std::int16_t>) {
    return ToInt16(value);
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return ToInt32(value);
  } else if constexpr (std::is_same_v<T, double>) {
    return ToDouble(value);
  } else if constexpr (std::is_same_v<T, Currency>) {
    return ToCurrency(value);
  } else if constexpr (std::is_same_v<T, Date>) {
    return ToDate(value);
  } else if constexpr (std::is_same_v<T, std::string>) {
    return ToText(value);
  } else {
    // Nothing and an empty value both stand for "no object"; a wrong class is refused here, not later.
    if (value.IsEmpty() || value.IsNothing()) return T();
    T object = value.AsRef<typename RefTarget<T>::Type>();
    if (!object) RaiseWrongObject(value);
    return object;
  }
}

// Parameter is the type as declared: T, const T&, T& (by reference) or std::optional<T>.
template <class Parameter>
class Argument {
 public:
  using Bare = std::remove_cvref_t<Parameter>;
  static constexpr bool kByReference =
      std::is_lvalue_reference_v<Parameter> && !std::is_const_v<std::remove_reference_t<Parameter>>;
  static constexpr bool kOptional = OptionalOf<Bare>::kIsOptional;
  // What is only read is read where the caller has it.
  static constexpr bool kBorrows =
      std::is_same_v<Parameter, const std::string&> || std::is_same_v<Parameter, const Variant&>;
  static constexpr ValueType kType = kTypeOf<Bare>;

  Argument(Variant* given, const ArgumentPlace& place, std::size_t position) : given_(given) {
    const bool missing = given == nullptr || given->IsMissing();
    if constexpr (kOptional) {
      if (!missing) value_ = Convert<typename OptionalOf<Bare>::Type>(*given, place, position);
    } else {
      if (missing) RaiseMissing(place, position);
      if constexpr (kBorrows) {
        if (Borrowed() != nullptr) return;
      }
      value_ = Convert<Bare>(*given, place, position);
    }
  }
  // Gives a by-reference parameter back to the caller; does nothing for the others.
  void HandBack() {
    if constexpr (kByReference && kOptional) {
      if (given_ != nullptr && value_) *given_ = Variant(*value_);
    } else if constexpr (kByReference) {
      *given_ = Variant(std::move(value_));
    }
  }

  auto& Value() {
    if constexpr (kBorrows) {
      const Bare* borrowed = Borrowed();
      return borrowed == nullptr ? std::as_const(value_) : *borrowed;
    } else {
      return value_;
    }
  }

 private:
  // Null for what has to be converted.
  const Bare* Borrowed() const {
    if constexpr (std::is_same_v<Bare, Variant>) {
      return given_;
    } else {
      return std::as_const(*given_).template As<Bare>();
    }
  }
  template <class T>
  static T Convert(const Variant& given, const ArgumentPlace& place, std::size_t position) {
    try {
      return FromVariant<T>(given);
    } catch (const Error& error) {
      RaiseBadArgument(place, position, error);
    }
  }

  Variant* given_;
  Bare value_{};
};

}  // namespace detail
}  // namespace platform
