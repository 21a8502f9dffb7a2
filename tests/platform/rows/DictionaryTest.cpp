#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

// Keys and values in their order: "Begin=1 End=2".
std::string Told(const Dictionary& dictionary) {
  std::string told;
  for (const Dictionary::Entry& entry : dictionary.Entries()) {
    told += (told.empty() ? "" : " ") + entry.key + "=" + ToText(entry.value);
  }
  return told;
}

TEST(DictionaryTest, WritingKeepsOrderAndFirstSpelling) {
  struct Case {
    std::string name;
    std::vector<std::pair<std::string, Variant>> writes;
    std::string told;
  };
  const Case cases[] = {
      {"nothing", {}, ""},
      {"writing order", {{"b", 1}, {"a", 2}}, "b=1 a=2"},
      {"first spelling", {{"StartYear", 1}, {"startYear", 2}}, "StartYear=2"},
      {"written again in place", {{"a", 1}, {"b", 2}, {"A", 3}}, "a=3 b=2"},
      {"an empty key", {{"", 1}, {"a", 2}, {"", 3}}, "=3 a=2"},
      {"other letters differ", {{"é", 1}, {"É", 2}, {"商品", 3}}, "é=1 É=2 商品=3"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    Dictionary dictionary;
    for (const auto& [key, value] : row.writes) dictionary.Set(key, value);
    EXPECT_EQ(Told(dictionary), row.told);
  }
}

TEST(DictionaryTest, Reading) {
  const Ref<Object> dictionary = MakeRef<Dictionary>();
  dictionary->Put("Item", "OK", true);
  dictionary->Put("Item", "Error", "");
  dictionary->Put("Item", "Gone", Null{});
  EXPECT_EQ(dictionary->Get("Item", "ok"), Variant(true));
  EXPECT_EQ(dictionary->Call("Item", "ERROR"), Variant(""));
  EXPECT_EQ(dictionary->Get("Item", "Nix"), Variant());
  EXPECT_EQ(dictionary->Get("Count"), Variant(3));
  EXPECT_EQ(dictionary->Get("Key", 1), Variant("Error"));
  EXPECT_EQ(dictionary->Call("Exists", "oK"), Variant(true));
  EXPECT_EQ(dictionary->Call("Exists", "Nix"), Variant(false));
  EXPECT_EQ(dictionary->Call("Lookup", "OK", false), Variant(true));
  EXPECT_EQ(dictionary->Call("Lookup", "Gone", 5), Variant(Null{})) << "a null is a value";
  EXPECT_EQ(dictionary->Call("Lookup", "Nix", 5), Variant(5));
  EXPECT_EQ(dictionary->Call("Lookup", "Nix"), Variant());
  EXPECT_EQ(dictionary->Get("Count"), Variant(3)) << "reading adds no key";
  for (const std::int32_t index : {-1, 3}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(Raised([&] { dictionary->Get("Key", index); }).Number(), ErrorNumber::kSubscriptOutOfRange);
  }
}

TEST(DictionaryTest, ObjectsAreHeldByReference) {
  const Ref<Dictionary> dictionary = MakeRef<Dictionary>();
  const Ref<Vector> list = MakeRef<Vector>();
  dictionary->Set("list", list);
  list->Add(1);
  EXPECT_EQ(dictionary->Item("List").AsRef<Vector>()->Count(), 1);
  EXPECT_EQ(list->Holders(), 2U);
  dictionary->Remove("LIST");
  EXPECT_EQ(list->Holders(), 1U);
}

TEST(DictionaryTest, Removing) {
  Dictionary dictionary;
  for (const std::string key : {"a", "b", "c"}) dictionary.Set(key, key);
  dictionary.Remove("nix");
  dictionary.Remove("B");
  EXPECT_EQ(Told(dictionary), "a=a c=c");
  dictionary.Set("b", 2);
  EXPECT_EQ(Told(dictionary), "a=a c=c b=2");
  dictionary.RemoveAll();
  EXPECT_EQ(dictionary.Count(), 0);
  EXPECT_FALSE(dictionary.Exists("a"));
  dictionary.Set("a", 1);
  EXPECT_EQ(Told(dictionary), "a=1");
}

TEST(DictionaryTest, ItsStateTellsWhetherItWasWrittenTo) {
  Dictionary dictionary;
  const Dictionary other;
  EXPECT_NE(dictionary.Now(), other.Now()) << "each has its own, empty or not";
  Dictionary::State before = dictionary.Now();
  auto changed = [&] { return std::exchange(before, dictionary.Now()) != dictionary.Now(); };
  EXPECT_FALSE(changed());
  dictionary.Set("a", 1);
  EXPECT_TRUE(changed());
  dictionary.Set("A", 1);
  EXPECT_TRUE(changed()) << "also by what was there";
  dictionary.Value("a");
  dictionary.Remove("nix");
  EXPECT_FALSE(changed());
  dictionary.Remove("a");
  EXPECT_TRUE(changed());
  dictionary.RemoveAll();
  EXPECT_TRUE(changed());
}

// Twelve keys are walked, more are indexed: the same rules on both sides and across the border.
TEST(DictionaryTest, AgreesWithAPlainListOfAnySize) {
  std::mt19937 random(12);
  std::vector<std::pair<std::string, int>> model;
  Dictionary dictionary;
  auto find = [&](const std::string& key) {
    return std::ranges::find_if(model, [&](const auto& entry) { return EqualsIgnoreCase(entry.first, key); });
  };
  for (int step = 0; step < 5000; ++step) {
    std::string key = "Key" + std::to_string(random() % 24);
    if (random() % 2 == 0) key = ToUpperAscii(key);
    const auto found = find(key);
    if (random() % 5 < 2) {
      dictionary.Remove(key);
      if (found != model.end()) model.erase(found);
    } else {
      dictionary.Set(key, step);
      if (found == model.end()) {
        model.emplace_back(key, step);
      } else {
        found->second = step;
      }
    }
    std::string told;
    for (const auto& [name, value] : model)
      told += (told.empty() ? "" : " ") + name + "=" + std::to_string(value);
    ASSERT_EQ(Told(dictionary), told) << "step " << step;
    const std::string asked = "kEY" + std::to_string(random() % 24);
    ASSERT_EQ(dictionary.Exists(asked), find(asked) != model.end()) << asked << " at step " << step;
  }
}

TEST(DictionaryTest, AKeyMayBeATextOfTheDictionaryItself) {
  Dictionary dictionary;
  dictionary.Set("first", "next");
  for (int i = 0; i < 40; ++i) {
    const std::string name = "k" + std::to_string(i);
    dictionary.Set(name, name + "v");
    dictionary.Set(*dictionary.Value(name).As<std::string>(), i);
    EXPECT_EQ(dictionary.Item(name + "V"), Variant(i));
  }
  EXPECT_EQ(dictionary.Count(), 81);
}

TEST(VectorTest, ListsFromZero) {
  const Ref<Object> vector = MakeRef<Vector>();
  EXPECT_EQ(vector->Get("Count"), Variant(0));
  vector->Call("Add", "a");
  vector->Call("Add", vector);
  vector->Call("Add", Null{});
  EXPECT_EQ(vector->Get("Count"), Variant(3));
  EXPECT_EQ(vector->Get("Item", 0), Variant("a"));
  EXPECT_EQ(vector->Get("Item", 1), Variant(vector));
  vector->Put("Item", 1, 2.5);
  EXPECT_EQ(vector->Get("Item", "1"), Variant(2.5));
  EXPECT_EQ(vector->Get("Item", 2), Variant(Null{}));
  EXPECT_EQ(vector->Holders(), 1U);
  for (const std::int32_t index : {-1, 3, 2147483647}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(Raised([&] { vector->Get("Item", index); }).Number(), ErrorNumber::kSubscriptOutOfRange);
    EXPECT_EQ(Raised([&] { vector->Put("Item", index, 1); }).Number(), ErrorNumber::kSubscriptOutOfRange);
  }
}

}  // namespace
}  // namespace platform
