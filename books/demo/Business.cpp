#include "books/demo/Business.h"

namespace books::demo {

using database::Quantity;

posting::Document NewBill(const Business& business, schema::BillClass billClass, Id department, Id employee) {
  posting::Document bill;
  bill.billClass = billClass;
  bill.date = business.day;
  bill.departmentId = department;
  bill.employeeId = employee;
  return bill;
}

posting::Entry NewEntry(const Business& business, const Shelf& shelf, const Taken& goods,
                        std::optional<std::int64_t> price) {
  const Item& item = business.company.items[shelf.item];
  const InUnit inUnit = InSuitingUnit(item, goods.lot.quantity);
  posting::Entry entry;
  entry.itemId = item.id;
  entry.warehouseId = business.WarehouseIdOf(shelf);
  if (goods.lot.batchId != 0) entry.batchId = goods.lot.batchId;
  if (goods.lot.auxId != 0) entry.auxId = goods.lot.auxId;
  entry.unitId = inUnit.unitId;
  entry.unitQuantity = Quantity::FromUnits(inUnit.quantity);
  entry.quantity = Quantity::FromUnits(goods.lot.quantity);
  entry.auxQuantity = Quantity::FromUnits(goods.lot.auxQuantity);
  entry.serialIds = goods.serials;
  if (price) {
    entry.price = static_cast<double>(*price * inUnit.factor) / 10000.0;
    entry.amount = AmountOf(*price, goods.lot.quantity);
  }
  return entry;
}

}  // namespace books::demo
