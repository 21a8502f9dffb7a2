#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "books/check/Check.h"
#include "books/posting/BulkPosting.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/schema/Codes.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"
#include "tests/books/posting/PlainStock.h"

// Books of random bills, posted in any order of days, taken back, valued late, over periods that close and
// open: they must end up with the figures that the plain reckoning gives for the bills that are left.
namespace {

using books::database::Connection;
using books::database::Quantity;
using books::database::Statement;
using books::posting::Costing;
using books::posting::Document;
using books::posting::Entry;
using books::posting::Id;
using books::schema::BillClass;
using books::schema::Direction;
using books::test::PlainCell;
using books::test::PlainFigures;
using books::test::PlainMethod;
using books::test::PlainMove;
using platform::Currency;
using platform::Date;

constexpr Id kGift = 13;
constexpr int kFirstPeriod = books::schema::PeriodOf(2025, 1);

// Items 1 to 6: two of a moving average, two monthly, one oldest first, one by batch.
const std::map<Id, PlainMethod> kMethods = {
    {1, PlainMethod::kMoving},  {2, PlainMethod::kMoving},      {3, PlainMethod::kMonthly},
    {4, PlainMethod::kMonthly}, {5, PlainMethod::kOldestFirst}, {6, PlainMethod::kBatch},
};
constexpr Id kBatchItem = 6;

int NumberOf(PlainMethod method) {
  switch (method) {
    case PlainMethod::kMonthly:
      return 77;
    case PlainMethod::kMoving:
      return 78;
    case PlainMethod::kOldestFirst:
      return 79;
    case PlainMethod::kBatch:
      return 80;
  }
  return 0;
}

Connection MakeEmptyBook(bool costPerWarehouse) {
  Connection book = books::schema::CreateBookInMemory();
  books::database::Transaction transaction(book);
  book.Execute("INSERT INTO unit (id, name) VALUES (1, '个')");
  for (const auto& [item, method] : kMethods) {
    book.Execute(
        "INSERT INTO base_data (id, class_id, number, short_number, name) VALUES (?, 4, ?, ?, '商品')", item,
        std::to_string(item), std::to_string(item));
    book.Execute("INSERT INTO item (id, unit_id, valuation, batch_managed) VALUES (?, 1, ?, ?)", item,
                 NumberOf(method), item == kBatchItem);
  }
  for (const Id warehouse : {Id{11}, Id{12}, kGift}) {
    book.Execute(
        "INSERT INTO base_data (id, class_id, number, short_number, name) VALUES (?, 5, ?, ?, '仓库')",
        warehouse, std::to_string(warehouse), std::to_string(warehouse));
    book.Execute("INSERT INTO warehouse (id, type_code) VALUES (?, ?)", warehouse,
                 warehouse == kGift ? 501 : 500);
  }
  book.Execute("INSERT INTO batch (id, item_id, number) VALUES (1, ?, 'A'), (2, ?, 'B')", kBatchItem,
               kBatchItem);
  if (costPerWarehouse) {
    book.Execute("INSERT INTO system_profile (category, key, value) VALUES ('IC', 'CalculateType', '1')");
  }
  books::posting::BeginAccounting(book, 2025, 1, 2025);
  transaction.Commit();
  return book;
}

Quantity AnyQuantity() { return Quantity::FromUnits(*rc::gen::inRange(1, 80) * (Quantity::kScale / 10)); }
Currency AnyAmount(int least) { return Currency::FromUnits(*rc::gen::inRange(least, 300000)); }

Entry AnyEntry() {
  Entry entry;
  entry.itemId = *rc::gen::inRange<Id>(1, 7);
  entry.warehouseId = *rc::gen::weightedElement<Id>({{5, 11}, {4, 12}, {1, kGift}});
  if (entry.itemId == kBatchItem) entry.batchId = *rc::gen::inRange<Id>(1, 3);
  entry.unitId = 1;
  entry.quantity = AnyQuantity();
  return entry;
}

Document AnyDocument(int number) {
  Document document;
  document.billClass = *rc::gen::weightedElement<BillClass>({{6, BillClass::kPurchaseReceipt},
                                                             {2, BillClass::kOtherReceipt},
                                                             {8, BillClass::kSalesIssue},
                                                             {3, BillClass::kTransfer},
                                                             {2, BillClass::kAssembly},
                                                             {1, BillClass::kPriceAdjustment}});
  document.number = "B" + std::to_string(number);
  document.date = Date::Of(2025, 1, 1).AddDays(*rc::gen::inRange(0, 90));
  document.audited = *rc::gen::weightedElement<bool>({{9, true}, {1, false}});
  const int lines =
      document.billClass == BillClass::kAssembly ? *rc::gen::inRange(2, 5) : *rc::gen::inRange(1, 4);
  for (int line = 1; line <= lines; ++line) {
    Entry entry = AnyEntry();
    entry.line = line;
    const bool isReturn = *rc::gen::inRange(0, 8) == 0;
    switch (document.billClass) {
      case BillClass::kPurchaseReceipt:
        entry.amount = AnyAmount(0);
        if (isReturn) entry.quantity = -entry.quantity;
        break;
      case BillClass::kSalesIssue:
        if (isReturn) entry.quantity = -entry.quantity;
        break;
      case BillClass::kTransfer:
        entry.toWarehouseId = *rc::gen::distinctFrom(rc::gen::element<Id>(11, 12, kGift), entry.warehouseId);
        if (isReturn) entry.amount = AnyAmount(0);
        break;
      case BillClass::kAssembly:
        entry.direction = line <= lines / 2 ? Direction::kOut : Direction::kIn;
        if (*rc::gen::inRange(0, 2) == 0) entry.amount = AnyAmount(1);
        break;
      case BillClass::kPriceAdjustment:
        entry.quantity = Quantity();
        entry.amount = Currency::FromUnits(*rc::gen::inRange(-50000, 50000));
        break;
      default:
        break;
    }
    document.entries.push_back(entry);
  }
  return document;
}

// Random bills on a book, with a list of those that it holds.
class Bookkeeper {
 public:
  explicit Bookkeeper(Connection& book) : book_(book) {}

  void Act() {
    const int what = *rc::gen::inRange(0, 20);
    const Costing costing = *rc::gen::weightedElement<Costing>({{4, Costing::kNow}, {1, Costing::kLater}});
    if (what < 13) {
      Post(AnyDocument(++number_), costing);
    } else if (what < 15) {
      Change([&](Id bill) { Turn(bill, costing); });
    } else if (what < 17) {
      Change([&](Id bill) {
        books::posting::Delete(book_, bill, costing);
        bills_.erase(bill);
      });
    } else if (what == 17) {
      books::posting::ValueWaitingBusiness(book_);
    } else if (what == 18) {
      Close();
    } else if (books::posting::ReadCalendar(book_).current > kFirstPeriod) {
      books::posting::ReopenPeriod(book_);
    }
  }

  const std::map<Id, Document>& Bills() const { return bills_; }

 private:
  bool IsClosed(Date day) const {
    return books::posting::PeriodOfDay(book_, day) < books::posting::ReadCalendar(book_).current;
  }

  // A bill in a closed period must be refused and leave no trace; the comparison at the end would find it.
  template <class Action>
  void Try(Date day, Action&& action) {
    const bool closed = IsClosed(day);
    try {
      action();
      RC_ASSERT_FALSE(closed);
    } catch (const platform::Error& error) {
      RC_ASSERT(closed);
      RC_ASSERT(error.Number() == platform::ErrorNumber::kBadArgument);
    }
  }

  void Post(const Document& document, Costing costing) {
    Try(document.date, [&] { bills_[books::posting::Post(book_, document, costing)] = document; });
  }
  template <class Action>
  void Change(Action&& action) {
    if (bills_.empty()) return;
    auto chosen = bills_.begin();
    std::advance(chosen, *rc::gen::inRange<std::size_t>(0, bills_.size()));
    Try(chosen->second.date, [&] { action(chosen->first); });
  }
  void Turn(Id bill, Costing costing) {
    if (bills_.at(bill).audited) {
      books::posting::Unaudit(book_, bill, costing);
    } else {
      books::posting::Audit(book_, bill, costing);
    }
    bills_.at(bill).audited = !bills_.at(bill).audited;
  }
  void Close() {
    const int current = books::posting::ReadCalendar(book_).current;
    const bool open = std::ranges::any_of(bills_, [&](const auto& each) {
      return !each.second.audited && books::posting::PeriodOfDay(book_, each.second.date) <= current;
    });
    try {
      books::posting::ClosePeriod(book_);
      RC_ASSERT_FALSE(open);
    } catch (const platform::Error&) {
      RC_ASSERT(open);
    }
  }

  Connection& book_;
  std::map<Id, Document> bills_;
  int number_ = 0;
};

PlainMove::Kind KindOf(BillClass billClass) {
  switch (billClass) {
    case BillClass::kSalesIssue:
      return PlainMove::Kind::kIssue;
    case BillClass::kTransfer:
      return PlainMove::Kind::kTransfer;
    case BillClass::kAssembly:
      return PlainMove::Kind::kAssembly;
    case BillClass::kPriceAdjustment:
      return PlainMove::Kind::kAmountOnly;
    default:
      return PlainMove::Kind::kReceipt;
  }
}

void AddMoves(std::vector<PlainMove>& moves, Id bill, const Document& document, const Entry& entry) {
  PlainMove move;
  move.kind = KindOf(document.billClass);
  move.item = entry.itemId;
  move.period = books::schema::PeriodOf(2025, document.date.Calendar().month);
  move.day = document.date.Days();
  move.bill = bill;
  move.line = entry.line;
  move.warehouse = entry.warehouseId;
  move.batch = entry.batchId.value_or(0);
  move.quantity = entry.quantity.Units();
  if (entry.amount) move.given = entry.amount->Units();
  if (move.kind == PlainMove::Kind::kIssue) move.direction = -1;
  if (move.kind == PlainMove::Kind::kAssembly) move.direction = static_cast<int>(entry.direction);
  if (move.kind != PlainMove::Kind::kTransfer) {
    moves.push_back(move);
    return;
  }
  move.otherWarehouse = *entry.toWarehouseId;
  move.direction = -1;
  moves.push_back(move);
  std::swap(move.warehouse, move.otherWarehouse);
  move.direction = 1;
  moves.push_back(move);
}

std::vector<PlainMove> Reckon(const std::map<Id, Document>& bills, bool costPerWarehouse) {
  std::vector<PlainMove> moves;
  for (const auto& [bill, document] : bills) {
    if (!document.audited) continue;
    for (const Entry& entry : document.entries) AddMoves(moves, bill, document, entry);
  }
  ReckonPlainly(moves, {.costPerWarehouse = costPerWarehouse, .gifts = {kGift}, .methods = kMethods});
  return moves;
}

std::set<std::string> Written(const std::vector<PlainMove>& moves) {
  std::set<std::string> lines;
  for (const PlainMove& move : moves) {
    std::ostringstream line;
    line << "bill " << move.bill << " line " << move.line << " item " << move.item << " warehouse "
         << move.warehouse << " direction " << move.direction << " quantity " << move.quantity << " amount "
         << move.amount;
    lines.insert(line.str());
  }
  return lines;
}

std::vector<PlainMove> ReadMoves(Connection& book) {
  std::vector<PlainMove> moves;
  Statement rows =
      book.Query("SELECT bill_id, line, item_id, warehouse_id, direction, quantity, amount FROM movement");
  while (rows.Step()) {
    PlainMove move;
    move.bill = rows.Integer(0);
    move.line = rows.Int32(1);
    move.item = rows.Integer(2);
    move.warehouse = rows.Integer(3);
    move.direction = rows.Int32(4);
    move.quantity = rows.Integer(5);
    move.amount = rows.Integer(6);
    moves.push_back(move);
  }
  return moves;
}

std::map<PlainCell, PlainFigures> ReadClosings(Connection& book, std::string_view sql) {
  std::map<PlainCell, PlainFigures> closings;
  Statement rows = book.Query(sql);
  while (rows.Step()) {
    closings[{rows.Integer(0), rows.Int32(1), rows.Integer(2), rows.Integer(3)}] = {rows.Integer(4),
                                                                                    rows.Integer(5)};
  }
  std::erase_if(closings, [](const auto& each) { return each.second == PlainFigures(); });
  return closings;
}

void ExpectPlainFigures(Connection& book, const std::map<Id, Document>& bills, bool costPerWarehouse) {
  const std::vector<PlainMove> moves = Reckon(bills, costPerWarehouse);
  RC_ASSERT(Written(ReadMoves(book)) == Written(moves));
  const int until = books::posting::BalancesUntil(book);
  const auto closings = ClosePlainly(moves, kFirstPeriod, until);
  RC_ASSERT(
      ReadClosings(book, "SELECT item_id, period, warehouse_id, batch_id, quantity, amount FROM balance") ==
      closings);
  std::map<PlainCell, PlainFigures> last;
  for (const auto& [cell, figures] : closings) {
    if (std::get<1>(cell) == until) last[cell] = figures;
  }
  RC_ASSERT(ReadClosings(book,
                         "SELECT item_id, balances_until, warehouse_id, batch_id, quantity, amount "
                         "FROM stock, book_state") == last);
}

std::string Shown(const std::vector<books::check::Violation>& violations) {
  std::string text;
  for (const books::check::Violation& each : violations) text += each.rule + ": " + each.description + "\n";
  return text;
}

RC_GTEST_PROP(RandomBook, EndsWithPlainFigures, ()) {
  const bool costPerWarehouse = *rc::gen::arbitrary<bool>();
  Connection book = MakeEmptyBook(costPerWarehouse);
  Bookkeeper bookkeeper(book);
  const int actions = *rc::gen::inRange(1, 40);
  for (int action = 0; action < actions; ++action) bookkeeper.Act();
  // Sound at any moment, also while business waits.
  RC_ASSERT(Shown(books::check::Check(book)) == "");
  books::posting::ValueWaitingBusiness(book);
  ExpectPlainFigures(book, bookkeeper.Bills(), costPerWarehouse);
  RC_ASSERT(Shown(books::check::Check(book)) == "");
}

RC_GTEST_PROP(RandomBook, InBulkIsTheSame, ()) {
  const bool costPerWarehouse = *rc::gen::arbitrary<bool>();
  Connection book = MakeEmptyBook(costPerWarehouse);
  std::map<Id, Document> bills;
  int number = 0;
  // A second load goes among the bills of the first.
  for (int load = 0; load < 2; ++load) {
    books::posting::BulkPosting bulk(book);
    const int count = *rc::gen::inRange(0, 25);
    for (int bill = 0; bill < count; ++bill) {
      const Document document = AnyDocument(++number);
      bills[bulk.Add(document)] = document;
    }
    bulk.Finish();
  }
  ExpectPlainFigures(book, bills, costPerWarehouse);
  RC_ASSERT(Shown(books::check::Check(book)) == "");
}

}  // namespace
