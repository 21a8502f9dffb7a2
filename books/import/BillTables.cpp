// Bills and their entries. A new bill is written as it is; one that the book has already must be the same as
// there, because stock was valued with it: only its auditing, its voucher and its explanation may come later.
#include <algorithm>
#include <array>
#include <cstdlib>

#include "books/import/BillEntries.h"
#include "books/import/DocumentIndex.h"

namespace books::importer {
namespace {

using schema::BillKind;

class Bills {
 public:
  explicit Bills(Run& run) : run_(run), index_(run, "bill", "bills.csv"), entries_(run, index_) {}

  void Import() {
    run_.Read<BillRow>("bills.csv", BillColumns(), [&](const BillRow& row, const Place& place, bool sound) {
      ++run_.Count(place.file).rows;
      if (!(sound && Take(row, place)) && row.billClass != nullptr) index_.Refuse(*row.billClass, row.number);
    });
    run_.Read<BillEntryRow>("bill_entries.csv", BillEntryColumns(),
                            [&](const BillEntryRow& row, const Place& place, bool sound) {
                              ++run_.Count(place.file).rows;
                              entries_.Take(row, place, sound);
                            });
    entries_.CheckWholeBills();
  }

 private:
  // False when the bill is refused, which has been reported.
  bool Take(const BillRow& row, const Place& place) {
    if (row.billClass->kind == BillKind::kOrder) {
      run_.findings.Add(place, "class", {}, "this is a class of orders", "write it into orders.csv");
      return false;
    }
    const std::optional<std::int32_t> period = run_.PeriodOf(place, "date", *row.date);
    if (!period) return false;
    const std::optional<std::int64_t> known = index_.Register(place, *row.billClass, row.number);
    if (!known) return true;  // the first one of that number stands
    ImportCount& count = run_.Count(place.file);
    ++(*known == 0 ? count.added : count.known);
    return *known == 0 ? Insert(row, place, *period) : Compare(row, place, *known, *period);
  }

  bool IsOpen(const Place& place, const BillRow& row, std::int32_t period) {
    if (period >= run_.accounting->openFrom) return true;
    run_.findings.Add(place, "date", row.date->ToText(), "the period of this day is closed",
                      "date it later, or open the period again first");
    return false;
  }

  bool Insert(const BillRow& row, const Place& place, std::int32_t period) {
    if (!IsOpen(place, row, period)) return false;
    run_.connection.Execute(
        "INSERT INTO bill (id, bill_class, number, date, period, supplier_id, customer_id, department_id, "
        "employee_id, audited, voucher_number, explanation) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        index_.NewId(place.line), row.billClass->id, row.number, *row.date, period, row.supplier,
        row.customer, row.department, row.employee, row.audited.value_or(true), row.voucherNumber,
        row.explanation);
    return true;
  }

  bool Compare(const BillRow& row, const Place& place, std::int64_t id, std::int32_t period) {
    constexpr std::array<std::string_view, 5> kColumns = {"date", "supplier", "customer", "department",
                                                          "employee"};
    database::Statement book = run_.connection.Query(
        "SELECT date IS NOT DISTINCT FROM ?, supplier_id IS NOT DISTINCT FROM ?, "
        "customer_id IS NOT DISTINCT FROM ?, department_id IS NOT DISTINCT FROM ?, "
        "employee_id IS NOT DISTINCT FROM ?, audited FROM bill WHERE id = ?",
        *row.date, row.supplier, row.customer, row.department, row.employee, id);
    if (!book.Step()) return false;
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      if (!book.Boolean(static_cast<int>(i))) {
        run_.findings.Add(place, kColumns[i], {},
                          "the bill " + std::string(row.number) + " says otherwise in the book",
                          "bills in the book stay; correct the row or write a bill of another number");
        return false;
      }
    }
    const bool audited = book.Boolean(static_cast<int>(kColumns.size()));
    book.Reset();
    if (audited && !row.audited.value_or(true)) {
      run_.findings.Add(place, "audited", "0", "the bill is audited in the book", "write 1");
      return false;
    }
    if (!audited && row.audited.value_or(true)) {
      if (!IsOpen(place, row, period)) return false;
      run_.billsToAudit.push_back(id);
    }
    if (!row.voucherNumber.empty() || !row.explanation.empty()) {
      run_.connection.Execute(
          "UPDATE bill SET voucher_number = CASE WHEN ? = '' THEN voucher_number ELSE ? END, "
          "explanation = CASE WHEN ? = '' THEN explanation ELSE ? END WHERE id = ?",
          row.voucherNumber, row.voucherNumber, row.explanation, row.explanation, id);
    }
    return true;
  }

  Run& run_;
  DocumentIndex index_;
  BillEntries entries_;
};

}  // namespace

void ImportBills(Run& run) { Bills(run).Import(); }

}  // namespace books::importer
