// Purchase and sales orders. They move no stock, so a repeated import brings them up to date; what bills have
// delivered is counted by posting and is not touched.
#include "books/import/DocumentIndex.h"

namespace books::importer {
namespace {

using schema::BaseClass;

struct OrderRow {
  const BillClassFacts* billClass = nullptr;
  std::string_view number;
  std::optional<platform::Date> date;
  Reference supplier;
  Reference customer;
  Reference department;
  Reference employee;
  std::optional<bool> audited;
  std::optional<bool> closed;
  std::string_view explanation;
};
const std::vector<Column<OrderRow>>& OrderColumns() {
  static const std::vector<Column<OrderRow>> kColumns = {
      {.name = "class", .caption = "单据类型", .target = &OrderRow::billClass, .needed = true},
      {.name = "number", .caption = "单据编号", .target = &OrderRow::number, .needed = true},
      {.name = "date", .caption = "日期", .target = &OrderRow::date, .needed = true},
      {.name = "supplier",
       .caption = "供应商代码",
       .target = &OrderRow::supplier,
       .refersTo = BaseClass::kSupplier},
      {.name = "customer",
       .caption = "客户代码",
       .target = &OrderRow::customer,
       .refersTo = BaseClass::kCustomer},
      {.name = "department",
       .caption = "部门代码",
       .target = &OrderRow::department,
       .refersTo = BaseClass::kDepartment},
      {.name = "employee",
       .caption = "职员代码",
       .target = &OrderRow::employee,
       .refersTo = BaseClass::kEmployee},
      {.name = "audited", .caption = "已审核", .target = &OrderRow::audited},
      {.name = "closed", .caption = "已关闭", .target = &OrderRow::closed},
      {.name = "explanation", .caption = "摘要", .target = &OrderRow::explanation},
  };
  return kColumns;
}

struct OrderEntryRow {
  const BillClassFacts* billClass = nullptr;
  std::string_view number;
  std::optional<std::int32_t> line;
  Reference item;
  Reference property;
  Reference unit;
  std::optional<database::Quantity> quantity;
  std::optional<database::Quantity> delivered;
  std::optional<double> price;
  std::optional<platform::Currency> amount;
  std::optional<platform::Date> dueDate;
  std::optional<bool> closed;
  std::string_view note;
};
const std::vector<Column<OrderEntryRow>>& OrderEntryColumns() {
  static const std::vector<Column<OrderEntryRow>> kColumns = {
      {.name = "class", .caption = "单据类型", .target = &OrderEntryRow::billClass, .needed = true},
      {.name = "number", .caption = "单据编号", .target = &OrderEntryRow::number, .needed = true},
      {.name = "line",
       .caption = "行号",
       .target = &OrderEntryRow::line,
       .needed = true,
       .least = 1,
       .most = kLastLine},
      {.name = "item",
       .caption = "商品代码",
       .target = &OrderEntryRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "property",
       .caption = "辅助属性",
       .target = &OrderEntryRow::property,
       .refersTo = BaseClass::kAuxiliaryProperty},
      {.name = "unit", .caption = "单位", .target = &OrderEntryRow::unit},
      {.name = "quantity", .caption = "数量", .target = &OrderEntryRow::quantity, .needed = true, .least = 0},
      {.name = "delivered_quantity", .caption = "已交数量", .target = &OrderEntryRow::delivered, .least = 0},
      {.name = "price", .caption = "单价", .target = &OrderEntryRow::price},
      {.name = "amount", .caption = "金额", .target = &OrderEntryRow::amount, .least = 0},
      {.name = "due_date", .caption = "交货日期", .target = &OrderEntryRow::dueDate},
      {.name = "closed", .caption = "已关闭", .target = &OrderEntryRow::closed},
      {.name = "note", .caption = "备注", .target = &OrderEntryRow::note},
  };
  return kColumns;
}

class Orders {
 public:
  explicit Orders(Run& run) : run_(run), index_(run, "order_bill", "orders.csv") {}

  void Take(const OrderRow& row, const Place& place) {
    if (row.billClass->kind != schema::BillKind::kOrder) {
      run_.findings.Add(place, "class", {}, "this is no class of orders", "write it into bills.csv");
      index_.Refuse(*row.billClass, row.number);
      return;
    }
    const std::optional<std::int64_t> known = index_.Register(place, *row.billClass, row.number);
    if (!known) return;
    ImportCount& count = run_.Count(place.file);
    ++(*known == 0 ? count.added : count.known);
    if (*known == 0) {
      run_.connection.Execute(
          "INSERT INTO order_bill (id, bill_class, number, date, supplier_id, customer_id, department_id, "
          "employee_id, audited, closed, explanation) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
          index_.NewId(place.line), row.billClass->id, row.number, *row.date, row.supplier, row.customer,
          row.department, row.employee, row.audited.value_or(true), row.closed.value_or(false),
          row.explanation);
      return;
    }
    run_.connection.Execute(
        "UPDATE order_bill SET date = ?, supplier_id = COALESCE(?, supplier_id), "
        "customer_id = COALESCE(?, customer_id), department_id = COALESCE(?, department_id), "
        "employee_id = COALESCE(?, employee_id), audited = COALESCE(?, audited), "
        "closed = COALESCE(?, closed), explanation = CASE WHEN ? = '' THEN explanation ELSE ? END WHERE id = "
        "?",
        *row.date, row.supplier, row.customer, row.department, row.employee, row.audited, row.closed,
        row.explanation, row.explanation, *known);
  }
  void Refuse(const BillClassFacts& billClass, std::string_view number) { index_.Refuse(billClass, number); }

  // Bills that deliver a line which is left out are not reported too.
  void RefuseEntry() { run_.known.AddFaultyFile("order_entries.csv", false); }

  void TakeEntry(const OrderEntryRow& row, const Place& place) {
    const std::optional<DocumentIndex::Found> order = index_.Find(place, *row.billClass, row.number);
    const std::optional<Figures> figures = WorkOut(run_, place,
                                                   {.item = *row.item,
                                                    .unit = row.unit,
                                                    .unitQuantity = *row.quantity,
                                                    .price = row.price,
                                                    .amount = row.amount});
    if (!order || !figures) {
      RefuseEntry();
      return;
    }
    ImportCount& count = run_.Count(place.file);
    const std::int64_t added = run_.connection.Execute(
        "INSERT INTO order_entry (order_id, line, item_id, aux_id, unit_id, unit_quantity, quantity, "
        "delivered_quantity, price, amount, due_date, closed, note) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT DO NOTHING",
        order->id, *row.line, *row.item, row.property, figures->unitId, figures->unitQuantity,
        figures->quantity, row.delivered.value_or(database::Quantity()), figures->price,
        figures->amount.value_or(platform::Currency()), row.dueDate, row.closed.value_or(false), row.note);
    ++(added > 0 ? count.added : count.known);
    if (added > 0) return;
    if (order->isNew) {
      run_.findings.Add(place, "line", std::to_string(*row.line), "the line stands in the file twice",
                        "give every line of an order a number of its own");
      return;
    }
    const std::int64_t same = run_.connection.Execute(
        "UPDATE order_entry SET aux_id = COALESCE(?, aux_id), unit_id = ?, unit_quantity = ?, quantity = ?, "
        "price = ?, amount = ?, due_date = COALESCE(?, due_date), closed = COALESCE(?, closed), "
        "note = CASE WHEN ? = '' THEN note ELSE ? END WHERE order_id = ? AND line = ? AND item_id = ?",
        row.property, figures->unitId, figures->unitQuantity, figures->quantity, figures->price,
        figures->amount.value_or(platform::Currency()), row.dueDate, row.closed, row.note, row.note,
        order->id, *row.line, *row.item);
    if (same > 0) return;
    run_.findings.Add(place, "item", {}, "the line orders another item in the book",
                      "close that line and add a new one");
  }

 private:
  Run& run_;
  DocumentIndex index_;
};

}  // namespace

void ImportOrders(Run& run) {
  Orders orders(run);
  run.Read<OrderRow>("orders.csv", OrderColumns(), [&](const OrderRow& row, const Place& place, bool sound) {
    ++run.Count(place.file).rows;
    if (sound) {
      orders.Take(row, place);
    } else if (row.billClass != nullptr) {
      orders.Refuse(*row.billClass, row.number);
    }
  });
  run.Read<OrderEntryRow>("order_entries.csv", OrderEntryColumns(),
                          [&](const OrderEntryRow& row, const Place& place, bool sound) {
                            ++run.Count(place.file).rows;
                            if (sound) {
                              orders.TakeEntry(row, place);
                            } else {
                              orders.RefuseEntry();
                            }
                          });
}

}  // namespace books::importer
