// The rows of the example report on the tiny book, whose seven items have the bar code 690 and their id, the
// same supplier and the lowest level 20.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/schema/Schema.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"
#include "tests/books/sample/Data10499.h"
#include "tests/books/services/SmallBook.h"

namespace {

using books::database::Connection;
using books::test::FilterEntries;
using books::test::FilterOf;
using books::test::LinesOf;
using Lines = std::vector<std::string>;

const Lines kShown = {"FItemNumber", "FBarCode", "FSupplyName", "FLowerQty"};
const std::string kJuice = "01.01.001 690411 鲜果供应商 20";
const std::string kYogurt = "01.01.002 690412 鲜果供应商 20";
const std::string kCandy = "01.02 690413 鲜果供应商 20";
const std::string kScanner = "02.002 '' 五金供应商 20";
const std::string kTape = "02.003 690423 '' 20";

// The tiny book, with a scanner without bar code that the other supplier brings, for user 7 alone, and tape
// that anybody may bring. The screwdrivers and the gift boxes are disabled.
void WriteBook(Connection& connection) {
  using namespace books::test;
  WriteTinyBaseData(connection);
  connection.Execute("UPDATE item SET barcode = '', default_supplier_id = ? WHERE id = ?",
                     tiny::kSecondSupplier, tiny::kScanner);
  connection.Execute("UPDATE item SET default_supplier_id = NULL WHERE id = ?", tiny::kTape);
  connection.Execute("UPDATE base_data SET disabled = 1 WHERE id IN (?, ?)", tiny::kScrewdriver,
                     tiny::kGiftBox);
  connection.Execute("UPDATE base_data SET right_users = '7' WHERE id = ?", tiny::kSecondSupplier);
  connection.Execute("UPDATE base_data SET right_users = '7,12' WHERE id = ?", tiny::kSupplier);
}

struct Case {
  std::string name;
  FilterEntries filter;
  Lines lines;
};

std::string Right(const std::string& user) {
  return " (CharIndex('" + user + "',t7.FRightUserID)>0 OR ISNULL(t7.FItemID,0)=0) ";
}

const std::vector<Case> kAccepted = {
    {"everything", {}, {kJuice, kYogurt, kCandy, kScanner, kTape}},
    {"a range", {{"BItemNumber", "01.01.002"}, {"EItemNumber", "02.002"}}, {kYogurt, kCandy, kScanner}},
    {"without bar code", {{"chkNoCode", "1"}}, {kScanner}},
    {"by bar code, downwards", {{"OrderBy", "FBarCode DESC "}}, {kTape, kCandy, kYogurt, kJuice, kScanner}},
    {"who may see one supplier", {{"DataRightWhere", Right("12")}}, {kJuice, kYogurt, kCandy, kTape}},
    {"who may see both", {{"DataRightWhere", Right("7")}}, {kJuice, kYogurt, kCandy, kScanner, kTape}},
    {"who may see none", {{"DataRightWhere", Right("99")}}, {kTape}},
};

class SampleData : public testing::Test {
 protected:
  SampleData() {
    Connection connection = books::schema::CreateBook(file_);
    WriteBook(connection);
  }
  platform::Ref<platform::Recordset> Fetch(const FilterEntries& filter) {
    const auto store = std::make_shared<books::services::Store>(file_);
    platform::Variant argument = FilterOf(filter);
    return platform::MakeRef<books::reports::Data10499>(store)
        ->Call("GetRpt10499Data", "UserID=12;", argument)
        .AsRef<platform::Recordset>();
  }

 private:
  books::test::SmallBook folder_;
  std::filesystem::path file_ = folder_.File().parent_path() / "tiny.book";
};

TEST_F(SampleData, Rows) {
  for (const Case& each : kAccepted) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*Fetch(each.filter), kShown), each.lines);
  }
}

// The names under which the heading of the report looks for its values.
TEST_F(SampleData, Fields) {
  const platform::Ref<platform::Recordset> rows = Fetch({});
  Lines names;
  for (const platform::Field& field : rows->Fields()) names.push_back(field.name);
  EXPECT_THAT(names, testing::ElementsAre("FItemNumber", "FItemName", "FBarCode", "FSupplyName", "FLowerQty",
                                          "FSecUnitName"));
}

TEST_F(SampleData, RefusesWhatItDoesNotUnderstand) {
  const std::vector<FilterEntries::value_type> refused = {
      {"OrderBy", "i.id; DROP TABLE item ASC "},
      {"DataRightWhere", "t9.FItemID=1"},
  };
  for (const auto& entry : refused) {
    EXPECT_THAT(books::test::RefusalOf([&] { Fetch({entry}); }), testing::HasSubstr(entry.first));
  }
}

}  // namespace
