// The stock ledger's data on the tiny book, whose bills and figures TinyBook.cpp reckons through.
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/schema/Schema.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"
#include "tests/books/TinyBook.h"
#include "tests/books/services/SmallBook.h"

namespace {

using books::test::tiny::kCandy;
using books::test::tiny::kJuice;
using books::test::tiny::kTape;
using books::test::tiny::kYogurt;
using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Entries = std::vector<std::pair<std::string, Variant>>;

Ref<Dictionary> FilterOf(const Entries& entries) {
  Ref<Dictionary> filter = platform::MakeRef<Dictionary>();
  for (const auto& [key, value] : entries) filter->Set(key, value);
  return filter;
}

std::string Cells(const Recordset& rows, std::size_t position, const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields) {
    line += platform::ToText(rows.ValueAt(rows.FieldIndex(field), rows.RowAt(position))) + " ";
  }
  line.pop_back();
  return line;
}

std::vector<std::string> LinesOf(const Recordset& rows, const std::vector<std::string>& fields) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < rows.ViewCount(); ++i) lines.push_back(Cells(rows, i, fields));
  return lines;
}

class Data10402Test : public ::testing::Test {
 protected:
  Data10402Test() : file_(folder_.File().parent_path() / "ledger.book") {
    books::database::Connection connection = books::schema::CreateBook(file_);
    books::test::WriteTinyBook(connection);
  }

  Ref<Recordset> Items(const std::string& condition, const Entries& entries = {}) {
    Variant filter(FilterOf(entries));
    Variant text(condition);
    return book()
        .CreateComponent("TOVMStockRpt.Data10402")
        ->Call("GetItems", "UserID=1;", text, filter)
        .AsRef<Recordset>();
  }
  std::vector<std::string> Numbers(const std::string& condition, const Entries& entries = {}) {
    return LinesOf(*Items(condition, entries), {"FNumber"});
  }
  Ref<Dictionary> Period(std::int64_t item, std::int16_t year, std::int16_t period,
                         const Ref<Dictionary>& filter, const std::string& condition = "") {
    Variant given(filter);
    return book()
        .CreateComponent("TOVMStockRpt.Data10402")
        ->Call("GetPerioddata", "UserID=1;", static_cast<std::int32_t>(item), year, period, condition, given)
        .AsRef<Dictionary>();
  }
  static std::vector<std::string> Opening(const Dictionary& answer) {
    return LinesOf(*answer.Value("rsBegBal").AsRef<Recordset>(),
                   {"FBatchNo", "FBegQty", "FBegAmount", "FBegDiff"});
  }
  static std::vector<std::string> Closing(const Dictionary& answer) {
    return LinesOf(*answer.Value("rsEndBal").AsRef<Recordset>(),
                   {"FBatchNo", "FEndQty", "FEndAmount", "FEndDiff"});
  }
  static std::vector<std::string> Movements(const Dictionary& answer) {
    return LinesOf(*answer.Value("rsHappen").AsRef<Recordset>(),
                   {"FDate", "FBillNo", "FTranTypeName", "FInQty", "FInPrice", "FInAmount", "FOutQty",
                    "FOutPrice", "FOutAmount"});
  }
  // By somebody else, while the book is open here.
  void Write(const std::string& statement) {
    books::schema::OpenBook(file_, books::database::Access::kReadWrite).RunScript(statement);
  }
  const books::Book& book() {
    if (!book_) book_ = books::Book::Open(file_);
    return *book_;
  }

 private:
  books::test::SmallBook folder_;
  std::filesystem::path file_;
  std::optional<books::Book> book_;
};

TEST_F(Data10402Test, ListsItems) {
  struct Row {
    const char* name;
    const char* condition;
    Entries filter;
    std::vector<std::string> numbers;
  };
  const std::vector<Row> rows = {
      {"all",
       " ORDER BY  t0.FNumber",
       {},
       {"01.01.001", "01.01.002", "01.02", "01.03", "02.001", "02.002", "02.003"}},
      {"no order", "", {}, {"01.01.001", "01.01.002", "01.02", "01.03", "02.001", "02.002", "02.003"}},
      {"a range",
       " AND t0.FNumber>='01.02' AND t0.FNumber<='02.001' ORDER BY  t0.FNumber",
       {},
       {"01.02", "01.03", "02.001"}},
      {"short numbers",
       " AND t0.FShortNumber>='003' ORDER BY  t0.FShortNumber",
       {},
       {"02.003", "01.02", "01.03"}},
      {"an item that does not exist", " AND t0.FNumber>='9' ORDER BY  t0.FNumber", {}, {}},
      {"words of an order inside a number", " AND t0.FNumber>='x ORDER BY  t0.FNumber'", {}, {}},
      {"those with a batch", " ORDER BY  t0.FNumber", {{"BBatchNo", "0"}}, {"01.01.002"}},
      {"those with a balance at the end",
       " ORDER BY  t0.FNumber",
       {{"Balance", 1}, {"EYear", 2025}, {"EPeriod", 1}},
       {"01.01.001", "01.01.002", "01.02", "01.03", "02.001", "02.002"}},
      {"those with a balance in the branch",
       " ORDER BY  t0.FNumber",
       {{"Balance", 1}, {"EYear", 2025}, {"EPeriod", 9}, {"BStockNumber", "02"}, {"EStockNumber", "02"}},
       {"01.01.001"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Numbers(row.condition, row.filter), row.numbers);
  }
  const Ref<Recordset> items = Items(" AND t0.FNumber='01.01.002' ORDER BY  t0.FNumber");
  EXPECT_EQ(Cells(*items, 0,
                  {"FItemID", "FName", "FTrack", "FTrackName", "FBatchManager", "FQtyDecimal",
                   "FPriceDecimal", "FUnitID", "FClassName"}),
            "412 酸奶 80 批次计价 True 2 4 瓶 饮料");
}

TEST_F(Data10402Test, RefusesWhatItDoesNotUnderstand) {
  for (const char* condition :
       {"; DROP TABLE item", " AND x.FNumber='1'", " AND t0.FNumber='1' ORDER BY t0.FName"}) {
    SCOPED_TRACE(condition);
    try {
      Items(condition);
      ADD_FAILURE() << "it was accepted";
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
    }
  }
  EXPECT_THROW(Period(kJuice, 2025, 13, FilterOf({})), platform::Error);
  EXPECT_THROW(Period(kJuice, 2025, 1, FilterOf({{"DataRightWhere", "v4.FItemID in (select 1)"}})),
               platform::Error);
}

TEST_F(Data10402Test, JuiceInJanuaryAndFebruary) {
  const Ref<Dictionary> filter = FilterOf({{"EYear", 2025}, {"EPeriod", 2}});
  const Ref<Dictionary> january = Period(kJuice, 2025, 1, filter);
  EXPECT_THAT(Opening(*january), ElementsAre(" 100 200 0"));
  EXPECT_THAT(
      Movements(*january),
      ElementsAre("2025-01-05 CG-1 采购收货 50 2.6 130 0 0 0", "2025-01-10 XS-1 销售发货 0 0 0 60 2.2 132",
                  "2025-01-12 DB-1 调拨 0 0 0 30 2.2 66", "2025-01-12 DB-1 调拨 30 2.2 66 0 0 0",
                  "2025-01-20 DB-2 调拨 0 0 0 10 2.2 22", "2025-01-20 DB-2 调拨 10 0 0 0 0 0"));
  EXPECT_THAT(Closing(*january), ElementsAre(" 90 176 0"));
  EXPECT_EQ(platform::ToText(january->Value("BDate")), "2025-01-01");
  EXPECT_EQ(platform::ToText(january->Value("EDate")), "2025-02-01") << "one past the last day";
  const Ref<Dictionary> february = Period(kJuice, 2025, 2, filter);
  EXPECT_THAT(Opening(*february), ElementsAre(" 90 176 0"));
  EXPECT_THAT(Movements(*february), ElementsAre("2025-02-03 CG-2 采购收货 7 2.857142857142857 20 0 0 0",
                                                "2025-02-08 XS-2 销售发货 0 0 0 20 2.252875 45.0575",
                                                "2025-02-20 TJ-1 调价 0 0 1.0575 0 0 0"))
      << "the bill that is not audited moves nothing";
  EXPECT_THAT(Closing(*february), ElementsAre(" 77 152 0"));
}

TEST_F(Data10402Test, WarehousesBatchesAndRights) {
  const Ref<Dictionary> branch =
      Period(kJuice, 2025, 2, FilterOf({{"BStockNumber", "02"}, {"EStockNumber", "02"}}));
  EXPECT_THAT(Opening(*branch), ElementsAre(" 30 66 0"));
  EXPECT_EQ(Movements(*branch).size(), 2U);
  EXPECT_THAT(Closing(*branch), ElementsAre(" 17 40.9425 0"));
  const Ref<Dictionary> nobody = Period(
      kJuice, 2025, 2,
      FilterOf({{"DataRightWhere", " (CharIndex('12',v4.FRightUserID)>0 OR ISNULL(v4.FItemID,0)=0) "}}));
  EXPECT_THAT(Opening(*nobody), IsEmpty());
  EXPECT_THAT(Movements(*nobody), IsEmpty());
  EXPECT_THAT(Closing(*nobody), IsEmpty());
  const Ref<Dictionary> yogurt = Period(kYogurt, 2025, 1, FilterOf({}));
  EXPECT_THAT(Opening(*yogurt), IsEmpty());
  ASSERT_EQ(Closing(*yogurt).size(), 2U);
  EXPECT_THAT(Closing(*yogurt)[0], HasSubstr(" 15 45 0"));
  EXPECT_THAT(Closing(*yogurt)[1], HasSubstr(" 6 24 0"));
  const std::string first = Closing(*yogurt)[0].substr(0, Closing(*yogurt)[0].find(' '));
  const Ref<Dictionary> one = Period(kYogurt, 2025, 1, FilterOf({{"BBatchNo", first}, {"EBatchNo", first}}));
  EXPECT_EQ(Closing(*one).size(), 1U);
  EXPECT_EQ(Movements(*one).size(), 2U) << "CG-1 and QC-1";
  EXPECT_THAT(Closing(*Period(kJuice, 2025, 1, FilterOf({{"BBatchNo", first}}))), IsEmpty())
      << "goods without a batch lie in no range";
}

// A batch without a cost of its own would be left with a rest of the common cost when it is sold out.
TEST_F(Data10402Test, GoodsThatShareACostLieTogether) {
  const std::vector<std::string> batches = Closing(*Period(kYogurt, 2025, 1, FilterOf({})));
  ASSERT_EQ(batches.size(), 2U) << "one cost a batch";
  const std::string first = batches[0].substr(0, batches[0].find(' '));
  Write("UPDATE item SET valuation = 78 WHERE id = " + std::to_string(kYogurt));
  const Ref<Dictionary> together = Period(kYogurt, 2025, 1, FilterOf({}));
  EXPECT_THAT(Closing(*together), ElementsAre(" 21 69 0"));
  EXPECT_THAT(Opening(*Period(kYogurt, 2025, 2, FilterOf({}))), ElementsAre(" 21 69 0"));
  EXPECT_THAT(LinesOf(*together->Value("rsHappen").AsRef<Recordset>(), {"FBatchNo"}), Contains(first))
      << "a movement says its batch all the same";
  EXPECT_THAT(Closing(*Period(kYogurt, 2025, 1, FilterOf({{"BBatchNo", first}, {"EBatchNo", first}}))),
              ElementsAre(" 15 45 0"))
      << "of the batches that were asked for";
}

TEST_F(Data10402Test, BeforeAndAfterTheBook) {
  const Ref<Dictionary> before = Period(kJuice, 2020, 12, FilterOf({}));
  EXPECT_THAT(Opening(*before), IsEmpty());
  EXPECT_THAT(Closing(*before), IsEmpty());
  EXPECT_EQ(platform::ToText(before->Value("EDate")), "2021-01-01");
  EXPECT_THAT(Closing(*Period(kJuice, 2024, 12, FilterOf({}))), ElementsAre(" 100 200 0"))
      << "the opening stock";
  const Ref<Dictionary> after = Period(kJuice, 2027, 6, FilterOf({}));
  EXPECT_THAT(Opening(*after), ElementsAre(" 77 152 0")) << "nothing has moved since";
  EXPECT_THAT(Closing(*after), ElementsAre(" 77 152 0"));
}

TEST_F(Data10402Test, WhatIsNotThereHasNoRows) {
  struct Row {
    const char* name;
    std::int64_t item;
    Entries filter;
  };
  const std::vector<Row> rows = {
      {"an item that does not exist", 9999, {{"EYear", 2025}, {"EPeriod", 4}}},
      {"a group of items", books::test::tiny::kDrinks, {}},
      {"a warehouse that does not exist", kJuice, {{"BStockNumber", "9"}, {"EStockNumber", "99"}}},
      {"warehouses whose end lies before their start",
       kJuice,
       {{"BStockNumber", "03"}, {"EStockNumber", "01"}}},
      {"a batch that does not exist", kYogurt, {{"BBatchNo", "Z"}, {"EBatchNo", "ZZ"}}},
      {"a user without a right to any warehouse",
       kJuice,
       {{"DataRightWhere", " (CharIndex('12',v4.FRightUserID)>0 OR ISNULL(v4.FItemID,0)=0) "}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    for (const std::int16_t period : {std::int16_t{1}, std::int16_t{2}}) {
      const Ref<Dictionary> answer = Period(row.item, 2025, period, FilterOf(row.filter));
      EXPECT_THAT(Opening(*answer), IsEmpty());
      EXPECT_THAT(Movements(*answer), IsEmpty());
      EXPECT_THAT(Closing(*answer), IsEmpty());
    }
  }
  const Ref<Dictionary> endsBefore = FilterOf({{"EYear", 2024}, {"EPeriod", 12}});
  EXPECT_EQ(Movements(*Period(kJuice, 2025, 1, endsBefore)).size(), 6U)
      << "an end before the start reads nothing ahead, the period is answered";
}

TEST_F(Data10402Test, AllItemsAtOnce) {
  const Ref<Dictionary> filter = FilterOf({{"EYear", 2025}, {"EPeriod", 2}});
  const Ref<Dictionary> all =
      Period(0, 2025, 2, filter, " AND v3.FNumber>='01.01.001' AND v3.FNumber<='01.02'");
  EXPECT_THAT(LinesOf(*all->Value("rsBegBal").AsRef<Recordset>(), {"FItemID", "FBegQty", "FBegAmount"}),
              ElementsAre("411 90 176", "412 15 45", "412 6 24", "413 70 70"));
  EXPECT_THAT(LinesOf(*all->Value("rsHappen").AsRef<Recordset>(), {"FItemID", "FBillNo"}),
              ElementsAre("411 CG-2", "411 XS-2", "411 TJ-1"));
  EXPECT_THAT(LinesOf(*all->Value("rsYtdBal").AsRef<Recordset>(),
                      {"FItemID", "FInQty", "FInAmount", "FInDiff", "FOutQty", "FOutAmount", "FOutDiff"}),
              ElementsAre("411 90 196 0 100 220 0", "412 30 100 0 9 31 0", "413 0 0 0 30 30 0"));
  EXPECT_EQ(all->Value("rsYtdBals").AsRef<Recordset>()->RecordCount(), 0);
  EXPECT_EQ(platform::ToText(filter->Value("startYear")), "2025");
  EXPECT_EQ(Period(0, 2025, 1, filter)->Value("rsYtdBal").AsRef<Recordset>()->RecordCount(), 0);
}

// Every item, period and warehouse choice: opening plus movements is closing, and a closing is the next
// opening, read ahead or asked for alone.
TEST_F(Data10402Test, AgreesWithTheBalances) {
  for (const char* stock : {"", "01", "02", "03"}) {
    const Ref<Dictionary> ahead =
        FilterOf({{"BStockNumber", stock}, {"EStockNumber", stock}, {"EYear", 2025}, {"EPeriod", 4}});
    const Ref<Dictionary> alone = FilterOf({{"BStockNumber", stock}, {"EStockNumber", stock}});
    for (std::int64_t item = kJuice; item <= kTape; ++item) {
      double closing = 0;
      platform::Currency closingAmount;
      for (std::int16_t period = 1; period <= 4; ++period) {
        SCOPED_TRACE(std::string(stock) + " " + std::to_string(item) + " " + std::to_string(period));
        const Ref<Dictionary> answer = Period(item, 2025, period, ahead);
        auto sum = [&](const char* key, const std::string& quantity, const std::string& amount) {
          const Ref<Recordset> rows = answer->Value(key).AsRef<Recordset>();
          std::pair<double, platform::Currency> total;
          for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
            total.first += rows->DoubleAt(rows->FieldIndex(quantity), rows->RowAt(i));
            total.second += rows->CurrencyAt(rows->FieldIndex(amount), rows->RowAt(i));
          }
          return total;
        };
        const auto begin = sum("rsBegBal", "FBegQty", "FBegAmount");
        const auto in = sum("rsHappen", "FInQty", "FInAmount");
        const auto out = sum("rsHappen", "FOutQty", "FOutAmount");
        const auto end = sum("rsEndBal", "FEndQty", "FEndAmount");
        EXPECT_DOUBLE_EQ(begin.first + in.first - out.first, end.first);
        EXPECT_EQ(begin.second + in.second - out.second, end.second);
        if (period > 1) {
          EXPECT_DOUBLE_EQ(begin.first, closing);
          EXPECT_EQ(begin.second, closingAmount);
        }
        closing = end.first;
        closingAmount = end.second;
      }
      for (const std::int16_t period : {std::int16_t{1}, std::int16_t{2}}) {
        const Ref<Dictionary> one = Period(item, 2025, period, alone);
        const Ref<Dictionary> many = Period(item, 2025, period, ahead);
        EXPECT_EQ(Movements(*one), Movements(*many));
        EXPECT_EQ(Closing(*one), Closing(*many));
      }
    }
  }
}

TEST_F(Data10402Test, AChangedFilterOrAnEarlierPeriodIsReadAnew) {
  const Ref<Dictionary> filter = FilterOf({{"EYear", 2025}, {"EPeriod", 2}});
  EXPECT_EQ(Movements(*Period(kJuice, 2025, 1, filter)).size(), 6U);
  filter->Set("BStockNumber", "02");
  filter->Set("EStockNumber", "02");
  EXPECT_THAT(Closing(*Period(kJuice, 2025, 2, filter)), ElementsAre(" 17 40.9425 0"));
  EXPECT_EQ(Movements(*Period(kJuice, 2025, 1, filter)).size(), 1U);
  EXPECT_THAT(Closing(*Period(kCandy, 2025, 2, filter)), IsEmpty()) << "another item";
}

// What is answered once is never made anew under the hands of a caller who keeps it.
TEST_F(Data10402Test, AnAnswerThatIsKeptStaysAsItIs) {
  const Ref<Dictionary> filter = FilterOf({{"EYear", 2025}, {"EPeriod", 2}});
  const Ref<Dictionary> january = Period(kJuice, 2025, 1, filter);
  const std::vector<std::string> closing = Closing(*january);
  const Ref<Recordset> february = Period(kJuice, 2025, 2, filter)->Value("rsEndBal").AsRef<Recordset>();
  const auto rows = february->ViewCount();
  EXPECT_EQ(Closing(*january), closing);
  Period(kCandy, 2025, 1, filter)->Set("FOwn", "a key of the caller");
  EXPECT_EQ(february->ViewCount(), rows);
  EXPECT_EQ(Period(kCandy, 2025, 2, filter)->Count(), 5);
}

// A page with a single movement looks its one bill up; that must not hold on to the picture it was read from.
TEST_F(Data10402Test, WhatIsWrittenAfterAPageIsInTheNextOne) {
  const Ref<Dictionary> filter =
      FilterOf({{"EYear", 2025}, {"EPeriod", 1}, {"BStockNumber", "02"}, {"EStockNumber", "02"}});
  const auto notes = [&] {
    return LinesOf(*Period(kJuice, 2025, 1, filter)->Value("rsHappen").AsRef<Recordset>(), {"FNote"});
  };
  const std::vector<std::string> before = notes();
  ASSERT_EQ(before.size(), 1U);
  ASSERT_NE(before[0], "补录");
  Write("UPDATE bill SET explanation = '补录'");
  EXPECT_THAT(notes(), ElementsAre("补录"));
}

}  // namespace
