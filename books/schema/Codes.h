#pragma once

#include <cstdint>

// Numbers that stand in the tables of a book.
namespace books::schema {

// base_data.class_id
enum class BaseClass : std::int32_t {
  kCustomer = 1,
  kDepartment = 2,
  kEmployee = 3,
  kItem = 4,
  kWarehouse = 5,
  kSupplier = 8,
  kAuxiliaryProperty = 10,
};

// item.valuation. The ledger shows its batch column for kBatchCost.
enum class Valuation : std::int32_t {
  kMonthlyAverage = 77,
  kMovingAverage = 78,
  kFirstInFirstOut = 79,
  kBatchCost = 80,
};

// warehouse.type_code. Goods in a gift warehouse are kept by quantity alone and carry no amount.
enum class WarehouseType : std::int32_t {
  kOrdinary = 500,
  kGift = 501,
};

// bill.bill_class and order_bill.bill_class: 102xxxx purchase side, 103xxxx sales side, 104xxxx stock side.
enum class BillClass : std::int32_t {
  kPurchaseOrder = 1020001,
  kPurchaseReceipt = 1020002,
  kEstimatedReceipt = 1020003,
  kPurchaseRebateGoods = 1020004,
  kPurchaseRebateMoney = 1020005,
  kSalesOrder = 1030001,
  kSalesIssue = 1030002,
  kConsignment = 1030003,
  kSalesRebateGoods = 1030004,
  kOtherReceipt = 1040001,
  kOtherIssue = 1040002,
  kCountGain = 1040003,
  kCountLoss = 1040004,
  kAssembly = 1040005,
  kDisassembly = 1040006,
  kTransfer = 1040007,
  kPriceAdjustment = 1040008,
};

// bill_class.kind: what the entries of a bill do to stock.
enum class BillKind : std::int32_t {
  kOrder = 0,
  kReceipt = 1,
  kIssue = 2,
  kConversion = 3,  // entries in and out of their own
  kTransfer = 4,    // an entry goes out of one warehouse and into another
  kAmountOnly = 5,  // changes the amount, not the quantity
};

// movement.day_order: the order in which the movements of a day are costed.
enum class DayOrder : std::int32_t {
  kReceipt = 1,
  kAmountOnly = 2,
  kConversion = 3,  // and transfers
  kIssue = 4,
};

// movement.direction, bill_entry.direction
enum class Direction : std::int32_t { kOut = -1, kIn = 1 };

// serial.state
enum class SerialState : std::int32_t { kNew = 0, kInStock = 1, kIssued = 2 };

// A period's number in the tables: 2026-11 is 2026 × 12 + 10. The period before is one less.
constexpr std::int32_t PeriodOf(std::int32_t year, std::int32_t number) { return (year * 12) + number - 1; }
constexpr std::int32_t YearOf(std::int32_t period) { return period / 12; }
constexpr std::int32_t NumberOf(std::int32_t period) { return (period % 12) + 1; }

}  // namespace books::schema
