#pragma once

// The operations of a class stand in ONE compile-time table, in slot order, made from member pointers. C++
// calls the member; a late-bound caller finds it here by name. The table also tells the kind of each
// operation, its parameters, which of them are by reference or optional, and the types, so that an interface
// description can be written from it.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/object/Arguments.h"
#include "platform/value/Variant.h"

namespace platform {

struct Parameter {
  std::string_view name;
  ValueType type = ValueType::kVariant;
  bool byReference = false;
  bool optional = false;
};

struct Operation {
  std::string_view name;
  CallKind kind = CallKind::kMethod;
  ValueType result = ValueType::kNone;
  std::span<const Parameter> parameters;
  Variant (*call)(Object& self, const Operation& operation, std::string_view className,
                  std::span<Variant> arguments) = nullptr;

  std::size_t RequiredCount() const;
};

// One class as a late-bound caller sees it. `buckets` is a hash table over the names, without regard to
// case; an entry is the operation's position plus 1, 0 for none. Its size is a power of two.
struct ClassInfo {
  std::string_view name;
  std::span<const Operation> operations;
  std::span<const std::uint8_t> buckets;

  // The operation of this name and kind. A get answers a method call and the other way round, since a
  // caller by name cannot see the difference. Null when there is none.
  const Operation* Find(std::string_view member, CallKind kind) const;
};

// Checks the arity, then calls; what Exposed classes answer to Object::Invoke.
Variant InvokeOperation(const ClassInfo& info, Object& self, std::string_view member, CallKind kind,
                        std::span<Variant> arguments);
// The same for a caller that has looked for the operation: what ClassInfo::Find answered.
Variant InvokeFound(const ClassInfo& info, const Operation* operation, Object& self, std::string_view member,
                    CallKind kind, std::span<Variant> arguments);

template <auto Member>
struct OperationEntry {
  using Signature = detail::Signature<decltype(Member)>;
  CallKind kind = CallKind::kMethod;
  std::string_view name;
  std::array<std::string_view, Signature::kArity> parameters;
};

template <auto Member, class... Names>
constexpr OperationEntry<Member> Method(std::string_view name, Names... parameters) {
  static_assert(sizeof...(Names) == detail::Signature<decltype(Member)>::kArity, "name every parameter once");
  return {CallKind::kMethod, name, {parameters...}};
}
template <auto Member, class... Names>
constexpr OperationEntry<Member> PropertyGet(std::string_view name, Names... parameters) {
  static_assert(sizeof...(Names) == detail::Signature<decltype(Member)>::kArity, "name every parameter once");
  return {CallKind::kGet, name, {parameters...}};
}
template <auto Member, class... Names>
constexpr OperationEntry<Member> PropertyPut(std::string_view name, Names... parameters) {
  static_assert(sizeof...(Names) == detail::Signature<decltype(Member)>::kArity, "name every parameter once");
  return {CallKind::kPut, name, {parameters...}};
}

namespace detail {

constexpr std::uint32_t NameHash(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) {
    const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    hash = (hash ^ static_cast<unsigned char>(lower)) * 16777619U;
  }
  return hash;
}

// By-reference parameters reach the caller also when the operation raises.
template <class Bound>
struct HandBackAtEnd {
  Bound& bound;
  ~HandBackAtEnd() {
    std::apply([](auto&... argument) { (argument.HandBack(), ...); }, bound);
  }
};

template <class C, auto Member>
Variant CallThrough(Object& self, const Operation& operation, std::string_view className,
                    std::span<Variant> arguments) {
  using Sig = Signature<decltype(Member)>;
  return [&]<std::size_t... I>(std::index_sequence<I...>)->Variant {
    [[maybe_unused]] const ArgumentPlace place{className, operation.name};
    using Bound = std::tuple<Argument<std::tuple_element_t<I, typename Sig::Parameters>>...>;
    Bound bound{Argument<std::tuple_element_t<I, typename Sig::Parameters>>(
        I < arguments.size() ? &arguments[I] : nullptr, place, I)...};
    const HandBackAtEnd<Bound> handBack{bound};
    auto run = [&]() -> decltype(auto) {
      return (static_cast<C&>(self).*Member)(std::get<I>(bound).Value()...);
    };
    if constexpr (std::is_void_v<typename Sig::Result>) {
      run();
      return Variant();
    } else {
      return Variant(run());
    }
  }
  (std::make_index_sequence<Sig::kArity>{});
}

template <auto Member, std::size_t... I>
constexpr auto DescribeParameters(const OperationEntry<Member>& entry, std::index_sequence<I...>) {
  using Parameters = typename Signature<decltype(Member)>::Parameters;
  return std::array<Parameter, sizeof...(I)>{
      Parameter{.name = entry.parameters[I],
                .type = Argument<std::tuple_element_t<I, Parameters>>::kType,
                .byReference = Argument<std::tuple_element_t<I, Parameters>>::kByReference,
                .optional = Argument<std::tuple_element_t<I, Parameters>>::kOptional}...};
}

// What follows from the table C::kOperations, worked out at compile time once a class.
template <class C>
struct Described {
  static constexpr const auto& kTable = C::kOperations;
  static constexpr std::size_t kCount = std::tuple_size_v<std::remove_cvref_t<decltype(kTable)>>;
  static constexpr std::size_t kBucketCount = std::bit_ceil(kCount * 2 + 1);

  template <std::size_t I>
  static constexpr auto kParameters = []<auto Member>(const OperationEntry<Member>& entry) {
    return DescribeParameters(entry, std::make_index_sequence<Signature<decltype(Member)>::kArity>{});
  }
  (std::get<I>(kTable));

  template <std::size_t I>
  static constexpr Operation Describe() {
    return []<auto Member>(const OperationEntry<Member>& entry) {
      return Operation{.name = entry.name,
                       .kind = entry.kind,
                       .result = kTypeOf<typename Signature<decltype(Member)>::Result>,
                       .parameters = kParameters<I>,
                       .call = &CallThrough<C, Member>};
    }
    (std::get<I>(kTable));
  }

  static constexpr auto kOperations = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::array<Operation, kCount>{Describe<I>()...};
  }
  (std::make_index_sequence<kCount>{});

  static constexpr auto kBuckets = [] {
    static_assert(kCount < 255, "an operation's position must fit in a bucket");
    std::array<std::uint8_t, kBucketCount> buckets{};
    for (std::size_t i = 0; i < kCount; ++i) {
      std::size_t bucket = NameHash(kOperations[i].name) % kBucketCount;
      while (buckets[bucket] != 0) bucket = (bucket + 1) % kBucketCount;
      buckets[bucket] = static_cast<std::uint8_t>(i + 1);
    }
    return buckets;
  }();

  static constexpr ClassInfo kInfo{.name = C::kClassName, .operations = kOperations, .buckets = kBuckets};
};

}  // namespace detail

// The table itself, written in the class:
//   static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10414";
//   static constexpr auto kOperations = Operations(PropertyPut<&Rpt10414::SetExtFirter>("ExtFirter", "text"),
//   …);
template <class... Entries>
constexpr std::tuple<Entries...> Operations(Entries... entries) {
  return {entries...};
}

// Makes C callable by name from its table. Base is Object or a class that derives from it.
template <class C, class Base = Object>
class Exposed : public Base {
 public:
  using Base::Base;

  static const ClassInfo& Info() { return detail::Described<C>::kInfo; }
  std::string ClassName() const override { return std::string(C::kClassName); }
  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override {
    return InvokeOperation(Info(), *this, member, kind, arguments);
  }
};

}  // namespace platform
