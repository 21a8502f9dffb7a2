#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "books/import/Run.h"

// The columns of bills.csv and bill_entries.csv.
namespace books::importer {

struct BillRow {
  const BillClassFacts* billClass = nullptr;
  std::string_view number;
  std::optional<platform::Date> date;
  Reference supplier;
  Reference customer;
  Reference department;
  Reference employee;
  std::optional<bool> audited;
  std::string_view voucherNumber;
  std::string_view explanation;
};

struct BillEntryRow {
  const BillClassFacts* billClass = nullptr;
  std::string_view number;
  std::optional<std::int32_t> line;
  std::string_view direction;  // assembly and disassembly
  Reference item;
  Reference warehouse;
  Reference toWarehouse;  // transfers
  std::string_view batch;
  Reference property;
  Reference unit;
  std::optional<database::Quantity> quantity;
  std::optional<database::Quantity> auxQuantity;
  std::optional<double> price;
  std::optional<platform::Currency> amount;
  std::string_view orderNumber;
  std::optional<std::int32_t> orderLine;
  std::string_view serials;  // joined by semicolons
  std::string_view note;
};

const std::vector<Column<BillRow>>& BillColumns();
const std::vector<Column<BillEntryRow>>& BillEntryColumns();

}  // namespace books::importer
