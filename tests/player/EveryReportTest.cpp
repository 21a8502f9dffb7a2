// Every report of the component on a demo book, through all that a report browser does with it, for every
// application and industry type and for users who see everything, something and nothing.
#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "desk/FilterFiller.h"
#include "desk/HeadlessScreen.h"
#include "desk/Host.h"
#include "desk/ReportRows.h"
#include "desk/filter/FilterControl.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/ProcessStore.h"
#include "platform/rows/Vector.h"
#include "platform/system/Process.h"
#include "platform/value/Convert.h"
#include "player/BookBackend.h"

namespace {

using platform::Dictionary;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

constexpr std::int32_t kWarehouseType = 5;

// A clerk who takes each dialog as it comes, or turns it away.
class Clerk final : public desk::HeadlessScreen {
 public:
  void ShowModal(platform::Form& form) override {
    if (form.Role() == platform::FormRole::kProgress) return desk::RunProgressBox(form);
    ++dialogs;
    if (turnsAway) {
      form.Activate();
      return desk::CloseByUser(form);
    }
    filler_.Fill({});
    filler_.ShowModal(form);
  }
  platform::Answer Ask(const platform::MessageBox& box) override {
    said.push_back(box.text);
    return box.standard;
  }

  bool turnsAway = false;
  int dialogs = 0;
  std::vector<std::string> said;

 private:
  desk::FilterFiller filler_;
};

// A user who looks at the demo book.
struct Reader {
  const char* name;
  std::int32_t userId;
  bool seesWarehouses;
};
// 999 is a user whom nobody has given anything.
constexpr Reader kReaders[] = {{"all", 101, true}, {"some", 205, true}, {"none", 999, false}};

struct Setting {
  std::int32_t appType;
  std::int32_t industryType;
};
constexpr Setting kSettings[] = {{1, 0}, {2, 0}, {4, 0}, {1, 1}, {2, 1}, {4, 1}};

class EveryReport : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    file_ = std::filesystem::temp_directory_path() /
            ("every_report_" + std::to_string(platform::ProcessId()) + ".db");
    books::MakeDemoBook(file_, {.replace = true});
  }
  static void TearDownTestSuite() {
    for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(file_.string() + end);
  }

  static std::filesystem::path file_;
};
std::filesystem::path EveryReport::file_;

// One reader at the book, with the component around.
class Seat {
 public:
  Seat(const std::filesystem::path& file, std::int32_t userId)
      : book_(player::OpenBook(file.string(), [userId] { return userId; })),
        host_(*book_, witness_, clerk_, desk::DefaultComponentPath()) {
    host_.SetDataComponents([this](std::string_view id) { return book_->CreateComponent(id); });
  }

  static void Use(Setting setting) {
    platform::ProcessStore()->Set("AppType", setting.appType);
    platform::ProcessStore()->Set("IndustryType", setting.industryType);
  }
  Clerk& User() { return clerk_; }
  std::vector<platform::ComponentClass> Reports() const { return host_.Classes(); }

 private:
  std::unique_ptr<desk::DataBackend> book_;
  desk::Witness witness_;
  Clerk clerk_;
  desk::Host host_;
};

bool IsOk(Object& report) {
  const Ref<Dictionary> result = report.Get("Result").AsRef<Dictionary>();
  return result && platform::ToBoolean(result->Value("OK"));
}

std::string ErrorOf(Object& report) {
  const Ref<Dictionary> result = report.Get("Result").AsRef<Dictionary>();
  return result ? platform::ToText(result->Value("Error")) : "no result";
}

// Every column of the heading stands in the rows.
void ExpectColumns(Object& report, const Recordset& rows) {
  const Ref<Vector> header = report.Get("Header").AsRef<Vector>();
  ASSERT_TRUE(header);
  EXPECT_GT(header->Count(), 0);
  for (const Variant& item : header->Items()) {
    const Ref<Dictionary> column = item.AsRef<Dictionary>();
    ASSERT_TRUE(column);
    const std::string field = platform::ToText(column->Value("FColName"));
    EXPECT_TRUE(rows.FindField(field)) << field << " is headed, and the rows have not got it";
  }
}

// What a browser reads before it draws.
void ExpectDrawable(Object& report) {
  const Ref<Dictionary> property = report.Get("Property").AsRef<Dictionary>();
  ASSERT_TRUE(property);
  EXPECT_NE(platform::ToText(property->Value("Name")), "");
  EXPECT_TRUE(property->Exists("RptProperty"));
  const Ref<Vector> title = report.Get("Title").AsRef<Vector>();
  ASSERT_TRUE(title);
  for (const Variant& line : title->Items()) {
    const Ref<Dictionary> entry = line.AsRef<Dictionary>();
    ASSERT_TRUE(entry);
    EXPECT_NE(platform::ToText(entry->Value("FCaption")), "");
  }
  const Ref<Recordset> rows = desk::ReportRows(report.Get("rs"));
  ASSERT_TRUE(rows);
  ExpectColumns(report, *rows);
}

// The figures of the heading's columns that are not zero, as "field value".
std::vector<std::string> FiguresOf(Object& report, const Recordset& rows) {
  std::vector<std::string> figures;
  for (const Variant& item : report.Get("Header").AsRef<Vector>()->Items()) {
    const Ref<Dictionary> column = item.AsRef<Dictionary>();
    const std::string type = platform::ToText(column->Value("FColType"));
    if (type == "1" || type == "5") continue;
    const std::size_t field = rows.FieldIndex(platform::ToText(column->Value("FColName")));
    for (std::size_t i = 0; i < rows.ViewCount(); ++i) {
      const double figure = rows.DoubleAt(field, rows.RowAt(i));
      if (figure != 0) figures.push_back(rows.Fields()[field].name + " " + std::to_string(figure));
    }
  }
  return figures;
}

// All texts of the rows.
std::set<std::string> Texts(const Recordset& rows) {
  std::set<std::string> texts;
  for (std::size_t column = 0; column < rows.Fields().size(); ++column) {
    if (!platform::IsTextType(rows.Fields()[column].type)) continue;
    for (std::size_t i = 0; i < rows.ViewCount(); ++i) texts.emplace(rows.TextAt(column, rows.RowAt(i)));
  }
  return texts;
}

// Numbers and names of the warehouses that a user may not see. A name that an item or a partner may bear as
// well would be no sign, so all are those of the demo's warehouses.
std::vector<std::string> HiddenWarehouses(const std::filesystem::path& file, std::int32_t userId) {
  const books::Book book = books::Book::Open(file);
  std::set<std::int32_t> seen;
  if (book.NeedRight(userId)) {
    for (const books::BaseDataRow& row : book.BaseData({.dataType = kWarehouseType, .userId = userId})) {
      seen.insert(row.id);
    }
  }
  std::vector<std::string> hidden;
  for (const books::BaseDataRow& row : book.BaseData({.dataType = kWarehouseType})) {
    if (book.NeedRight(userId) && !seen.contains(row.id)) hidden.push_back(row.name);
  }
  return hidden;
}

// Linked bills are restricted by their partners, not by the warehouses that they moved.
bool IsRestrictedByWarehouse(const platform::ComponentClass& report) { return report.number != "10403"; }
// Serial numbers are a list without figures.
bool HasFigures(const platform::ComponentClass& report) { return report.number != "10418"; }

void GoThrough(const platform::ComponentClass& served, const Reader& reader, Clerk& clerk,
               const std::vector<std::string>& hidden) {
  const Ref<Object> report = platform::CreateObject(std::string(served.programmaticId));
  // Shown, confirmed as it stands, fetched, read.
  clerk.turnsAway = false;
  clerk.dialogs = 0;
  clerk.said.clear();
  report->Call("ShowFilter");
  EXPECT_EQ(clerk.dialogs, 1);
  EXPECT_TRUE(report->Get("Filter").AsRef<Dictionary>());
  report->Call("GetReportData");
  ASSERT_TRUE(IsOk(*report)) << ErrorOf(*report);
  EXPECT_EQ(ErrorOf(*report), "");
  EXPECT_TRUE(clerk.said.empty()) << clerk.said.front();
  ExpectDrawable(*report);
  const Ref<Recordset> rows = desk::ReportRows(report->Get("rs"));
  ASSERT_TRUE(rows);
  const std::set<std::string> texts = Texts(*rows);
  for (const std::string& name : hidden) EXPECT_FALSE(texts.contains(name)) << name << " is shown";
  if (hidden.empty()) {
    EXPECT_GT(rows->RecordCount(), 0);
    EXPECT_EQ(!FiguresOf(*report, *rows).empty(), HasFigures(served));
  } else if (!reader.seesWarehouses && IsRestrictedByWarehouse(served)) {
    EXPECT_THAT(FiguresOf(*report, *rows), testing::IsEmpty());
  }

  // The same once more.
  report->Call("Refresh");
  ASSERT_TRUE(IsOk(*report)) << ErrorOf(*report);
  const Ref<Recordset> again = desk::ReportRows(report->Get("rs"));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->RecordCount(), rows->RecordCount());
  EXPECT_EQ(Texts(*again), texts);

  // Turned away, the report does not fetch; taken again, it does.
  clerk.turnsAway = true;
  report->Call("ShowFilter");
  EXPECT_FALSE(IsOk(*report));
  clerk.turnsAway = false;
  report->Call("ShowFilter");
  report->Call("GetReportData");
  ASSERT_TRUE(IsOk(*report)) << ErrorOf(*report);
  ExpectDrawable(*report);
}

TEST_F(EveryReport, GoesThroughAllThatABrowserDoes) {
  for (const Reader& reader : kReaders) {
    const std::vector<std::string> hidden = HiddenWarehouses(file_, reader.userId);
    Seat seat(file_, reader.userId);
    const std::vector<platform::ComponentClass> reports = seat.Reports();
    EXPECT_EQ(reports.size(), 15U);
    for (const Setting setting : kSettings) {
      Seat::Use(setting);
      for (const platform::ComponentClass& report : reports) {
        SCOPED_TRACE(std::string(report.programmaticId) + " for " + reader.name + ", application type " +
                     std::to_string(setting.appType) + ", industry type " +
                     std::to_string(setting.industryType));
        try {
          GoThrough(report, reader, seat.User(), hidden);
        } catch (const platform::Error& error) {
          ADD_FAILURE() << error.Description();
        }
      }
    }
  }
}

}  // namespace
