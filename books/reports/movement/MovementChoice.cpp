#include "books/reports/movement/MovementChoice.h"

#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using database::Statement;
using platform::Date;

Selection Select(services::Store& store, std::string_view sql, const Conditions& where) {
  if (where.IsEmpty()) return {};
  Selection selection{.all = false, .ids = {}};
  const Slot slots[] = {{"where", where}};
  const reader::SqlText text = Compose(sql, slots);
  Statement rows = store.Reading().Prepare(text.sql);
  services::BindAll(rows, text.parameters);
  while (rows.Step()) selection.ids.insert(rows.Integer(0));
  return selection;
}

Selection SelectWarehouses(services::Store& store, const ReportFilter& filter, std::string_view alias,
                           bool shortNumbers) {
  const reader::ConditionAlias aliases[] = {{alias, *reader::FindTable("t_Stock")}};
  const std::string name(alias);
  Conditions where;
  where.AddRange(name + (shortNumbers ? ".FShortNumber" : ".FNumber"), filter.NumberRange("StockNumber"));
  where.Add(filter.Rights(aliases));
  return Select(store, "SELECT " + name + ".FItemID FROM t_Stock " + name + " WHERE {where}", where);
}

Selection SelectBatches(services::Store& store, const ReportFilter& filter) {
  Conditions where;
  where.AddRange("number", filter.NumberRange("BatchNo"));
  return Select(store, "SELECT id FROM batch WHERE {where}", where);
}

Selection SelectAuxiliaries(services::Store& store, const ReportFilter& filter, std::string_view number) {
  Conditions where;
  where.AddRange(number, filter.NumberRange("AuxPropNumber"));
  return Select(store, "SELECT id FROM base_data WHERE class_id = 10 AND {where}", where);
}

}  // namespace

MovementChoice::MovementChoice(services::Store& store, const ReportFilter& filter,
                               std::string_view stockAlias) {
  base.from = DayOf(filter, "BDate").value_or(Date::FromDays(0));
  lastDay = DayOf(filter, "EDate").value_or(Date::Of(9999, 12, 31));
  base.balance = posting::BalanceBefore(store.Reading(), base.from);
  const bool shortNumbers = store.UsesShortNumbers();
  warehouses = SelectWarehouses(store, filter, stockAlias, shortNumbers);
  batches = SelectBatches(store, filter);
  auxiliaries = SelectAuxiliaries(store, filter, shortNumbers ? "short_number" : "number");
  bills.AddRange(shortNumbers ? "d.short_number" : "d.number", filter.NumberRange("DeptNumber"));
  bills.AddRange(shortNumbers ? "e.short_number" : "e.number", filter.NumberRange("EmpNumber"));
  byBill = !bills.IsEmpty();
  hidesSamePrice = FlagOf(filter, "chkNoDB") || !FlagOf(filter, "chkShowTran", true);
}

Conditions MovementItems(const ReportFilter& filter, MovementGoods goods, bool shortNumbers) {
  Conditions items;
  items.AddRange(shortNumbers ? "b.short_number" : "b.number", filter.NumberRange("ItemNumber"));
  if (goods == MovementGoods::kBatchManaged) items.Add({.sql = "i.batch_managed = 1", .parameters = {}});
  return items;
}

}  // namespace books::reports
