// Finding, filtering, cloning and taking rows back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Recordset.h"
#include "tests/platform/Raised.h"
#include "tests/platform/rows/Items.h"

namespace platform {
namespace {

TEST(RecordsetViewTest, Finding) {
  const ActionCase cases[] = {
      {"the next hit", [](Recordset& rs) { rs.Find("FName='nut'"); }, "2"},
      {"the current row counts", [](Recordset& rs) { rs.Find("FName='bolt'"); }, "1"},
      {"unless it is skipped", [](Recordset& rs) { rs.Find("FName='bolt'", 1); }, "4"},
      {"forward only",
       [](Recordset& rs) {
         rs.MoveNext();
         rs.Find("FItemID=1");
       },
       "end"},
      {"no hit goes to the end", [](Recordset& rs) { rs.Find("FName='gear'"); }, "end"},
      {"from a bookmark",
       [](Recordset& rs) {
         rs.Move(9);
         rs.Find("FName='bolt'", std::nullopt, Variant(2));
       },
       "4"},
      {"from a bookmark with a skip", [](Recordset& rs) { rs.Find("FItemID>0", 1, Variant(2)); }, "3"},
      {"a skip past the last", [](Recordset& rs) { rs.Find("FItemID>0", 9); }, "end"},
      {"a skip backward",
       [](Recordset& rs) {
         rs.MoveLast();
         rs.Find("FItemID>0", -2);
       },
       "2"},
      {"the pattern", [](Recordset& rs) { rs.Find("FName like '%u%'"); }, "2"},
      {"takes over a new row first",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetText(1, "gear");
         rs.Find("FName='gear'");
       },
       "5"},
  };
  for (const ActionCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut", "null", "Bolt"});
    row.run(*items);
    EXPECT_THAT(Short(*items), testing::HasSubstr("(" + row.picture + " of "));
  }
  const RefusedCase refused[] = {
      {"two comparisons", [](Recordset& rs) { rs.Find("FItemID=1 AND FItemID=2"); },
       ErrorNumber::kBadArgument},
      {"no condition", [](Recordset& rs) { rs.Find(""); }, ErrorNumber::kBadArgument},
      {"a quote inside", [](Recordset& rs) { rs.Find("FName='it's'"); }, ErrorNumber::kBadArgument},
      {"unknown field", [](Recordset& rs) { rs.Find("FNix=1"); }, ErrorNumber::kUnknownField},
      {"before the first", [](Recordset& rs) { rs.Find("FItemID=1", -3); }, ErrorNumber::kBadArgument},
      {"a bookmark of no row", [](Recordset& rs) { rs.Find("FItemID=1", 0, Variant(9)); },
       ErrorNumber::kBadArgument},
  };
  for (const RefusedCase& row : refused) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut", "null", "Bolt"});
    items->MoveNext();
    EXPECT_EQ(Raised([&] { row.run(*items); }).Number(), row.number);
    EXPECT_EQ(items->AbsolutePosition(), 2);
  }
}

TEST(RecordsetViewTest, Filtering) {
  const ActionCase cases[] = {
      {"only what meets it, at the first",
       [](Recordset& rs) {
         rs.MoveLast();
         rs.SetFilter("FName='bolt'");
       },
       ">1 bolt, 4 Bolt (1 of 2)"},
      {"comparisons joined", [](Recordset& rs) { rs.SetFilter("FName='bolt' AND FItemID>1"); },
       ">4 Bolt (1 of 1)"},
      {"nothing meets it", [](Recordset& rs) { rs.SetFilter("FItemID=9"); }, "(empty of 0)"},
      {"moves see it",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.MoveNext();
       },
       "1 bolt, >4 Bolt (2 of 2)"},
      {"the end is its end",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.Move(2);
       },
       "1 bolt, 4 Bolt (end of 2)"},
      {"a bookmark stays good",
       [](Recordset& rs) {
         rs.MoveLast();
         const Variant bookmark = rs.Bookmark();
         rs.SetFilter("FName='bolt'");
         rs.SetBookmark(bookmark);
       },
       "1 bolt, >4 Bolt (2 of 2)"},
      {"find sees it",
       [](Recordset& rs) {
         rs.SetFilter("FItemID>1");
         rs.Find("FName='bolt'");
       },
       "2 nut, 3 null, >4 Bolt (3 of 3)"},
      {"taken off",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.MoveNext();
         rs.SetFilter("");
       },
       ">1 bolt, 2 nut, 3 null, 4 Bolt (1 of 4)"},
      {"blanks take it off too",
       [](Recordset& rs) {
         rs.SetFilter("FItemID=9");
         rs.SetFilter("  ");
       },
       ">1 bolt, 2 nut, 3 null, 4 Bolt (1 of 4)"},
      {"set again on another",
       [](Recordset& rs) {
         rs.SetFilter("FItemID=1");
         rs.SetFilter("FItemID=2");
       },
       ">2 nut (1 of 1)"},
      {"a row that is added stays visible",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.AddNew();
         rs.SetInteger(0, 5);
         rs.Update();
       },
       "1 bolt, 4 Bolt, >5 null (3 of 3)"},
      {"until the filter is set again",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.AddNew();
         rs.Update();
         rs.SetFilter(rs.Filter());
       },
       ">1 bolt, 4 Bolt (1 of 2)"},
      {"a row that is changed stays visible",
       [](Recordset& rs) {
         rs.SetFilter("FName='bolt'");
         rs.SetValue("FName", "gear");
       },
       ">1 gear, 4 Bolt (1 of 2)"},
  };
  for (const ActionCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut", "null", "Bolt"});
    row.run(*items);
    EXPECT_EQ(Short(*items), row.picture);
  }
  const Ref<Recordset> items = Items({"bolt", "nut", "null", "Bolt"});
  items->SetFilter("FName='bolt'");
  items->MoveNext();
  EXPECT_EQ(Raised([&] { items->SetFilter("FName="); }).Number(), ErrorNumber::kBadArgument);
  EXPECT_EQ(items->Filter(), "FName='bolt'");
  EXPECT_EQ(Short(*items), "1 bolt, >4 Bolt (2 of 2)") << "a refused filter changes nothing";
  EXPECT_EQ(Raised([&] { items->SetBookmark(2); }).Number(), ErrorNumber::kBadArgument);
}

TEST(RecordsetViewTest, ClonesShareRowsAndHaveTheirOwnCursor) {
  const Ref<Recordset> items = Items({"bolt", "nut"});
  items->SetFilter("FName='nut'");
  const Ref<Recordset> clone = items->Clone();
  EXPECT_EQ(Short(*clone), ">1 bolt, 2 nut (1 of 2)") << "a clone begins at the first row, without a filter";
  clone->MoveLast();
  clone->SetValue("FName", "gear");
  clone->SetFilter("FItemID>1");
  items->AddNew();
  items->SetInteger(0, 3);
  items->Update();
  EXPECT_EQ(Short(*items), "2 gear, >3 null (2 of 2)");
  EXPECT_EQ(Short(*clone), ">2 gear, 3 null (1 of 2)") << "rows that are added later meet the clone's filter";
  items->AddNew();
  items->SetInteger(0, 0);
  items->Update();
  EXPECT_EQ(clone->RecordCount(), 2);
  const Variant bookmark = clone->Bookmark();
  items->SetFilter("");
  items->SetBookmark(bookmark);
  EXPECT_EQ(items->Value(0), Variant(2)) << "a bookmark holds for all clones";
  items->Close();
  EXPECT_EQ(Short(*clone), ">2 gear, 3 null (1 of 2)") << "closing one leaves the others";
}

TEST(RecordsetViewTest, OneAddsAtATime) {
  const Ref<Recordset> items = Items({"bolt"});
  const Ref<Recordset> clone = items->Clone();
  items->AddNew();
  EXPECT_EQ(Raised([&] { clone->AddNew(); }).Number(), ErrorNumber::kInvalidCall);
  EXPECT_EQ(Raised([&] { const RowAppender rows(*clone); }).Number(), ErrorNumber::kInvalidCall);
  EXPECT_EQ(Raised([&] { clone->TruncateTo(0); }).Number(), ErrorNumber::kInvalidCall);
  EXPECT_FALSE(clone->IsAdding());
  items->Update();
  EXPECT_NO_THROW(clone->AddNew());
  EXPECT_EQ(Raised([&] { items->AddNew(); }).Number(), ErrorNumber::kInvalidCall);
  clone->Close();
  EXPECT_NO_THROW(items->AddNew()) << "closing drops the row that was being added";
  items->CancelUpdate();
  EXPECT_EQ(Short(*items), "1 bolt, >null null (2 of 2)");
}

TEST(RecordsetViewTest, TakingRowsBack) {
  const Ref<Recordset> items = Items({"a", "b", "a", "b", "a"});
  const Ref<Recordset> clone = items->Clone();
  clone->SetFilter("FName='a'");
  clone->MoveLast();
  items->MoveLast();
  items->TruncateTo(3);
  EXPECT_EQ(Short(*items), "1 a, 2 b, 3 a (end of 3)");
  EXPECT_EQ(Short(*clone), "1 a, 3 a (end of 2)");
  items->AddNew();
  items->SetText(1, "a");
  items->Update();
  EXPECT_EQ(Short(*items), "1 a, 2 b, 3 a, >null a (4 of 4)") << "a row in the place of a removed one is new";
  EXPECT_EQ(clone->RecordCount(), 3);
  items->TruncateTo(9);
  EXPECT_EQ(items->RecordCount(), 4);
  items->TruncateTo(0);
  EXPECT_EQ(Short(*items), "(empty of 0)");
  EXPECT_EQ(Short(*clone), "(empty of 0)");
}

// The rows that a slice shows, by the number in their only field.
std::string Shown(const Recordset& rows) {
  std::string text;
  for (std::size_t i = 0; i < rows.ViewCount(); ++i)
    text += std::to_string(rows.IntegerAt(0, rows.RowAt(i))) + " ";
  return text;
}

TEST(RecordsetSlice, ShowsItsRowsAloneWhateverIsFiltered) {
  const Ref<Recordset> all = MakeRef<Recordset>();
  all->AppendField("FNumber", FieldType::kInt32);
  all->Open();
  for (std::int32_t i = 0; i < 10; ++i) {
    all->AddNew();
    all->SetInteger(0, i);
    all->Update();
  }
  const Ref<Recordset> slice = all->Slice(3, 4);
  EXPECT_EQ(Shown(*slice), "3 4 5 6 ");
  EXPECT_EQ(slice->RecordCount(), 4);
  EXPECT_EQ(slice->Filter(), "");
  slice->SetFilter("FNumber>4");
  EXPECT_EQ(Shown(*slice), "5 6 ");
  slice->SetFilter("");
  EXPECT_EQ(Shown(*slice), "3 4 5 6 ");
  EXPECT_EQ(Shown(*slice->Clone()), "3 4 5 6 ");
  EXPECT_EQ(Shown(*slice->Slice(5, 10)), "5 6 ");
  EXPECT_EQ(Shown(*all->Slice(8, 10)), "8 9 ");
  EXPECT_TRUE(all->Slice(4, 0)->AtEnd());
  EXPECT_EQ(Shown(*all->Clone()), Shown(*all));
}

}  // namespace
}  // namespace platform
