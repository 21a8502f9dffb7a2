#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/database/Connection.h"
#include "books/import/Findings.h"
#include "books/import/Import.h"
#include "books/import/Known.h"
#include "books/import/files/TableReader.h"
#include "books/posting/BulkPosting.h"

namespace books::importer {

// When accounting began and what is closed; periods by their number in the tables.
struct Accounting {
  std::int32_t start = 0;
  std::int32_t openFrom = 0;  // bills of earlier periods are refused
  std::int32_t wanted = 0;  // the current period that profile.csv names, reached by closing what lies before
};

// One import, inside one transaction of the book. The tables are read one after the other into the book, and
// a later one may name what an earlier one brought; whoever runs it commits only when nothing was found
// wrong.
struct Run {
  database::Connection& connection;
  std::filesystem::path folder;
  Findings& findings;
  Known known;
  std::optional<Accounting> accounting;
  std::vector<ImportCount> counts;
  struct PeriodDays {
    std::int32_t period = 0;
    platform::Date first = platform::Date::FromDays(1);
    platform::Date last = platform::Date::FromDays(0);
  };
  PeriodDays lastPeriod;  // the one that was asked for last: most bills lie beside the one before
  // Opening stock and audited bills go through it; it posts them when Import finishes it. Null while
  // accounting has not begun.
  posting::BulkPosting* posting = nullptr;
  std::vector<std::int64_t> billsToAudit;

  bool Has(std::string_view file) const { return std::filesystem::exists(folder / file); }
  std::int64_t LastId(std::string_view table) const;
  // What is counted under the file's name; valid until the next file is counted.
  ImportCount& Count(std::string_view file);
  // The period of a day, or a report: accounting has not begun, no such period, before the start.
  std::optional<std::int32_t> PeriodOf(const Place& place, std::string_view column, platform::Date day);

  void ReportNoAccounting(const Place& place);

  // Reads a file of the folder if it is there.
  template <class Row, class Take>
  void Read(std::string_view file, std::span<const Column<Row>> columns, Take&& take) {
    if (!Has(file)) return;
    const std::int64_t before = findings.Count();
    const bool read = ReadTable<Row>(folder / file, file, columns, known, findings, take);
    if (findings.Count() > before) known.AddFaultyFile(file, !read);
  }
};

// A word that a column takes, and what it means.
struct Choice {
  std::string_view word;
  std::int32_t value = 0;
};
// Nothing for a word that is none of the choices, which is reported.
std::optional<std::int32_t> Choose(Run& run, const Place& place, std::string_view column,
                                   std::string_view word, std::span<const Choice> choices);

// The batch that a row names: none for an item that is not kept by batch, which is a value too. Nothing when
// it does not fit, which is reported.
std::optional<Reference> FindBatch(Run& run, const Place& place, std::int64_t item, std::string_view number);

// What an entry of a bill or an order says in figures. Empty figures are worked out from the others.
struct Figures {
  std::int64_t unitId = 0;
  database::Quantity unitQuantity;
  database::Quantity quantity;  // in the base unit
  double price = 0;             // for the entry's unit
  std::optional<platform::Currency> amount;
};
struct GivenFigures {
  std::int64_t item = 0;
  Reference unit;
  database::Quantity unitQuantity;
  std::optional<double> price;
  std::optional<platform::Currency> amount;
};
// Nothing when they do not fit, which is reported.
std::optional<Figures> WorkOut(Run& run, const Place& place, const GivenFigures& given);

// In the order in which they are read.
void ImportAccounting(Run& run);  // profile.csv, periods.csv
void ImportUnits(Run& run);       // units.csv
void ImportBaseData(Run& run);    // departments.csv … suppliers.csv, warehouses.csv, items.csv
void ImportItemFacts(Run& run);   // item_units.csv, item_limits.csv, partner_matches.csv, purchase_prices.csv
void ImportBatches(Run& run);     // batches.csv, serials.csv
void ImportOpening(Run& run);     // opening_stock.csv; needs `posting`
void ImportOrders(Run& run);      // orders.csv, order_entries.csv
void ImportBills(Run& run);       // bills.csv, bill_entries.csv

}  // namespace books::importer
