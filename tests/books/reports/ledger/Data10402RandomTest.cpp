// The stock ledger's data on books of random bills, posted in any order, against sums that are made anew for
// every figure from the first movement on, and against the balances that the book has stored.
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/schema/Schema.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"
#include "tests/books/TinyBook.h"
#include "tests/books/services/SmallBook.h"

namespace {

using books::database::Connection;
using books::database::Quantity;
using books::database::Statement;
using books::posting::Document;
using books::posting::Entry;
using books::posting::Id;
using books::schema::BillClass;
using books::schema::Valuation;
using platform::Currency;
using platform::Date;
using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

namespace tiny = books::test::tiny;

constexpr Id kItems[] = {tiny::kJuice, tiny::kYogurt, tiny::kCandy, tiny::kGiftBox, tiny::kScrewdriver};
constexpr Id kWarehouses[] = {tiny::kMain, tiny::kBranch, tiny::kGift};
constexpr int kStart = books::schema::PeriodOf(2025, 1);

using Random = std::mt19937;

int Below(Random& random, int limit) {
  return static_cast<int>(std::uniform_int_distribution<int>(0, limit - 1)(random));
}

// A movement as the book has it, as numbers.
struct Move {
  Id item = 0;
  int period = 0;
  Id warehouse = 0;
  std::string batch;
  std::string line;  // what the report shows of it
  std::int64_t quantity = 0;
  std::int64_t amount = 0;  // both with the sign of the direction
};

struct Asked {
  std::string name;
  std::string fromStock, toStock;
  std::string fromBatch, toBatch;
  std::string user;      // whose rights apply; empty for none
  bool balance = false;  // balances of 0 are left out
};

const Asked kAsked[] = {
    {.name = "everything"},
    {.name = "one warehouse", .fromStock = "02", .toStock = "02"},
    {.name = "from a warehouse on", .fromStock = "02"},
    {.name = "one batch", .fromBatch = "A", .toBatch = "A"},
    {.name = "batches up to", .toBatch = "A"},
    {.name = "a user of some warehouses", .user = "7"},
    {.name = "a user of no warehouse", .user = "12"},
    {.name = "balances that are not 0", .balance = true},
};

class RandomLedger {
 public:
  explicit RandomLedger(std::uint32_t seed) : random_(seed) {
    file_ = folder_.File().parent_path() / "random-ledger.book";
    Connection book = books::schema::CreateBook(file_);
    books::test::WriteTinyBaseData(book);
    book.Execute("UPDATE base_data SET right_users = '7' WHERE id IN (?, ?)", tiny::kBranch, tiny::kGift);
    // Goods with batches have one cost for each, or one for all.
    if (Below(random_, 2) == 0) {
      book.Execute("UPDATE item SET valuation = ? WHERE id = ?", static_cast<int>(Valuation::kMovingAverage),
                   tiny::kYogurt);
    }
    if (Below(random_, 4) != 0) {
      std::vector<books::posting::OpeningStock> openings;
      for (const Id item : kItems) {
        if (Below(random_, 2) == 0) continue;
        openings.push_back({.itemId = item,
                            .warehouseId = tiny::kMain,
                            .batchId = item == tiny::kYogurt ? tiny::kBatchA : 0,
                            .quantity = Quantity::FromInteger(Below(random_, 90)),
                            .auxQuantity = {},
                            .amount = Currency::FromUnits(Below(random_, 900000))});
      }
      books::posting::SetOpeningStock(book, openings);
    }
    PostSome(book, 5 + Below(random_, 25));
  }

  void PostSome(Connection& book, int count) {
    for (; count > 0; --count) books::posting::Post(book, AnyBill());
  }
  Connection Write() const { return books::schema::OpenBook(file_, books::database::Access::kReadWrite); }
  const std::filesystem::path& File() const { return file_; }
  Random& Dice() { return random_; }

 private:
  Document AnyBill() {
    static constexpr BillClass kKinds[] = {BillClass::kPurchaseReceipt, BillClass::kPurchaseReceipt,
                                           BillClass::kSalesIssue, BillClass::kTransfer};
    Document bill;
    bill.billClass = kKinds[Below(random_, 4)];
    bill.number = "R-" + std::to_string(++bills_);
    bill.date = Date::Of(2025, 1, 1).AddDays(Below(random_, 150));
    bill.audited = Below(random_, 8) != 0;
    bill.voucherNumber = Below(random_, 3) == 0 ? "记-" + std::to_string(Below(random_, 9)) : "";
    bill.explanation = Below(random_, 2) == 0 ? "急件" : "";
    for (int lines = 1 + Below(random_, 3); lines > 0; --lines) {
      Entry entry;
      entry.itemId = kItems[Below(random_, 5)];
      entry.warehouseId = kWarehouses[Below(random_, 3)];
      if (entry.itemId == tiny::kYogurt) entry.batchId = 1 + Below(random_, 2);
      entry.unitId =
          entry.itemId == tiny::kJuice || entry.itemId == tiny::kYogurt ? tiny::kBottle : tiny::kPiece;
      const bool isReturn = bill.billClass != BillClass::kTransfer && Below(random_, 6) == 0;
      entry.quantity = Quantity::FromInteger((1 + Below(random_, 12)) * (isReturn ? -1 : 1));
      if (bill.billClass == BillClass::kPurchaseReceipt) {
        entry.amount = Currency::FromUnits(Below(random_, 90000));
      } else if (bill.billClass == BillClass::kTransfer) {
        entry.toWarehouseId = entry.warehouseId == tiny::kMain ? tiny::kBranch : tiny::kMain;
      }
      bill.entries.push_back(entry);
    }
    return bill;
  }

  books::test::SmallBook folder_;
  std::filesystem::path file_;
  Random random_;
  int bills_ = 0;
};

bool Within(const std::string& number, const std::string& from, const std::string& to) {
  return (from.empty() || number >= from) && (to.empty() || number <= to);
}

// What the report must say, worked out anew for each question.
class PlainLedger {
 public:
  explicit PlainLedger(Connection& book) {
    Statement moves = book.Query(
        "SELECT m.item_id, m.period, m.warehouse_id, COALESCE(x.number, ''), m.direction, m.quantity, "
        "m.amount, b.number, c.name, b.voucher_number, b.explanation, m.date, m.line FROM movement m "
        "JOIN bill b ON b.id = m.bill_id JOIN bill_class c ON c.id = b.bill_class "
        "LEFT JOIN batch x ON x.id = m.batch_id "
        "ORDER BY m.item_id, m.date, m.day_order, m.bill_id, m.direction, m.line");
    while (moves.Step()) {
      const bool isIn = moves.Int32(4) > 0;
      const std::string figures =
          platform::NumberToText(moves.GetQuantity(5).ToDouble()) + " " + moves.Amount(6).ToText();
      const int sign = isIn ? 1 : -1;
      moves_.push_back({.item = moves.Integer(0),
                        .period = moves.Int32(1),
                        .warehouse = moves.Integer(2),
                        .batch = moves.Text(3),
                        .line = moves.GetDate(11).ToText() + " " + moves.Text(7) + " " + moves.Text(12) +
                                " " + moves.Text(8) + " " + moves.Text(9) + " " + moves.Text(10) + " " +
                                moves.Text(3) + (isIn ? " in " : " out ") + figures,
                        .quantity = sign * moves.Integer(5),
                        .amount = sign * moves.Integer(6)});
    }
    Statement openings = book.Query(
        "SELECT o.item_id, o.warehouse_id, COALESCE(x.number, ''), o.quantity, o.amount FROM opening_stock o "
        "LEFT JOIN batch x ON x.id = o.batch_id");
    while (openings.Step()) {
      moves_.push_back({.item = openings.Integer(0),
                        .period = kStart - 1,
                        .warehouse = openings.Integer(1),
                        .batch = openings.Text(2),
                        .line = {},
                        .quantity = openings.Integer(3),
                        .amount = openings.Integer(4)});
    }
    Statement rights = book.Query("SELECT id, right_users FROM base_data WHERE class_id = 5");
    while (rights.Step()) rights_[rights.Integer(0)] = rights.Text(1);
    Statement byBatch = book.Query("SELECT id FROM item WHERE valuation = 80");
    while (byBatch.Step()) byBatch_.insert(byBatch.Integer(0));
    until_ = books::posting::BalancesUntil(book);
  }

  std::vector<std::string> Happened(const Asked& asked, Id item, int period) const {
    std::vector<std::string> lines;
    for (const Move& move : moves_) {
      if (!Chosen(asked, item, move) || move.period != period || move.line.empty()) continue;
      lines.push_back(move.line);
    }
    return lines;
  }
  // At the end of a period, batch by batch where each has its cost. With `moved` what has come to 0 in it has
  // a row too.
  std::vector<std::string> Lying(const Asked& asked, Id item, int period, bool moved) const {
    std::map<std::string, std::pair<std::int64_t, std::int64_t>> sums;
    std::set<std::string> touched;
    for (const Move& move : moves_) {
      if (!Chosen(asked, item, move) || move.period > period) continue;
      const std::string batch = byBatch_.contains(item) ? move.batch : "";
      auto& [quantity, amount] = sums[batch];
      quantity += move.quantity;
      amount += move.amount;
      if (move.period == period && !move.line.empty()) touched.insert(batch);
    }
    std::vector<std::string> lines;
    for (const auto& [batch, sum] : sums) {
      const bool isZero = sum.first == 0 && sum.second == 0;
      if (isZero && !(moved && !asked.balance && period <= until_ && touched.contains(batch))) continue;
      lines.push_back(batch + " " + platform::NumberToText(Quantity::FromUnits(sum.first).ToDouble()) + " " +
                      Currency::FromUnits(sum.second).ToText());
    }
    return lines;
  }

 private:
  bool Chosen(const Asked& asked, Id item, const Move& move) const {
    static const std::map<Id, std::string> kNumbers = {
        {tiny::kMain, "01"}, {tiny::kBranch, "02"}, {tiny::kGift, "03"}};
    if (move.item != item || !Within(kNumbers.at(move.warehouse), asked.fromStock, asked.toStock))
      return false;
    if (!asked.user.empty() && rights_.at(move.warehouse).find(asked.user) == std::string::npos) return false;
    if (asked.fromBatch.empty() && asked.toBatch.empty()) return true;
    return !move.batch.empty() && Within(move.batch, asked.fromBatch, asked.toBatch);
  }

  std::vector<Move> moves_;
  std::map<Id, std::string> rights_;  // by warehouse
  std::set<Id> byBatch_;
  int until_ = 0;
};

Ref<Dictionary> FilterOf(const Asked& asked, int lastPeriod) {
  Ref<Dictionary> filter = platform::MakeRef<Dictionary>();
  filter->Set("BStockNumber", asked.fromStock);
  filter->Set("EStockNumber", asked.toStock);
  filter->Set("BBatchNo", asked.fromBatch);
  filter->Set("EBatchNo", asked.toBatch);
  filter->Set("Balance", asked.balance ? 1 : 0);
  if (!asked.user.empty()) {
    filter->Set("DataRightWhere",
                " (CharIndex('" + asked.user + "',v4.FRightUserID)>0 OR ISNULL(v4.FItemID,0)=0) ");
  }
  if (lastPeriod == 0) return filter;
  filter->Set("EYear", books::schema::YearOf(lastPeriod));
  filter->Set("EPeriod", books::schema::NumberOf(lastPeriod));
  return filter;
}

Ref<Dictionary> Ask(const books::Book& book, Id item, int period, const Ref<Dictionary>& filter) {
  Variant given(filter);
  return book.CreateComponent("TOVMStockRpt.Data10402")
      ->Call("GetPerioddata", "UserID=1;", static_cast<std::int32_t>(item),
             static_cast<std::int16_t>(books::schema::YearOf(period)),
             static_cast<std::int16_t>(books::schema::NumberOf(period)), "", given)
      .AsRef<Dictionary>();
}

std::vector<std::string> Balances(const Dictionary& answer, const char* key, const std::string& side) {
  const Ref<Recordset> rows = answer.Value(key).AsRef<Recordset>();
  std::vector<std::string> lines;
  for (rows->RecordCount() > 0 ? rows->MoveFirst() : void(); !rows->AtEnd(); rows->MoveNext()) {
    lines.push_back(platform::ToText(rows->Value("FBatchNo")) + " " +
                    platform::ToText(rows->Value("F" + side + "Qty")) + " " +
                    platform::ToCurrency(rows->Value("F" + side + "Amount")).ToText());
  }
  return lines;
}

std::vector<std::string> Movements(const Dictionary& answer) {
  const Ref<Recordset> rows = answer.Value("rsHappen").AsRef<Recordset>();
  std::vector<std::string> lines;
  for (rows->RecordCount() > 0 ? rows->MoveFirst() : void(); !rows->AtEnd(); rows->MoveNext()) {
    auto text = [&](const char* field) { return platform::ToText(rows->Value(field)); };
    const bool isIn = text("FInQty") != "0" || text("FInAmount") != "0";
    const bool isOut = text("FOutQty") != "0" || text("FOutAmount") != "0";
    EXPECT_FALSE(isIn && isOut);
    const std::string side = isOut ? "Out" : "In";
    lines.push_back(text("FDate") + " " + text("FBillNo") + " " + text("FEntryID") + " " +
                    text("FTranTypeName") + " " + text("FVoucherNo") + " " + text("FNote") + " " +
                    text("FBatchNo") + (isOut ? " out " : " in ") + text(("F" + side + "Qty").c_str()) + " " +
                    platform::ToCurrency(rows->Value("F" + side + "Amount")).ToText());
  }
  return lines;
}

void ExpectPlain(const books::Book& book, const PlainLedger& plain, const Asked& asked, Id item, int first,
                 int last, bool readsAhead) {
  const Ref<Dictionary> filter = FilterOf(asked, readsAhead ? last : 0);
  for (int period = first; period <= last; ++period) {
    SCOPED_TRACE(asked.name + ", item " + std::to_string(item) + ", period " + std::to_string(period) +
                 " of " + std::to_string(first) + " to " + std::to_string(last));
    const Ref<Dictionary> answer = Ask(book, item, period, filter);
    ASSERT_EQ(Movements(*answer), plain.Happened(asked, item, period));
    ASSERT_EQ(Balances(*answer, "rsBegBal", "Beg"), plain.Lying(asked, item, period - 1, false));
    ASSERT_EQ(Balances(*answer, "rsEndBal", "End"), plain.Lying(asked, item, period, true));
  }
}

void ExpectPlainEverywhere(const books::Book& book, const PlainLedger& plain, Random& random) {
  for (const Asked& asked : kAsked) {
    for (const Id item : kItems) {
      const int first = kStart - 2 + Below(random, 6);
      ExpectPlain(book, plain, asked, item, first, first + Below(random, 6), Below(random, 3) != 0);
      if (::testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Data10402RandomTest, AgreesWithPlainSums) {
  for (std::uint32_t seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomLedger ledger(seed);
    Connection writing = ledger.Write();
    const books::Book book = books::Book::Open(ledger.File());
    ExpectPlainEverywhere(book, PlainLedger(writing), ledger.Dice());
    if (HasFatalFailure()) return;
    // The same open book, after more business: nothing that was kept of it may be shown.
    ledger.PostSome(writing, 3);
    writing.Execute("UPDATE bill SET explanation = '补记' WHERE id % 3 = 0");
    writing.Execute("UPDATE base_data SET right_users = '12' WHERE id = ?", tiny::kGift);
    ExpectPlainEverywhere(book, PlainLedger(writing), ledger.Dice());
    if (HasFatalFailure()) return;
  }
}

// What the ledger carries on from movement to movement is what the book has stored for each period.
TEST(Data10402RandomTest, AgreesWithTheStoredBalances) {
  for (std::uint32_t seed = 101; seed <= 110; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomLedger ledger(seed);
    Connection stored = ledger.Write();
    const books::Book book = books::Book::Open(ledger.File());
    const int until = books::posting::BalancesUntil(stored);
    const Ref<Dictionary> filter = FilterOf({.name = "all"}, until);
    for (const Id item : kItems) {
      for (int period = kStart; period <= until; ++period) {
        SCOPED_TRACE("item " + std::to_string(item) + ", period " + std::to_string(period));
        Statement rows = stored.Query(
            "SELECT IIF(i.valuation = 80, COALESCE(x.number, ''), '') AS number, SUM(b.quantity), "
            "SUM(b.amount) "
            "FROM balance b JOIN item i ON i.id = b.item_id LEFT JOIN batch x ON x.id = b.batch_id "
            "WHERE b.item_id = ? AND b.period = ? GROUP BY 1 "
            "HAVING SUM(b.quantity) <> 0 OR SUM(b.amount) <> 0 ORDER BY 1",
            item, period);
        std::vector<std::string> expected;
        while (rows.Step()) {
          expected.push_back(rows.Text(0) + " " + platform::NumberToText(rows.GetQuantity(1).ToDouble()) +
                             " " + rows.Amount(2).ToText());
        }
        std::vector<std::string> closing = Balances(*Ask(book, item, period, filter), "rsEndBal", "End");
        std::erase_if(closing, [](const std::string& line) { return line.ends_with(" 0 0"); });
        ASSERT_EQ(closing, expected);
      }
    }
  }
}

}  // namespace
