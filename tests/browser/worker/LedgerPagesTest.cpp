// All pages of a ledger as the session reads them, and the item list that a report walks.
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "browser/worker/ItemList.h"
#include "browser/worker/LedgerPages.h"
#include "platform/value/Convert.h"
#include "platform/value/Variant.h"

namespace browser {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

// Row kinds by FID.
constexpr std::int32_t kOpening = -1;
constexpr std::int32_t kPeriodTotal = -2;
constexpr std::int32_t kClosing = -3;
constexpr std::int32_t kMovement = 77;

struct Row {
  std::int32_t kind;
  double in = 0;
  double out = 0;
  double balance = 0;  // every unit is worth 2.50
  const char* title = "商品名称：螺钉(01.01)";
};

Currency Worth(double quantity) { return Currency::FromUnits(static_cast<std::int64_t>(quantity * 25000)); }

LedgerPages PagesOf(const std::vector<Row>& rows, const std::vector<std::int32_t>& ends) {
  const Ref<Recordset> all = MakeRef<Recordset>();
  all->AppendField("FID", FieldType::kInt32);
  all->AppendField("FSumSort", FieldType::kInt32);
  for (const char* group : {"In", "Out", "Bal"}) {
    all->AppendField(std::string("F") + group + "Qty", FieldType::kDouble);
    all->AppendField(std::string("F") + group + "Amount", FieldType::kCurrency);
  }
  all->AppendField("FYear", FieldType::kInt16);
  all->AppendField("FPeriod", FieldType::kInt16);
  all->AppendField("FTitle1", FieldType::kText, 355);
  all->AppendField("FTitle2", FieldType::kText, 355);
  all->Open();
  std::int32_t period = 0;
  std::int32_t before = kClosing;
  for (const Row& row : rows) {
    if (row.kind == kOpening && before != kOpening) ++period;
    before = row.kind;
    all->AddNew();
    all->SetInteger(0, row.kind);
    all->SetInteger(1, row.kind == kMovement ? 0 : 101);
    std::size_t column = 2;
    for (const double quantity : {row.in, row.out, row.balance}) {
      all->SetDouble(column++, quantity);
      all->SetCurrency(column++, Worth(quantity));
    }
    all->SetInteger(column++, 2026);
    all->SetInteger(column++, period);
    all->SetText(column, row.title);
    all->Update();
  }
  const Ref<Recordset> breaks = MakeRef<Recordset>();
  breaks->AppendField("FBreakRow", FieldType::kInt32);
  breaks->Open();
  for (const std::int32_t end : ends) {
    breaks->AddNew();
    breaks->SetInteger(0, end);
    breaks->Update();
  }
  return {all, *breaks, MakeRef<Vector>()};
}

const std::vector<Row>& TwoItems() {
  static const std::vector<Row> kRows = {
      {kOpening, 0, 0, 10},
      {kOpening, 0, 0, 4},
      {kMovement, 5, 0, 19},
      {kMovement, 0, 3, 16},
      {kPeriodTotal, 5, 3, 0},
      {kClosing, 0, 0, 16},
      {kOpening, 0, 0, 16},
      {kMovement, 0, 6, 10},
      {kClosing, 0, 0, 10},
      {kOpening, 0, 0, 1, "商品名称：螺母M6(01.02)"},
      {kMovement, 2, 0, 3, "商品名称：螺母M6(01.02)"},
  };
  return kRows;
}

std::string Told(const std::optional<exports::LedgerTotals>& totals) {
  if (!totals) return "none";
  auto text = [&](const char* field) { return platform::ToText(totals->Of(field)); };
  return "in " + text("FInQty") + "/" + text("FInAmount") + " out " + text("FOutQty") + "/" +
         text("FOutAmount") + " balance " + text("FBalQty") + "/" + text("FBalAmount");
}

TEST(LedgerPages, CarryReceiptsAndIssuesOfThePeriodAndTheBalance) {
  const LedgerPages pages = PagesOf(TwoItems(), {9, 11});
  struct Case {
    const char* name;
    std::size_t page;
    std::size_t row;
    std::string carried;
  };
  const std::vector<Case> cases = {
      {"between opening rows", 0, 1, "in 0/0 out 0/0 balance 10/25"},
      {"behind the opening rows", 0, 2, "in 0/0 out 0/0 balance 14/35"},
      {"behind a receipt", 0, 3, "in 5/12.5 out 0/0 balance 19/47.5"},
      {"behind an issue", 0, 4, "in 5/12.5 out 3/7.5 balance 16/40"},
      {"a total and a closing row add nothing", 0, 6, "in 5/12.5 out 3/7.5 balance 16/40"},
      {"a new period begins anew", 0, 7, "in 0/0 out 0/0 balance 16/40"},
      {"in the second period", 0, 8, "in 0/0 out 6/15 balance 10/25"},
      {"another item knows nothing of the first", 1, 10, "in 0/0 out 0/0 balance 1/2.5"},
      {"the beginning of a page", 0, 0, "none"},
      {"the end of a page", 0, 9, "none"},
      {"the beginning of the next", 1, 9, "none"},
      {"the end of all", 1, 11, "none"},
  };
  for (const Case& one : cases) EXPECT_EQ(Told(pages.CarriedTo(one.page, one.row)), one.carried) << one.name;
}

TEST(LedgerPages, KnowTheirRowsAndTitles) {
  const LedgerPages pages = PagesOf(TwoItems(), {9, 11});
  ASSERT_EQ(pages.Items().Count(), 2U);
  EXPECT_EQ(pages.Items().Begin(0), 0U);
  EXPECT_EQ(pages.Items().End(0), 9U);
  EXPECT_EQ(pages.Items().Begin(1), 9U);
  EXPECT_EQ(pages.Items().End(1), 11U);
  EXPECT_TRUE(pages.IsSummary(0));
  EXPECT_FALSE(pages.IsSummary(2));
  EXPECT_EQ(pages.Items().TitleLines(1), std::vector<std::string>{"商品名称：螺母M6(01.02)"})
      << "empty lines are left out";
  EXPECT_EQ(PagesOf({}, {}).Items().Count(), 0U);
}

TEST(LedgerPages, FindTheNextPageOfAnItem) {
  const LedgerPages pages = PagesOf(TwoItems(), {9, 11});
  struct Case {
    const char* name;
    const char* text;
    std::size_t start;
    int page;
  };
  const std::vector<Case> cases = {
      {"a number", "01.02", 0, 1},         {"a name", "螺母", 0, 1},
      {"letters of any case", "m6", 0, 1}, {"the next one", "螺", 1, 1},
      {"round the end", "01.01", 1, 0},    {"a number in full goes before", "01.01", 0, 0},
      {"nothing", "01.03", 0, -1},         {"an empty text", "", 0, -1},
  };
  for (const Case& one : cases) {
    const auto found = pages.Find(one.text, one.start);
    EXPECT_EQ(found ? static_cast<int>(*found) : -1, one.page) << one.name;
  }
}

class Data final : public platform::Object {
 public:
  explicit Data(Ref<Recordset> items) : items_(std::move(items)) {}
  std::string ClassName() const override { return "Test.Data"; }
  Variant Invoke(std::string_view member, platform::CallKind /*kind*/,
                 std::span<Variant> /*arguments*/) override {
    return member == "GetItems" ? Variant(items_) : Variant(7);
  }

 private:
  Ref<Recordset> items_;
};

TEST(ItemList, IsTheOneThatTheReportGoesOnWith) {
  const Ref<Recordset> items = MakeRef<Recordset>();
  items->AppendField("FNumber", FieldType::kText, 50);
  items->AppendField("FName", FieldType::kText, 50);
  items->Open();
  Ref<Recordset> taken;
  const Ref<platform::Object> data =
      WatchItems(MakeRef<Data>(items), [&](const Ref<Recordset>& made) { taken = made; });
  EXPECT_EQ(data->ClassName(), "Test.Data");
  EXPECT_EQ(platform::ToInt32(data->Call("GetPerioddata")), 7);
  EXPECT_FALSE(taken) << "only the list is told";
  data->Call("GetItems");
  EXPECT_EQ(PlaceOf(taken).count, 0);
  EXPECT_EQ(PlaceOf(taken).position, 0);
  for (const char* number : {"01", "02", "03"}) {
    items->AddNew();
    items->SetText(0, number);
    items->SetText(1, std::string("商品") + number);
    items->Update();
  }
  items->SetAbsolutePosition(2);
  EXPECT_EQ(PlaceOf(taken).position, 2) << "its cursor is the report's";
  EXPECT_EQ(PlaceOf(taken).count, 3);
  EXPECT_EQ(PlaceOf(taken).number, "02");
  EXPECT_EQ(PlaceOf(taken).name, "商品02");
  items->MoveLast();
  items->MoveNext();
  EXPECT_EQ(PlaceOf(taken).position, 0) << "past the end";
  EXPECT_EQ(PlaceOf(nullptr).count, 0);
}

}  // namespace
}  // namespace browser
