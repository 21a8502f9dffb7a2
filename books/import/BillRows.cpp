#include "books/import/BillRows.h"

#include "books/import/DocumentIndex.h"

namespace books::importer {

using schema::BaseClass;

const std::vector<Column<BillRow>>& BillColumns() {
  static const std::vector<Column<BillRow>> kColumns = {
      {.name = "class", .caption = "单据类型", .target = &BillRow::billClass, .needed = true},
      {.name = "number", .caption = "单据编号", .target = &BillRow::number, .needed = true},
      {.name = "date", .caption = "日期", .target = &BillRow::date, .needed = true},
      {.name = "supplier",
       .caption = "供应商代码",
       .target = &BillRow::supplier,
       .refersTo = BaseClass::kSupplier},
      {.name = "customer",
       .caption = "客户代码",
       .target = &BillRow::customer,
       .refersTo = BaseClass::kCustomer},
      {.name = "department",
       .caption = "部门代码",
       .target = &BillRow::department,
       .refersTo = BaseClass::kDepartment},
      {.name = "employee",
       .caption = "职员代码",
       .target = &BillRow::employee,
       .refersTo = BaseClass::kEmployee},
      {.name = "audited", .caption = "已审核", .target = &BillRow::audited},
      {.name = "voucher_number", .caption = "凭证号", .target = &BillRow::voucherNumber},
      {.name = "explanation", .caption = "摘要", .target = &BillRow::explanation},
  };
  return kColumns;
}

const std::vector<Column<BillEntryRow>>& BillEntryColumns() {
  static const std::vector<Column<BillEntryRow>> kColumns = {
      {.name = "class", .caption = "单据类型", .target = &BillEntryRow::billClass, .needed = true},
      {.name = "number", .caption = "单据编号", .target = &BillEntryRow::number, .needed = true},
      {.name = "line",
       .caption = "行号",
       .target = &BillEntryRow::line,
       .needed = true,
       .least = 1,
       .most = kLastLine},
      {.name = "direction", .caption = "方向", .target = &BillEntryRow::direction},
      {.name = "item",
       .caption = "商品代码",
       .target = &BillEntryRow::item,
       .needed = true,
       .refersTo = BaseClass::kItem},
      {.name = "warehouse",
       .caption = "仓库代码",
       .target = &BillEntryRow::warehouse,
       .needed = true,
       .refersTo = BaseClass::kWarehouse},
      {.name = "to_warehouse",
       .caption = "调入仓库代码",
       .target = &BillEntryRow::toWarehouse,
       .refersTo = BaseClass::kWarehouse},
      {.name = "batch", .caption = "批号", .target = &BillEntryRow::batch},
      {.name = "property",
       .caption = "辅助属性",
       .target = &BillEntryRow::property,
       .refersTo = BaseClass::kAuxiliaryProperty},
      {.name = "unit", .caption = "单位", .target = &BillEntryRow::unit},
      {.name = "quantity", .caption = "数量", .target = &BillEntryRow::quantity, .needed = true},
      {.name = "aux_quantity", .caption = "辅助数量", .target = &BillEntryRow::auxQuantity},
      {.name = "price", .caption = "单价", .target = &BillEntryRow::price},
      {.name = "amount", .caption = "金额", .target = &BillEntryRow::amount},
      {.name = "order_number", .caption = "订单编号", .target = &BillEntryRow::orderNumber},
      {.name = "order_line",
       .caption = "订单行号",
       .target = &BillEntryRow::orderLine,
       .least = 1,
       .most = kLastLine},
      {.name = "serials", .caption = "序列号", .target = &BillEntryRow::serials},
      {.name = "note", .caption = "备注", .target = &BillEntryRow::note},
  };
  return kColumns;
}

}  // namespace books::importer
