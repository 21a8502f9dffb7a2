#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exports/Paper.h"
#include "exports/Pdf.h"
#include "platform/system/Process.h"
#include "tests/exports/Header.h"

namespace {

using exports::Orientation;
using exports::Paper;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Vector;

TEST(Paper, IsFoundByName) {
  for (const Paper& paper : exports::kPapers) {
    const std::optional<Paper> found = exports::FindPaper(paper.name);
    ASSERT_TRUE(found) << paper.name;
    EXPECT_EQ(found->width, paper.width) << paper.name;
    EXPECT_LT(paper.width, paper.height) << paper.name << " stands upright";
  }
  EXPECT_EQ(exports::FindPaper("letter")->name, "Letter");
  for (const char* none : {"", "A", "A4 ", "C7"}) EXPECT_FALSE(exports::FindPaper(none)) << none;
}

TEST(Paper, OrientationIsFoundByName) {
  EXPECT_EQ(exports::FindOrientation("landscape"), Orientation::kLandscape);
  EXPECT_EQ(exports::FindOrientation("Auto"), Orientation::kAuto);
  EXPECT_FALSE(exports::FindOrientation("up"));
}

// A sheet of so many columns, each some 60 points wide.
std::string PagesOf(int columnCount, const exports::PageSetup& setup) {
  const Ref<Vector> header = MakeRef<Vector>();
  const Ref<Recordset> rows = MakeRef<Recordset>();
  for (int i = 0; i < columnCount; ++i) {
    const std::string field = "F" + std::to_string(i);
    exports::test::AddColumn(*header, {"一二三四五六七$", "", "2", field});
    rows->AppendField(field, FieldType::kDouble);
  }
  rows->Open();
  const exports::Grid grid(*header, *rows);
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("paper-" + std::to_string(platform::ProcessId()) + ".pdf");
  EXPECT_TRUE(
      exports::WritePdf(file, {.name = "表", .titleLines = {}, .grid = grid, .limit = {}}, {}, setup));
  std::ifstream in(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  std::filesystem::remove(file);
  return bytes;
}

TEST(Paper, IsUprightOrLying) {
  struct Case {
    const char* name;
    const char* paper;
    Orientation orientation;
    int columns;
    const char* box;
  };
  const Case kCases[] = {
      {"few columns stand upright", "A4", Orientation::kAuto, 3, "/MediaBox [ 0 0 595.275591 841.889764 ]"},
      {"many lie", "A4", Orientation::kAuto, 11, "/MediaBox [ 0 0 841.889764 595.275591 ]"},
      {"many lie not on larger paper", "A3", Orientation::kAuto, 11,
       "/MediaBox [ 0 0 841.889764 1190.551181 ]"},
      {"few may lie", "A5", Orientation::kLandscape, 3, "/MediaBox [ 0 0 595.275591 419.527559 ]"},
      {"many may stand upright", "16K", Orientation::kPortrait, 20,
       "/MediaBox [ 0 0 521.574803 737.007874 ]"},
  };
  for (const Case& c : kCases) {
    const std::string pdf =
        PagesOf(c.columns, {.paper = exports::FindPaper(c.paper).value(), .orientation = c.orientation});
    EXPECT_THAT(pdf, testing::HasSubstr(c.box)) << c.name;
  }
}

}  // namespace
