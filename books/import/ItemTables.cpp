// Units, and what hangs on items: further units, limits, batches, serial numbers, prices.
#include "books/import/Run.h"

namespace books::importer {
namespace {

using schema::BaseClass;

struct UnitRow {
  std::string_view name;
};
const std::vector<Column<UnitRow>>& UnitColumns() {
  static const std::vector<Column<UnitRow>> kColumns = {
      {.name = "name", .caption = "名称", .target = &UnitRow::name, .needed = true},
  };
  return kColumns;
}

struct ItemUnitRow {
  Reference item;
  Reference unit;
  std::optional<database::Quantity> factor;
  std::optional<bool> package;
};
const std::vector<Column<ItemUnitRow>>& ItemUnitColumns() {
  static const std::vector<Column<ItemUnitRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &ItemUnitRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "unit", .caption = "单位", .target = &ItemUnitRow::unit, .needed = true},
      {.name = "factor",
       .caption = "换算率",
       .target = &ItemUnitRow::factor,
       .needed = true,
       .least = 0,
       .most = 1'000'000},
      {.name = "package", .caption = "整件", .target = &ItemUnitRow::package},
  };
  return kColumns;
}

struct LimitRow {
  Reference item;
  Reference warehouse;
  std::optional<database::Quantity> minQuantity;
  std::optional<database::Quantity> maxQuantity;
};
const std::vector<Column<LimitRow>>& LimitColumns() {
  static const std::vector<Column<LimitRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &LimitRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "warehouse",
       .caption = "仓库代码",
       .target = &LimitRow::warehouse,
       .needed = true,
       .refersTo = BaseClass::kWarehouse},
      {.name = "min_quantity", .caption = "最低库存", .target = &LimitRow::minQuantity, .least = 0},
      {.name = "max_quantity", .caption = "最高库存", .target = &LimitRow::maxQuantity, .least = 0},
  };
  return kColumns;
}

struct MatchRow {
  Reference customer;
  Reference supplier;
};
const std::vector<Column<MatchRow>>& MatchColumns() {
  static const std::vector<Column<MatchRow>> kColumns = {
      {.name = "customer",
       .caption = "客户代码",
       .target = &MatchRow::customer,
       .needed = true,
       .refersTo = BaseClass::kCustomer},
      {.name = "supplier",
       .caption = "供应商代码",
       .target = &MatchRow::supplier,
       .needed = true,
       .refersTo = BaseClass::kSupplier},
  };
  return kColumns;
}

struct PriceRow {
  Reference item;
  Reference supplier;
  Reference unit;
  std::optional<platform::Date> fromDate;
  std::optional<double> price;
};
const std::vector<Column<PriceRow>>& PriceColumns() {
  static const std::vector<Column<PriceRow>> kColumns = {
      {.name = "item",
       .caption = "商品代码",
       .target = &PriceRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "supplier",
       .caption = "供应商代码",
       .target = &PriceRow::supplier,
       .needed = true,
       .refersTo = BaseClass::kSupplier},
      {.name = "unit", .caption = "单位", .target = &PriceRow::unit},
      {.name = "from_date", .caption = "生效日期", .target = &PriceRow::fromDate, .needed = true},
      {.name = "price", .caption = "单价", .target = &PriceRow::price, .needed = true},
  };
  return kColumns;
}

void TakeItemUnit(Run& run, const ItemUnitRow& row, const Place& place) {
  const std::optional<database::Quantity> known = run.known.Factor(*row.item, *row.unit);
  if (*row.factor == database::Quantity()) {
    run.findings.Add(place, "factor", "0", "a unit holds more than nothing",
                     "write the base units in one of it");
    return;
  }
  if (known && *known != *row.factor) {
    run.findings.Add(place, "factor", {}, "the item has this unit already, with another factor",
                     "leave it as it is, or use a unit of another name");
    return;
  }
  ImportCount& count = run.Count(place.file);
  const std::int64_t added = run.connection.Execute(
      "INSERT INTO item_unit (item_id, unit_id, factor, package) VALUES (?, ?, ?, ?) ON CONFLICT DO NOTHING",
      *row.item, *row.unit, *row.factor, row.package.value_or(false));
  count.added += added;
  if (!known) run.known.AddFactor(*row.item, *row.unit, *row.factor);
  if (added > 0) return;
  ++count.known;
  run.connection.Execute(
      "UPDATE item_unit SET package = COALESCE(?, package) WHERE item_id = ? AND unit_id = ?", row.package,
      *row.item, *row.unit);
}

void TakeLimit(Run& run, const LimitRow& row, const Place& place) {
  const database::Quantity least = row.minQuantity.value_or(database::Quantity());
  const database::Quantity most = row.maxQuantity.value_or(database::Quantity());
  if (most != database::Quantity() && least > most) {
    run.findings.Add(place, "max_quantity", {}, "the maximum is below the minimum", "correct one of them");
    return;
  }
  ImportCount& count = run.Count(place.file);
  const std::int64_t added = run.connection.Execute(
      "INSERT INTO item_limit (item_id, warehouse_id, min_quantity, max_quantity) VALUES (?, ?, ?, ?) "
      "ON CONFLICT DO NOTHING",
      *row.item, *row.warehouse, least, most);
  ++(added > 0 ? count.added : count.known);
  if (added > 0) return;
  run.connection.Execute(
      "UPDATE item_limit SET min_quantity = COALESCE(?, min_quantity), max_quantity = COALESCE(?, "
      "max_quantity) "
      "WHERE item_id = ? AND warehouse_id = ?",
      row.minQuantity, row.maxQuantity, *row.item, *row.warehouse);
}

void TakePrice(Run& run, const PriceRow& row, const Place& place) {
  const std::int64_t unit = row.unit.value_or(run.known.FindItem(*row.item)->unitId);
  if (!run.known.Factor(*row.item, unit)) {
    run.findings.Add(place, "unit", {}, "the item has no such unit", "add it to item_units.csv");
    return;
  }
  ImportCount& count = run.Count(place.file);
  const std::int64_t added = run.connection.Execute(
      "INSERT INTO purchase_price (item_id, supplier_id, unit_id, from_date, price) VALUES (?, ?, ?, ?, ?) "
      "ON CONFLICT DO NOTHING",
      *row.item, *row.supplier, unit, *row.fromDate, *row.price);
  ++(added > 0 ? count.added : count.known);
  if (added > 0) return;
  run.connection.Execute(
      "UPDATE purchase_price SET price = ? WHERE item_id = ? AND supplier_id = ? AND unit_id = ? AND "
      "from_date = ?",
      *row.price, *row.item, *row.supplier, unit, *row.fromDate);
}

}  // namespace

void ImportUnits(Run& run) {
  run.Read<UnitRow>("units.csv", UnitColumns(), [&](const UnitRow& row, const Place& place, bool sound) {
    ImportCount& count = run.Count(place.file);
    ++count.rows;
    if (run.known.FindUnit(row.name) != nullptr || row.name.empty()) {
      ++count.known;
    } else if (!sound) {
      run.known.AddUnit(row.name, {.id = 0});
    } else {
      ++count.added;
      database::Statement added =
          run.connection.Query("INSERT INTO unit (name) VALUES (?) RETURNING id", row.name);
      added.Step();
      run.known.AddUnit(row.name, {.id = added.Integer(0)});
      added.Reset();
    }
  });
}

void ImportItemFacts(Run& run) {
  run.Read<ItemUnitRow>("item_units.csv", ItemUnitColumns(),
                        [&](const ItemUnitRow& row, const Place& place, bool sound) {
                          ++run.Count(place.file).rows;
                          if (sound) TakeItemUnit(run, row, place);
                        });
  run.Read<LimitRow>("item_limits.csv", LimitColumns(),
                     [&](const LimitRow& row, const Place& place, bool sound) {
                       ++run.Count(place.file).rows;
                       if (sound) TakeLimit(run, row, place);
                     });
  run.Read<MatchRow>(
      "partner_matches.csv", MatchColumns(), [&](const MatchRow& row, const Place& place, bool sound) {
        ImportCount& count = run.Count(place.file);
        ++count.rows;
        if (!sound) return;
        const std::int64_t added = run.connection.Execute(
            "INSERT INTO partner_match (customer_id, supplier_id) VALUES (?, ?) ON CONFLICT DO NOTHING",
            *row.customer, *row.supplier);
        ++(added > 0 ? count.added : count.known);
      });
  run.Read<PriceRow>("purchase_prices.csv", PriceColumns(),
                     [&](const PriceRow& row, const Place& place, bool sound) {
                       ++run.Count(place.file).rows;
                       if (sound) TakePrice(run, row, place);
                     });
}

}  // namespace books::importer
