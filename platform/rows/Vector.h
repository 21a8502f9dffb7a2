#pragma once

#include <vector>

#include "platform/object/OperationTable.h"

namespace platform {

// An ordered list of variants and objects, counted from 0.
class Vector final : public Exposed<Vector> {
 public:
  void Add(const Variant& value) { items_.push_back(value); }
  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
  // An index outside the list raises kSubscriptOutOfRange.
  Variant Item(std::int32_t index) const { return items_[Checked(index)]; }
  void SetItem(std::int32_t index, const Variant& value) { items_[Checked(index)] = value; }

  const std::vector<Variant>& Items() const { return items_; }

  static constexpr std::string_view kClassName = "RNX.Vector";
  static constexpr auto kOperations = Operations(
      Method<&Vector::Add>("Add", "Value"), PropertyGet<&Vector::Count>("Count"),
      PropertyGet<&Vector::Item>("Item", "Index"), PropertyPut<&Vector::SetItem>("Item", "Index", "Value"));

 private:
  std::size_t Checked(std::int32_t index) const {
    if (index < 0 || index >= Count()) {
      throw Error(ErrorNumber::kSubscriptOutOfRange, "Vector",
                  "subscript out of range: the list has no item " + std::to_string(index));
    }
    return static_cast<std::size_t>(index);
  }

  std::vector<Variant> items_;
};

}  // namespace platform
