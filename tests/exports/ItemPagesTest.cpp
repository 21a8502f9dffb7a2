// A ledger of two items as pages and as a workbook: what each page begins and ends with.
#include <array>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exports/CarriedTotals.h"
#include "exports/Pdf.h"
#include "exports/Xlsx.h"
#include "platform/system/Process.h"
#include "platform/value/Clock.h"
#include "tests/exports/Header.h"

namespace {

using exports::ItemPages;
using exports::test::AddColumn;
using platform::Currency;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Vector;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr std::int32_t kMovement = 7;
constexpr std::int32_t kOpening = -1;
constexpr std::int32_t kTotal = -2;
constexpr std::int32_t kClosing = -3;

struct LedgerLine {
  std::int32_t period;
  std::int32_t mark;
  double in;
  double out;
  double balance;
};

class LedgerExport : public testing::Test {
 protected:
  LedgerExport() {
    platform::Clock::Fix(platform::Date::Of(2024, 3, 31));
    AddColumn(*header_, {"事务类型$", "", "1", "FTranTypeName"});
    for (const auto& [group, side] : {std::pair("收入+|", "FIn"), {"发出+|", "FOut"}, {"结存+|", "FBal"}}) {
      AddColumn(*header_, {group, "数量", "2", std::string(side) + "Qty"});
      AddColumn(*header_, {"", "金额", "6", std::string(side) + "Amount"});
      figures_.push_back(std::string(side));
    }
    rows_->AppendField("FTranTypeName", FieldType::kText, 50);
    for (const std::string& side : figures_) {
      rows_->AppendField(side + "Qty", FieldType::kDouble);
      rows_->AppendField(side + "Amount", FieldType::kCurrency);
    }
    for (const char* field : {"FYear", "FPeriod", "FID", "FSumSort"}) {
      rows_->AppendField(field, FieldType::kInt32);
    }
    rows_->AppendField("FTitle1", FieldType::kText, 50);
    rows_->AppendField("FTitle2", FieldType::kText, 50);
    rows_->Open();
  }
  ~LedgerExport() override {
    platform::Clock::Fix({});
    std::filesystem::remove(file_);
  }

  // Amounts are ten times the quantities.
  void Add(const char* item, const LedgerLine& line) {
    rows_->AddNew();
    rows_->SetText(0, line.mark == kMovement ? "销售" : "合计");
    std::size_t field = 1;
    for (const double quantity : {line.in, line.out, line.balance}) {
      rows_->SetDouble(field++, quantity);
      rows_->SetCurrency(field++, Currency::FromUnits(static_cast<std::int64_t>(quantity * 100'000)));
    }
    rows_->SetInteger(field++, 2024);
    rows_->SetInteger(field++, line.period);
    rows_->SetInteger(field++, line.mark);
    rows_->SetInteger(field++, line.mark == kMovement ? 0 : 101);
    rows_->SetText(field, std::string("商品名称：") + item);
    rows_->Update();
  }
  // An item with so many movements of one out of a hundred.
  void AddItem(const char* item, int movements) {
    Add(item, {1, kOpening, 0, 0, 100});
    for (int i = 1; i <= movements; ++i) Add(item, {1, kMovement, 0, 1, 100.0 - i});
    ends_.push_back(rows_->RecordCount());
  }

  exports::Grid AllOf(const Ref<Recordset>& rows) const { return exports::Grid(*header_, *rows); }

  std::string Told(const std::string& command) const {
    FILE* pipe = popen((command + " " + file_.string() + " 2>&1").c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
      text.append(buffer.data(), count);
    }
    pclose(pipe);
    return text;
  }
  std::string PageText(int page) const {
    const std::string number = std::to_string(page);
    FILE* pipe = popen(
        ("pdftotext -layout -f " + number + " -l " + number + " " + file_.string() + " -").c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
      text.append(buffer.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0);
    return text;
  }

  std::filesystem::path file_ =
      std::filesystem::temp_directory_path() / ("item-pages-" + std::to_string(platform::ProcessId()));
  Ref<Vector> header_ = MakeRef<Vector>();
  Ref<Recordset> rows_ = MakeRef<Recordset>();
  std::vector<std::string> figures_;
  std::vector<std::int32_t> ends_;
};

std::vector<std::string> LineOf(const std::string& text, const std::string& caption) {
  std::vector<std::string> words;
  const std::size_t at = text.find(caption);
  if (at == std::string::npos) return words;
  std::istringstream line(text.substr(at, text.find('\n', at) - at));
  for (std::string word; line >> word;) words.push_back(word);
  return words;
}

TEST_F(LedgerExport, ItemsHaveTheirRowsAndTitles) {
  AddItem("甲", 2);
  AddItem("乙", 1);
  const ItemPages pages(*rows_, ends_);
  ASSERT_EQ(pages.Count(), 2U);
  EXPECT_EQ(pages.Begin(1), 3U);
  EXPECT_EQ(pages.End(1), 5U);
  EXPECT_THAT(pages.TitleLines(1), ElementsAre("商品名称：乙"));
}

TEST_F(LedgerExport, EndsThatEndNothingAreLeftOut) {
  AddItem("甲", 2);
  struct Case {
    const char* name;
    std::vector<std::int32_t> ends;
    std::size_t count;
  };
  for (const Case& c : {Case{"none: all rows are one item", {}, 1}, Case{"the same twice", {1, 1, 3}, 2},
                        Case{"behind the last row", {2, 9}, 2}, Case{"below nothing", {-1, 0, 3}, 1}}) {
    EXPECT_EQ(ItemPages(*rows_, c.ends).Count(), c.count) << c.name;
    EXPECT_EQ(ItemPages(*rows_, c.ends).End(c.count - 1), 3U) << c.name;
  }
}

TEST_F(LedgerExport, TotalsAreCarriedWithinAPeriod) {
  const exports::Grid grid = AllOf(rows_);
  struct Case {
    const char* name;
    LedgerLine line;
    std::vector<std::string> carried;
  };
  const Case kCases[] = {
      {"an opening batch", {1, kOpening, 0, 0, 5}, {"0", "0.00", "0", "0.00", "5", "50.00"}},
      {"another one adds up", {1, kOpening, 0, 0, 3}, {"0", "0.00", "0", "0.00", "8", "80.00"}},
      {"a receipt", {1, kMovement, 4, 0, 12}, {"4", "40.00", "0", "0.00", "12", "120.00"}},
      {"an issue", {1, kMovement, 0, 15, -3}, {"4", "40.00", "15", "150.00", "-3", "-30.00"}},
      {"a total changes nothing", {1, kTotal, 4, 15, 0}, {"4", "40.00", "15", "150.00", "-3", "-30.00"}},
      {"nor does a closing batch", {1, kClosing, 0, 0, 9}, {"4", "40.00", "15", "150.00", "-3", "-30.00"}},
      {"a new period begins anew", {2, kOpening, 0, 0, -3}, {"0", "0.00", "0", "0.00", "-3", "-30.00"}},
  };
  for (const Case& c : kCases) Add("甲", c.line);
  const ItemPages pages(*rows_, {});
  exports::CarriedTotals totals(pages, grid);
  ASSERT_TRUE(totals.Carries());
  totals.BeginItem();
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    totals.Add(i);
    EXPECT_EQ(totals.Cell(0, "过次页"), "过次页");
    std::vector<std::string> cells;
    for (std::size_t column = 1; column < grid.Columns().size(); ++column) {
      cells.push_back(totals.Cell(column, "过次页"));
    }
    EXPECT_EQ(cells, kCases[i].carried) << kCases[i].name;
  }
  totals.BeginItem();
  EXPECT_EQ(totals.Cell(5, ""), "0") << "another item begins with nothing";
}

TEST_F(LedgerExport, RowsThatAreNoLedgerCarryNothing) {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FTranTypeName", FieldType::kText, 50);
  rows->Open();
  const ItemPages pages(*rows, {});
  const exports::CarriedTotals totals(pages, exports::Grid(*MakeRef<Vector>(), *rows));
  EXPECT_FALSE(totals.Carries());
}

TEST_F(LedgerExport, EachItemBeginsASheetAndCarriesOn) {
  AddItem("甲", 70);
  AddItem("乙", 1);
  const exports::Grid grid = AllOf(rows_);
  const ItemPages pages(*rows_, ends_);
  ASSERT_TRUE(exports::WritePdf(
      file_, {.name = "明细账", .titleLines = {}, .grid = grid, .limit = {}, .items = &pages}, {},
      {.orientation = exports::Orientation::kPortrait}));
  ASSERT_THAT(Told("pdfinfo"), HasSubstr("Pages:           3"));
  const std::string first = PageText(1);
  EXPECT_THAT(first, HasSubstr("商品名称：甲"));
  EXPECT_THAT(first, HasSubstr("第 1 页，共 2 页"));
  EXPECT_THAT(first, HasSubstr("总第 1 页，共 3 页"));
  EXPECT_THAT(first, HasSubstr("打印日期：2024-03-31"));
  EXPECT_THAT(first, Not(HasSubstr("承前页")));
  const std::vector<std::string> over = LineOf(first, "过次页");
  const std::string second = PageText(2);
  EXPECT_THAT(second, HasSubstr("商品名称：甲"));
  std::vector<std::string> forward = LineOf(second, "承前页");
  ASSERT_EQ(over.size(), 7U) << first;
  // So many lines as the page shows are out, and the rest of the hundred is left.
  EXPECT_EQ(std::stoi(over[3]) + std::stoi(over[5]), 100);
  EXPECT_GT(std::stoi(over[3]), 40);
  forward[0] = over[0];
  EXPECT_EQ(forward, over);
  EXPECT_THAT(second, Not(HasSubstr("过次页")));
  const std::string third = PageText(3);
  EXPECT_THAT(third, HasSubstr("商品名称：乙"));
  EXPECT_THAT(third, HasSubstr("第 1 页，共 1 页"));
  EXPECT_THAT(third, HasSubstr("总第 3 页，共 3 页"));
  EXPECT_THAT(third, Not(HasSubstr("承前页")));
}

TEST_F(LedgerExport, ALimitEndsWithTheItemThatItReaches) {
  AddItem("甲", 3);
  AddItem("乙", 3);
  AddItem("丙", 3);
  const exports::Grid grid = AllOf(rows_);
  const ItemPages pages(*rows_, ends_);
  for (const auto& [limit, sheets] : {std::pair(0, 1), {4, 1}, {5, 2}, {8, 2}, {12, 3}, {99, 3}}) {
    ASSERT_TRUE(exports::WritePdf(file_, {.name = "明细账",
                                          .titleLines = {},
                                          .grid = grid,
                                          .limit = static_cast<std::size_t>(limit),
                                          .items = &pages}));
    EXPECT_THAT(Told("pdfinfo"), HasSubstr("Pages:           " + std::to_string(sheets))) << limit;
  }
}

TEST_F(LedgerExport, AWorkbookHasALineForEachItem) {
  AddItem("甲", 2);
  AddItem("乙", 1);
  const exports::Grid grid = AllOf(rows_);
  const ItemPages pages(*rows_, ends_);
  ASSERT_TRUE(exports::WriteXlsx(
      file_, {.name = "明细账", .titleLines = {"不在此"}, .grid = grid, .limit = {}, .items = &pages}));
  const std::string sheet = Told(
      "python3 -c \"import sys, zipfile; "
      "sys.stdout.write(zipfile.ZipFile(sys.argv[1]).read('xl/worksheets/sheet1.xml').decode())\"");
  EXPECT_THAT(sheet, Not(HasSubstr("不在此")));
  // The name, two lines of heading, then an item's line and its rows; a line stays free before the next item.
  for (const char* cell : {R"(<c r="A4" s="3" t="inlineStr"><is><t>商品名称：甲</t>)",
                           R"(<c r="A9" s="3" t="inlineStr"><is><t>商品名称：乙</t>)"}) {
    EXPECT_THAT(sheet, HasSubstr(cell));
  }
  EXPECT_THAT(sheet, Not(HasSubstr("<row r=\"8\"")));
  EXPECT_THAT(sheet, HasSubstr(R"(<brk id="8" max="16383" man="1"/>)"));
}

}  // namespace
