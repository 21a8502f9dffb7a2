#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <iconv.h>

#include "books/import/Import.h"
#include "platform/value/Error.h"
#include "tests/books/import/ImportFolder.h"

namespace {

using books::ImportReport;
using books::test::Files;
using books::test::ImportFolder;
using books::test::SoundFiles;

// GB18030 as spreadsheets write it.
std::string InGb18030(std::string text) {
  const iconv_t handle = iconv_open("GB18030", "UTF-8");
  std::string bytes(text.size() * 4, '\0');
  char* from = text.data();
  std::size_t fromLeft = text.size();
  char* to = bytes.data();
  std::size_t toLeft = bytes.size();
  EXPECT_EQ(iconv(handle, &from, &fromLeft, &to, &toLeft), 0U);
  iconv_close(handle);
  bytes.resize(bytes.size() - toLeft);
  return bytes;
}

std::string WithCrLf(const std::string& text) {
  std::string out;
  for (const char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return out;
}

TEST(Import, FormsOfFiles) {
  struct Case {
    std::string name;
    std::function<std::string(const std::string&)> form;
  };
  const std::vector<Case> cases = {
      {"UTF-8", [](const std::string& text) { return text; }},
      {"UTF-8 with byte order mark", [](const std::string& text) { return "\xEF\xBB\xBF" + text; }},
      {"GB18030", InGb18030},
      {"CRLF", WithCrLf},
      {"GB18030 with CRLF", [](const std::string& text) { return InGb18030(WithCrLf(text)); }},
      {"no line end at the end", [](const std::string& text) { return text.substr(0, text.size() - 1); }},
      {"blank lines", [](const std::string& text) { return "\n \r\n" + text + "\n\n  \n"; }},
  };
  const std::string sql =
      "SELECT b.number, b.name, s.warehouse_id, s.quantity, s.amount FROM stock s JOIN base_data b ON b.id = "
      "s.item_id ORDER BY 1, 3";
  ImportFolder plain(SoundFiles());
  ASSERT_EQ(ImportFolder::ErrorsOf(plain.Import()), "");
  const std::string expected = plain.Rows(sql);
  EXPECT_NE(expected.find("酱油"), std::string::npos);
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Files files = SoundFiles();
    for (auto& [name, text] : files) text = each.form(text);
    ImportFolder folder(files);
    const ImportReport report = folder.Import();
    EXPECT_EQ(ImportFolder::ErrorsOf(report), "");
    EXPECT_TRUE(report.written);
    EXPECT_EQ(folder.Rows(sql), expected);
  }
}

// Stock by hand: 2 boxes of 12 bottles at 90 come in, that is 24 for 180; 6 go to the shop and 4 of them are
// sold at cost 7.5. Of two drills for 500 one is sold at its cost 250. The opening 10 bags for 45 lie still.
TEST(Import, StockOfTheSoundSet) {
  ImportFolder folder(SoundFiles());
  const ImportReport report = folder.Import();
  ASSERT_EQ(ImportFolder::ErrorsOf(report), "");
  EXPECT_TRUE(report.written);
  EXPECT_TRUE(report.created);
  EXPECT_EQ(folder.Violations(), "");
  EXPECT_EQ(folder.Rows("SELECT i.number, w.number, s.quantity / 1000000, s.amount / 10000 FROM stock s "
                        "JOIN base_data i ON i.id = s.item_id JOIN base_data w ON w.id = s.warehouse_id "
                        "WHERE s.quantity <> 0 ORDER BY 1, 2"),
            "01.001 01 18 135\n01.001 02 2 15\n01.002 01 10 45\n02 01 1 250\n");
  EXPECT_EQ(folder.Rows("SELECT delivered_quantity / 1000000 FROM order_entry"), "24\n");
  EXPECT_EQ(folder.Rows("SELECT number, state FROM serial ORDER BY number"), "S1 2\nS2 1\n");
  EXPECT_EQ(folder.Rows("SELECT expiry_date - production_date FROM batch"), "365\n");
  EXPECT_EQ(folder.Rows("SELECT b.number, p.number, b.level, b.detail FROM base_data b JOIN base_data p "
                        "ON p.id = b.parent_id ORDER BY 1"),
            "01.001 01 2 1\n01.001 01 2 1\n01.002 01 2 1\n");
}

TEST(Import, TheExampleIsSound) {
  ImportFolder folder;
  const auto examples = std::filesystem::path(TEST_SOURCE_DIR) / ".." / ".." / "examples" / "import";
  const ImportReport report = books::Import(folder.Book(), examples);
  EXPECT_EQ(ImportFolder::ErrorsOf(report), "");
  EXPECT_TRUE(report.written);
  EXPECT_EQ(folder.Violations(), "");
  // The salesman's bill waits for its audit, all others moved stock.
  EXPECT_EQ(folder.Rows("SELECT number FROM bill WHERE audited = 0"), "XS-0004\n");
}

TEST(Import, HeadingsInChineseAndInAnyOrder) {
  Files files = SoundFiles();
  files["warehouses.csv"] = "名称,仓库类型,代码\n中心仓,普通,01\n门店仓,,02\n赠品仓,赠品,09\n";
  files["customers.csv"] = "NAME,Number\n\"便利店, \"\"好又多\"\"\",01\n";
  ImportFolder folder(files);
  ASSERT_EQ(ImportFolder::ErrorsOf(folder.Import()), "");
  EXPECT_EQ(
      folder.Rows("SELECT number, type_code FROM warehouse w JOIN base_data b ON b.id = w.id ORDER BY 1"),
      "01 500\n02 500\n09 501\n");
  EXPECT_EQ(folder.Rows("SELECT name FROM base_data WHERE class_id = 1"), "便利店, \"好又多\"\n");
}

TEST(Import, AgainChangesNothing) {
  const std::string everything =
      "SELECT 'm', item_id, date, bill_id, direction, line, quantity, amount FROM movement UNION ALL "
      "SELECT 'b', bill_id, line, item_id, warehouse_id, unit_quantity, quantity, amount FROM bill_entry "
      "UNION "
      "ALL SELECT 'd', id, class_id, parent_id, number, name, level, detail FROM base_data UNION ALL "
      "SELECT 'o', order_id, line, item_id, quantity, delivered_quantity, price, amount FROM order_entry "
      "UNION "
      "ALL SELECT 's', item_id, warehouse_id, batch_id, aux_id, quantity, amount, 0 FROM stock";
  ImportFolder folder(SoundFiles());
  ASSERT_TRUE(folder.Import().written);
  const std::string before = folder.Rows(everything);
  const ImportReport again = folder.Import();
  EXPECT_EQ(ImportFolder::ErrorsOf(again), "");
  EXPECT_TRUE(again.written);
  EXPECT_FALSE(again.created);
  for (const books::ImportCount& count : again.counts) {
    EXPECT_EQ(count.added, 0) << count.file;
    EXPECT_EQ(count.known, count.rows) << count.file;
  }
  EXPECT_EQ(folder.Rows(everything), before);
}

TEST(Import, MoreData) {
  Files files = SoundFiles();
  ImportFolder folder(files);
  ASSERT_TRUE(folder.Import().written);
  // A back-dated receipt, an unaudited bill that is audited later, and base data with another name.
  files["bills.csv"] += "采购收货,R0,2026-09-02,01.001,\n";
  files["bill_entries.csv"] += "采购收货,R0,1,01.002,01,,,,10,,75,,,\n";
  files["customers.csv"] = "number,name\n01,便利店\n02,超市\n";
  files["warehouses.csv"] = "number,name\n01,总仓\n";
  folder.Write(files);
  const ImportReport report = folder.Import();
  ASSERT_EQ(ImportFolder::ErrorsOf(report), "");
  EXPECT_EQ(folder.Violations(), "");
  EXPECT_EQ(folder.Rows("SELECT quantity / 1000000, amount / 10000 FROM stock s JOIN base_data b ON b.id = "
                        "s.item_id WHERE b.number = '01.002'"),
            "20 120\n");
  EXPECT_EQ(folder.Rows("SELECT name FROM base_data WHERE class_id IN (1, 5) ORDER BY class_id, number"),
            "便利店\n超市\n总仓\n门店仓\n赠品仓\n");
}

TEST(Import, AuditComesLater) {
  Files files = SoundFiles();
  const std::string bills = files["bills.csv"];
  files["bills.csv"] =
      "class,number,date,supplier,customer,audited\n采购收货,R1,2026-09-08,01.001,,0\n调拨,T1,2026-09-12,,,"
      "0\n"
      "1030002,S1,2026-10-05,,01,0\n";
  ImportFolder folder(files);
  ASSERT_EQ(ImportFolder::ErrorsOf(folder.Import()), "");
  EXPECT_EQ(folder.Rows("SELECT COUNT(*) FROM movement"), "0\n");
  files["bills.csv"] = bills;
  folder.Write(files);
  ASSERT_EQ(ImportFolder::ErrorsOf(folder.Import()), "");
  EXPECT_EQ(folder.Rows("SELECT COUNT(*) FROM movement"), "6\n");
  EXPECT_EQ(folder.Violations(), "");
}

TEST(Import, DryRunWritesNothing) {
  ImportFolder folder(SoundFiles());
  const ImportReport fresh = folder.Import(true);
  EXPECT_EQ(ImportFolder::ErrorsOf(fresh), "");
  EXPECT_FALSE(fresh.written);
  EXPECT_FALSE(fresh.counts.empty());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Book().parent_path()),
                          std::filesystem::directory_iterator()),
            1);  // the folder of CSV files alone
  ASSERT_TRUE(folder.Import().written);
  Files files = SoundFiles();
  files["customers.csv"] += "02,超市\n";
  folder.Write(files);
  EXPECT_FALSE(folder.Import(true).written);
  EXPECT_EQ(folder.Rows("SELECT COUNT(*) FROM base_data WHERE class_id = 1"), "1\n");
}

TEST(Import, PeriodsAreClosedUpToTheCurrentOne) {
  Files files = SoundFiles();
  files["profile.csv"] += "IC,CurrentYear,2026\nIC,CurrentPeriod,11\nGeneral,CanQuickCalculate,1\n";
  ImportFolder folder(files);
  ASSERT_EQ(ImportFolder::ErrorsOf(folder.Import()), "");
  EXPECT_EQ(folder.Rows("SELECT value FROM system_profile WHERE key = 'CurrentPeriod'"), "11\n");
  EXPECT_EQ(folder.Violations(), "");
  files["bills.csv"] += "采购收货,R9,2026-09-30,01.001,\n";
  files["bill_entries.csv"] += "采购收货,R9,1,01.002,01,,,,10,,75,,,\n";
  folder.Write(files);
  EXPECT_EQ(
      ImportFolder::ErrorsOf(folder.Import()),
      "bills.csv:5: date '2026-09-30': the period of this day is closed; date it later, or open the period "
      "again first\n");
}

TEST(Import, Raises) {
  ImportFolder folder(SoundFiles());
  EXPECT_THROW(books::Import(folder.Book(), folder.Folder() / "nowhere"), platform::Error);
  std::ofstream(folder.Book()) << "this is no database";
  EXPECT_THROW(folder.Import(), platform::Error);
}

}  // namespace
