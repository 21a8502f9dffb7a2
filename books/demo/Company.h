#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/demo/Assortment.h"
#include "books/schema/Codes.h"
#include "platform/value/Date.h"

namespace books::demo {

using Id = std::int64_t;

// How large the company is and how long its book runs.
struct Plan {
  std::int32_t items = 0;
  std::int32_t warehouses = 0;
  std::int64_t entries = 0;
  std::uint64_t seed = 1;
  std::int32_t months = 0;
  platform::Date firstDay;  // of the first month
  platform::Date today;

  std::int32_t Days() const { return today.Days() - firstDay.Days() + 1; }
};

// A row of a base data tree; a parent stands before its children.
struct Node {
  Id id = 0;
  schema::BaseClass baseClass = schema::BaseClass::kItem;
  Id parentId = 0;  // 0 at the root
  std::string number;
  std::string name;
  bool group = false;
  bool disabled = false;
  std::string rightUsers;
};

struct Item {
  Id id = 0;
  const Family* family = nullptr;
  std::string model;
  std::string barcode;
  std::int64_t cost = 0;               // of a base unit on the first day, in ten-thousandths
  int markup = 1300;                   // sales price, in thousandths of the cost
  int weight = 1;                      // how often it is sold
  std::int64_t sale = 0;               // an ordinary line of a retail bill, in millionths
  std::vector<std::size_t> suppliers;  // indexes, the default one first; none for assembled items
  std::vector<Id> auxIds;
  bool discontinued = false;  // disabled; no more is bought in the last months
  Id unitId = 0;
  Id packageUnitId = 0;  // 0: none
  Id auxUnitId = 0;

  bool Is(Handling handling) const { return family->handling == handling; }
  bool Perishable() const { return family->shelfLifeDays > 0 && family->shelfLifeDays <= 60; }
  bool Weighed() const { return family->quantityDecimals > 0; }
};

enum class Role : std::uint8_t { kCentral, kShop, kGift, kClosed };

struct Warehouse {
  Id id = 0;
  Role role = Role::kShop;
};

struct User {
  Id id = 0;
  std::string_view name;
  bool restricted = false;
};

struct Supplier {
  Id id = 0;
  int department = 0;     // of goods: the first level of the categories it delivers, 1 to 5
  int priceLevel = 1000;  // thousandths
};

struct Customer {
  Id id = 0;
  bool wholesale = false;
  int priceLevel = 1000;
};

// Everything that stands in the base data of the book.
struct Company {
  std::vector<Node> nodes;
  std::vector<std::pair<Id, std::string>> units;
  std::vector<Item> items;
  std::vector<Warehouse> warehouses;  // the central ones first, the gift and the closed one last
  std::vector<Supplier> suppliers;
  std::vector<Customer> customers;
  std::vector<Id> departments;
  std::vector<Id> buyers;
  std::vector<Id> sellers;
  std::vector<Id> keepers;
  std::vector<std::pair<Id, Id>> matches;  // a customer and a supplier that are one firm
  std::array<User, 3> users;
  Id buyingDepartment = 0;
  Id sellingDepartment = 0;
  Id keepingDepartment = 0;
};

Company FoundCompany(const Plan& plan);

}  // namespace books::demo
