#include <random>
#include <unordered_map>

#include <gtest/gtest.h>

#include "platform/rows/Field.h"
#include "platform/rows/TextStore.h"

namespace platform {
namespace {

TEST(FieldTest, TypeNames) {
  const std::pair<FieldType, std::string> cases[] = {
      {FieldType::kText, "text"},         {FieldType::kWideText, "wide text"},
      {FieldType::kInt16, "smallint"},    {FieldType::kInt32, "integer"},
      {FieldType::kDouble, "double"},     {FieldType::kNumeric, "numeric"},
      {FieldType::kCurrency, "currency"}, {FieldType::kDate, "date"},
      {FieldType::kBoolean, "boolean"}};
  for (const auto& [type, name] : cases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(ToString(type), name);
    EXPECT_EQ(FieldTypeFromText(name), type);
  }
  EXPECT_EQ(FieldTypeFromText("DOUBLE"), FieldType::kDouble);
  for (const std::string name : {"", "int", "text ", "varchar"}) {
    SCOPED_TRACE(name);
    EXPECT_FALSE(FieldTypeFromText(name));
  }
}

TEST(FieldTest, CutToWidth) {
  struct Case {
    std::string name;
    std::string text;
    std::size_t width = 0;
    std::string cut;
  };
  const Case cases[] = {
      {"any width", "abcdef", 0, "abcdef"},
      {"fits", "abc", 3, "abc"},
      {"cut", "abcd", 3, "abc"},
      {"empty", "", 3, ""},
      {"chinese fits although it has more bytes", "商品库", 3, "商品库"},
      {"chinese cut at a whole character", "商品库存", 3, "商品库"},
      {"mixed", "a商b品c", 4, "a商b品"},
      {"two bytes", "éàü", 2, "éà"},
      {"a character of four bytes counts once", "𠀀𠀁𠀂", 2, "𠀀𠀁"},
      {"width 1", "库存", 1, "库"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(CutToWidth(row.text, row.width), row.cut);
    if (row.width != 0) {
      EXPECT_LE(CharacterCount(row.cut), row.width);
    }
  }
  EXPECT_EQ(CharacterCount("a商𠀀é"), 4U);
}

TEST(TextStoreTest, KeepsEachTextOnce) {
  TextStore store;
  const std::string texts[] = {"",
                               "a",
                               "b",
                               "ab",
                               "1234567",
                               "12345678",
                               "123456789",
                               "商品",
                               "商",
                               "采购入库",
                               std::string("a\0b", 3),
                               std::string("a\0c", 3)};
  std::vector<TextStore::Id> ids;
  for (const std::string& text : texts) ids.push_back(store.Keep(text));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(store.Text(ids[i]), texts[i]);
    EXPECT_EQ(store.Keep(texts[i]), ids[i]);
  }
  EXPECT_EQ(store.Count(), ids.size());
}

TEST(TextStoreTest, ManyTextsOfAllLengthsStayWhereTheyAre) {
  TextStore store;
  std::mt19937 random(7);
  std::unordered_map<std::string, TextStore::Id> model;
  std::vector<std::string_view> views;
  std::vector<std::string> kept;
  for (int i = 0; i < 30000; ++i) {
    // Now and then a text of its own block, and one that just fits in a block.
    const std::size_t length = i % 5000 == 17 ? 100000 : i % 5000 == 18 ? 65532 : random() % 40;
    std::string text(length, 'x');
    for (char& c : text) c = static_cast<char>('a' + random() % 3);
    const TextStore::Id id = store.Keep(text);
    const auto [at, isNew] = model.emplace(text, id);
    ASSERT_EQ(at->second, id);
    if (isNew) {
      views.push_back(store.Text(id));
      kept.push_back(text);
    }
  }
  EXPECT_EQ(store.Count(), model.size());
  for (std::size_t i = 0; i < kept.size(); ++i) ASSERT_EQ(views[i], kept[i]);
}

TEST(TextStoreTest, ANewTextIsKeptUnsought) {
  TextStore store;
  const TextStore::Id first = store.KeepNew("DB-1");
  EXPECT_NE(store.KeepNew("DB-1"), first);
  EXPECT_EQ(store.Text(first), "DB-1");
  EXPECT_EQ(store.Count(), 2U);
  EXPECT_EQ(store.Longest(), 4U);
  store.Keep("longer");
  EXPECT_EQ(store.Longest(), 6U);
}

}  // namespace
}  // namespace platform
