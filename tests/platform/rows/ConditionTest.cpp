#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Condition.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

// One row of every type, and a field that is null.
class ConditionTest : public testing::Test {
 protected:
  ConditionTest() {
    const std::pair<Field, Variant> cells[] = {
        {{.name = "FName", .type = FieldType::kText}, "Steel Bolt 钢"},
        {{.name = "FNote", .type = FieldType::kWideText}, "it's"},
        {{.name = "FYear", .type = FieldType::kInt16}, 2024},
        {{.name = "FItemID", .type = FieldType::kInt32}, 1007},
        {{.name = "FQty", .type = FieldType::kDouble}, 2.5},
        {{.name = "FRate", .type = FieldType::kNumeric}, -0.25},
        {{.name = "FAmount", .type = FieldType::kCurrency}, "12.3456"},
        {{.name = "FDate", .type = FieldType::kDate}, "2024-03-02 13:30:00"},
        {{.name = "FDeleted", .type = FieldType::kBoolean}, true},
        {{.name = "FBatch No", .type = FieldType::kText}, ""},
        {{.name = "FNull", .type = FieldType::kText}, Null{}},
        {{.name = "FNullQty", .type = FieldType::kDouble}, Null{}},
    };
    for (const auto& [field, value] : cells) rows_.AppendField(field);
    rows_.ClaimTail();
    for (std::size_t column = 0; column < std::size(cells); ++column)
      rows_.SetValue(column, rows_.At(0), cells[column].second);
    rows_.AppendTail();
  }

  RowStore rows_;
};

TEST_F(ConditionTest, Comparisons) {
  struct Case {
    std::string condition;
    bool matches = false;
  };
  const Case cases[] = {
      {"FName='steel bolt 钢'", true},
      {"fname = 'Steel'", false},
      {"FName<>'Steel'", true},
      {"FName > 'steel'", true},
      {"FName < 'STEEM'", true},
      {"FName >= 'steel bolt 钢'", true},
      {"FName<='Steel'", false},
      {"FNote='it''s'", true},
      {"FNote=''''", false},
      {"[FBatch No]=''", true},
      {"[fyear]=2024", true},
      {"FYear=2024.0", true},
      {"FYear='2024'", true},
      {"FYear>=2024.5", false},
      {"FYear<>2023", true},
      {"FItemID=1007", true},
      {"FItemID<1e3", false},
      {"FQty=2.5", true},
      {"FQty>-1", true},
      {"FRate<0", true},
      {"FRate=-.25", true},
      {"FAmount=12.3456", true},
      {"FAmount=12.34560001", false},
      {"FAmount>12.34559999", true},
      {"FAmount<12.3457", true},
      {"FAmount<=1.23456e1", true},
      {"FDate=#2024-03-02 13:30:00#", true},
      {"FDate=#2024-03-02#", false},
      {"FDate>#2024/3/2#", true},
      {"FDate<'2024-03-03'", true},
      {"FDeleted=TRUE", true},
      {"FDeleted=false", false},
      {"FDeleted<>0", true},
      {"FDeleted='True'", true},
      {"FName=1", false},
      {"  FYear  =  2024  ", true},
      {"FYear=2024 AND FItemID=1007", true},
      {"FYear=2024 and FQty>1 And FName='x'", false},
      {"FName='a AND b'", false},
      {"FYear=2024\tAND\nFItemID=1007", true},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.condition);
    EXPECT_EQ(Condition::Parse(row.condition, rows_).Matches(rows_, 0), row.matches);
  }
}

TEST_F(ConditionTest, Like) {
  struct Case {
    std::string pattern;
    bool matches = false;
  };
  const Case cases[] = {{"Steel Bolt 钢", true},
                        {"steel%", true},
                        {"STEEL*", true},
                        {"%bolt%", true},
                        {"*钢", true},
                        {"%", true},
                        {"", false},
                        {"steel", false},
                        {"bolt%", false},
                        {"%bolt", false},
                        {"s%b%t%", true},
                        {"s*l*l*l*", false},
                        {"%%%", true},
                        {"%l%l%钢", true},
                        {"st_el%", false},
                        {"%Bolt 钢%", true},
                        {"%钢铁", false},
                        {"Steel Bolt 钢%", true},
                        {"%x%", false}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.pattern);
    EXPECT_EQ(Condition::Parse("FName like '" + row.pattern + "'", rows_).Matches(rows_, 0), row.matches);
  }
  EXPECT_TRUE(Condition::Parse("[FBatch No] LIKE ''", rows_).Matches(rows_, 0));
  EXPECT_TRUE(Condition::Parse("FNote LIKE'it''%'", rows_).Matches(rows_, 0));
}

TEST_F(ConditionTest, ANullMeetsNoComparison) {
  for (const std::string condition : {"FNull=''", "FNull<>''", "FNull<>'a'", "FNull like '%'", "FNullQty=0",
                                      "FNullQty<>0", "FNullQty<1", "FNullQty>=-1"}) {
    SCOPED_TRACE(condition);
    EXPECT_FALSE(Condition::Parse(condition, rows_).Matches(rows_, 0));
  }
}

TEST_F(ConditionTest, WhatIsNoConditionNamesThePlace) {
  struct Case {
    std::string condition;
    std::string expected;
    int character = 0;
  };
  const Case cases[] = {
      {"", "a field name", 1},
      {"='a'", "a field name", 1},
      {"FYear", "one of = < > <= >= <> LIKE", 6},
      {"FYear 2024", "one of = < > <= >= <> LIKE", 7},
      {"FYear=", "a value", 7},
      {"FYear == 2024", "'text', a number, #date#, TRUE or FALSE", 8},
      {"FYear=FItemID", "'text', a number, #date#, TRUE or FALSE", 7},
      {"FName='abc", "a text with its closing '", 7},
      {"FName='a'b'", "AND or the end", 10},
      {"FDate=#2024-03-02", "a date with its closing #", 7},
      {"[FYear=2024", "a field name with its closing ]", 1},
      {"FYear=2024 OR FYear=2025", "AND or the end", 12},
      {"FYear=2024 AND", "a field name", 15},
      {"FYear=2024 ANDFItemID=1", "AND or the end", 12},
      {"FName='钢' x", "AND or the end", 11},
      {"FYear=2024;drop", "'text', a number, #date#, TRUE or FALSE", 7},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.condition);
    const Error error = Raised([&] { Condition::Parse(row.condition, rows_); });
    EXPECT_EQ(error.Number(), ErrorNumber::kBadArgument);
    EXPECT_EQ(error.Description(), "condition '" + row.condition + "': expected " + row.expected +
                                       " at character " + std::to_string(row.character));
  }
}

TEST_F(ConditionTest, WhatCannotBeComparedNamesTheField) {
  struct Case {
    std::string condition;
    ErrorNumber number = ErrorNumber::kTypeMismatch;
    std::string names;
  };
  const Case cases[] = {
      {"FNix=1", ErrorNumber::kUnknownField, "there is no field FNix"},
      {"FYear=1 AND [F Nix]=1", ErrorNumber::kUnknownField, "there is no field F Nix"},
      {"FQty='abc'", ErrorNumber::kTypeMismatch, "field FQty (double)"},
      {"FQty=#2024-03-02#", ErrorNumber::kTypeMismatch, "field FQty (double)"},
      {"FQty=TRUE", ErrorNumber::kTypeMismatch, "field FQty (double)"},
      {"FQty like '2%'", ErrorNumber::kTypeMismatch, "LIKE compares a text field with a quoted text"},
      {"FName like 5", ErrorNumber::kTypeMismatch, "LIKE compares a text field with a quoted text"},
      {"FName=#2024-03-02#", ErrorNumber::kTypeMismatch, "field FName (text)"},
      {"FName=TRUE", ErrorNumber::kTypeMismatch, "field FName (text)"},
      {"FDate=45353", ErrorNumber::kTypeMismatch, "field FDate (date)"},
      {"FDate=#2023-02-29#", ErrorNumber::kTypeMismatch, "field FDate (date)"},
      {"FDate='soon'", ErrorNumber::kTypeMismatch, "field FDate (date)"},
      {"FDeleted>FALSE", ErrorNumber::kTypeMismatch, "field FDeleted (boolean)"},
      {"FDeleted='maybe'", ErrorNumber::kTypeMismatch, "field FDeleted (boolean)"},
      {"FAmount=99999999999999999999", ErrorNumber::kTypeMismatch, "field FAmount (currency)"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.condition);
    const Error error = Raised([&] { Condition::Parse(row.condition, rows_); });
    EXPECT_EQ(error.Number(), row.number);
    EXPECT_THAT(error.Description(), testing::HasSubstr(row.names));
    EXPECT_THAT(error.Description(), testing::HasSubstr(row.condition));
  }
}

}  // namespace
}  // namespace platform
