// Rows as text, and the order and choice of a reader.
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "browser/worker/RowText.h"
#include "browser/worker/View.h"

namespace browser {
namespace {

using platform::Currency;
using platform::Date;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

std::string Cell(FieldType type, const Variant& value) {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("F", type);
  rows->Open();
  rows->AddNew();
  rows->SetValue(0, value);
  rows->Update();
  std::string text;
  AppendCell(text, *rows, 0, 0);
  return text;
}

struct CellCase {
  const char* name;
  FieldType type;
  Variant value;
  std::string text;
};

TEST(RowText, CellsAreJson) {
  const std::vector<CellCase> cases = {
      {"null", FieldType::kDouble, platform::Null{}, "null"},
      {"text", FieldType::kText, "商品", "\"商品\""},
      {"marks", FieldType::kText, "a\"b\\c\nd", R"("a\"b\\c\u000ad")"},
      {"bytes that are no text", FieldType::kText, std::string("a\xff\xc3"), R"("a\ufffd\ufffd")"},
      {"half a pair", FieldType::kText, std::string("\xed\xa0\x80"), R"("\ufffd\ufffd\ufffd")"},
      {"integer", FieldType::kInt32, -7, "-7"},
      {"double", FieldType::kDouble, 0.1, "0.1"},
      {"infinity", FieldType::kDouble, std::numeric_limits<double>::infinity(), "null"},
      {"whole amount", FieldType::kCurrency, Currency::FromUnits(120000), "\"12\""},
      {"amount", FieldType::kCurrency, Currency::FromUnits(-123450), "\"-12.345\""},
      {"small amount", FieldType::kCurrency, Currency::FromUnits(-1), "\"-0.0001\""},
      {"least amount", FieldType::kCurrency, Currency::FromUnits(std::numeric_limits<std::int64_t>::min()),
       "\"-922337203685477.5808\""},
      {"date", FieldType::kDate, Date::Of(2026, 1, 2), "\"2026-01-02\""},
      {"boolean", FieldType::kBoolean, true, "true"},
  };
  for (const CellCase& one : cases) EXPECT_EQ(Cell(one.type, one.value), one.text) << one.name;
}

struct Line {
  const char* number;
  std::int64_t amount;  // in ten-thousandths
  int sumSort;
};

// Two blocks with a total each, and a grand total.
const std::vector<Line> kLines = {{"b", 20000, 0},  {"a", 30000, 0}, {"total 1", 50000, 1},
                                  {"d", 5000, 0},   {"c", 1, 0},     {"total 2", 5001, 1},
                                  {"all", 55001, 2}};

View TotalledView() {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FItemNumber", FieldType::kText);
  rows->AppendField("FBal", FieldType::kCurrency);
  rows->AppendField("FSumSort", FieldType::kInt32);
  rows->Open();
  for (const Line& line : kLines) {
    rows->AddNew();
    rows->SetText(0, line.number);
    rows->SetCurrency(1, Currency::FromUnits(line.amount));
    rows->SetInteger(2, line.sumSort);
    rows->Update();
  }
  return View(rows);
}

std::string Shown(const View& view) {
  std::string text;
  for (std::size_t i = 0; i < view.Count(); ++i) {
    text += (i > 0 ? "|" : "") + CellText(view.Rows(), 0, view.RowAt(i));
  }
  return text;
}

struct ViewCase {
  const char* name;
  std::vector<SortKey> sort;
  std::string text;
  std::string shown;
};

TEST(View, TotalsStayWithWhatTheySum) {
  const std::vector<ViewCase> cases = {
      {"own order", {}, "", "b|a|total 1|d|c|total 2|all"},
      {"by number", {{0, false}}, "", "a|b|total 1|c|d|total 2|all"},
      {"by amount, the most first", {{1, true}}, "", "a|b|total 1|d|c|total 2|all"},
      {"one block has it", {}, "D", "d|total 2|all"},
      {"nothing has it", {}, "zzz", ""},
      {"both", {{0, true}}, "a", "a|total 1|all"},
  };
  for (const ViewCase& one : cases) {
    SCOPED_TRACE(one.name);
    View view = TotalledView();
    view.Set(one.sort, one.text, {0});
    EXPECT_EQ(Shown(view), one.shown);
  }
}

TEST(View, FindsForwardsAndBack) {
  const View view = TotalledView();
  EXPECT_EQ(view.Find("TOTAL", 0, false, {0})->position, 2U);
  EXPECT_EQ(view.Find("total", 3, false, {0})->position, 5U);
  EXPECT_EQ(view.Find("total", 4, true, {0})->position, 2U);
  EXPECT_FALSE(view.Find("total", 1, true, {0}).has_value());
  EXPECT_FALSE(view.Find("", 0, false, {0}).has_value());
  EXPECT_EQ(view.Find("0.0001", 0, false, {0, 1})->column, 1U);
  EXPECT_FALSE(view.Find("total", 100, false, {0}).has_value());
}

TEST(View, SumsMoneyExactly) {
  const View view = TotalledView();
  const ColumnSum sum = view.Sum(1, 3, 2);
  EXPECT_EQ(sum.sum, "0.5001");
  EXPECT_EQ(sum.count, 2U);
  EXPECT_DOUBLE_EQ(sum.average, 0.25005);
  EXPECT_EQ(view.Sum(0, 0, 7).count, 0U);
  EXPECT_EQ(view.Sum(1, 6, 1000).count, 1U);
  EXPECT_EQ(view.Sum(1, 1000, 1).count, 0U);
}

}  // namespace
}  // namespace browser
