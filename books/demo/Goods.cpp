// Items are put together from the tables of the assortment: every item of a family is another combination of
// noun, variant and size. A walk through all combinations with a stride that shares no factor with their
// number meets each one once, in an order that looks unsorted; when they run out, the next series of the
// range begins.
#include <algorithm>
#include <numeric>

#include "books/demo/Random.h"
#include "books/demo/Registry.h"

namespace books::demo {
namespace {

using schema::BaseClass;

constexpr std::string_view kSeries[] = {"", "精选", "优选", "实惠装", "升级款", "特惠装", "尊享", "定制款"};
constexpr std::string_view kColours[] = {"白色", "黑色", "米色", "浅灰", "天蓝", "墨绿", "粉色", "咖色"};
constexpr std::string_view kGarmentSizes[] = {"S", "M", "L", "XL", "XXL"};
constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kFen = 100;  // ten-thousandths

std::vector<const Family*> AllFamilies() {
  std::vector<const Family*> families;
  for (const auto list : {FoodFamilies(), HouseholdFamilies(), HardwareFamilies(), ApplianceFamilies()}) {
    for (const Family& family : list) families.push_back(&family);
  }
  std::ranges::sort(families, {}, &Family::number);
  return families;
}

struct Combination {
  std::string name;
  std::string_view model;
  std::int64_t cost = 0;  // ten-thousandths
};

Combination CombinationAt(const Family& family, std::size_t ordinal, std::size_t start) {
  const std::size_t count = family.nouns.size() * family.variants.size() * family.sizes.size();
  std::size_t stride = (count * 5 / 13) | 1U;
  while (std::gcd(stride, count) != 1) stride += 2;
  const std::size_t place = (start + (ordinal * stride)) % count;
  const std::size_t series = ordinal / count;
  const Noun& noun = family.nouns[place % family.nouns.size()];
  const std::size_t rest = place / family.nouns.size();
  const Size& size = family.sizes[rest / family.variants.size()];
  Combination made;
  made.name = std::string(kSeries[series % std::size(kSeries)]);
  made.name += family.variants[rest % family.variants.size()];
  made.name += noun.name;
  if (series >= std::size(kSeries)) made.name += std::to_string((series / std::size(kSeries)) + 1) + "型";
  made.model = size.text;
  made.cost = std::int64_t{noun.price} * size.percent / 100 * kFen;
  return made;
}

// Thirteen digits with their check digit, from the range that is left to a shop's own use.
std::string BarcodeOf(std::size_t ordinal) {
  std::string code = "21" + Padded(static_cast<std::int64_t>((ordinal * 7919 + 10007) % 10'000'000'000U), 10);
  int sum = 0;
  for (std::size_t place = 0; place < code.size(); ++place) {
    sum += (code[place] - '0') * (place % 2 == 0 ? 1 : 3);
  }
  return code + static_cast<char>('0' + ((10 - (sum % 10)) % 10));
}

// Few items sell often, many now and then, some hardly ever. Nobody keeps food that hardly sells.
int WeightOf(const Family& family, Random& random) {
  const std::int64_t draw = random.Between(1, 100);
  if (family.shelfLifeDays > 0 && family.shelfLifeDays <= 400) {
    return static_cast<int>(draw <= 25 ? random.Between(80, 150) : random.Between(45, 75));
  }
  if (draw <= 15) return static_cast<int>(random.Between(80, 150));
  if (draw <= 50) return static_cast<int>(random.Between(30, 60));
  if (draw <= 92) return static_cast<int>(random.Between(12, 24));
  return static_cast<int>(random.Between(2, 5));
}

class ItemMaker {
 public:
  ItemMaker(Company& company, Registry& registry, std::uint64_t seed)
      : company_(company), registry_(registry), random_(seed, "items") {
    AddProperties(registry, colours_, garmentSizes_);
    for (std::size_t index = 0; index < company.suppliers.size(); ++index) {
      suppliers_.at(static_cast<std::size_t>(company.suppliers[index].department)).push_back(index);
    }
  }

  void Make(const Family& family, Id parent, std::size_t count) {
    const std::size_t start = random_.Below(97);
    for (std::size_t ordinal = 0; ordinal < count; ++ordinal) {
      const Combination made = CombinationAt(family, ordinal, start);
      Item item;
      item.family = &family;
      item.id = registry_.Add(
          BaseClass::kItem, parent,
          std::string(family.number) + '.' + Padded(static_cast<std::int64_t>(ordinal) + 1, 4), made.name);
      item.model = made.model;
      item.barcode = BarcodeOf(company_.items.size());
      item.cost = std::max<std::int64_t>(random_.Around(made.cost, 120) / kFen * kFen, 2 * kFen);
      item.markup = static_cast<int>(random_.Between(1180, 1550));
      item.weight = WeightOf(family, random_) * family.pace / 100 + 1;
      item.sale = random_.Around(std::int64_t{family.typicalSale} * kMillion, 500) / kMillion * kMillion;
      item.sale = std::max(item.sale, kMillion);
      item.discontinued = company_.items.size() % 67 == 41;
      company_.nodes.back().disabled = item.discontinued;
      AddUnits(item);
      AddProperty(item);
      ChooseSuppliers(item);
      company_.items.push_back(std::move(item));
    }
  }

 private:
  void AddUnits(Item& item) {
    const Family& family = *item.family;
    item.unitId = registry_.UnitOf(family.unit);
    if (!family.package.empty()) item.packageUnitId = registry_.UnitOf(family.package);
    if (!family.auxUnit.empty()) item.auxUnitId = registry_.UnitOf(family.auxUnit);
  }
  void AddProperty(Item& item) {
    if (item.family->property == Property::kNone) return;
    const std::vector<Id>& all = item.family->property == Property::kColour ? colours_ : garmentSizes_;
    const std::size_t first = random_.Below(all.size());
    const auto count = static_cast<std::size_t>(random_.Between(2, 4));
    for (std::size_t step = 0; step < count; ++step) item.auxIds.push_back(all[(first + step) % all.size()]);
  }
  void ChooseSuppliers(Item& item) {
    if (item.Is(Handling::kAssembled)) return;
    const auto department = static_cast<std::size_t>(item.family->number[1] - '0');
    const std::vector<std::size_t>& fitting = suppliers_.at(department);
    const std::size_t first = random_.Below(fitting.size());
    item.suppliers.push_back(fitting[first]);
    if (fitting.size() > 1) item.suppliers.push_back(fitting[(first + 1) % fitting.size()]);
    if (fitting.size() > 3) item.suppliers.push_back(fitting[(first + 3) % fitting.size()]);
  }

  Company& company_;
  Registry& registry_;
  Random random_;
  std::vector<Id> colours_;
  std::vector<Id> garmentSizes_;
  std::array<std::vector<std::size_t>, 6> suppliers_;
};

}  // namespace

void AddProperties(Registry& registry, std::vector<Id>& colours, std::vector<Id>& garmentSizes) {
  const auto add = [&](const std::string& number, const std::string& name, const auto& values,
                       std::vector<Id>& ids) {
    const Id group = registry.Group(BaseClass::kAuxiliaryProperty, 0, number, name);
    std::int64_t next = 1;
    for (const std::string_view value : values) {
      ids.push_back(registry.Add(BaseClass::kAuxiliaryProperty, group, number + '.' + Padded(next++, 2),
                                 std::string(value)));
    }
  };
  add("01", "颜色", kColours, colours);
  add("02", "尺码", kGarmentSizes, garmentSizes);
}

void AddItems(Company& company, Registry& registry, const Plan& plan) {
  std::unordered_map<std::string, Id> groups;
  const auto parentOf = [&](std::string_view number) {
    const std::size_t dot = number.rfind('.');
    return dot == std::string_view::npos ? Id{0} : groups.at(std::string(number.substr(0, dot)));
  };
  const auto addGroup = [&](std::string_view number, std::string_view name) {
    const Id id = registry.Group(BaseClass::kItem, parentOf(number), std::string(number), std::string(name));
    groups.emplace(number, id);
    return id;
  };
  for (const Category& category : Categories()) addGroup(category.number, category.name);

  ItemMaker maker(company, registry, plan.seed);
  const std::vector<const Family*> families = AllFamilies();
  const auto total = static_cast<std::size_t>(plan.items);
  for (std::size_t index = 0; index < families.size(); ++index) {
    const std::size_t count = ((index + 1) * total / families.size()) - (index * total / families.size());
    maker.Make(*families[index], addGroup(families[index]->number, families[index]->name), count);
  }
}

}  // namespace books::demo
