#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/reports/ReportFilter.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"

namespace {

using books::reports::Conditions;
using books::reports::ReportFilter;
using books::reports::SortField;
using platform::Dictionary;
using platform::MakeRef;
using platform::Null;
using platform::Ref;
using platform::Variant;

Variant FilterOf(const std::vector<std::pair<std::string, Variant>>& entries) {
  const Ref<Dictionary> filter = MakeRef<Dictionary>();
  for (const auto& [key, value] : entries) filter->Set(key, value);
  return Variant(filter);
}

std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
    return error.Description();
  }
  return "nothing was raised";
}

TEST(ReportFilter, Ranges) {
  struct Case {
    std::string name;
    Variant filter;
    std::string sql;
    std::vector<Variant> parameters;
  };
  const std::vector<Case> cases = {
      {"nothing", Variant(nullptr), "1", {}},
      {"no value", Variant(), "1", {}},
      {"left out", Variant(platform::Missing{}), "1", {}},
      {"no keys", FilterOf({}), "1", {}},
      {"both ends",
       FilterOf({{"BItemNumber", "01"}, {"EItemNumber", "02"}}),
       "t.FNumber >= ? AND t.FNumber <= ?",
       {"01", "02"}},
      {"keys in another case", FilterOf({{"bitemnumber", "01"}}), "t.FNumber >= ?", {"01"}},
      {"open beginning", FilterOf({{"BItemNumber", ""}, {"EItemNumber", "02"}}), "t.FNumber <= ?", {"02"}},
      {"open end", FilterOf({{"BItemNumber", "01"}, {"EItemNumber", Null{}}}), "t.FNumber >= ?", {"01"}},
      {"blanks are no end", FilterOf({{"BItemNumber", "  "}, {"EItemNumber", " "}}), "1", {}},
      {"trimmed", FilterOf({{"BItemNumber", " 01 "}}), "t.FNumber >= ?", {"01"}},
      {"a number is its digits",
       FilterOf({{"BItemNumber", Variant(std::int32_t{7})}}),
       "t.FNumber >= ?",
       {"7"}},
      {"SQL stays a value", FilterOf({{"BItemNumber", "' OR 1=1 --"}}), "t.FNumber >= ?", {"' OR 1=1 --"}},
      {"other keys", FilterOf({{"BItem", "01"}, {"NoSuchKey", Variant(MakeRef<Dictionary>())}}), "1", {}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Conditions conditions;
    conditions.AddRange("t.FNumber", ReportFilter(each.filter).NumberRange("ItemNumber"));
    EXPECT_EQ(conditions.Sql(), each.sql);
    EXPECT_EQ(conditions.Parameters(), each.parameters);
  }
}

TEST(ReportFilter, OrderBy) {
  struct Case {
    std::string name;
    Variant value;
    std::string expected;  // what follows ORDER BY, or the message
  };
  const std::vector<SortField> fields = {{"FItemNumber", "t1.FNumber"}, {"T1.FDate", "d.FDate"}};
  const std::vector<Case> cases = {
      {"none", "", "t1.FID"},
      {"ascending", "FItemNumber ASC ", "t1.FNumber ASC, t1.FID"},
      {"descending", "FItemNumber DESC ", "t1.FNumber DESC, t1.FID"},
      {"another case", "fitemnumber desc", "t1.FNumber DESC, t1.FID"},
      {"no direction", "FItemNumber", "t1.FNumber ASC, t1.FID"},
      {"with an alias", "T1.FDate  ASC", "d.FDate ASC, t1.FID"},
      {"unknown field", "FPassword ASC", "过滤条件 OrderBy 中的排序字段不能识别：FPassword ASC"},
      {"unknown direction", "FItemNumber UP", "过滤条件 OrderBy 的排序方向应为 ASC 或 DESC：FItemNumber UP"},
      {"more behind it", "FItemNumber ASC, (select 1)",
       "过滤条件 OrderBy 的排序方向应为 ASC 或 DESC：FItemNumber ASC, (select 1)"},
      {"an object", Variant(MakeRef<platform::Vector>()), "过滤条件 OrderBy 应为文本，收到的是对象"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const ReportFilter filter(FilterOf({{"OrderBy", each.value}}));
    std::string order;
    const std::string message = MessageOf([&] { order = filter.OrderBy(fields, "t1.FID"); });
    EXPECT_EQ(order.empty() ? message : order, each.expected);
  }
}

TEST(ReportFilter, Rights) {
  const std::vector<books::reader::ConditionAlias> aliases = {{"t4", books::reader::BaseDataTable()}};
  const auto rights = [&](const Variant& clause) {
    return ReportFilter(FilterOf({{"DataRightWhere", clause}})).Rights(aliases);
  };
  EXPECT_EQ(rights("").sql, "");
  EXPECT_EQ(rights(" (CharIndex('2',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ").parameters,
            (std::vector<Variant>{"2", std::int64_t{0}, std::int64_t{0}, std::int64_t{0}}));
  EXPECT_THAT(
      MessageOf([&] { rights("1=1 OR t9.FItemID=0"); }),
      testing::StartsWith("过滤条件 DataRightWhere （数据权限）无法识别，报表没有取数：SQL text refused at "
                          "character 8 "));
}

TEST(ReportFilter, RefusesWhatIsNoFilter) {
  EXPECT_THAT(MessageOf([] { ReportFilter(Variant("BItemNumber=1")); }),
              testing::StartsWith("过滤条件应为字典（Dictionary）"));
  EXPECT_THAT(MessageOf([] { ReportFilter(Variant(MakeRef<platform::Vector>())); }),
              testing::StartsWith("过滤条件应为字典（Dictionary）"));
}

}  // namespace
