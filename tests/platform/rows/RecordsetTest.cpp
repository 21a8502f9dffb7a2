// The cursor, adding and changing rows, and the late-bound side.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Recordset.h"
#include "tests/platform/Raised.h"
#include "tests/platform/rows/Items.h"

namespace platform {
namespace {

TEST(RecordsetTest, Moves) {
  const ActionCase cases[] = {
      {"begins on the first row", [](Recordset&) {}, "1"},
      {"next", [](Recordset& rs) { rs.MoveNext(); }, "2"},
      {"last", [](Recordset& rs) { rs.MoveLast(); }, "3"},
      {"next past the last",
       [](Recordset& rs) {
         rs.MoveLast();
         rs.MoveNext();
       },
       "end"},
      {"back from the end",
       [](Recordset& rs) {
         rs.MoveLast();
         rs.MoveNext();
         rs.MovePrevious();
       },
       "3"},
      {"previous past the first", [](Recordset& rs) { rs.MovePrevious(); }, "beginning"},
      {"forward from the beginning",
       [](Recordset& rs) {
         rs.MovePrevious();
         rs.MoveNext();
       },
       "1"},
      {"first from the end",
       [](Recordset& rs) {
         rs.Move(9);
         rs.MoveFirst();
       },
       "1"},
      {"first from the beginning",
       [](Recordset& rs) {
         rs.Move(-9);
         rs.MoveFirst();
       },
       "1"},
      {"two on", [](Recordset& rs) { rs.Move(2); }, "3"},
      {"exactly to the end", [](Recordset& rs) { rs.Move(3); }, "end"},
      {"far past the end", [](Recordset& rs) { rs.Move(2147483647); }, "end"},
      {"far past the beginning", [](Recordset& rs) { rs.Move(-2147483647 - 1); }, "beginning"},
      {"back from the end by two",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Move(-2);
       },
       "2"},
      {"from the end to the beginning",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Move(-4);
       },
       "beginning"},
      {"by none",
       [](Recordset& rs) {
         rs.Move(1);
         rs.Move(0);
       },
       "2"},
      {"to a position", [](Recordset& rs) { rs.SetAbsolutePosition(3); }, "3"},
      {"to a position from the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.SetAbsolutePosition(1);
       },
       "1"},
      {"back to a bookmark",
       [](Recordset& rs) {
         rs.MoveNext();
         const Variant bookmark = rs.Bookmark();
         rs.Move(5);
         rs.SetBookmark(bookmark);
       },
       "2"},
  };
  for (const ActionCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut", "screw"});
    row.run(*items);
    EXPECT_THAT(Short(*items), testing::EndsWith("(" + row.picture + " of 3)"));
    EXPECT_EQ(items->AtEnd(), row.picture == "end");
    EXPECT_EQ(items->AtBeginning(), row.picture == "beginning");
    const bool onRow = !items->AtEnd() && !items->AtBeginning();
    EXPECT_EQ(items->AbsolutePosition(), onRow ? std::stoi(row.picture) : row.picture == "end" ? -1 : 0);
    if (onRow) {
      EXPECT_EQ(ToText(items->Value("fitemid")), row.picture);
    }
  }
}

TEST(RecordsetTest, MovesThatAreRefusedLeaveTheCursor) {
  const RefusedCase cases[] = {
      {"next at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.MoveNext();
       }},
      {"previous at the beginning",
       [](Recordset& rs) {
         rs.Move(-1);
         rs.MovePrevious();
       }},
      {"read at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Value("FName");
       }},
      {"read at the beginning",
       [](Recordset& rs) {
         rs.Move(-1);
         rs.Value(1);
       }},
      {"write at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.SetValue("FName", "x");
       }},
      {"write a text at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.SetText(1, "x");
       }},
      {"bookmark at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Bookmark();
       }},
      {"update at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Update();
       }},
      {"find at the end",
       [](Recordset& rs) {
         rs.Move(3);
         rs.Find("FItemID=1");
       }},
      {"position 0", [](Recordset& rs) { rs.SetAbsolutePosition(0); }, ErrorNumber::kBadArgument},
      {"a position too far", [](Recordset& rs) { rs.SetAbsolutePosition(4); }, ErrorNumber::kBadArgument},
      {"a bookmark of no row", [](Recordset& rs) { rs.SetBookmark(4); }, ErrorNumber::kBadArgument},
      {"a bookmark before the first", [](Recordset& rs) { rs.SetBookmark(0); }, ErrorNumber::kBadArgument},
      {"a bookmark that is none", [](Recordset& rs) { rs.SetBookmark("x"); }, ErrorNumber::kBadArgument},
      {"unknown field", [](Recordset& rs) { rs.Value("FNix"); }, ErrorNumber::kUnknownField},
      {"unknown column", [](Recordset& rs) { rs.Value(2); }, ErrorNumber::kUnknownField},
      {"write to an unknown field", [](Recordset& rs) { rs.SetValue("FNix", 1); },
       ErrorNumber::kUnknownField},
      {"write to an unknown column", [](Recordset& rs) { rs.SetInteger(2, 1); }, ErrorNumber::kUnknownField},
      {"one more field", [](Recordset& rs) { rs.AppendField("F", FieldType::kText); },
       ErrorNumber::kInvalidCall},
      {"open again", [](Recordset& rs) { rs.Open(); }, ErrorNumber::kInvalidCall},
  };
  for (const RefusedCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut", "screw"});
    EXPECT_EQ(Raised([&] { row.run(*items); }).Number(), row.number);
    const std::string expected = row.name.ends_with("end")         ? "end"
                                 : row.name.ends_with("beginning") ? "beginning"
                                                                   : "1";
    EXPECT_THAT(Short(*items), testing::EndsWith("(" + expected + " of 3)"));
  }
  EXPECT_EQ(Raised([] { Items({})->FieldIndex("FNix"); }).Description(), "the recordset has no field FNix");
}

TEST(RecordsetTest, WithoutRowsItIsAtBothEnds) {
  const Ref<Recordset> items = Items({});
  EXPECT_TRUE(items->AtEnd());
  EXPECT_TRUE(items->AtBeginning());
  EXPECT_EQ(items->RecordCount(), 0);
  EXPECT_EQ(items->AbsolutePosition(), -1);
  EXPECT_EQ(Picture(*items), "FItemID integer | FName text(10)\nposition empty of 0\n");
  const RefusedCase cases[] = {
      {"first", [](Recordset& rs) { rs.MoveFirst(); }},
      {"last", [](Recordset& rs) { rs.MoveLast(); }},
      {"next", [](Recordset& rs) { rs.MoveNext(); }},
      {"previous", [](Recordset& rs) { rs.MovePrevious(); }},
      {"by none", [](Recordset& rs) { rs.Move(0); }},
      {"read", [](Recordset& rs) { rs.Value(0); }},
      {"find", [](Recordset& rs) { rs.Find("FItemID=1"); }},
      {"update", [](Recordset& rs) { rs.Update(); }},
      {"row 0", [](Recordset& rs) { rs.TextAt(1, 0); }},
  };
  for (const RefusedCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Raised([&] { row.run(*items); }).Number(), row.number);
  }
}

TEST(RecordsetTest, Adding) {
  const ActionCase cases[] = {
      {"a new row becomes current",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetValue("FITEMID", 7);
         rs.SetValue(1, "washer");
         rs.Update();
       },
       "1 bolt, 2 nut, >7 washer (3 of 3)"},
      {"a field that is not set is null",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetInteger(0, 7);
         rs.Update();
       },
       "1 bolt, 2 nut, >7 null (3 of 3)"},
      {"until the update it does not count",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetInteger(0, 7);
       },
       "1 bolt, 2 nut (adding of 2)"},
      {"dropped, the cursor where it was",
       [](Recordset& rs) {
         rs.MoveNext();
         rs.AddNew();
         rs.SetInteger(0, 7);
         rs.CancelUpdate();
       },
       "1 bolt, >2 nut (2 of 2)"},
      {"what was dropped leaves no trace",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetText(1, "gone");
         rs.CancelUpdate();
         rs.AddNew();
         rs.SetInteger(0, 7);
         rs.Update();
       },
       "1 bolt, 2 nut, >7 null (3 of 3)"},
      {"adding again takes over",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetInteger(0, 7);
         rs.AddNew();
         rs.SetInteger(0, 8);
         rs.Update();
       },
       "1 bolt, 2 nut, 7 null, >8 null (4 of 4)"},
      {"moving takes over, from the new row",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetInteger(0, 7);
         rs.MovePrevious();
       },
       "1 bolt, >2 nut, 7 null (2 of 3)"},
      {"what is being added can be read",
       [](Recordset& rs) {
         rs.AddNew();
         rs.SetInteger(0, 7);
         EXPECT_EQ(rs.Value("FItemID"), Variant(7));
         EXPECT_EQ(rs.Value("FName"), Variant(Null{}));
         EXPECT_FALSE(rs.AtEnd());
         rs.SetValue("FName", ToText(rs.Value("FItemID")) + "x");
         rs.Update();
       },
       "1 bolt, 2 nut, >7 7x (3 of 3)"},
      {"an update with nothing written", [](Recordset& rs) { rs.Update(); }, ">1 bolt, 2 nut (1 of 2)"},
  };
  for (const ActionCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut"});
    row.run(*items);
    EXPECT_EQ(Short(*items), row.picture);
  }
}

TEST(RecordsetTest, ChangingTheCurrentRow) {
  const ActionCase cases[] = {
      {"shows at once", [](Recordset& rs) { rs.SetValue("FName", "gear"); }, ">1 gear, 2 nut (1 of 2)"},
      {"to null", [](Recordset& rs) { rs.SetValue("FName", Null{}); }, ">1 null, 2 nut (1 of 2)"},
      {"to null by type", [](Recordset& rs) { rs.SetNull(1); }, ">1 null, 2 nut (1 of 2)"},
      {"taken back",
       [](Recordset& rs) {
         rs.SetValue("FName", "gear");
         rs.SetValue("FName", "wheel");
         rs.SetInteger(0, 9);
         rs.CancelUpdate();
       },
       ">1 bolt, 2 nut (1 of 2)"},
      {"not taken back after an update",
       [](Recordset& rs) {
         rs.SetValue("FName", "gear");
         rs.Update();
         rs.SetInteger(0, 9);
         rs.CancelUpdate();
       },
       ">1 gear, 2 nut (1 of 2)"},
      {"not taken back after a move",
       [](Recordset& rs) {
         rs.SetValue("FName", "gear");
         rs.MoveNext();
         rs.CancelUpdate();
       },
       "1 gear, >2 nut (2 of 2)"},
  };
  for (const ActionCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> items = Items({"bolt", "nut"});
    row.run(*items);
    EXPECT_EQ(Short(*items), row.picture);
  }
}

TEST(RecordsetTest, ClosedEverythingRaises) {
  const RefusedCase cases[] = {
      {"EOF", [](Recordset& rs) { rs.AtEnd(); }},
      {"BOF", [](Recordset& rs) { rs.AtBeginning(); }},
      {"RecordCount", [](Recordset& rs) { rs.RecordCount(); }},
      {"MoveFirst", [](Recordset& rs) { rs.MoveFirst(); }},
      {"MoveLast", [](Recordset& rs) { rs.MoveLast(); }},
      {"MoveNext", [](Recordset& rs) { rs.MoveNext(); }},
      {"MovePrevious", [](Recordset& rs) { rs.MovePrevious(); }},
      {"Move", [](Recordset& rs) { rs.Move(1); }},
      {"AbsolutePosition", [](Recordset& rs) { rs.AbsolutePosition(); }},
      {"SetAbsolutePosition", [](Recordset& rs) { rs.SetAbsolutePosition(1); }},
      {"Bookmark", [](Recordset& rs) { rs.Bookmark(); }},
      {"SetBookmark", [](Recordset& rs) { rs.SetBookmark(1); }},
      {"Find", [](Recordset& rs) { rs.Find("FItemID=1"); }},
      {"Filter", [](Recordset& rs) { rs.Filter(); }},
      {"SetFilter", [](Recordset& rs) { rs.SetFilter(""); }},
      {"AddNew", [](Recordset& rs) { rs.AddNew(); }},
      {"Update", [](Recordset& rs) { rs.Update(); }},
      {"CancelUpdate", [](Recordset& rs) { rs.CancelUpdate(); }},
      {"Clone", [](Recordset& rs) { rs.Clone(); }},
      {"Value", [](Recordset& rs) { rs.Value("FItemID"); }},
      {"Value by column", [](Recordset& rs) { rs.Value(0); }},
      {"SetValue", [](Recordset& rs) { rs.SetValue(0, 1); }},
      {"SetText", [](Recordset& rs) { rs.SetText(1, "x"); }},
      {"TextAt", [](Recordset& rs) { rs.TextAt(1, 0); }},
      {"TruncateTo", [](Recordset& rs) { rs.TruncateTo(0); }},
      {"RowAppender", [](Recordset& rs) { const RowAppender rows(rs); }},
  };
  const RefusedCase onlyClosed[] = {
      {"Close", [](Recordset& rs) { rs.Close(); }},
      {"Open", [](Recordset& rs) { rs.Open(); }},
      {"AppendField", [](Recordset& rs) { rs.AppendField("F", FieldType::kText); }},
      {"FieldCount", [](Recordset& rs) { rs.FieldCount(); }},
      {"FieldName", [](Recordset& rs) { rs.FieldName(0); }},
      {"FieldIndex", [](Recordset& rs) { rs.FieldIndex("FItemID"); }},
  };
  auto refused = [](Recordset& recordset, const RefusedCase& row) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Raised([&] { row.run(recordset); }).Number(), ErrorNumber::kObjectClosed);
  };
  const Ref<Recordset> items = Items({"bolt"});
  items->AddNew();
  items->Close();
  EXPECT_FALSE(items->IsOpen());
  EXPECT_EQ(Picture(*items), "not open\n");
  const Ref<Recordset> building = MakeRef<Recordset>();
  building->AppendField("FItemID", FieldType::kInt32);
  building->AppendField("FName", FieldType::kText);
  for (const RefusedCase& row : cases) {
    refused(*items, row);
    refused(*building, row);
  }
  for (const RefusedCase& row : onlyClosed) refused(*items, row);
  EXPECT_EQ(building->FieldCount(), 2);
}

TEST(RecordsetTest, FieldsThatCannotBeAppended) {
  const Ref<Recordset> recordset = MakeRef<Recordset>();
  EXPECT_EQ(Raised([&] { recordset->Open(); }).Number(), ErrorNumber::kInvalidCall);
  recordset->AppendField("FName", FieldType::kText);
  EXPECT_EQ(Raised([&] { recordset->AppendField("fname", FieldType::kText); }).Number(),
            ErrorNumber::kKeyExists);
  EXPECT_EQ(Raised([&] { recordset->AppendField("", FieldType::kText); }).Number(),
            ErrorNumber::kBadArgument);
  EXPECT_EQ(recordset->FieldCount(), 1);
}

TEST(RecordsetTest, LateBound) {
  const Ref<Object> recordset = MakeRef<Recordset>();
  recordset->Call("AppendField", "FItemID", "integer");
  recordset->Call("AppendField", "FName", "Wide Text", 20);
  recordset->Call("Open");
  EXPECT_EQ(recordset->Get("FieldCount"), Variant(2));
  EXPECT_EQ(recordset->Get("FieldName", 1), Variant("FName"));
  EXPECT_EQ(recordset->Get("FieldType", "FNAME"), Variant("wide text"));
  EXPECT_EQ(recordset->Get("FieldSize", 1), Variant(20));
  for (const std::string name : {"bolt", "nut", "screw"}) {
    recordset->Call("AddNew");
    recordset->Put("Value", 0, recordset->Get("RecordCount"));
    recordset->Put("Value", "fname", name);
    recordset->Call("Update");
  }
  EXPECT_EQ(recordset->Get("AbsolutePosition"), Variant(3));
  recordset->Call("MoveFirst");
  const Variant bookmark = recordset->Get("Bookmark");
  recordset->Call("Find", "FName='nut'");
  EXPECT_EQ(recordset->Get("Value", "FItemID"), Variant(1));
  recordset->Call("MoveNext");
  EXPECT_EQ(recordset->Call("Value", 1), Variant("screw"));
  recordset->Call("Move", 1);
  EXPECT_EQ(recordset->Get("EOF"), Variant(true));
  recordset->Call("MovePrevious");
  EXPECT_EQ(recordset->Get("EOF"), Variant(false));
  recordset->Put("Bookmark", bookmark);
  recordset->Call("MovePrevious");
  EXPECT_EQ(recordset->Get("BOF"), Variant(true));
  recordset->Put("AbsolutePosition", 2);
  recordset->Put("Filter", "FItemID>0");
  EXPECT_EQ(recordset->Get("Filter"), Variant("FItemID>0"));
  const Variant clone = recordset->Call("Clone");
  EXPECT_EQ(clone.AsObject().Get("RecordCount"), Variant(3));
  EXPECT_EQ(recordset->Get("RecordCount"), Variant(2));
  recordset->Call("MoveLast");
  recordset->Put("Value", 1, "x");
  recordset->Call("CancelUpdate");
  EXPECT_EQ(recordset->Get("Value", 1), Variant("screw"));
  recordset->Call("Close");
  EXPECT_EQ(Raised([&] { recordset->Get("EOF"); }).Number(), ErrorNumber::kObjectClosed);

  const Ref<Object> other = MakeRef<Recordset>();
  EXPECT_EQ(Raised([&] { other->Call("AppendField", "F", "varchar"); }).Number(), ErrorNumber::kBadArgument);
  EXPECT_EQ(Raised([&] { other->Call("AppendField", "F", "text", -1); }).Number(), ErrorNumber::kBadArgument);
  for (const Variant& field : {Variant(2), Variant(-1), Variant("FNix")}) {
    SCOPED_TRACE(ToText(field));
    EXPECT_EQ(Raised([&] { clone.AsObject().Get("Value", field); }).Number(), ErrorNumber::kUnknownField);
    EXPECT_EQ(Raised([&] { clone.AsObject().Get("FieldName", field); }).Number(), ErrorNumber::kUnknownField);
  }
}

TEST(PictureTest, ShowsColumnsRowsCursorAndFilter) {
  const Ref<Recordset> items = Items({"bolt", "null"});
  items->MoveNext();
  EXPECT_EQ(Picture(*items),
            "FItemID integer | FName text(10)\n"
            "  1 | 'bolt'\n"
            "> 2 | null\n"
            "position 2 of 2\n");
  items->SetFilter("FItemID<2");
  items->MoveNext();
  EXPECT_EQ(Picture(*items),
            "FItemID integer | FName text(10)\n"
            "  1 | 'bolt'\n"
            "filter FItemID<2\n"
            "position end of 1\n");
}

}  // namespace
}  // namespace platform
