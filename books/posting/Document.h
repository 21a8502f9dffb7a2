#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "books/database/Quantity.h"
#include "books/schema/Codes.h"
#include "platform/value/Currency.h"
#include "platform/value/Date.h"

namespace books::posting {

using Id = std::int64_t;

// One line of a bill. docs/book.md tells what `amount` means for each kind of bill.
struct Entry {
  std::int32_t line = 0;  // 0: the next one
  // Read for assembly and disassembly only; receipts, issues and transfers know theirs.
  schema::Direction direction = schema::Direction::kIn;
  Id itemId = 0;
  Id warehouseId = 0;
  std::optional<Id> toWarehouseId;  // transfers
  std::optional<Id> batchId;
  std::optional<Id> auxId;
  Id unitId = 0;
  database::Quantity unitQuantity;
  database::Quantity quantity;  // in the base unit; negative for a return
  database::Quantity auxQuantity;
  double price = 0;
  std::optional<platform::Currency> amount;
  std::optional<Id> orderId;
  std::optional<std::int32_t> orderLine;
  std::vector<Id> serialIds;
  std::string note;
};

struct Document {
  schema::BillClass billClass = schema::BillClass::kPurchaseReceipt;
  std::string number;
  platform::Date date;
  std::optional<Id> supplierId;
  std::optional<Id> customerId;
  std::optional<Id> departmentId;
  std::optional<Id> employeeId;
  bool audited = true;  // only an audited bill moves stock
  std::string voucherNumber;
  std::string explanation;
  std::vector<Entry> entries;
};

// What lay in stock when accounting began. Goods in a gift warehouse have the amount 0.
struct OpeningStock {
  Id itemId = 0;
  Id warehouseId = 0;
  Id batchId = 0;  // 0: none
  Id auxId = 0;
  database::Quantity quantity;
  database::Quantity auxQuantity;
  platform::Currency amount;
};

}  // namespace books::posting
