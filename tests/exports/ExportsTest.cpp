// The same small sheet as CSV, workbook and pages: what is seen is what is written.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exports/Csv.h"
#include "exports/Pdf.h"
#include "exports/Xlsx.h"
#include "platform/system/Process.h"
#include "platform/value/Error.h"
#include "tests/exports/Header.h"

namespace {

using exports::Sheet;
using exports::test::HeaderOf;
using platform::Currency;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Vector;
using testing::HasSubstr;
using testing::Not;

class Exports : public testing::Test {
 protected:
  Exports() {
    rows_->AppendField("FName", FieldType::kText, 50);
    rows_->AppendField("FQty", FieldType::kDouble);
    rows_->AppendField("FBal", FieldType::kCurrency);
    rows_->AppendField("FSecret", FieldType::kText, 50);
    rows_->AppendField("FSumSort", FieldType::kInt32);
    rows_->Open();
    Add("=1+1", 2.5, Currency::FromUnits(12345000), 0);
    Add("酱油, \"老抽\"", -3, Currency::FromUnits(-500), 0);
    Add("合计", -0.5, Currency::FromUnits(12344500), 1);
    grid_.emplace(*header_, *rows_);
  }
  ~Exports() override { std::filesystem::remove(file_); }

  void Add(const char* name, double quantity, Currency amount, std::int32_t sumSort) const {
    rows_->AddNew();
    rows_->SetText(0, name);
    rows_->SetDouble(1, quantity);
    rows_->SetCurrency(2, amount);
    rows_->SetText(3, "不给看");
    rows_->SetInteger(4, sumSort);
    rows_->Update();
  }

  Sheet SheetOf(std::optional<std::size_t> limit = {}) const {
    return {.name = "收发表", .titleLines = {"商品代码[全部]"}, .grid = *grid_, .limit = limit};
  }

  std::string FileBytes() const {
    std::ifstream in(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  // One part of the workbook as text.
  std::string PartOfWorkbook(const std::string& part) const {
    const std::string command = "python3 -c \"import zipfile,sys; sys.stdout.write(zipfile.ZipFile('" +
                                file_.string() + "').read('" + part + "').decode())\"";
    FILE* pipe = popen(command.c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
      text.append(buffer.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0);
    return text;
  }

  std::size_t PagesOfPdf() const {
    const std::string bytes = FileBytes();
    std::size_t pages = 0;
    for (std::size_t at = 0; (at = bytes.find("/Type /Page", at)) != std::string::npos; at += 11) {
      if (bytes[at + 11] != 's') ++pages;
    }
    return pages;
  }

  std::filesystem::path file_ =
      std::filesystem::temp_directory_path() / ("exports-" + std::to_string(platform::ProcessId()));
  Ref<Vector> header_ = HeaderOf({{"商品名称$", "", "1", "FName"},
                                  {"结存+|", "数量", "2", "FQty"},
                                  {"", "金额", "6", "FBal"},
                                  {"暗$", "", "1", "FSecret", false},
                                  {"禁$", "", "1", "FSecret", true, true}});
  Ref<Recordset> rows_ = MakeRef<Recordset>();
  std::optional<exports::Grid> grid_;
};

TEST_F(Exports, WriteCommaSeparatedValues) {
  std::ostringstream out;
  EXPECT_TRUE(exports::WriteCsv(out, SheetOf()));
  EXPECT_EQ(out.str(),
            "\xEF\xBB\xBF商品名称,结存 数量,结存 金额\r\n"
            "'=1+1,2.5,1234.5\r\n"
            "\"酱油, \"\"老抽\"\"\",-3,-0.05\r\n"
            "合计,-0.5,1234.45\r\n");
}

TEST_F(Exports, WriteNoFormulaAsAText) {
  struct Case {
    const char* text;
    const char* written;
  };
  const Case kCases[] = {{"=1+1", "'=1+1"}, {"+86 10", "'+86 10"}, {"-5", "'-5"},        {"@x", "'@x"},
                         {"\t=1", "'\t=1"}, {"0010", "0010"},      {"a\nb", "\"a\nb\""}, {"", ""}};
  for (const Case& c : kCases) {
    const Ref<Recordset> rows = MakeRef<Recordset>();
    rows->AppendField("FName", FieldType::kText, 50);
    rows->Open();
    rows->AddNew();
    rows->SetText(0, c.text);
    rows->Update();
    const Ref<Vector> header = HeaderOf({{"名$", "", "1", "FName"}});
    const exports::Grid grid(*header, *rows);
    std::ostringstream out;
    EXPECT_TRUE(exports::WriteCsv(out, {.name = "", .titleLines = {}, .grid = grid, .limit = {}}));
    EXPECT_EQ(out.str(), std::string("\xEF\xBB\xBF名\r\n") + c.written + "\r\n");
  }
}

TEST_F(Exports, WriteAWorkbookWithFiguresGroupsAndAFrozenHeading) {
  EXPECT_TRUE(exports::WriteXlsx(file_, SheetOf()));
  const std::string sheet = PartOfWorkbook("xl/worksheets/sheet1.xml");
  EXPECT_THAT(sheet, HasSubstr("<t>收发表</t>"));
  EXPECT_THAT(sheet, HasSubstr("<t>商品代码[全部]</t>"));
  EXPECT_THAT(sheet, HasSubstr(R"(<mergeCell ref="B3:C3"/>)"));
  EXPECT_THAT(sheet, HasSubstr(R"(topLeftCell="C5")"));
  EXPECT_THAT(sheet, HasSubstr("<t>=1+1</t>"));
  EXPECT_THAT(sheet, HasSubstr("<v>1234.5</v>"));
  EXPECT_THAT(sheet, HasSubstr("<v>-0.05</v>"));
  EXPECT_THAT(sheet, Not(HasSubstr("不给看")));
}

TEST_F(Exports, WritePagesForPaper) {
  for (int i = 0; i < 100; ++i) Add("盐", i, Currency::FromUnits(i), 0);
  EXPECT_TRUE(exports::WritePdf(file_, SheetOf()));
  EXPECT_EQ(FileBytes().substr(0, 5), "%PDF-");
  EXPECT_EQ(PagesOfPdf(), 2U);
}

TEST_F(Exports, APageWithoutRowsHasItsHeading) {
  EXPECT_TRUE(exports::WritePdf(file_, SheetOf(0)));
  EXPECT_EQ(PagesOfPdf(), 1U);
}

TEST_F(Exports, AreCutAtTheLimit) {
  std::ostringstream out;
  EXPECT_TRUE(exports::WriteCsv(out, SheetOf(1)));
  EXPECT_THAT(out.str(), Not(HasSubstr("合计")));
}

TEST_F(Exports, LeaveNoFileWhenTheyAreStopped) {
  const exports::Progress stop = [](std::size_t, std::size_t) { return false; };
  std::ostringstream out;
  EXPECT_FALSE(exports::WriteCsv(out, SheetOf(), stop));
  EXPECT_FALSE(exports::WriteXlsx(file_, SheetOf(), stop));
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_FALSE(exports::WritePdf(file_, SheetOf(), stop));
  EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(Exports, FollowTheReadersArrangement) {
  grid_.emplace(*header_, *rows_,
                exports::Arrangement{.fields = {"FBal", "FName", "FQty", "FSecret", "FNone"},
                                     .rows = {1, 0},
                                     .decimals = {.quantity = 0, .price = 4, .amount = 2},
                                     .emptyForZero = false});
  ASSERT_EQ(grid_->Columns().size(), 4U);
  EXPECT_EQ(grid_->Columns()[0].group, "结存");
  EXPECT_EQ(grid_->Columns()[0].groupSpan, 1U);
  EXPECT_EQ(grid_->Columns()[2].group, "结存");
  EXPECT_EQ(grid_->Columns()[3].caption, "暗");
  EXPECT_EQ(grid_->Cell(0, 0), "-0.05");
  EXPECT_EQ(grid_->Cell(0, 1), "1,234.50");
  EXPECT_EQ(grid_->Cell(2, 0), "-3");
  EXPECT_EQ(grid_->Cell(2, 1), "3");
  EXPECT_TRUE(exports::WriteXlsx(file_, SheetOf()));
  EXPECT_THAT(PartOfWorkbook("xl/styles.xml"), HasSubstr("#,##0.00;[Red]-#,##0.00\""));
}

struct Figure {
  const char* name;
  platform::Variant value;
  int decimals;
  std::string shown;
};

TEST_F(Exports, ACaptionOfBlanksBelongsToTheGroup) {
  const Ref<Vector> header =
      HeaderOf({{"收货+|+|", "数量", "2", "FQty"}, {"", "名称", "1", "FName"}, {" ", "金额", "6", "FBal"}});
  const exports::Grid grid(*header, *rows_);
  ASSERT_EQ(grid.Columns().size(), 3U);
  EXPECT_EQ(grid.Columns()[0].groupSpan, 3U);
  EXPECT_EQ(grid.Columns()[2].caption, "");
}

TEST_F(Exports, FiguresToLookAtStandOut) {
  const Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FQty", FieldType::kDouble);
  rows->AppendField("Overdays", FieldType::kInt32);
  rows->Open();
  struct Row {
    double quantity;
    std::int32_t days;
  };
  for (const Row row : {Row{-1, -3}, Row{1, 3}, Row{0, 0}}) {
    rows->AddNew();
    rows->SetDouble(0, row.quantity);
    rows->SetInteger(1, row.days);
    rows->Update();
  }
  const exports::Grid grid(*HeaderOf({{"数量$", "", "2", "FQty"}, {"超期天数$", "", "2", "Overdays"}}),
                           *rows);
  const bool expected[3][2] = {{true, false}, {false, true}, {false, false}};
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(grid.StandsOut(0, row), expected[row][0]) << row;
    EXPECT_EQ(grid.StandsOut(1, row), expected[row][1]) << row;
  }
}

TEST_F(Exports, ShowFiguresAsTheScreenDoes) {
  const std::vector<Figure> cases = {
      {"thousands", 1234567.891, 2, "1,234,567.89"},
      {"no decimals", 999.5, 0, "1,000"},
      {"a half goes away from zero", 1.005, 2, "1.01"},
      {"a negative half too", -2.5, 0, "-3"},
      {"carried on", 999.999, 2, "1,000.00"},
      {"small", 0.00001, 4, "0.0000"},
      {"no sign on a zero", -0.004, 2, "0.00"},
      {"large", 1e21, 0, "1,000,000,000,000,000,000,000"},
      {"zero is empty", 0.0, 2, ""},
      {"no number", std::numeric_limits<double>::quiet_NaN(), 2, ""},
      {"null", platform::Null{}, 2, ""},
  };
  for (const Figure& one : cases) {
    const Ref<Recordset> rows = MakeRef<Recordset>();
    rows->AppendField("FQty", FieldType::kDouble);
    rows->Open();
    rows->AddNew();
    rows->SetValue(0, one.value);
    rows->Update();
    const exports::Grid grid(*header_, *rows,
                             {.fields = {"FQty"},
                              .rows = {0},
                              .decimals = {.quantity = one.decimals, .price = 0, .amount = 0},
                              .emptyForZero = true});
    EXPECT_EQ(grid.Cell(0, 0), one.shown) << one.name;
  }
}

TEST_F(Exports, ForbiddenColumnsAreInNoArrangement) {
  const Ref<Vector> header = HeaderOf({{"名$", "", "1", "FName"}, {"禁$", "", "1", "FSecret", true, true}});
  const exports::Grid grid(
      *header, *rows_, {.fields = {"FSecret", "FName"}, .rows = {}, .decimals = {}, .emptyForZero = false});
  ASSERT_EQ(grid.Columns().size(), 1U);
  EXPECT_EQ(grid.Columns()[0].field, "FName");
}

// Of a column, as the workbook gives it.
double WidthIn(const std::string& sheet, int column) {
  const std::string begin = "<col min=\"" + std::to_string(column) + "\"";
  const std::size_t at = sheet.find("width=\"", sheet.find(begin));
  return std::stod(sheet.substr(at + 7));
}

TEST_F(Exports, GiveALateLargeFigureItsRoom) {
  EXPECT_TRUE(exports::WriteXlsx(file_, SheetOf()));
  const double before = WidthIn(PartOfWorkbook("xl/worksheets/sheet1.xml"), 3);
  for (int i = 0; i < 1500; ++i) Add("盐", 1, Currency::FromUnits(10000), 0);
  Add("全部", 123456789012.0, Currency::FromUnits(1234567890120000), 1);
  EXPECT_TRUE(exports::WriteXlsx(file_, SheetOf()));
  EXPECT_GT(WidthIn(PartOfWorkbook("xl/worksheets/sheet1.xml"), 3), std::max(before, 15.0));
}

TEST_F(Exports, CutNoFigureOnPaper) {
  for (int i = 0; i < 1500; ++i) Add("盐", 1, Currency::FromUnits(10000), 0);
  Add("全部", 123456789012.0, Currency::FromUnits(1234567890120000), 1);
  std::vector<std::uint32_t> all(static_cast<std::size_t>(rows_->RecordCount()));
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint32_t>(i);
  grid_.emplace(*header_, *rows_,
                exports::Arrangement{
                    .fields = {"FName", "FQty", "FBal"}, .rows = all, .decimals = {}, .emptyForZero = false});
  EXPECT_TRUE(exports::WritePdf(file_, SheetOf()));
  FILE* pipe = popen(("pdftotext -raw " + file_.string() + " -").c_str(), "r");
  std::string text;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    text.append(buffer.data(), count);
  }
  ASSERT_EQ(pclose(pipe), 0) << "the text of the pages was not told";
  EXPECT_THAT(text, HasSubstr("123,456,789,012.00"));
  EXPECT_THAT(text, Not(HasSubstr("…")));
}

TEST_F(Exports, RefuseAFolderThatIsNotThere) {
  const std::filesystem::path nowhere = "/no/such/folder/file";
  EXPECT_THROW(exports::WriteXlsx(nowhere, SheetOf()), platform::Error);
  EXPECT_THROW(exports::WritePdf(nowhere, SheetOf()), platform::Error);
}

}  // namespace
