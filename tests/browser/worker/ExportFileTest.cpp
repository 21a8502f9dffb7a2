// A file without a name, and its bytes as messages carry them.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "browser/worker/ExportFile.h"
#include "platform/rows/Dictionary.h"
#include "platform/value/Error.h"

namespace browser {
namespace {

using platform::Dictionary;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Vector;

struct Encoded {
  const char* name;
  std::string bytes;
  std::string text;
};

TEST(Base64, IsWhatEveryReaderKnows) {
  const std::vector<Encoded> cases = {
      {"nothing", "", ""},
      {"one", "f", "Zg=="},
      {"two", "fo", "Zm8="},
      {"three", "foo", "Zm9v"},
      {"more", "foobar", "Zm9vYmFy"},
      {"high bytes", "\xff\xfe\xfd", "//79"},
      {"zero", std::string(2, '\0'), "AAA="},
  };
  for (const Encoded& one : cases) EXPECT_EQ(Base64(one.bytes), one.text) << one.name;
}

class WrittenFile : public testing::Test {
 protected:
  WrittenFile() {
    const Ref<Dictionary> column = MakeRef<Dictionary>();
    column->Set("FColCaption", "商品名称$");
    column->Set("FHeadSecond", "");
    column->Set("FColType", "1");
    column->Set("FColName", "FName");
    column->Set("FVisible", 1);
    column->Set("FForceHide", false);
    header_->Add(column);
    rows_->AppendField("FName", FieldType::kText, 50);
    rows_->Open();
  }

  void Add(int count) const {
    std::uint32_t noise = 1;  // so that the file does not shrink to nothing
    for (int i = 0; i < count; ++i) {
      noise = noise * 1664525U + 1013904223U;
      rows_->AddNew();
      rows_->SetText(0, std::to_string(noise) + std::to_string(noise ^ 0x5A5A5A5AU));
      rows_->Update();
    }
  }
  exports::Grid AllRows() const {
    std::vector<std::uint32_t> all(rows_->ViewCount());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint32_t>(i);
    return {*header_, *rows_, {.fields = {"FName"}, .rows = all, .decimals = {}, .emptyForZero = false}};
  }

  Ref<Vector> header_ = MakeRef<Vector>();
  Ref<Recordset> rows_ = MakeRef<Recordset>();
};

TEST_F(WrittenFile, IsReadInParts) {
  Add(20000);
  const exports::Grid grid = AllRows();
  ExportFile file(3);
  ASSERT_TRUE(file.Write("xlsx", {.name = "表", .titleLines = {}, .grid = grid, .limit = {}}, {}));
  ASSERT_GT(file.Size(), ExportFile::kPart);
  std::string bytes;
  std::size_t parts = 0;
  while (bytes.size() < file.Size()) {
    const std::string part = file.Read(bytes.size());
    ASSERT_FALSE(part.empty());
    bytes += part;
    ++parts;
  }
  EXPECT_GT(parts, 1U);
  EXPECT_EQ(bytes.substr(0, 4), "PK\x03\x04");
  // The directory at the end of an archive: nothing is missing in between.
  EXPECT_NE(bytes.rfind("PK\x05\x06"), std::string::npos);
  EXPECT_EQ(file.Read(file.Size()), "");
}

TEST_F(WrittenFile, OfPagesIsAPdf) {
  Add(3);
  const exports::Grid grid = AllRows();
  ExportFile file(1);
  ASSERT_TRUE(file.Write("pdf", {.name = "表", .titleLines = {}, .grid = grid, .limit = {}}, {}));
  EXPECT_EQ(file.Read(0).substr(0, 5), "%PDF-");
}

TEST_F(WrittenFile, ThatIsStoppedSaysSo) {
  Add(3000);
  const exports::Grid grid = AllRows();
  const exports::Sheet sheet{.name = "表", .titleLines = {}, .grid = grid, .limit = {}};
  for (const char* format : {"xlsx", "pdf"}) {
    std::size_t asked = 0;
    ExportFile file(1);
    EXPECT_FALSE(file.Write(format, sheet, [&](std::size_t, std::size_t) { return ++asked < 2; })) << format;
    EXPECT_EQ(asked, 2U) << format;
  }
}

TEST_F(WrittenFile, WithoutColumnsIsNone) {
  const exports::Grid grid(*header_, *rows_,
                           {.fields = {"FNone"}, .rows = {}, .decimals = {}, .emptyForZero = false});
  ExportFile file(1);
  EXPECT_THROW(file.Write("xlsx", {.name = "表", .titleLines = {}, .grid = grid, .limit = {}}, {}),
               platform::Error);
}

}  // namespace
}  // namespace browser
