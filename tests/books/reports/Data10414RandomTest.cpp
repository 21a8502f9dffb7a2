#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "books/Book.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"
#include "tests/books/services/SmallBook.h"

// 商品超储短缺表 of random books against a plain reckoning of the same figures, in tenths of a unit.
namespace {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

struct Levels {
  int lowest = 0;
  int highest = 0;
  bool Set() const { return lowest > 0 || highest > 0; }
};

struct Item {
  std::string number;
  bool disabled = false;
  Levels own;
  std::map<int, Levels> placed;  // by warehouse
  std::map<int, int> stock;      // by warehouse
};

struct World {
  std::vector<std::string> warehouses;  // numbers
  std::vector<std::string> rights;      // right lists
  std::vector<Item> items;
};

struct Asked {
  std::string fromItem;
  std::string toItem;
  std::string fromStock;
  std::string toStock;
  std::string user;  // empty: no clause
};

using Random = std::mt19937;

int Below(Random& random, int limit) {
  return static_cast<int>(std::uniform_int_distribution<int>(0, limit - 1)(random));
}

Levels RandomLevels(Random& random) {
  return {.lowest = Below(random, 3) * 50, .highest = Below(random, 3) * 100};
}

World RandomWorld(Random& random) {
  World world;
  for (int i = 0; i < 6; ++i) {
    world.warehouses.push_back("W" + std::to_string(i));
    world.rights.push_back(Below(random, 2) == 0 ? "31" : "1,32");
  }
  for (int i = 0; i < 150; ++i) {
    Item item{.number = "I" + std::to_string(1000 + i), .disabled = Below(random, 8) == 0};
    item.own = RandomLevels(random);
    for (int w = 0; w < 6; ++w) {
      if (Below(random, 3) == 0) item.placed[w] = RandomLevels(random);
      if (Below(random, 2) == 0) item.stock[w] = Below(random, 200) - 20;
    }
    world.items.push_back(item);
  }
  return world;
}

void Write(const World& world, const books::test::SmallBook& small) {
  books::database::Connection connection = small.Write();
  books::database::Transaction transaction(connection);
  for (const char* table : {"stock", "item_limit", "batch", "warehouse", "item", "base_ancestor"}) {
    connection.Execute("DELETE FROM " + std::string(table));
  }
  connection.Execute("DELETE FROM base_data WHERE parent_id IS NOT NULL");
  connection.Execute("DELETE FROM base_data");
  const std::string insertBase =
      "INSERT INTO base_data (id, class_id, number, short_number, name, disabled, right_users) "
      "VALUES (?, ?, ?, ?, 'x', ?, ?)";
  for (int w = 0; w < 6; ++w) {
    const auto at = static_cast<std::size_t>(w);
    connection.Execute(insertBase, 500 + w, 5, world.warehouses[at], world.warehouses[at], false,
                       world.rights[at]);
    connection.Execute("INSERT INTO warehouse (id) VALUES (?)", 500 + w);
  }
  int id = 1000;
  for (const Item& item : world.items) {
    ++id;
    connection.Execute(insertBase, id, 4, item.number, item.number, item.disabled, "");
    connection.Execute("INSERT INTO item (id, unit_id, min_quantity, max_quantity) VALUES (?, 1, ?, ?)", id,
                       item.own.lowest * 100000, item.own.highest * 100000);
    for (const auto& [w, levels] : item.placed) {
      connection.Execute("INSERT INTO item_limit VALUES (?, ?, ?, ?)", id, 500 + w, levels.lowest * 100000,
                         levels.highest * 100000);
    }
    for (const auto& [w, tenths] : item.stock) {
      connection.Execute("INSERT INTO stock VALUES (?, ?, 0, 0, ?, 0, 0)", id, 500 + w, tenths * 100000);
    }
  }
  transaction.Commit();
}

bool Within(const std::string& number, const std::string& from, const std::string& to) {
  return (from.empty() || number >= from) && (to.empty() || number <= to);
}

// What the report must list: a line an item.
std::vector<std::string> Reckon(const World& world, const Asked& asked) {
  std::vector<int> chosen;
  for (int w = 0; w < 6; ++w) {
    const auto at = static_cast<std::size_t>(w);
    const bool visible = asked.user.empty() || world.rights[at].find(asked.user) != std::string::npos;
    if (visible && Within(world.warehouses[at], asked.fromStock, asked.toStock)) chosen.push_back(w);
  }
  std::vector<std::string> lines;
  if (chosen.empty()) return lines;
  for (const Item& item : world.items) {
    if (item.disabled || !Within(item.number, asked.fromItem, asked.toItem)) continue;
    int quantity = 0;
    Levels placed;
    for (const int w : chosen) {
      if (item.stock.contains(w)) quantity += item.stock.at(w);
      if (!item.placed.contains(w)) continue;
      placed.lowest += item.placed.at(w).lowest;
      placed.highest += item.placed.at(w).highest;
    }
    const bool whole = chosen.size() == 6;
    const Levels levels = (whole && item.own.Set()) || !placed.Set() ? item.own : placed;
    const bool lacking = levels.lowest > 0 && quantity < levels.lowest;
    if (!lacking && !(levels.highest > 0 && quantity > levels.highest)) continue;
    const int surplus = quantity - (lacking ? levels.lowest : levels.highest);
    lines.push_back(item.number + " " + platform::NumberToText(quantity / 10.0) +
                    (lacking ? " 短缺 " : " 超储 ") + platform::NumberToText(surplus / 10.0));
  }
  return lines;
}

std::vector<std::string> Report(const books::Book& book, const Asked& asked) {
  const auto filter = platform::MakeRef<platform::Dictionary>();
  filter->Set("BItemNumber", asked.fromItem);
  filter->Set("EItemNumber", asked.toItem);
  filter->Set("BStockNumber", asked.fromStock);
  filter->Set("EStockNumber", asked.toStock);
  filter->Set("OrderBy", "FItemNumber ASC ");
  filter->Set("DataRightWhere", asked.user.empty() ? ""
                                                   : " (CharIndex('" + asked.user +
                                                         "',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ");
  Variant argument(filter);
  const Ref<Recordset> rows = book.CreateComponent("TOVMStockRpt.Data10414")
                                  ->Call("GetRpt10414Data", "UserID=1;", argument)
                                  .AsRef<Recordset>();
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
    std::string line;
    for (const char* field : {"FItemNumber", "FQty", "FStatus", "FOverQty"}) {
      line += platform::ToText(rows->ValueAt(rows->FieldIndex(field), i)) + " ";
    }
    line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

TEST(Data10414, AgreesWithAPlainReckoning) {
  std::size_t listed = 0;
  for (unsigned seed = 1; seed <= 5; ++seed) {
    Random random(seed);
    const World world = RandomWorld(random);
    const books::test::SmallBook small;
    Write(world, small);
    const books::Book book = books::Book::Open(small.File());
    for (int i = 0; i < 12; ++i) {
      Asked asked;
      if (Below(random, 2) == 0) asked.fromItem = "I" + std::to_string(1000 + Below(random, 100));
      if (Below(random, 2) == 0) asked.toItem = "I" + std::to_string(1050 + Below(random, 100));
      if (Below(random, 3) == 0) asked.fromStock = "W" + std::to_string(Below(random, 4));
      if (Below(random, 3) == 0) asked.toStock = "W" + std::to_string(2 + Below(random, 4));
      if (Below(random, 2) == 0) asked.user = std::to_string(Below(random, 4));  // 0 is in no list, 3 in all
      SCOPED_TRACE("seed " + std::to_string(seed) + ", items " + asked.fromItem + ".." + asked.toItem +
                   ", warehouses " + asked.fromStock + ".." + asked.toStock + ", user " + asked.user);
      const std::vector<std::string> expected = Reckon(world, asked);
      EXPECT_EQ(Report(book, asked), expected);
      listed += expected.size();
    }
  }
  EXPECT_GT(listed, 1000U);
}

}  // namespace
