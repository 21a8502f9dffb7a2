// The movement reports of random books against the stock ledger, which reads balances and movements in a way
// of its own; and what the details show of auxiliary properties and groups against the book's movements.
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/database/Connection.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Date.h"
#include "platform/value/Variant.h"
#include "tests/books/reports/movement/RandomBook.h"
#include "tests/books/reports/stock/StockBook.h"

namespace {

using books::test::Below;
using books::test::Fetch;
using books::test::FilterEntries;
using books::test::PlainRow;
using books::test::Random;
using books::test::With;
using platform::Date;
using platform::Recordset;

constexpr int kBooks = 4;
constexpr int kBills = 70;
constexpr std::int16_t kYear = 2025;

// Opening, in, out and closing: of each the quantity in millionths and the amount in ten-thousandths.
using Figures = std::array<std::int64_t, 8>;
constexpr std::size_t kOpening = 0;
constexpr std::size_t kIn = 2;
constexpr std::size_t kOut = 4;
constexpr std::size_t kClosing = 6;

using ByItem = std::map<std::int32_t, Figures>;

std::int64_t Whole(const Recordset& rows, std::size_t row, const std::string& field, double scale) {
  return std::llround(rows.DoubleAt(rows.FieldIndex(field), rows.RowAt(row)) * scale);
}

std::int32_t Number(const Recordset& rows, std::size_t row, const std::string& field) {
  return rows.IntegerAt(rows.FieldIndex(field), rows.RowAt(row));
}

void Add(Figures& figures, std::size_t at, const Recordset& rows, std::size_t row,
         const std::string& quantity, const std::string& amount) {
  figures.at(at) += Whole(rows, row, quantity, 1e6);
  figures.at(at + 1) += Whole(rows, row, amount, 1e4);
}

void DropIdle(ByItem& items) {
  std::erase_if(items, [](const auto& each) { return each.second == Figures(); });
}

// What both kinds of report let a user choose.
struct Asked {
  std::string firstWarehouse;
  std::string lastWarehouse;
  std::string batch;
  bool rights = false;

  FilterEntries Filter(const char* alias) const {
    return {{"BStockNumber", firstWarehouse},
            {"EStockNumber", lastWarehouse},
            {"BBatchNo", batch},
            {"EBatchNo", batch},
            {"DataRightWhere", rights ? books::test::RightsOf("7", alias) : ""}};
  }
};

Asked RandomAsked(Random& random) {
  constexpr std::array kWarehouses = {"61.11", "62.12", "62.13"};
  Asked asked;
  if (Below(random, 2) == 0)
    asked.firstWarehouse = kWarehouses.at(static_cast<std::size_t>(Below(random, 3)));
  if (Below(random, 3) == 0) asked.lastWarehouse = kWarehouses.at(static_cast<std::size_t>(Below(random, 3)));
  if (Below(random, 3) == 0) asked.batch = Below(random, 2) == 0 ? "A" : "B";
  asked.rights = Below(random, 3) == 0;
  return asked;
}

ByItem Ledger(const books::Book& book, const Asked& asked, std::int16_t month) {
  platform::Variant filter = books::test::FilterOf(asked.Filter("v4"));
  const auto answer = book.CreateComponent("TOVMStockRpt.Data10402")
                          ->Call("GetPerioddata", "UserID=1;", std::int32_t{0}, kYear, month, "", filter)
                          .AsRef<platform::Dictionary>();
  ByItem items;
  const auto add = [&](const char* part, std::size_t at, const std::string& figure) {
    const auto rows = answer->Value(part).AsRef<Recordset>();
    for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
      Add(items[Number(*rows, i, "FItemID")], at, *rows, i, "F" + figure + "Qty", "F" + figure + "Amount");
    }
  };
  add("rsBegBal", kOpening, "Beg");
  add("rsHappen", kIn, "In");
  add("rsHappen", kOut, "Out");
  add("rsEndBal", kClosing, "End");
  DropIdle(items);
  return items;
}

FilterEntries OfMonth(const Asked& asked, const char* alias, int month) {
  const Date first = Date::Of(kYear, month, 1);
  const Date past = Date::Of(kYear, month + 1, 1);
  return With(asked.Filter(alias), {{"BDate", first.ToText()},
                                    {"EDate", past.AddDays(-1).ToText()},
                                    {"chkShowTran", 1},
                                    {"chkGroupByGood", 1}});
}

ByItem Summary(const books::Book& book, const FilterEntries& filter) {
  const auto rows = Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data", filter);
  ByItem items;
  for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
    if (Number(*rows, i, "FSumSort") != 0) continue;
    Figures& figures = items[Number(*rows, i, "FItemID")];
    Add(figures, kOpening, *rows, i, "FBegQty", "FBegBal");
    Add(figures, kIn, *rows, i, "FInQty", "FInAmount");
    Add(figures, kOut, *rows, i, "FOutQty", "FOutAmount");
    Add(figures, kClosing, *rows, i, "FEndQty", "FEndBal");
  }
  DropIdle(items);
  return items;
}

ByItem BusinessSummary(const books::Book& book, const FilterEntries& filter) {
  const auto rows = Fetch(book, "TOVMStockRpt.Data1040101", "GetRptData", filter);
  ByItem items;
  for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
    if (Number(*rows, i, "FSumSort") != 0) continue;
    Figures& figures = items[Number(*rows, i, "FItemID")];
    Add(figures, kOpening, *rows, i, "FBegQty", "FBegAmount");
    Add(figures, kIn, *rows, i, "FInQtyTotal", "FInAmountTotal");
    Add(figures, kOut, *rows, i, "FOutQtyTotal", "FOutAmountTotal");
    Add(figures, kClosing, *rows, i, "FBalQty", "FBalAmount");
  }
  DropIdle(items);
  return items;
}

// The item's rows by their marks: 1 opens, 0 moves, 100 closes.
ByItem Details(const books::Book& book, const FilterEntries& filter) {
  const auto rows = Fetch(book, "TOVMStockRpt.Data10413", "GetRpt10413Data", filter);
  ByItem items;
  for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
    const std::int32_t mark = Number(*rows, i, "FSumSort");
    if (mark > 100) continue;
    Figures& figures = items[Number(*rows, i, "FItemID")];
    if (mark == 1) Add(figures, kOpening, *rows, i, "FStockQty", "FStockAmount");
    if (mark == 0) Add(figures, kIn, *rows, i, "FInQty", "FInAmount");
    if (mark == 0) Add(figures, kOut, *rows, i, "FOutQty", "FOutAmount");
    if (mark == 100) Add(figures, kClosing, *rows, i, "FStockQty", "FStockAmount");
  }
  DropIdle(items);
  return items;
}

class MovementLedger : public testing::TestWithParam<int> {
 protected:
  MovementLedger()
      : random_(static_cast<unsigned>(GetParam())), file_([this](books::database::Connection& connection) {
          books::test::WriteRandomBook(connection, random_, kBills);
          plain_ = books::test::ReadPlainRows(connection);
        }) {}

  Random random_;
  std::vector<PlainRow> plain_;
  books::test::BookFile file_;
};

// April has no movement any more, and no balances of its own.
TEST_P(MovementLedger, AgreesMonthByMonth) {
  const books::Book book = file_.Open();
  std::size_t seen = 0;
  for (int choice = 0; choice < 6; ++choice) {
    const Asked asked = choice == 0 ? Asked() : RandomAsked(random_);
    for (std::int16_t month = 1; month <= 4; ++month) {
      SCOPED_TRACE("book " + std::to_string(GetParam()) + ", month " + std::to_string(month) +
                   ", warehouses " + asked.firstWarehouse + ".." + asked.lastWarehouse + ", batch " +
                   asked.batch + (asked.rights ? ", with rights" : ""));
      const ByItem ledger = Ledger(book, asked, month);
      EXPECT_EQ(Summary(book, OfMonth(asked, "t4", month)), ledger);
      EXPECT_EQ(BusinessSummary(book, OfMonth(asked, "ts", month)), ledger);
      EXPECT_EQ(Details(book, OfMonth(asked, "t4", month)), ledger);
      seen += ledger.size();
    }
  }
  EXPECT_GT(seen, 20U);
}

// One list of all items: by group, behind its movements, a sum of them.
TEST_P(MovementLedger, ListsShowAPropertyAndAddUpTheirGroups) {
  const books::Book book = file_.Open();
  std::int64_t moved = 0;
  for (const int property : {0, 41, 42}) {
    for (int group = 0; group <= 3; ++group) {
      SCOPED_TRACE("property " + std::to_string(property) + ", group " + std::to_string(group));
      const std::string number = property == 0 ? "" : std::to_string(property);
      const auto rows = Fetch(book, "TOVMStockRpt.Data10413", "GetRpt10413Data",
                              {{"BDate", "2025-01-15"},
                               {"EDate", "2025-03-10"},
                               {"BAuxPropNumber", number},
                               {"EAuxPropNumber", number},
                               {"chkShowTran", 1},
                               {"cmbGroup", group}});
      Figures expected{};
      for (const PlainRow& each : plain_) {
        const bool inside =
            each.day >= Date::Of(kYear, 1, 15).Days() && each.day <= Date::Of(kYear, 3, 10).Days();
        if (!inside || (property != 0 && each.aux != property)) continue;
        const std::size_t side = each.direction > 0 ? kIn : kOut;
        expected.at(side) += each.quantity;
        expected.at(side + 1) += each.amount;
      }
      Figures movements{};
      Figures sums{};
      Figures open{};
      for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
        Figures row{};
        Add(row, kIn, *rows, i, "FInQty", "FInAmount");
        Add(row, kOut, *rows, i, "FOutQty", "FOutAmount");
        const std::int32_t mark = Number(*rows, i, "FSumSort");
        if (mark == 0) {
          for (std::size_t k = 0; k < row.size(); ++k) movements.at(k) += row.at(k);
          for (std::size_t k = 0; k < row.size(); ++k) open.at(k) += row.at(k);
        } else if (mark == 2) {
          EXPECT_EQ(row, open) << "group that ends at row " << i;
          for (std::size_t k = 0; k < row.size(); ++k) sums.at(k) += row.at(k);
          open = {};
        } else {
          EXPECT_EQ(row, expected) << "total";
        }
      }
      EXPECT_EQ(movements, expected);
      EXPECT_EQ(sums, group == 0 ? Figures() : expected);
      moved += expected.at(kIn);
    }
  }
  EXPECT_GT(moved, 0);
}

INSTANTIATE_TEST_SUITE_P(RandomBooks, MovementLedger, testing::Range(1, kBooks + 1));

}  // namespace
