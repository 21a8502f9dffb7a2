#include "books/import/BaseDataRows.h"

namespace books::importer {
namespace {

using schema::BaseClass;
using Columns = std::vector<Column<BaseRow>>;

constexpr auto kGift = static_cast<std::int32_t>(schema::WarehouseType::kGift);
constexpr auto kOrdinary = static_cast<std::int32_t>(schema::WarehouseType::kOrdinary);
constexpr auto kBatchCost = static_cast<std::int32_t>(schema::Valuation::kBatchCost);
constexpr auto kMovingAverage = static_cast<std::int32_t>(schema::Valuation::kMovingAverage);

constexpr Choice kWarehouseTypes[] = {{"ordinary", kOrdinary}, {"gift", kGift},    {"普通", kOrdinary},
                                      {"赠品", kGift},         {"500", kOrdinary}, {"501", kGift}};
constexpr Choice kValuations[] = {{"monthly", 77},
                                  {"moving", 78},
                                  {"fifo", 79},
                                  {"batch", kBatchCost},
                                  {"月加权平均", 77},
                                  {"全月一次加权平均", 77},
                                  {"移动加权平均", 78},
                                  {"先进先出", 79},
                                  {"批次计价", kBatchCost},
                                  {"77", 77},
                                  {"78", 78},
                                  {"79", 79},
                                  {"80", kBatchCost}};

Columns CommonColumns() {
  return {
      {.name = "number", .caption = "代码", .target = &BaseRow::number, .needed = true},
      {.name = "name", .caption = "名称", .target = &BaseRow::name, .needed = true},
      {.name = "short_number", .caption = "短代码", .target = &BaseRow::shortNumber},
      {.name = "group", .caption = "分组", .target = &BaseRow::group},
      {.name = "disabled", .caption = "禁用", .target = &BaseRow::disabled},
  };
}

Columns WarehouseColumns() {
  Columns columns = CommonColumns();
  columns.push_back({.name = "type", .caption = "仓库类型", .target = &BaseRow::type});
  return columns;
}

Columns ItemColumns() {
  Columns columns = CommonColumns();
  const Columns own = {
      {.name = "model", .caption = "规格型号", .target = &BaseRow::model},
      {.name = "barcode", .caption = "条码", .target = &BaseRow::barcode},
      {.name = "unit", .caption = "基本单位", .target = &BaseRow::unit},
      {.name = "aux_unit", .caption = "辅助单位", .target = &BaseRow::auxUnit},
      {.name = "supplier",
       .caption = "默认供应商",
       .target = &BaseRow::supplier,
       .refersTo = BaseClass::kSupplier},
      {.name = "valuation", .caption = "计价方法", .target = &BaseRow::valuation},
      {.name = "batch_managed", .caption = "批次管理", .target = &BaseRow::batchManaged},
      {.name = "serial_managed", .caption = "序列号管理", .target = &BaseRow::serialManaged},
      {.name = "shelf_life_days",
       .caption = "保质期天数",
       .target = &BaseRow::shelfLifeDays,
       .least = 0,
       .most = 36500},
      {.name = "min_quantity", .caption = "最低库存", .target = &BaseRow::minQuantity, .least = 0},
      {.name = "max_quantity", .caption = "最高库存", .target = &BaseRow::maxQuantity, .least = 0},
      {.name = "quantity_decimals",
       .caption = "数量小数位",
       .target = &BaseRow::quantityDecimals,
       .least = 0,
       .most = 6},
      {.name = "price_decimals",
       .caption = "单价小数位",
       .target = &BaseRow::priceDecimals,
       .least = 0,
       .most = 6},
  };
  columns.insert(columns.end(), own.begin(), own.end());
  return columns;
}

// What stands in the book decided how its movements were written, so an import does not change it.
bool CheckFixedItem(Run& run, const Place& place, const BaseRow& row, const BaseState& state,
                    const BaseCodes& codes) {
  database::Statement book = run.connection.Query(
      "SELECT unit_id, batch_managed, serial_managed, valuation FROM item WHERE id = ?", state.id);
  if (!book.Step()) return true;
  struct Fixed {
    std::string_view column;
    bool changed;
  };
  const Fixed fixed[] = {
      {"unit", row.unit && *row.unit != book.Integer(0)},
      {"batch_managed", row.batchManaged && *row.batchManaged != book.Boolean(1)},
      {"serial_managed", row.serialManaged && *row.serialManaged != book.Boolean(2)},
      {"valuation", codes.valuation && *codes.valuation != book.Int32(3)},
  };
  bool sound = true;
  for (const Fixed& each : fixed) {
    if (!each.changed) continue;
    run.findings.Add(place, each.column, {},
                     "the item " + std::string(row.number) + " has another one in the book",
                     "leave it as it is, or bring the goods in as a new item");
    sound = false;
  }
  return sound;
}

bool CheckItem(Run& run, const Place& place, const BaseRow& row, const BaseState& state,
               const BaseCodes& codes) {
  if (state.group) {
    if (!row.unit) return true;
    run.findings.Add(place, "unit", {}, "a group has no unit", "leave it empty");
    return false;
  }
  if (state.id == 0 && !row.unit) {
    run.findings.Add(place, "unit", {}, "the value is missing", "fill it in, or write 1 into group");
    return false;
  }
  bool sound = true;
  if (state.id == 0 && codes.valuation == kBatchCost && !row.batchManaged.value_or(false)) {
    run.findings.Add(place, "valuation", row.valuation, "batch cost needs batches",
                     "write 1 into batch_managed or choose another method");
    sound = false;
  }
  const database::Quantity none;
  if (row.minQuantity && row.maxQuantity && *row.maxQuantity != none && *row.minQuantity > *row.maxQuantity) {
    run.findings.Add(place, "max_quantity", {}, "the maximum is below the minimum", "correct one of them");
    sound = false;
  }
  return (state.id == 0 || CheckFixedItem(run, place, row, state, codes)) && sound;
}

bool CheckWarehouse(Run& run, const Place& place, const BaseRow& row, const BaseState& state,
                    const BaseCodes& codes) {
  if (state.group || state.id == 0 || !codes.type) return true;
  if (run.known.IsGift(state.id) == (*codes.type == kGift)) return true;
  run.findings.Add(place, "type", row.type, "the warehouse is of another type in the book",
                   "leave it as it is, or bring in a new warehouse");
  return false;
}

}  // namespace

const std::vector<Column<BaseRow>>& BaseColumns(BaseClass baseClass) {
  static const Columns kCommon = CommonColumns();
  static const Columns kWarehouses = WarehouseColumns();
  static const Columns kItems = ItemColumns();
  if (baseClass == BaseClass::kItem) return kItems;
  return baseClass == BaseClass::kWarehouse ? kWarehouses : kCommon;
}

std::optional<BaseCodes> CheckBaseFacts(Run& run, const Place& place, const BaseRow& row,
                                        const BaseState& state) {
  BaseCodes codes;
  if (!row.type.empty()) {
    codes.type = Choose(run, place, "type", row.type, kWarehouseTypes);
    if (!codes.type) return std::nullopt;
  }
  if (!row.valuation.empty()) {
    codes.valuation = Choose(run, place, "valuation", row.valuation, kValuations);
    if (!codes.valuation) return std::nullopt;
  }
  bool sound = true;
  if (state.baseClass == BaseClass::kItem) sound = CheckItem(run, place, row, state, codes);
  if (state.baseClass == BaseClass::kWarehouse) sound = CheckWarehouse(run, place, row, state, codes);
  return sound ? std::optional(codes) : std::nullopt;
}

void InsertBaseFacts(Run& run, const BaseRow& row, const BaseState& state, const BaseCodes& codes) {
  if (state.group) return;
  if (state.baseClass == BaseClass::kWarehouse) {
    const std::int32_t type = codes.type.value_or(kOrdinary);
    run.connection.Execute("INSERT INTO warehouse (id, type_code) VALUES (?, ?)", state.id, type);
    if (type == kGift) run.known.AddGift(state.id);
  }
  if (state.baseClass != BaseClass::kItem) return;
  run.connection.Execute(
      "INSERT INTO item (id, model, barcode, unit_id, aux_unit_id, default_supplier_id, valuation, "
      "batch_managed, serial_managed, shelf_life_days, min_quantity, max_quantity, quantity_decimals, "
      "price_decimals) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      state.id, row.model, row.barcode, *row.unit, row.auxUnit, row.supplier,
      codes.valuation.value_or(kMovingAverage), row.batchManaged.value_or(false),
      row.serialManaged.value_or(false), row.shelfLifeDays.value_or(0),
      row.minQuantity.value_or(database::Quantity()), row.maxQuantity.value_or(database::Quantity()),
      row.quantityDecimals.value_or(2), row.priceDecimals.value_or(4));
  run.known.AddItem(state.id, {.unitId = *row.unit,
                               .hasAuxUnit = row.auxUnit.has_value(),
                               .batchManaged = row.batchManaged.value_or(false),
                               .serialManaged = row.serialManaged.value_or(false)});
}

void UpdateBaseFacts(Run& run, const BaseRow& row, const BaseState& state) {
  if (state.group || state.baseClass != BaseClass::kItem) return;
  run.connection.Execute(
      "UPDATE item SET model = CASE WHEN ? = '' THEN model ELSE ? END, "
      "barcode = CASE WHEN ? = '' THEN barcode ELSE ? END, aux_unit_id = COALESCE(?, aux_unit_id), "
      "default_supplier_id = COALESCE(?, default_supplier_id), "
      "shelf_life_days = COALESCE(?, shelf_life_days), min_quantity = COALESCE(?, min_quantity), "
      "max_quantity = COALESCE(?, max_quantity), quantity_decimals = COALESCE(?, quantity_decimals), "
      "price_decimals = COALESCE(?, price_decimals) WHERE id = ?",
      row.model, row.model, row.barcode, row.barcode, row.auxUnit, row.supplier, row.shelfLifeDays,
      row.minQuantity, row.maxQuantity, row.quantityDecimals, row.priceDecimals, state.id);
  if (!row.auxUnit) return;
  ItemFacts facts = *run.known.FindItem(state.id);
  facts.hasAuxUnit = true;
  run.known.AddItem(state.id, facts);
}

}  // namespace books::importer
