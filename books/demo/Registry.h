#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "books/demo/Company.h"

namespace books::demo {

// Gives out ids, unique over all classes, while the trees of a company are put together.
class Registry {
 public:
  explicit Registry(Company& company) : company_(company) {}

  Id Add(schema::BaseClass baseClass, Id parentId, std::string number, std::string name, bool group = false);
  Id Group(schema::BaseClass baseClass, Id parentId, std::string number, std::string name) {
    return Add(baseClass, parentId, std::move(number), std::move(name), true);
  }
  // The unit of this name, added when it is new.
  Id UnitOf(std::string_view name);

 private:
  Company& company_;
  std::unordered_map<std::string, Id> units_;
};

// `value` with leading zeros: Padded(7, 3) is "007".
std::string Padded(std::int64_t value, int width);

// The category tree with its items, which buy from company.suppliers.
void AddItems(Company& company, Registry& registry, const Plan& plan);
// Auxiliary properties by kind: all colours, then all garment sizes.
void AddProperties(Registry& registry, std::vector<Id>& colours, std::vector<Id>& garmentSizes);
void AddWarehouses(Company& company, Registry& registry, const Plan& plan);
void AddPartners(Company& company, Registry& registry, const Plan& plan);
void AddStaff(Company& company, Registry& registry, const Plan& plan);

}  // namespace books::demo
