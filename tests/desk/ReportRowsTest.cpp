// What reports hand back as rows, as one recordset.
#include <gtest/gtest.h>

#include "desk/ReportRows.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"

namespace {

using desk::ReportRows;
using platform::Dictionary;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

Ref<Recordset> TwoItems() {
  Ref<Recordset> rows = MakeRef<Recordset>();
  rows->AppendField("FItemNumber", FieldType::kText);
  rows->Open();
  for (const char* number : {"01", "02"}) {
    rows->AddNew();
    rows->SetValue(0, number);
    rows->Update();
  }
  return rows;
}

TEST(ReportRows, ARecordsetKeepsItsOwnCursor) {
  const Ref<Recordset> own = TwoItems();
  own->MoveLast();
  const Ref<Recordset> rows = ReportRows(Variant(own));
  ASSERT_TRUE(rows);
  rows->MoveFirst();
  EXPECT_EQ(rows->RecordCount(), 2);
  EXPECT_EQ(own->AbsolutePosition(), 2);
}

TEST(ReportRows, AListThatHoldsARecordsetIsThatRecordset) {
  const Ref<Vector> list = MakeRef<Vector>();
  list->Add(Ref<platform::Object>(TwoItems()));
  const Ref<Recordset> rows = ReportRows(Variant(list));
  ASSERT_TRUE(rows);
  EXPECT_EQ(rows->RecordCount(), 2);
}

Ref<Dictionary> Entry(const char* number, const Variant& quantity) {
  const Ref<Dictionary> row = MakeRef<Dictionary>();
  row->Set("FItemNumber", number);
  row->Set("FQty", quantity);
  return row;
}

TEST(ReportRows, AListOfDictionariesIsATable) {
  const Ref<Vector> list = MakeRef<Vector>();
  list->Add(Ref<platform::Object>(Entry("01", 2)));
  list->Add(Ref<platform::Object>(Entry("02", 2.5)));
  list->Add(Ref<platform::Object>(Entry("03", platform::Null{})));
  const Ref<Recordset> rows = ReportRows(Variant(list));
  ASSERT_TRUE(rows);
  ASSERT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(rows->Fields()[1].type, FieldType::kDouble);
  EXPECT_EQ(rows->DoubleAt(1, 1), 2.5);
  EXPECT_TRUE(rows->IsNullAt(1, 2));
}

TEST(ReportRows, ANullOrAnotherObjectIsNoTable) {
  EXPECT_FALSE(ReportRows(Variant(nullptr)));
  EXPECT_FALSE(ReportRows(Variant(7)));
  EXPECT_FALSE(ReportRows(Variant(MakeRef<Dictionary>())));
}

TEST(ReportRows, ClosedRowsAreNoTable) {
  const Ref<Recordset> closed = TwoItems();
  closed->Close();
  EXPECT_FALSE(ReportRows(Variant(closed)));
}

}  // namespace
