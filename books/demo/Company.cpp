// Warehouses, partners and staff. All names are put together from ordinary words, places being those of no
// map.
#include "books/demo/Company.h"

#include <algorithm>

#include "books/demo/Random.h"
#include "books/demo/Registry.h"

namespace books::demo {
namespace {

using schema::BaseClass;

constexpr std::string_view kQuarters[] = {"城东",   "城西",   "城南", "城北", "河滨", "站前",
                                          "大学路", "开发区", "老街", "新区", "湖畔", "工业园"};
constexpr std::string_view kPlaces[] = {"青禾",   "云溪",   "柳湾", "石桥", "东岭", "南塘", "北坡",
                                        "竹园",   "枫林",   "荷塘", "沙洲", "梅岭", "松岗", "桃源里",
                                        "白鹭洲", "杏花村", "稻香", "清泉", "长亭", "渔浦"};
constexpr std::string_view kStreets[] = {"",     "东街", "西街", "南路", "北路", "中路", "新村", "桥头",
                                         "花园", "小区", "广场", "老巷", "市场", "码头", "山庄", "里"};
constexpr std::string_view kTrades[5][4] = {{"粮油供应站", "食品批发部", "农产品合作社", "副食商行"},
                                            {"日化经营部", "洗护用品厂", "纸品厂", "日用品批发部"},
                                            {"五金工具厂", "机电经营部", "水暖建材行", "电线电缆厂"},
                                            {"小家电厂", "电器经营部", "电子器具厂", "家电配套部"},
                                            {"家居用品厂", "纺织品厂", "陶瓷厂", "文具批发部"}};
constexpr std::string_view kSupplierGroups[] = {"食品供应商", "日化供应商", "五金供应商", "家电供应商",
                                                "百货供应商"};

struct CustomerKind {
  std::string_view group;
  std::string_view trades[4];
  bool wholesale = false;
};
constexpr CustomerKind kCustomerKinds[] = {
    {"商超便利", {"便民超市", "生活超市", "便利店", "综合商店"}, true},
    {"餐饮食堂", {"家常菜馆", "职工食堂", "小吃店", "面馆"}, false},
    {"机关学校", {"中心小学", "中学总务处", "幼儿园", "街道办"}, false},
    {"装修工程", {"装修队", "水电安装队", "物业服务部", "维修部"}, false},
    {"零售客户", {"个体经营户", "社区团购点", "代销点", "夜市摊位"}, true},
};
constexpr std::string_view kSurnames[] = {"王", "李", "张", "刘", "陈", "杨", "赵", "黄", "周", "吴",
                                          "徐", "孙", "胡", "朱", "高", "林", "何", "郭", "马", "罗"};
constexpr std::string_view kGivenNames[] = {"建国", "秀英", "志强", "丽华", "海燕", "文博", "晓东", "雪梅",
                                            "俊杰", "玉兰", "国庆", "思远", "明辉", "春燕", "立新", "佳怡"};
constexpr std::string_view kNumerals[] = {"", "二", "三", "四", "五", "六", "七", "八", "九", "十"};

// A user's id is looked for as a part of the list, so no id here is a part of another.
constexpr std::array<User, 3> kUsers = {User{101, "管理员", false}, User{205, "门店主管", true},
                                        User{309, "实习员", true}};
constexpr std::string_view kAdministrator = "101";
constexpr std::string_view kSomeWarehouses = "101,205";

// Twenty places, then the streets of each, then the second of every street.
std::string PlaceName(std::size_t ordinal) {
  const std::size_t round = ordinal / std::size(kPlaces);
  const std::size_t lap = round / std::size(kStreets);
  std::string name(kPlaces[ordinal % std::size(kPlaces)]);
  name += kStreets[round % std::size(kStreets)];
  if (lap > 0) name += lap < std::size(kNumerals) ? std::string(kNumerals[lap]) : std::to_string(lap + 1);
  return name;
}

// Ids are given out in the order of the nodes.
Node& NodeOf(Company& company, Id id) { return company.nodes.at(static_cast<std::size_t>(id) - 1); }

void AddWarehouse(Company& company, Registry& registry, Id group, const std::string& number,
                  const std::string& name, Role role, bool visibleToManager) {
  const Id id = registry.Add(BaseClass::kWarehouse, group, number, name);
  Node& node = NodeOf(company, id);
  node.disabled = role == Role::kClosed;
  node.rightUsers = visibleToManager ? kSomeWarehouses : kAdministrator;
  if (visibleToManager) NodeOf(company, group).rightUsers = kSomeWarehouses;
  company.warehouses.push_back({.id = id, .role = role});
}

}  // namespace

Id Registry::Add(BaseClass baseClass, Id parentId, std::string number, std::string name, bool group) {
  const Id id = static_cast<Id>(company_.nodes.size()) + 1;
  company_.nodes.push_back({.id = id,
                            .baseClass = baseClass,
                            .parentId = parentId,
                            .number = std::move(number),
                            .name = std::move(name),
                            .group = group});
  return id;
}

Id Registry::UnitOf(std::string_view name) {
  const auto [found, added] = units_.try_emplace(std::string(name), static_cast<Id>(units_.size()) + 1);
  if (added) company_.units.emplace_back(found->second, found->first);
  return found->second;
}

std::string Padded(std::int64_t value, int width) {
  std::string digits = std::to_string(value);
  if (digits.size() < static_cast<std::size_t>(width)) {
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  }
  return digits;
}

// The central ones buy, the shops are fed from them; a company of one warehouse has no shop.
void AddWarehouses(Company& company, Registry& registry, const Plan& plan) {
  const auto group = [&](const char* number, const char* name) {
    const Id id = registry.Group(BaseClass::kWarehouse, 0, number, name);
    NodeOf(company, id).rightUsers = kAdministrator;
    return id;
  };
  const Id central = group("01", "总仓");
  const Id shops = group("02", "门店仓");
  const Id special = group("09", "专用仓");
  constexpr std::string_view kCentral[] = {"中心仓", "食品仓", "五金家电仓", "北区中转仓"};
  const std::int32_t ordinary = plan.warehouses - 2;
  const std::int32_t centralCount = std::clamp(ordinary / 6, 1, 4);
  for (std::int32_t index = 0; index < centralCount; ++index) {
    AddWarehouse(company, registry, central, "01." + Padded(index + 1, 2), std::string(kCentral[index]),
                 Role::kCentral, false);
  }
  for (std::int32_t index = 0; index < ordinary - centralCount; ++index) {
    const auto place = static_cast<std::size_t>(index);
    const std::size_t round = place / std::size(kQuarters);
    std::string name(kQuarters[place % std::size(kQuarters)]);
    if (round > 0) name += kNumerals[round];
    AddWarehouse(company, registry, shops, "02." + Padded(index + 1, 2),
                 name + (round > 0 ? "店仓" : "门店仓"), Role::kShop, index % 2 == 0);
  }
  AddWarehouse(company, registry, special, "09.01", "赠品仓", Role::kGift, false);
  AddWarehouse(company, registry, special, "09.02", "旧仓库（停用）", Role::kClosed, false);
}

void AddPartners(Company& company, Registry& registry, const Plan& plan) {
  Random random(plan.seed, "partners");
  const std::int64_t supplierCount = std::clamp<std::int64_t>(plan.items / 14, 10, 400);
  const std::int64_t customerCount = std::clamp<std::int64_t>(plan.items / 6, 15, 1500);
  for (std::int64_t kind = 0; kind < 5; ++kind) {
    const auto place = static_cast<std::size_t>(kind);
    const std::string number = Padded(kind + 1, 2);
    const Id group = registry.Group(BaseClass::kSupplier, 0, number, std::string(kSupplierGroups[place]));
    for (std::int64_t index = 0; index < supplierCount / 5; ++index) {
      const auto ordinal = static_cast<std::size_t>((index * 5) + kind);
      const Id id = registry.Add(BaseClass::kSupplier, group, number + '.' + Padded(index + 1, 3),
                                 PlaceName(ordinal) + std::string(kTrades[place][ordinal % 4]));
      company.suppliers.push_back({.id = id,
                                   .department = static_cast<int>(kind) + 1,
                                   .priceLevel = static_cast<int>(random.Between(965, 1045))});
    }
  }
  for (std::int64_t kind = 0; kind < 5; ++kind) {
    const CustomerKind& facts = kCustomerKinds[kind];
    const std::string number = Padded(kind + 1, 2);
    const Id group = registry.Group(BaseClass::kCustomer, 0, number, std::string(facts.group));
    for (std::int64_t index = 0; index < customerCount / 5; ++index) {
      const auto ordinal = static_cast<std::size_t>((index * 5) + kind + 3);
      const Id id = registry.Add(BaseClass::kCustomer, group, number + '.' + Padded(index + 1, 3),
                                 PlaceName(ordinal) + std::string(facts.trades[ordinal % 4]));
      company.customers.push_back({.id = id,
                                   .wholesale = facts.wholesale,
                                   .priceLevel = static_cast<int>(random.Between(930, 1030))});
    }
  }
  // Some customers also deliver: the same firm stands in both trees.
  for (std::size_t index = 0; index + 1 < company.suppliers.size() && index < 3; ++index) {
    const Id customer = registry.Add(BaseClass::kCustomer, NodeOf(company, company.customers[0].id).parentId,
                                     "01." + Padded(900 + static_cast<std::int64_t>(index), 3),
                                     NodeOf(company, company.suppliers[index * 2].id).name);
    company.customers.push_back({.id = customer, .wholesale = true, .priceLevel = 960});
    company.matches.emplace_back(customer, company.suppliers[index * 2].id);
  }
}

void AddStaff(Company& company, Registry& registry, const Plan& plan) {
  Random random(plan.seed, "staff");
  const std::int64_t size = std::clamp<std::int64_t>(plan.warehouses, 3, 25);
  struct Office {
    std::string_view name;
    std::int64_t heads = 1;
    Id* department = nullptr;
    std::vector<Id>* staff = nullptr;
  };
  std::vector<Id> others;
  const Office offices[] = {{"采购部", (size / 2) + 1, &company.buyingDepartment, &company.buyers},
                            {"销售部", size + 1, &company.sellingDepartment, &company.sellers},
                            {"仓储部", (size / 2) + 1, &company.keepingDepartment, &company.keepers},
                            {"门店部", size, nullptr, &company.sellers},
                            {"财务部", 2, nullptr, &others},
                            {"行政部", 2, nullptr, &others}};
  std::int64_t next = 1;
  std::size_t name = random.Below(7);
  for (const Office& office : offices) {
    const std::string number = Padded(next++, 2);
    const Id department = registry.Add(BaseClass::kDepartment, 0, number, std::string(office.name));
    company.departments.push_back(department);
    if (office.department != nullptr) *office.department = department;
    const Id group = registry.Group(BaseClass::kEmployee, 0, number, std::string(office.name));
    for (std::int64_t head = 1; head <= office.heads; ++head, name += 7) {
      office.staff->push_back(
          registry.Add(BaseClass::kEmployee, group, number + '.' + Padded(head, 2),
                       std::string(kSurnames[name % std::size(kSurnames)]) +
                           std::string(kGivenNames[(name / 3) % std::size(kGivenNames)])));
    }
  }
}

Company FoundCompany(const Plan& plan) {
  Company company;
  Registry registry(company);
  AddWarehouses(company, registry, plan);
  AddPartners(company, registry, plan);
  AddStaff(company, registry, plan);
  AddItems(company, registry, plan);
  company.users = kUsers;
  return company;
}

}  // namespace books::demo
