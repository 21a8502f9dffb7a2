// Both tracking reports on books of random bills, against what the test itself did: a serial number's history
// is a chain without gaps that ends where it stands, and the goods of linked bills are those of their
// entries.
#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/posting/Posting.h"
#include "platform/value/Convert.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

namespace {

using books::database::Connection;
using books::database::Quantity;
using books::posting::Document;
using books::posting::Entry;
using books::posting::Id;
using books::schema::BillClass;
using books::test::FilterEntries;
using books::test::LinesOf;
using platform::Date;
using platform::Recordset;
using platform::Ref;
using namespace books::test::tiny;
using Random = std::mt19937;

int Below(Random& random, int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

Date DayOf(int day) { return Date::Of(2025, 1, 1).AddDays(day); }

constexpr int kDays = 28;
constexpr int kNumbers = 30;
// Goods that are not with us.
const std::string kOutside;

struct Step {
  std::string bill;
  std::string from;
  std::string to;
  int day = 0;
};

// A life of one serial number a row: bought, carried about, sold, taken back.
class SerialWorld {
 public:
  explicit SerialWorld(unsigned seed) : random_(seed) {}

  void Write(Connection& connection) {
    books::test::WriteTinyBaseData(connection);
    for (int number = 0; number < kNumbers; ++number) {
      const std::string name = NameOf(number);
      connection.Execute("INSERT INTO serial (id, item_id, number) VALUES (?, ?, ?)", 100 + number, kScanner,
                         name);
      Live(name, 100 + number);
    }
    // Bills of all numbers are entered out of order: what counts is their day.
    std::ranges::shuffle(documents_, random_);
    std::ranges::stable_sort(documents_, {}, &Document::date);
    for (const Document& document : documents_) books::posting::Post(connection, document);
  }
  const std::map<std::string, std::vector<Step>>& Lives() const { return lives_; }

 private:
  static std::string NameOf(int number) {
    const std::string digits = std::to_string(100 + number);
    return "SN-" + digits;
  }

  // At most one movement a day: within a day receipts come before issues, whatever was done first.
  void Live(const std::string& name, Id serial) {
    std::vector<Step>& life = lives_[name];
    std::optional<Id> place;
    bool bought = false;
    for (int day = Below(random_, 6); day < kDays; day += 1 + Below(random_, 6)) {
      const Id warehouse = Below(random_, 2) == 0 ? kMain : kBranch;
      Document bill;
      Entry entry;
      if (!place) {
        bill.billClass = bought ? BillClass::kSalesIssue : BillClass::kPurchaseReceipt;
        entry.warehouseId = warehouse;
        entry.quantity = Quantity::FromInteger(bought ? -1 : 1);  // taken back, or bought
      } else if (Below(random_, 2) == 0) {
        bill.billClass = BillClass::kTransfer;
        entry.warehouseId = *place;
        entry.toWarehouseId = *place == kMain ? kBranch : kMain;
        entry.quantity = Quantity::FromInteger(1);
      } else {
        bill.billClass = BillClass::kSalesIssue;
        entry.warehouseId = *place;
        entry.quantity = Quantity::FromInteger(1);
      }
      const std::optional<Id> before = place;
      if (entry.toWarehouseId) {
        place = entry.toWarehouseId;
      } else {
        place = before ? std::nullopt : std::optional(warehouse);
      }
      bought = true;
      if (bill.billClass == BillClass::kPurchaseReceipt) bill.supplierId = kSupplier;
      if (bill.billClass == BillClass::kSalesIssue) bill.customerId = kCustomer;
      Finish(bill, entry, serial, day);
      life.push_back({.bill = bill.number, .from = PlaceOf(before), .to = PlaceOf(place), .day = day});
    }
  }

  void Finish(Document& bill, Entry& entry, Id serial, int day) {
    bill.number = "B-" + std::to_string(documents_.size());
    bill.date = DayOf(day);
    entry.itemId = kScanner;
    entry.unitId = kPiece;
    entry.unitQuantity = entry.quantity;
    entry.serialIds = {serial};
    bill.entries = {entry};
    documents_.push_back(bill);
  }

  static std::string PlaceOf(const std::optional<Id>& warehouse) {
    if (!warehouse) return kOutside;
    return *warehouse == kMain ? "主仓库" : "分仓库";
  }

  Random random_;
  std::vector<Document> documents_;
  std::map<std::string, std::vector<Step>> lives_;
};

std::string TextAt(const Recordset& rows, const char* field, std::size_t row) {
  return platform::ToText(rows.ValueAt(rows.FieldIndex(field), row));
}

// The histories that the report shows: the bills of each number, in its order, with where it stands.
struct History {
  std::vector<std::string> bills;
  std::string place;
  std::string state;
};

std::map<std::string, History> HistoriesOf(const books::Book& book, FilterEntries filter) {
  filter.insert(filter.end(), {{"chkDetail", "1"}, {"chkAllDetailShow", "1"}});
  const Ref<Recordset> rows = books::test::Fetch(book, "TOVMStockRpt.Data10418", "GetRpt10418Data", filter);
  std::map<std::string, History> histories;
  for (std::size_t row = 0; row < rows->ViewCount(); ++row) {
    History& history = histories[TextAt(*rows, "FSerialNo", row)];
    history.bills.push_back(TextAt(*rows, "FBillNo", row));
    history.place = TextAt(*rows, "FStockName", row);
    history.state = TextAt(*rows, "FSerialNoStatus", row);
  }
  return histories;
}

TEST(TrackingRandom, AHistoryIsAChainThatEndsWhereTheNumberStands) {
  std::size_t steps = 0;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    SerialWorld world(seed);
    const books::test::BookFile file([&](Connection& connection) { world.Write(connection); });
    const books::Book book = file.Open();
    std::map<std::string, Step> stepOf;
    for (const auto& [name, life] : world.Lives()) {
      for (const Step& step : life) stepOf[step.bill] = step;
    }
    const std::map<std::string, History> histories = HistoriesOf(book, {});
    for (const auto& [name, life] : world.Lives()) {
      SCOPED_TRACE(name);
      ASSERT_EQ(histories.contains(name), !life.empty());
      if (life.empty()) continue;
      const History& history = histories.at(name);
      ASSERT_EQ(history.bills.size(), life.size());
      std::string place = kOutside;
      for (const std::string& bill : history.bills) {
        EXPECT_EQ(stepOf.at(bill).from, place) << "a gap before " << bill;
        place = stepOf.at(bill).to;
        ++steps;
      }
      EXPECT_EQ(history.place, place);
      EXPECT_EQ(history.state, place.empty() ? "已出库" : "在库");
    }
  }
  EXPECT_GT(steps, 250U);
}

TEST(TrackingRandom, DaysCutAPieceOutOfAHistory) {
  SerialWorld world(11);
  const books::test::BookFile file([&](Connection& connection) { world.Write(connection); });
  const books::Book book = file.Open();
  for (const auto& [first, last] : {std::pair{0, kDays}, std::pair{5, 9}, std::pair{12, 12}}) {
    SCOPED_TRACE(std::to_string(first) + " to " + std::to_string(last));
    const std::map<std::string, History> histories =
        HistoriesOf(book, {{"BDate", DayOf(first)}, {"EDate", DayOf(last)}});
    for (const auto& [name, life] : world.Lives()) {
      std::vector<std::string> bills;
      for (const Step& step : life) {
        if (step.day >= first && step.day <= last) bills.push_back(step.bill);
      }
      EXPECT_EQ(histories.contains(name) ? histories.at(name).bills : std::vector<std::string>(), bills)
          << name;
    }
  }
}

// What a bill of the other receipts and issues says, one a line of goods.
struct Told {
  std::string bill;
  std::string item;
  bool receipt = false;
  int quantity = 0;
  int link = 0;  // 0 customer, 1 supplier, 2 neither
  int day = 0;
};

constexpr std::pair<Id, const char*> kGoods[] = {{kJuice, "01.01.001"}, {kCandy, "01.02"}, {kTape, "02.003"}};

std::vector<Told> WriteOtherBills(Connection& connection, Random& random) {
  books::test::WriteTinyBaseData(connection);
  std::vector<Told> told;
  for (int number = 0; number < 60; ++number) {
    const bool receipt = Below(random, 2) == 0;
    const int link = Below(random, 3);
    const int day = Below(random, kDays);
    Document bill;
    bill.billClass = receipt ? BillClass::kOtherReceipt : BillClass::kOtherIssue;
    bill.number = "Q-" + std::to_string(100 + number);
    bill.date = DayOf(day);
    bill.departmentId = kDepartment;
    bill.audited = Below(random, 6) != 0;
    if (link == 0) bill.customerId = kCustomer;
    if (link == 1) bill.supplierId = kSupplier;
    for (int line = 0; line <= Below(random, 3); ++line) {
      const auto& [item, itemNumber] = kGoods[Below(random, 3)];
      const int quantity = 1 + Below(random, 20);
      Entry entry;
      entry.itemId = item;
      entry.warehouseId = kMain;
      entry.unitId = item == kJuice ? kBottle : kPiece;
      entry.quantity = entry.unitQuantity = Quantity::FromInteger(quantity);
      if (receipt) entry.amount = platform::Currency::FromText(std::to_string(1 + Below(random, 90)));
      bill.entries.push_back(entry);
      if (bill.audited) told.push_back({bill.number, itemNumber, receipt, quantity, link, day});
    }
    books::posting::Post(connection, bill);
  }
  return told;
}

// The goods of bills as sorted lines "bill item in out"; by item only with `summed`.
std::vector<std::string> GoodsOf(const std::vector<Told>& told, int style, int first, int last, bool summed) {
  std::vector<std::string> lines;
  std::map<std::string, std::pair<int, int>> sums;
  for (const Told& each : told) {
    if ((style < 2 && each.link != style) || each.day < first || each.day > last) continue;
    const std::string quantity = std::to_string(each.quantity);
    lines.push_back(each.bill + " " + each.item + (each.receipt ? " " + quantity + " -" : " - " + quantity));
    (each.receipt ? sums[each.item].first : sums[each.item].second) += each.quantity;
  }
  if (summed) {
    lines.clear();
    for (const auto& [item, sum] : sums) {
      lines.push_back("'' " + item + " " + (sum.first == 0 ? "-" : std::to_string(sum.first)) + " " +
                      (sum.second == 0 ? "-" : std::to_string(sum.second)));
    }
  }
  std::ranges::sort(lines);
  return lines;
}

// Amounts are checked against the movements of the book, which are worked out by the posting alone.
void CheckTotal(const Recordset& rows, Connection& connection, const std::string& where) {
  const auto amount = [&](const char* direction) {
    return books::test::Rows(
        connection,
        "SELECT COALESCE(SUM(m.amount), 0) FROM movement m JOIN bill b ON b.id = m.bill_id "
        "WHERE m.direction = " +
            std::string(direction) + where);
  };
  const std::size_t last = rows.ViewCount() - 1;
  const auto shown = [&](const char* field) {
    return std::to_string(rows.CurrencyAt(rows.FieldIndex(field), last).Units());
  };
  EXPECT_EQ(shown("FInAmount"), amount("1"));
  EXPECT_EQ(shown("FOutAmount"), amount("-1"));
}

TEST(TrackingRandom, LinkedBillsHoldTheGoodsOfTheirEntries) {
  // Customers, suppliers, departments.
  const std::pair<int, const char*> styles[] = {
      {0, " AND b.customer_id IS NOT NULL"}, {1, " AND b.supplier_id IS NOT NULL"}, {4, ""}};
  std::size_t listed = 0;
  for (unsigned seed = 1; seed <= 4; ++seed) {
    Random random(seed);
    std::vector<Told> told;
    const books::test::BookFile file(
        [&](Connection& connection) { told = WriteOtherBills(connection, random); });
    const books::Book book = file.Open();
    Connection connection = file.Write();
    for (const auto& [style, where] : styles) {
      const int first = Below(random, kDays / 2);
      const int last = kDays / 2 + Below(random, kDays / 2);
      for (const bool summed : {false, true}) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", style " + std::to_string(style) + ", days " +
                     std::to_string(first) + " to " + std::to_string(last) + (summed ? ", summed" : ""));
        const Ref<Recordset> rows = books::test::Fetch(book, "TOVMStockRpt.Data", "GetRpt10403Data",
                                                       {{"InvoiceStyle", style},
                                                        {"BDate", DayOf(first)},
                                                        {"EDate", DayOf(last)},
                                                        {"chkShowItem", summed ? "1" : "0"}});
        ASSERT_GT(rows->ViewCount(), 1U);
        CheckTotal(*rows, connection,
                   where + (" AND b.date BETWEEN " + std::to_string(DayOf(first).Days())) + " AND " +
                       std::to_string(DayOf(last).Days()));
        std::vector<std::string> lines = LinesOf(*rows, {"FBillNo", "FItemNumber", "FInQty", "FOutQty"});
        lines.pop_back();
        std::ranges::sort(lines);
        EXPECT_EQ(lines, GoodsOf(told, style, first, last, summed));
        listed += lines.size();
      }
    }
  }
  EXPECT_GT(listed, 300U);
}

}  // namespace
