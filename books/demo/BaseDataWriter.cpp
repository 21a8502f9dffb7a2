#include "books/demo/BaseDataWriter.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "books/schema/Schema.h"

namespace books::demo {
namespace {

using database::Connection;
using database::Quantity;
using database::Statement;
using schema::WarehouseType;

constexpr std::string_view kCompanyName = "示范商贸有限公司";
constexpr std::int64_t kMillion = Quantity::kScale;

std::optional<Id> IfAny(Id id) { return id == 0 ? std::nullopt : std::optional(id); }

void WriteNodes(Connection& connection, const Company& company) {
  Statement insert = connection.Prepare(
      "INSERT INTO base_data (id, class_id, parent_id, number, short_number, name, detail, disabled, "
      "right_users) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
  for (const Node& node : company.nodes) {
    const std::size_t dot = node.number.rfind('.');
    const std::string shortNumber = dot == std::string::npos ? node.number : node.number.substr(dot + 1);
    insert.Run(node.id, node.baseClass, IfAny(node.parentId), node.number, shortNumber, node.name,
               !node.group, node.disabled, node.rightUsers);
  }
  schema::RebuildTrees(connection);
}

// What is to lie in stock: enough to meet the next sales, not more than one filling can bring.
struct Levels {
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
};

Levels LevelsOf(const Item& item, const Shelf& shelf) {
  return {.lowest = RoundDown(item, shelf.reorder * 4 / 5), .highest = RoundDown(item, shelf.full * 6 / 5)};
}

void WriteLevels(Connection& connection, const Company& company, const Shelves& shelves) {
  Statement insert = connection.Prepare(
      "INSERT INTO item_limit (item_id, warehouse_id, min_quantity, max_quantity) VALUES (?, ?, ?, ?)");
  Statement total = connection.Prepare("UPDATE item SET min_quantity = ?, max_quantity = ? WHERE id = ?");
  for (std::size_t index = 0; index < company.items.size(); ++index) {
    const Item& item = company.items[index];
    if (item.weight % 10 == 3) continue;  // nobody has set levels for these
    Levels sum;
    for (const std::size_t place : shelves.OfItem(index)) {
      const Shelf& shelf = shelves.At(place);
      const Warehouse& warehouse = company.warehouses[shelf.warehouse];
      if (warehouse.role != Role::kCentral && warehouse.role != Role::kShop) continue;
      const Levels levels = LevelsOf(item, shelf);
      insert.Run(item.id, warehouse.id, levels.lowest, levels.highest);
      sum.lowest += levels.lowest;
      sum.highest += levels.highest;
    }
    total.Run(sum.lowest, sum.highest, item.id);
  }
}

void WriteItems(Connection& connection, const Company& company) {
  Statement unit = connection.Prepare("INSERT INTO unit (id, name) VALUES (?, ?)");
  for (const auto& [id, name] : company.units) unit.Run(id, name);
  Statement insert = connection.Prepare(
      "INSERT INTO item (id, model, barcode, unit_id, aux_unit_id, default_supplier_id, valuation, "
      "batch_managed, serial_managed, shelf_life_days, quantity_decimals, price_decimals) "
      "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  Statement further =
      connection.Prepare("INSERT INTO item_unit (item_id, unit_id, factor, package) VALUES (?, ?, ?, ?)");
  for (const Item& item : company.items) {
    const Family& family = *item.family;
    const Id supplier = item.suppliers.empty() ? 0 : company.suppliers[item.suppliers[0]].id;
    insert.Run(item.id, item.model, item.barcode, item.unitId, IfAny(item.auxUnitId), IfAny(supplier),
               family.valuation, item.Is(Handling::kBatch), item.Is(Handling::kSerial), family.shelfLifeDays,
               family.quantityDecimals, 2);
    further.Run(item.id, item.unitId, kMillion, false);
    if (item.packageUnitId != 0) {
      further.Run(item.id, item.packageUnitId, family.packageFactor * kMillion, true);
    }
  }
}

// Every supplier of an item has a price from the first day on and a new one twice a year.
void WritePrices(Connection& connection, const Plan& plan, const Company& company, const Prices& prices) {
  constexpr std::int32_t kValidDays = 182;
  Statement insert = connection.Prepare(
      "INSERT INTO purchase_price (item_id, supplier_id, unit_id, from_date, price) VALUES (?, ?, ?, ?, ?)");
  for (const Item& item : company.items) {
    const Id unit = item.packageUnitId == 0 ? item.unitId : item.packageUnitId;
    const std::int64_t factor = item.packageUnitId == 0 ? 1 : item.family->packageFactor;
    for (const std::size_t supplier : item.suppliers) {
      for (platform::Date day = plan.firstDay; day <= plan.today; day = day.AddDays(kValidDays)) {
        const std::int64_t price = prices.BuyingPrice(item, supplier, day) * factor;
        insert.Run(item.id, company.suppliers[supplier].id, unit, day, static_cast<double>(price) / 10000.0);
      }
    }
  }
}

}  // namespace

void WriteBaseData(Connection& connection, const Plan& plan, const Company& company, const Shelves& shelves,
                   const Prices& prices) {
  database::Transaction transaction(connection);
  connection.Execute("INSERT INTO system_profile (category, key, value) VALUES ('Base', 'CompanyName', ?)",
                     kCompanyName);
  WriteNodes(connection, company);
  Statement warehouse = connection.Prepare("INSERT INTO warehouse (id, type_code) VALUES (?, ?)");
  for (const Warehouse& facts : company.warehouses) {
    warehouse.Run(facts.id, facts.role == Role::kGift ? WarehouseType::kGift : WarehouseType::kOrdinary);
  }
  WriteItems(connection, company);
  WriteLevels(connection, company, shelves);
  WritePrices(connection, plan, company, prices);
  for (const auto& [customer, supplier] : company.matches) {
    connection.Execute("INSERT INTO partner_match (customer_id, supplier_id) VALUES (?, ?)", customer,
                       supplier);
  }
  for (const User& user : company.users) {
    connection.Execute("INSERT INTO book_user (id, name, restricted) VALUES (?, ?, ?)", user.id, user.name,
                       user.restricted);
  }
  transaction.Commit();
}

}  // namespace books::demo
