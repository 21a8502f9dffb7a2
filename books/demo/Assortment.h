#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "books/schema/Codes.h"

// What the demo company deals in: tables from which its items are put together.
namespace books::demo {

struct Noun {
  std::string_view name;
  int price = 0;  // cost of a piece of the 100 % size, in 分
};
struct Size {
  std::string_view text;  // the item's model
  int percent = 100;      // of the noun's price
};

// Demand by calendar month, January first, 100 being the average.
using Season = std::array<int, 12>;

enum class Property : std::uint8_t { kNone, kColour, kGarmentSize };
enum class Handling : std::uint8_t {
  kPlain,
  kBatch,      // kept by batch, with a shelf life where the family has one
  kSerial,     // every piece has its number
  kAssembled,  // never bought: put together from items of other families
};

// A category of the third level and all that its items have in common.
struct Family {
  std::string_view number;  // "01.01.01"
  std::string_view name;
  std::string_view unit;
  std::string_view package = {};  // a further unit of so many base units
  int packageFactor = 0;
  std::string_view auxUnit = {};  // counted beside the base unit, one to so many base units
  int auxFactor = 0;
  std::span<const Noun> nouns;
  std::span<const std::string_view> variants;
  std::span<const Size> sizes;
  Season season = {};
  int pace = 100;       // how often its items are sold, 100 being the average
  int typicalSale = 1;  // base units in one line of a retail bill
  int drift = 20;       // change of the cost in a year, in thousandths
  int shelfLifeDays = 0;
  Handling handling = Handling::kPlain;
  Property property = Property::kNone;
  schema::Valuation valuation = schema::Valuation::kMovingAverage;
  int quantityDecimals = 0;
};

struct Category {
  std::string_view number;
  std::string_view name;
};

// Levels 1 and 2, a category before those in it.
std::span<const Category> Categories();

std::span<const Family> FoodFamilies();
std::span<const Family> HouseholdFamilies();
std::span<const Family> HardwareFamilies();
std::span<const Family> ApplianceFamilies();

inline constexpr Season kEvenSeason = {105, 85, 95, 100, 100, 100, 100, 100, 105, 100, 105, 105};
inline constexpr Season kFestivalSeason = {190, 110, 60, 65, 75, 80, 75, 85, 145, 95, 90, 130};
inline constexpr Season kSummerSeason = {45, 45, 65, 95, 130, 165, 190, 180, 120, 75, 50, 40};
inline constexpr Season kWinterSeason = {180, 140, 90, 60, 40, 35, 30, 40, 75, 120, 180, 210};

}  // namespace books::demo
