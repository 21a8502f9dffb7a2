// What a field takes and gives, at every type: converted, refused, by row number, and for many rows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Picture.h"
#include "platform/rows/RowAppender.h"
#include "platform/rows/Vector.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

using enum FieldType;

Ref<Recordset> OneField(FieldType type, std::size_t width = 0) {
  Ref<Recordset> recordset = MakeRef<Recordset>();
  recordset->AppendField("FValue", type, width);
  recordset->Open();
  recordset->AddNew();
  recordset->Update();
  return recordset;
}

TEST(RecordsetValuesTest, FieldsConvertToTheirType) {
  struct Case {
    std::string name;
    FieldType type = kText;
    Variant written;
    Variant read;
  };
  const Date day = Date::Of(2024, 3, 2);
  const Case cases[] = {
      {"text", kText, "商品", "商品"},
      {"empty text is no null", kText, "", ""},
      {"number to text", kText, 2.5, "2.5"},
      {"date to wide text", kWideText, day, "2024-03-02"},
      {"boolean to text", kWideText, true, "True"},
      {"empty to text", kText, Variant(), ""},
      {"16 bits", kInt16, std::int16_t{-7}, std::int16_t{-7}},
      {"32 bits to 16", kInt16, 32767, std::int16_t{32767}},
      {"half to even to 16", kInt16, 2.5, std::int16_t{2}},
      {"32 bits", kInt32, -7, -7},
      {"text to 32", kInt32, " 12 ", 12},
      {"empty to 32", kInt32, Variant(), 0},
      {"double", kDouble, 0.1, 0.1},
      {"integer to double", kDouble, 3, 3.0},
      {"currency to double", kDouble, Currency::FromUnits(25000), 2.5},
      {"numeric is a double", kNumeric, 1.25, 1.25},
      {"text to numeric", kNumeric, "1e3", 1000.0},
      {"currency", kCurrency, Currency::FromUnits(1), Currency::FromUnits(1)},
      {"double to currency", kCurrency, 0.00025, Currency::FromUnits(2)},
      {"text to currency", kCurrency, "-12.34", Currency::FromUnits(-123400)},
      {"date", kDate, Date::Of(2024, 3, 2, 13), Date::Of(2024, 3, 2, 13)},
      {"text to date", kDate, "2024/3/2", day},
      {"day count to date", kDate, 45353, day},
      {"boolean", kBoolean, false, false},
      {"number to boolean", kBoolean, 2, true},
      {"text to boolean", kBoolean, "true", true},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> recordset = OneField(row.type);
    EXPECT_EQ(recordset->Value(0), Variant(Null{})) << "a field that was never written is null";
    recordset->SetValue("FValue", row.written);
    EXPECT_EQ(recordset->Value("fvalue"), row.read);
    EXPECT_EQ(recordset->ValueAt(0, 0), row.read);
    EXPECT_FALSE(recordset->IsNullAt(0, 0));
    recordset->SetValue(0, Null{});
    EXPECT_EQ(recordset->Value(0), Variant(Null{}));
    EXPECT_TRUE(recordset->IsNullAt(0, 0));
  }
}

TEST(RecordsetValuesTest, WhatDoesNotFitNamesTheFieldAndChangesNothing) {
  struct Case {
    std::string name;
    FieldType type = kText;
    Variant before;
    Variant written;
    ErrorNumber number = ErrorNumber::kTypeMismatch;
    std::string description;
  };
  const Case cases[] = {
      {"text for a number", kDouble, 1.0, "x", ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: text 'x' is no number"},
      {"text for an integer", kInt32, 1, "", ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: text '' is no number"},
      {"no such day", kDate, Date::Of(2024, 1, 1), "2023-02-29", ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: text '2023-02-29' is no date"},
      {"no boolean", kBoolean, true, "maybe", ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: text 'maybe' is no boolean"},
      {"an object", kText, "a", MakeRef<Vector>(), ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: object is no text"},
      {"nothing", kInt32, 1, nullptr, ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: object is no integer"},
      {"missing", kDouble, 1.0, Missing{}, ErrorNumber::kTypeMismatch,
       "field FValue: type mismatch: missing is no number"},
      {"past 16 bits", kInt16, std::int16_t{1}, 32768, ErrorNumber::kOverflow,
       "field FValue: overflow: 32768 does not fit in 16 bits"},
      {"past 32 bits", kInt32, 1, 2147483648.0, ErrorNumber::kOverflow,
       "field FValue: overflow: 2147483648 does not fit in 32 bits"},
      {"past currency", kCurrency, Currency(), 1e15, ErrorNumber::kOverflow,
       "field FValue: overflow: the amount does not fit"},
      {"past the calendar", kDate, Date(), 3e6, ErrorNumber::kOverflow,
       "field FValue: overflow: the number is outside the calendar"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> recordset = OneField(row.type);
    for (const Variant& before : {Variant(Null{}), row.before}) {
      recordset->SetValue(0, before);
      const Error error = Raised([&] { recordset->SetValue(0, row.written); });
      EXPECT_EQ(error.Number(), row.number);
      EXPECT_EQ(error.Description(), row.description);
      EXPECT_EQ(recordset->Value(0), before);
    }
  }
}

TEST(RecordsetValuesTest, ATextLongerThanItsFieldIsRefused) {
  struct Case {
    std::string name;
    FieldType type = kText;
    std::size_t width = 0;
    std::string text;
    std::size_t characters = 0;  // 0 for a text that fits
  };
  const Case cases[] = {
      {"fits", kText, 3, "abc"},
      {"characters count, not bytes", kText, 3, "商品库"},
      {"in wide text too", kWideText, 3, "商品库"},
      {"four bytes count once", kWideText, 2, "𠀀𠀁"},
      {"no width takes any", kText, 0, std::string(100000, 'x')},
      {"one too many", kText, 3, "abcd", 4},
      {"one too many in wide text", kWideText, 3, "商品库存", 4},
      {"a number as text", kText, 3, "12.34", 5},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const Ref<Recordset> recordset = OneField(row.type, row.width);
    auto write = [&] { recordset->SetValue(0, row.text); };
    auto writeText = [&] { recordset->SetText(0, row.text); };
    if (row.characters == 0) {
      write();
      EXPECT_EQ(recordset->Value(0), Variant(row.text));
      writeText();
      continue;
    }
    for (const std::function<void()>& refused :
         {std::function<void()>(write), std::function<void()>(writeText)}) {
      const Error error = Raised(refused);
      EXPECT_EQ(error.Number(), ErrorNumber::kOverflow);
      EXPECT_EQ(error.Description(), "field FValue: the text has " + std::to_string(row.characters) +
                                         " characters, the field holds " + std::to_string(row.width));
    }
    EXPECT_EQ(recordset->Value(0), Variant(Null{}));
    recordset->SetText(0, CutToWidth(row.text, row.width));
    EXPECT_EQ(CharacterCount(recordset->TextAt(0, 0)), row.width);
  }
}

Ref<Recordset> OneRowOfEveryType() {
  Ref<Recordset> recordset = MakeRef<Recordset>();
  for (const FieldType type :
       {kText, kWideText, kInt16, kInt32, kDouble, kNumeric, kCurrency, kDate, kBoolean}) {
    recordset->AppendField("F" + std::string(ToString(type)), type);
  }
  recordset->Open();
  RowAppender rows(*recordset);
  rows.SetText(0, "12");
  rows.SetText(1, "商品");
  rows.SetInteger(2, 2);
  rows.SetInteger(3, 100000);
  rows.SetDouble(4, 2.5);
  rows.SetDouble(5, -0.25);
  rows.SetCurrency(6, Currency::FromText("7.5"));
  rows.SetDate(7, Date::Of(2024, 3, 2));
  rows.SetBoolean(8, true);
  rows.CommitRow();
  rows.CommitRow();  // a row of nulls
  return recordset;
}

TEST(RecordsetValuesTest, ReadingByRowNumber) {
  const Ref<Recordset> rs = OneRowOfEveryType();
  EXPECT_EQ(rs->TextAt(0, 0), "12");
  EXPECT_EQ(rs->TextAt(1, 0), "商品");
  const std::pair<double, Currency> numbers[] = {{2, Currency::FromInteger(2)},
                                                 {100000, Currency::FromInteger(100000)},
                                                 {2.5, Currency::FromText("2.5")},
                                                 {-0.25, Currency::FromText("-0.25")},
                                                 {7.5, Currency::FromText("7.5")}};
  const std::int32_t whole[] = {2, 100000, 2, 0, 8};
  for (std::size_t i = 0; i < std::size(numbers); ++i) {
    SCOPED_TRACE(rs->Fields()[i + 2].name);
    EXPECT_EQ(rs->DoubleAt(i + 2, 0), numbers[i].first);
    EXPECT_EQ(rs->CurrencyAt(i + 2, 0), numbers[i].second);
    EXPECT_EQ(rs->IntegerAt(i + 2, 0), whole[i]);
    EXPECT_EQ(rs->DoubleAt(i + 2, 1), 0) << "a null reads as 0";
    EXPECT_EQ(rs->CurrencyAt(i + 2, 1), Currency());
    EXPECT_EQ(rs->IntegerAt(i + 2, 1), 0);
  }
  EXPECT_EQ(rs->DateAt(7, 0), Date::Of(2024, 3, 2));
  EXPECT_TRUE(rs->BooleanAt(8, 0));
  EXPECT_EQ(rs->TextAt(0, 1), "");
  EXPECT_EQ(rs->DateAt(7, 1), Date());
  EXPECT_FALSE(rs->BooleanAt(8, 1));

  const std::pair<std::string, std::function<void()>> mixtures[] = {{"text of a number", [&] { rs->TextAt(4, 0); }},
                                                                    {"number of a text", [&] { rs->DoubleAt(0, 0); }},
                                                                    {"amount of a date", [&] { rs->CurrencyAt(7, 0); }},
                                                                    {"integer of a boolean", [&] { rs->IntegerAt(8, 0); }},
                                                                    {"date of a text", [&] { rs->DateAt(0, 0); }},
                                                                    {"boolean of a number", [&] { rs->BooleanAt(2, 0); }},
                                                                    {"number of a null text", [&] { rs->DoubleAt(0, 1); }}};
  for (const auto& [name, read] : mixtures) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Raised(read).Number(), ErrorNumber::kTypeMismatch);
  }
  EXPECT_EQ(Raised([&] { rs->TextAt(4, 0); }).Description(), "field Fdouble (double) cannot be read as text");
  EXPECT_EQ(Raised([&] { rs->DoubleAt(4, 2); }).Number(), ErrorNumber::kNoCurrentRow);
  EXPECT_EQ(Raised([&] { rs->DoubleAt(9, 0); }).Number(), ErrorNumber::kUnknownField);
  EXPECT_EQ(Raised([&] { rs->RowAt(2); }).Number(), ErrorNumber::kNoCurrentRow);
}

TEST(RecordsetValuesTest, WritingByTypeConvertsToo) {
  const Ref<Recordset> rs = OneRowOfEveryType();
  rs->SetText(3, "12");
  rs->SetInteger(4, 3);
  rs->SetDouble(6, 0.00025);
  rs->SetCurrency(5, Currency::FromText("1.5"));
  rs->SetDate(0, Date::Of(2024, 3, 2));
  rs->SetBoolean(2, true);
  rs->SetText(7, "2024-02-29");
  rs->SetInteger(8, 0);
  EXPECT_EQ(rs->Value(3), Variant(12));
  EXPECT_EQ(rs->Value(4), Variant(3.0));
  EXPECT_EQ(rs->Value(6), Variant(Currency::FromUnits(2)));
  EXPECT_EQ(rs->Value(5), Variant(1.5));
  EXPECT_EQ(rs->Value(0), Variant("2024-03-02"));
  EXPECT_EQ(rs->Value(2), Variant(std::int16_t{-1}));
  EXPECT_EQ(rs->Value(7), Variant(Date::Of(2024, 2, 29)));
  EXPECT_EQ(rs->Value(8), Variant(false));
  const std::pair<std::string, std::function<void()>> refused[] = {
      {"Fsmallint", [&] { rs->SetInteger(2, 40000); }},
      {"Finteger", [&] { rs->SetText(3, "x"); }},
      {"Fcurrency", [&] { rs->SetDouble(6, 1e300); }},
      {"Fdate", [&] { rs->SetDouble(7, 1e300); }},
  };
  for (const auto& [field, write] : refused) {
    SCOPED_TRACE(field);
    EXPECT_THAT(Raised(write).Description(), testing::StartsWith("field " + field + ": "));
  }
}

TEST(RowAppenderTest, LeavesTheCursorWhereItIs) {
  const Ref<Recordset> rs = OneField(kInt32);
  rs->SetInteger(0, 1);
  rs->MoveNext();
  {
    RowAppender rows(*rs);
    rows.SetInteger(0, 2);
    rows.CommitRow();
    rows.SetInteger(0, 99);  // begun, never committed
    EXPECT_EQ(Raised([&] { rs->AddNew(); }).Number(), ErrorNumber::kInvalidCall);
    EXPECT_EQ(rs->RecordCount(), 2);
  }
  EXPECT_TRUE(rs->AtEnd());
  rs->AddNew();
  rs->Update();
  EXPECT_EQ(Picture(*rs), "FValue integer\n  1\n  2\n> null\nposition 3 of 3\n");
}

TEST(RowAppenderTest, OutlivesItsRecordset) {
  Ref<Recordset> rs = OneField(kText);
  RowAppender rows(*rs);
  rs = nullptr;
  rows.SetText(0, "kept by the appender");
  EXPECT_NO_THROW(rows.CommitRow());
}

// Across many groups of rows; a reader's view of a text stays good while rows are added.
TEST(RowAppenderTest, ManyRows) {
  constexpr std::int32_t kRows = 5 * RowStore::kRowsPerGroup + 3;
  const Ref<Recordset> rs = MakeRef<Recordset>();
  rs->AppendField("FID", kInt32);
  rs->AppendField("FText", kText, 20);
  rs->AppendField("FFlag", kBoolean);
  rs->Open();
  {
    RowAppender rows(*rs);
    for (std::int32_t i = 0; i < kRows; ++i) {
      rows.SetInteger(0, i);
      if (i % 3 != 0) rows.SetText(1, "text " + std::to_string(i % 7));
      if (i % 5 == 0) rows.SetBoolean(2, i % 2 == 0);
      rows.CommitRow();
    }
  }
  const std::string_view early = rs->TextAt(1, 1);
  ASSERT_EQ(rs->RecordCount(), kRows);
  for (std::int32_t i = 0; i < kRows; ++i) {
    const auto row = static_cast<std::size_t>(i);
    ASSERT_EQ(rs->IntegerAt(0, row), i);
    ASSERT_EQ(rs->ValueAt(1, row), i % 3 == 0 ? Variant(Null{}) : Variant("text " + std::to_string(i % 7)))
        << i;
    ASSERT_EQ(rs->ValueAt(2, row), i % 5 != 0 ? Variant(Null{}) : Variant(i % 2 == 0)) << i;
  }
  EXPECT_EQ(early, "text 1");
  const std::size_t before = rs->Bytes();
  rs->TruncateTo(RowStore::kRowsPerGroup);
  EXPECT_LT(rs->Bytes(), before);
  EXPECT_EQ(rs->RecordCount(), static_cast<std::int32_t>(RowStore::kRowsPerGroup));
  rs->AddNew();
  rs->Update();
  EXPECT_EQ(rs->Value(0), Variant(Null{})) << "a removed row leaves no trace in the one that takes its place";
}

}  // namespace
}  // namespace platform
