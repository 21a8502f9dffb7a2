// The movement reports of random books: against a plain reckoning from the first day on, and against each
// other. Figures are compared as the book's whole numbers.
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "platform/value/Date.h"
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
constexpr int kFilters = 6;

// Quantity, auxiliary quantity, amount.
struct Figures {
  std::array<std::int64_t, 3> values{};

  Figures& operator+=(const Figures& other) {
    for (std::size_t i = 0; i < values.size(); ++i) values.at(i) += other.values.at(i);
    return *this;
  }
  Figures operator-() const { return {{-values[0], -values[1], -values[2]}}; }
  friend Figures operator+(Figures left, const Figures& right) { return left += right; }
  friend Figures operator-(Figures left, const Figures& right) { return left += -right; }
  bool IsZero() const { return values == std::array<std::int64_t, 3>(); }
  friend bool operator==(const Figures&, const Figures&) = default;
  friend std::ostream& operator<<(std::ostream& to, const Figures& figures) {
    return to << figures.values[0] << "/" << figures.values[1] << "/" << figures.values[2];
  }
};

// Opening, in, out, closing.
struct Row {
  Figures opening;
  Figures in;
  Figures out;
  Figures closing;
  friend bool operator==(const Row&, const Row&) = default;
  friend std::ostream& operator<<(std::ostream& to, const Row& row) {
    return to << row.opening << " + " << row.in << " - " << row.out << " = " << row.closing;
  }
  Row& operator+=(const Row& other) {
    opening += other.opening;
    in += other.in;
    out += other.out;
    closing += other.closing;
    return *this;
  }
};

// A field that a layout does not have, and a null, is nothing.
std::int64_t Whole(const Recordset& rows, std::size_t row, const std::string& field, double scale) {
  const auto column = rows.FindField(field);
  return column ? std::llround(rows.DoubleAt(*column, rows.RowAt(row)) * scale) : 0;
}

Figures FiguresOf(const Recordset& rows, std::size_t row, const std::string& quantity, const std::string& aux,
                  const std::string& amount) {
  return {{Whole(rows, row, quantity, 1e6), Whole(rows, row, aux, 1e6), Whole(rows, row, amount, 1e4)}};
}

Row SummaryRow(const Recordset& rows, std::size_t row) {
  return {.opening = FiguresOf(rows, row, "FBegQty", "FBegSecQty", "FBegBal"),
          .in = FiguresOf(rows, row, "FInQty", "FInSecQty", "FInAmount"),
          .out = FiguresOf(rows, row, "FOutQty", "FOutSecQty", "FOutAmount"),
          .closing = FiguresOf(rows, row, "FEndQty", "FEndSecQty", "FEndBal")};
}

Row BusinessRow(const Recordset& rows, std::size_t row) {
  return {.opening = FiguresOf(rows, row, "FBegQty", "FBegSecQty", "FBegAmount"),
          .in = FiguresOf(rows, row, "FInQtyTotal", "FInSecQtyTotal", "FInAmountTotal"),
          .out = FiguresOf(rows, row, "FOutQtyTotal", "FOutSecQtyTotal", "FOutAmountTotal"),
          .closing = FiguresOf(rows, row, "FBalQty", "FBalSecQty", "FBalAmount")};
}

std::string TextOf(const Recordset& rows, std::size_t row, const char* field) {
  return std::string(rows.TextAt(rows.FieldIndex(field), rows.RowAt(row)));
}

int SumSort(const Recordset& rows, std::size_t row) {
  return rows.IntegerAt(rows.FieldIndex("FSumSort"), rows.RowAt(row));
}

// A random choice, as the reports send it and as the plain reckoning reads it.
struct Asked {
  Date from;
  Date to;
  int firstItem = 1;
  int lastItem = 6;
  int firstWarehouse = 11;
  int lastWarehouse = 13;
  int department = 0;  // 0 for all
  std::string batch;   // "" for all
  bool rights = false;

  FilterEntries Filter(const char* alias) const {
    const auto itemNumber = [](int id) { return (id <= 3 ? "51." : "52.") + std::to_string(id); };
    const auto stockNumber = [](int id) { return (id == 11 ? "61." : "62.") + std::to_string(id); };
    FilterEntries filter = {{"BDate", from.ToText()},
                            {"EDate", to.ToText()},
                            {"BItemNumber", itemNumber(firstItem)},
                            {"EItemNumber", itemNumber(lastItem)},
                            {"BStockNumber", stockNumber(firstWarehouse)},
                            {"EStockNumber", stockNumber(lastWarehouse)},
                            {"BBatchNo", batch},
                            {"EBatchNo", batch},
                            {"chkShowTran", 1}};
    const std::string number = department == 0 ? "" : std::to_string(department);
    filter.emplace_back("BDeptNumber", number);
    filter.emplace_back("EDeptNumber", number);
    filter.emplace_back("DataRightWhere", rights ? books::test::RightsOf("7", alias) : "");
    return filter;
  }

  bool Has(const PlainRow& row) const {
    const bool seen = !rights || row.warehouse != 12;
    const bool ofBatch = batch.empty() || (row.batch != 0 && (row.batch % 10 == 0) == (batch == "A"));
    return seen && ofBatch && row.item >= firstItem && row.item <= lastItem &&
           row.warehouse >= firstWarehouse && row.warehouse <= lastWarehouse;
  }
};

Asked RandomAsked(Random& random) {
  Asked asked;
  asked.from = Date::Of(2025, 1, 1).AddDays(Below(random, 80));
  asked.to = asked.from.AddDays(Below(random, 60));
  if (Below(random, 2) == 0) asked.firstItem = 1 + Below(random, 3);
  if (Below(random, 2) == 0) asked.lastItem = 4 + Below(random, 3);
  if (Below(random, 3) == 0) asked.firstWarehouse = asked.lastWarehouse = 11 + Below(random, 3);
  if (Below(random, 3) == 0) asked.department = 21 + Below(random, 2);
  if (Below(random, 4) == 0) asked.batch = Below(random, 2) == 0 ? "A" : "B";
  asked.rights = Below(random, 3) == 0;
  return asked;
}

// Item, warehouse and batch, 0 for what the layout does not tell apart.
using Key = std::tuple<std::int64_t, std::int64_t, std::int64_t>;

std::map<Key, Row> Reckon(const std::vector<PlainRow>& plain, const Asked& asked, int group) {
  std::map<Key, Row> rows;
  std::map<Key, bool> moved;
  for (const PlainRow& each : plain) {
    if (!asked.Has(each) || each.day > asked.to.Days()) continue;
    const bool inside = each.day >= asked.from.Days();
    if (inside && asked.department != 0 && each.department != asked.department) continue;
    const Figures figures{{each.quantity, each.auxQuantity, each.amount}};
    const Key key{each.item, group == 1 ? each.warehouse : 0, group == 2 ? each.batch : 0};
    Row& row = rows[key];
    if (!inside) {
      row.opening += each.direction > 0 ? figures : -figures;
    } else {
      (each.direction > 0 ? row.in : row.out) += figures;
      moved[key] = true;
    }
  }
  for (auto& [key, row] : rows) row.closing = row.opening + row.in - row.out;
  std::erase_if(rows, [&](const auto& each) { return !moved[each.first] && each.second.opening.IsZero(); });
  return rows;
}

Key KeyOf(const Recordset& rows, std::size_t row, int group) {
  const std::int64_t item = rows.IntegerAt(rows.FieldIndex("FItemID"), rows.RowAt(row));
  const std::int64_t warehouse = rows.IntegerAt(rows.FieldIndex("FCommonID"), rows.RowAt(row));
  const std::string batch = TextOf(rows, row, "FBatchNo");
  const bool hasBatch = group == 2 && !batch.empty();
  return {item, warehouse, hasBatch ? (item * 10) + (batch == "A" ? 0 : 1) : 0};
}

// Every row and sum balances; a sum is that of the rows before it, back to the last sum of its kind or of a
// wider one.
void ExpectSums(const Recordset& rows, Row (*read)(const Recordset&, std::size_t)) {
  for (std::size_t i = 0; i < rows.ViewCount(); ++i) {
    const Row row = read(rows, i);
    EXPECT_EQ(row.closing, row.opening + row.in - row.out) << "row " << i;
    const int sort = SumSort(rows, i);
    if (sort == 0) continue;
    // Levels grow inwards; an item or a warehouse is the innermost, the total spans all.
    const auto width = [](int each) { return each == 101 ? 0 : each; };
    Row sum;
    for (std::size_t j = i; j-- > 0;) {
      const int other = SumSort(rows, j);
      if (other == 0) {
        sum += read(rows, j);
      } else if (width(other) <= width(sort)) {
        break;
      }
    }
    EXPECT_EQ(row, sum) << "sum " << sort << " at row " << i;
  }
}

class MovementReports : public testing::TestWithParam<int> {
 protected:
  // Runs a check on a random book under random choices.
  void Try(const std::function<void(const books::Book&, const std::vector<PlainRow>&, const Asked&, Random&)>&
               check) {
    Random random(static_cast<unsigned>(GetParam()));
    std::vector<PlainRow> plain;
    const books::test::BookFile file([&](books::database::Connection& connection) {
      books::test::WriteRandomBook(connection, random, kBills);
      plain = books::test::ReadPlainRows(connection);
    });
    ASSERT_GT(plain.size(), static_cast<std::size_t>(kBills));
    const books::Book book = file.Open();
    for (int i = 0; i < kFilters; ++i) {
      const Asked asked = RandomAsked(random);
      SCOPED_TRACE("book " + std::to_string(GetParam()) + ", choice " + std::to_string(i) + ": " +
                   asked.from.ToText() + " to " + asked.to.ToText());
      check(book, plain, asked, random);
    }
  }
};

TEST_P(MovementReports, SummaryAgreesWithAPlainReckoning) {
  std::size_t seen = 0;
  Try([&](const books::Book& book, const std::vector<PlainRow>& plain, const Asked& asked, Random&) {
    for (int group = 0; group <= 2; ++group) {
      const auto rows = Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data",
                              With(asked.Filter("t4"), {{"cmbGroup", group}}));
      std::map<Key, Row> shown;
      for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
        if (SumSort(*rows, i) == 0) shown[KeyOf(*rows, i, group)] = SummaryRow(*rows, i);
      }
      EXPECT_EQ(shown, Reckon(plain, asked, group)) << "group " << group;
      ExpectSums(*rows, SummaryRow);
      seen += shown.size();
    }
  });
  EXPECT_GT(seen, 20U);
}

TEST_P(MovementReports, SumsAddUpWhateverIsLeftOut) {
  Try([](const books::Book& book, const std::vector<PlainRow>&, const Asked& asked, Random& random) {
    for (int group = 0; group <= 2; ++group) {
      FilterEntries filter = With(asked.Filter("t4"), {{"cmbGroup", group},
                                                       {"MultiLevel", Below(random, 2)},
                                                       {"MultiLevelBegin", 1},
                                                       {"MultiLevelEnd", 1 + Below(random, 2)},
                                                       {"chkNoAmt", Below(random, 2)},
                                                       {"chkNoBal", Below(random, 2)},
                                                       {"chkShowTran", Below(random, 2)}});
      ExpectSums(*Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data", filter), SummaryRow);
      ExpectSums(*Fetch(book, "TOVMStockRpt.Data", "GetRpt10416Data", filter), SummaryRow);
    }
  });
}

TEST_P(MovementReports, BusinessSummaryAgreesWithTheMovementSummary) {
  Try([](const books::Book& book, const std::vector<PlainRow>&, const Asked& asked, Random& random) {
    constexpr std::array kComponents = {"TOVMStockRpt.Data1040101", "TOVMStockRpt.Data1040102",
                                        "TOVMStockRpt.Data1040104"};
    const FilterEntries levels = {
        {"MultiLevel", Below(random, 2)}, {"MultiLevelBegin", 1}, {"MultiLevelEnd", 1}};
    for (int group = 0; group <= 2; ++group) {
      const auto business = Fetch(book, kComponents.at(static_cast<std::size_t>(group)), "GetRptData",
                                  With(asked.Filter("ts"), levels));
      const auto summary = Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data",
                                 With(With(asked.Filter("t4"), levels), {{"cmbGroup", group}}));
      ASSERT_EQ(business->ViewCount(), summary->ViewCount());
      for (std::size_t i = 0; i < business->ViewCount(); ++i) {
        const Row row = BusinessRow(*business, i);
        EXPECT_EQ(row, SummaryRow(*summary, i)) << "row " << i;
        EXPECT_EQ(TextOf(*business, i, "FItemNumber"), TextOf(*summary, i, "FItemNumber"));
        Figures receipts;
        Figures issues;
        const auto add = [&](Figures& sum, const std::string& side, const std::string& billClass) {
          sum += FiguresOf(*business, i, side + "Qty" + billClass, side + "SecQty" + billClass,
                           side + "Amount" + billClass);
        };
        for (const char* one : {"1020002", "1020003", "1040001", "1020004", "1040003", "1040008"}) {
          add(receipts, "F", one);
        }
        receipts += FiguresOf(*business, i, "", "", "FRebateAmount");
        for (const char* one : {"1030002", "1030003", "1040002", "1030004", "1040004"}) add(issues, "F", one);
        for (const char* both : {"1040005", "1040006", "1040007"}) {
          add(receipts, "FIn", both);
          add(issues, "FOut", both);
        }
        // The layout by warehouse keeps one auxiliary quantity under a name of its own.
        issues += FiguresOf(*business, i, "", "FOutSevQty1040006", "");
        EXPECT_EQ(receipts, row.in) << "row " << i;
        EXPECT_EQ(issues, row.out) << "row " << i;
      }
    }
  });
}

// What a summary hands to its detail for one of its rows.
FilterEntries DrillFilter(const FilterEntries& own, const Recordset& rows, std::size_t row, int group) {
  FilterEntries filter = With(own, {{"BItemNumber", TextOf(rows, row, "FItemNumber")},
                                    {"EItemNumber", TextOf(rows, row, "FItemNumber")},
                                    {"BAuxPropNumber", ""},
                                    {"EAuxPropNumber", ""},
                                    {"chkOnlyTotal", "0"},
                                    {"chkGroupByGood", 1},
                                    {"chkNoZero", 0},
                                    {"OrderBy", " T1.FDate ASC "}});
  if (group == 1) {
    const int id = rows.IntegerAt(rows.FieldIndex("FCommonID"), rows.RowAt(row));
    const std::string number = (id == 11 ? "61." : "62.") + std::to_string(id);
    filter = With(filter, {{"BStockNumber", number}, {"EStockNumber", number}});
  }
  const std::string batch = TextOf(rows, row, "FBatchNo");
  if (group == 2) filter = With(filter, {{"BBatchNo", batch}, {"EBatchNo", batch}});
  return filter;
}

// The balance behind each movement follows from the one before, the closing row from the movements.
void ExpectDetail(const Recordset& rows, const Row& summary) {
  const auto side = [&](std::size_t row, const std::string& name) {
    return FiguresOf(rows, row, "F" + name + "Qty", "FAux" + name + "Qty", "F" + name + "Amount");
  };
  ASSERT_GE(rows.ViewCount(), 3U);
  const std::size_t last = rows.ViewCount() - 1;
  EXPECT_EQ(side(0, "Stock"), summary.opening);
  Row sum;
  Figures balance = summary.opening;
  for (std::size_t i = 1; i + 1 < last; ++i) {
    EXPECT_EQ(SumSort(rows, i), 0);
    sum.in += side(i, "In");
    sum.out += side(i, "Out");
    balance = balance + side(i, "In") - side(i, "Out");
    EXPECT_EQ(side(i, "Stock"), balance) << "row " << i;
  }
  for (const std::size_t i : {last - 1, last}) {
    EXPECT_EQ(side(i, "In"), summary.in);
    EXPECT_EQ(side(i, "Out"), summary.out);
    EXPECT_EQ(side(i, "Stock"), summary.closing);
  }
  EXPECT_EQ(sum.in, summary.in);
  EXPECT_EQ(sum.out, summary.out);
}

TEST_P(MovementReports, DetailsAddUpToTheirRow) {
  std::size_t opened = 0;
  Try([&](const books::Book& book, const std::vector<PlainRow>&, const Asked& asked, Random& random) {
    const FilterEntries own = With(
        asked.Filter("t4"),
        {{"chkShowTran", Below(random, 2)}, {"chkNoAmt", Below(random, 2)}, {"chkNoBal", Below(random, 2)}});
    for (const bool batches : {false, true}) {
      for (int group = 0; group <= 2; ++group) {
        const auto rows = Fetch(book, "TOVMStockRpt.Data", batches ? "GetRpt10416Data" : "GetRpt10412Data",
                                With(own, {{"cmbGroup", group}}));
        for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
          if (SumSort(*rows, i) != 0) continue;
          SCOPED_TRACE("group " + std::to_string(group) + ", row " + std::to_string(i));
          const auto detail =
              Fetch(book, batches ? "TOVMStockRpt.Data10417" : "TOVMStockRpt.Data10413",
                    batches ? "GetRpt10417Data" : "GetRpt10413Data", DrillFilter(own, *rows, i, group));
          ExpectDetail(*detail, SummaryRow(*rows, i));
          ++opened;
        }
      }
    }
  });
  EXPECT_GT(opened, 20U);
}

INSTANTIATE_TEST_SUITE_P(RandomBooks, MovementReports, testing::Range(1, kBooks + 1));

}  // namespace
