#include <string>

#include <gtest/gtest.h>

#include "books/reports/ledger/MovementRows.h"
#include "books/schema/Schema.h"
#include "tests/books/TinyBook.h"
#include "tests/books/services/SmallBook.h"

namespace books::reports {
namespace {

using platform::Date;

// Rows of six values: the five that tell the order, and one that names the row.
TEST(MovementRowsTest, RowsAreSortedAsTheyAreCosted) {
  struct Case {
    std::string name;
    std::vector<std::int64_t> rows;
    std::vector<std::int64_t> sorted;
  };
  const Case cases[] = {
      {"none", {}, {}},
      {"one", {1, 1, 1, 1, 1, 10}, {10}},
      {"as it should be", {1, 1, 1, -1, 1, 10, 1, 1, 1, 1, 1, 11, 2, 0, 0, 0, 0, 12}, {10, 11, 12}},
      {"days backwards", {3, 1, 1, 1, 1, 10, 2, 1, 1, 1, 1, 11, 1, 1, 1, 1, 1, 12}, {12, 11, 10}},
      {"by the order of the day", {1, 2, 1, 1, 1, 10, 1, 1, 9, 9, 9, 11}, {11, 10}},
      {"by bill", {1, 1, 2, 1, 1, 10, 1, 1, 1, 9, 9, 11}, {11, 10}},
      {"by direction", {1, 1, 1, 1, 1, 10, 1, 1, 1, -1, 9, 11}, {11, 10}},
      {"by line", {1, 1, 1, 1, 2, 10, 1, 1, 1, 1, 1, 11}, {11, 10}},
      {"equal ones stay", {1, 1, 1, 1, 1, 10, 0, 1, 1, 1, 1, 9, 1, 1, 1, 1, 1, 11}, {9, 10, 11}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    std::vector<std::int64_t> rows = each.rows;
    PutInOrder(rows, 6);
    std::vector<std::int64_t> names;
    for (std::size_t at = 5; at < rows.size(); at += 6) names.push_back(rows[at]);
    EXPECT_EQ(names, each.sorted);
    EXPECT_EQ(rows.size(), each.rows.size());
  }
}

TEST(MovementRowsTest, ReadsTheDaysOfAnItem) {
  const test::SmallBook folder;
  database::Connection book = schema::CreateBook(folder.File().parent_path() / "movements.book");
  test::WriteTinyBook(book);
  MovementRows rows(book);
  std::int64_t movements = 0;
  for (const bool withWarehouse : {false, true}) {
    rows.Read(test::tiny::kJuice, Date::Of(2025, 1, 1), Date::Of(2025, 2, 1), withWarehouse);
    database::Statement expected = book.Query(
        "SELECT date, bill_id, line, direction, quantity, amount, batch_id, aux_id, warehouse_id "
        "FROM movement WHERE item_id = ? AND date BETWEEN ? AND ? "
        "ORDER BY date, day_order, bill_id, direction, line",
        static_cast<std::int64_t>(test::tiny::kJuice), Date::Of(2025, 1, 1), Date::Of(2025, 1, 31));
    for (std::size_t i = 0; i < rows.Count(); ++i, ++movements) {
      ASSERT_TRUE(expected.Step());
      EXPECT_EQ(rows[i].Day(), expected.GetDate(0));
      EXPECT_EQ(rows[i].BillId(), expected.Int32(1));
      EXPECT_EQ(rows[i].Line(), expected.Int32(2));
      EXPECT_EQ(rows[i].IsIn(), expected.Int32(3) > 0);
      EXPECT_EQ(rows[i].Quantity(), expected.GetQuantity(4));
      EXPECT_EQ(rows[i].Amount(), expected.Amount(5));
      EXPECT_EQ(rows[i].BatchId(), expected.Integer(6));
      EXPECT_EQ(rows[i].AuxId(), expected.Integer(7));
      if (!withWarehouse) continue;
      EXPECT_EQ(rows[i].WarehouseId(), expected.Integer(8));
    }
    EXPECT_FALSE(expected.Step());
  }
  EXPECT_EQ(movements, 12);
  rows.Read(test::tiny::kJuice, Date::Of(2024, 1, 1), Date::Of(2024, 2, 1), true);
  EXPECT_EQ(rows.Count(), 0U) << "before the book";
}

}  // namespace
}  // namespace books::reports
