// Broken folders: the sound set with one thing changed, and every line that the report then has.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/books/import/ImportFolder.h"

namespace {

using books::test::Files;
using books::test::ImportFolder;
using books::test::SoundFiles;

struct Case {
  std::string name;
  std::string file;
  std::string from;  // empty: `to` is added at the end of the file
  std::string to;
  std::string errors;
};

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

void ExpectErrors(const std::vector<Case>& cases) {
  ImportFolder folder;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Files files = SoundFiles();
    std::string& text = files[each.file];
    if (each.from.empty()) {
      text += each.to;
    } else {
      const std::size_t at = text.find(each.from);
      ASSERT_NE(at, std::string::npos);
      text.replace(at, each.from.size(), each.to);
    }
    folder.Write(files);
    const books::ImportReport report = folder.Import();
    EXPECT_EQ(ImportFolder::ErrorsOf(report), each.errors);
    EXPECT_FALSE(report.written);
    EXPECT_FALSE(std::filesystem::exists(folder.Book()));
  }
}

TEST(ImportErrors, Files) {
  ExpectErrors({
      {"unknown table", "bill.csv", "", "class\n",
       "bill.csv: there is no such table; the files are: profile.csv, periods.csv, units.csv, "
       "departments.csv, "
       "employees.csv, customers.csv, suppliers.csv, properties.csv, warehouses.csv, items.csv, "
       "item_units.csv, "
       "item_limits.csv, partner_matches.csv, purchase_prices.csv, batches.csv, serials.csv, "
       "opening_stock.csv, "
       "orders.csv, order_entries.csv, bills.csv, bill_entries.csv\n"},
      {"empty file", "customers.csv", "number,name\n01,便利店\n", "",
       "customers.csv: the file is empty; write a heading in its first line, or remove the file\n"},
      {"unknown column", "customers.csv", "number,name\n", "number,name,phone\n",
       "customers.csv:1: 'phone': there is no such column; the columns are: number, name, short_number, "
       "group, "
       "disabled\n"},
      {"column twice", "units.csv", "name\n", "name,名称\n",
       "units.csv:1: '名称': the column stands here twice; take one out\n"},
      {"missing column", "serials.csv", "item,number\n02,S1\n02,S2\n", "item,note\n02,S1\n",
       "serials.csv:1: number: the column is missing; add it to the heading\n"},
      {"too few values", "customers.csv", "", "02\n",
       "customers.csv:3: the row has 1 values, the heading has 2; add or take out commas, or put a value "
       "that "
       "holds a comma in quotes\n"},
      {"a quote within a value", "customers.csv", "", "02,a\"b\n03,超市\n",
       "customers.csv:3: '02,a\"b': a quote stands within a value, or text follows a closing quote; put the "
       "whole value in quotes and double the quotes within it\n"},
      {"a quote that is not closed", "customers.csv", "", "02,\"超市\n03,粮店\n",
       "customers.csv:3: a quote is opened here and never closed; close it, or double a quote that is meant "
       "as a "
       "character\n"},
      {"a huge value", "customers.csv", "", "02,\"" + std::string(100000, 'x') + "\"\n",
       "customers.csv:3: name '" + std::string(60, 'x') +
           "…': the text is longer than 1000 bytes; shorten it\n"},
      {"a quote that swallows the rest of a long file", "customers.csv", "",
       "02,\"\n" + Repeated("03,超市\n", 10000),
       "customers.csv:3: a value is longer than 65536 bytes; look for a quote that is not closed\n"},
      {"a long text", "customers.csv", "", "02," + std::string(1001, 'x') + "\n",
       "customers.csv:3: name '" + std::string(60, 'x') +
           "…': the text is longer than 1000 bytes; shorten it\n"},
      {"a line end in a name", "customers.csv", "", "02,\"超\n市\"\n",
       "customers.csv:3: name '超 市': the text holds a line end or another control character; take it "
       "out\n"},
      {"UTF-16", "customers.csv", "number,name\n01,便利店\n", "\xFF\xFEn",
       "customers.csv:1: the file is UTF-16; save the file as CSV in UTF-8\n"},
      {"no encoding", "customers.csv", "", "02,\xFF\xFF\n",
       "customers.csv:3: the text is neither UTF-8 nor GB18030; save the file as CSV in UTF-8\n"},
      {"a zero byte", "customers.csv", "", std::string("02,a\0b\n", 7),
       "customers.csv:3: the file has a zero byte, so it is no text; save the file as CSV in UTF-8\n"},
  });
}

TEST(ImportErrors, BaseData) {
  ExpectErrors({
      {"number twice", "customers.csv", "", "01,超市\n",
       "customers.csv:3: number '01': the number stands in line 2 already; give every row a number of its "
       "own\n"},
      {"no group", "customers.csv", "", "05.001,超市\n",
       "customers.csv:3: number '05.001': there is no group 05 for it; add a row for the group\n"},
      {"an empty level", "customers.csv", "", "01..2,超市\n",
       "customers.csv:3: number '01..2': a level of the number is empty; write it like 01.02.003\n"},
      {"no name", "customers.csv", "", "02,\n", "customers.csv:3: name: the value is missing; fill it in\n"},
      {"unknown unit, entries not told again", "items.csv", "01.001,酱油,瓶", "01.001,酱油,桶",
       "items.csv:3: unit '桶': there is no such unit; correct it or add it to units.csv\n"},
      {"no unit", "items.csv", "02,电钻,台", "02,电钻,",
       "items.csv:5: unit: the value is missing; fill it in, or write 1 into group\n"},
      {"valuation", "items.csv", "moving", "newest",
       "items.csv:3: valuation 'newest': this is none of the words that the column takes; write one of: "
       "monthly, "
       "moving, fifo, batch, 月加权平均, 全月一次加权平均, 移动加权平均, 先进先出, 批次计价, 77, 78, 79, "
       "80\n"},
      {"batch cost without batches", "items.csv", "袋,箱,monthly", "袋,箱,batch",
       "items.csv:4: valuation 'batch': batch cost needs batches; write 1 into batch_managed or choose "
       "another "
       "method\n"},
      {"neither yes nor no", "items.csv", "moving,1", "moving,maybe",
       "items.csv:3: batch_managed 'maybe': this is neither yes nor no; write 1 or 0\n"},
      {"warehouse type", "warehouses.csv", "gift", "free",
       "warehouses.csv:4: type 'free': this is none of the words that the column takes; write one of: "
       "ordinary, "
       "gift, 普通, 赠品, 500, 501\n"},
      {"supplier is a group", "items.csv", "01.001\n", "01\n",
       "items.csv:3: supplier '01': this supplier is a group; name one within it\n"},
      {"factor 0", "item_units.csv", "12", "0",
       "item_units.csv:2: factor '0': a unit holds more than nothing; write the base units in one of it\n"},
      {"batch of an item without", "batches.csv", "", "02,B1,,\n",
       "batches.csv:3: item: the item is not kept by batch; write 1 into batch_managed in items.csv\n"},
      {"batch twice", "batches.csv", "", "01.001,a1,,\n",
       "batches.csv:3: number 'a1': the number stands in the file twice for this item; take one row out\n"},
      {"no day", "batches.csv", "2026-08-01", "2026-02-30",
       "batches.csv:2: production_date '2026-02-30': this is no day between 1990 and 2100; write it as "
       "2026-01-31\n"},
      {"opening twice", "opening_stock.csv", "", "01.002,01,,10,46\n",
       "opening_stock.csv:3: quantity: these goods have other opening figures already; each item, warehouse, "
       "batch and property stands once, and figures in the book stay\n"},
      {"a gift with an amount", "opening_stock.csv", "", "01.002,09,,1,5\n",
       "opening_stock.csv:3: amount '5': goods in a gift warehouse carry no amount; write 0\n"},
      {"year", "profile.csv", "2026", "26",
       "profile.csv:2: value '26': this is no year; write a year from 1990 to 2100\n"},
      {"current before start", "profile.csv", "", "IC,CurrentYear,2026\nIC,CurrentPeriod,8\n",
       "profile.csv:5: key: the current period lies before the start; correct it\n"},
      {"a gap between periods", "periods.csv", "",
       "year,number,first_day,last_day\n2026,9,2026-08-26,2026-09-25\n2026,10,2026-09-27,2026-10-25\n",
       "periods.csv: period 2026-10 does not begin on the day after the period before it; periods follow "
       "each "
       "other without gaps; correct their days\n"},
  });
}

TEST(ImportErrors, Documents) {
  const std::string entry = "采购收货,R1,3,";
  ExpectErrors({
      {"class", "bills.csv", "", "采购,X1,2026-09-09,,\n",
       "bills.csv:5: class '采购': there is no such class of bills; write its number or name as "
       "docs/import.md "
       "lists them, like 1020002\n"},
      {"an order among the bills", "bills.csv", "", "采购订单,X1,2026-09-09,,\n",
       "bills.csv:5: class: this is a class of orders; write it into orders.csv\n"},
      {"bill twice", "bills.csv", "", "采购收货,r1,2026-09-09,,\n",
       "bills.csv:5: number 'r1': the number stands in line 2 already; give every document of a class a "
       "number of "
       "its own\n"},
      {"bill without entries", "bills.csv", "", "采购收货,R2,2026-09-09,,\n",
       "bills.csv:5: the bill has no entries; add them to bill_entries.csv\n"},
      {"before the start", "bills.csv", "2026-09-08", "2026-08-31",
       "bills.csv:2: date '2026-08-31': accounting begins later, in period 2026-9; leave it out; what lay in "
       "stock then belongs into opening_stock.csv\n"},
      {"no period", "bills.csv", "2026-10-05", "2062-10-05",
       "bills.csv:4: date '2062-10-05': no accounting period holds this day; correct it, or add the period "
       "to "
       "periods.csv\n"},
      {"no date", "bills.csv", "2026-10-05", "5.10.2026",
       "bills.csv:4: date '5.10.2026': this is no day between 1990 and 2100; write it as 2026-01-31\n"},
      {"no such bill", "bill_entries.csv", "", "采购收货,R7,1,01.002,01,,,,1,,,,,\n",
       "bill_entries.csv:7: number 'R7': there is no such document of this class; correct it or add it to "
       "bills.csv\n"},
      {"no such item", "bill_entries.csv", "", entry + "03.003,01,,,,1,,,,,\n",
       "bill_entries.csv:7: item '03.003': there is no such item; correct it or add it to items.csv\n"},
      {"item is a group", "bill_entries.csv", "", entry + "01,01,,,,1,,,,,\n",
       "bill_entries.csv:7: item '01': this item is a group; name one within it\n"},
      {"line twice", "bill_entries.csv", "", "采购收货,R1,1,01.002,01,,,,1,,,,,\n",
       "bill_entries.csv:7: line '1': the line stands in the file twice; give every line of a bill a number "
       "of "
       "its own\n"},
      {"line 0", "bill_entries.csv", "", "采购收货,R1,0,01.002,01,,,,1,,,,,\n",
       "bill_entries.csv:7: line '0': the value is below 1; correct it\n"},
      {"quantity with a comma", "bill_entries.csv", "", entry + "01.002,01,,,,\"1,000\",,,,,\n",
       "bill_entries.csv:7: quantity '1,000': this is no quantity; write digits with at most six decimals, "
       "like "
       "12.5, without separators of thousands\n"},
      {"seven decimals", "bill_entries.csv", "", entry + "01.002,01,,,,0.0000001,,,,,\n",
       "bill_entries.csv:7: quantity '0.0000001': this is no quantity; write digits with at most six "
       "decimals, "
       "like 12.5, without separators of thousands\n"},
      {"quantity 0", "bill_entries.csv", "", entry + "01.002,01,,,,0,,,,,\n",
       "bill_entries.csv:7: quantity '0': the quantity is 0; write how many, or take the row out\n"},
      {"negative transfer", "bill_entries.csv", "", "调拨,T1,2,01.002,01,02,,,-1,,,,,\n",
       "bill_entries.csv:7: quantity '-1': bills of this class have no negative quantities; write what went "
       "the "
       "other way as a bill of the class for that\n"},
      {"transfer to nowhere", "bill_entries.csv", "", "调拨,T1,2,01.002,01,,,,1,,,,,\n",
       "bill_entries.csv:7: to_warehouse: the value is missing: a transfer goes somewhere; fill it in\n"},
      {"transfer to itself", "bill_entries.csv", "", "调拨,T1,2,01.002,01,01,,,1,,,,,\n",
       "bill_entries.csv:7: to_warehouse: the goods are in this warehouse already; name another one\n"},
      {"receipt with a second warehouse", "bill_entries.csv", "", entry + "01.002,01,02,,,1,,,,,\n",
       "bill_entries.csv:7: to_warehouse: only a transfer goes to another warehouse; leave it empty\n"},
      {"no batch", "bill_entries.csv", "", entry + "01.001,01,,,,1,,,,,\n",
       "bill_entries.csv:7: batch: the item is kept by batch; name the batch\n"},
      {"unknown batch", "bill_entries.csv", "", entry + "01.001,01,,Z9,,1,,,,,\n",
       "bill_entries.csv:7: batch 'Z9': the item has no such batch; correct it or add it to batches.csv\n"},
      {"a batch too many", "bill_entries.csv", "", entry + "01.002,01,,A1,,1,,,,,\n",
       "bill_entries.csv:7: batch 'A1': the item is not kept by batch; leave it empty\n"},
      {"unit of another item", "bill_entries.csv", "", entry + "01.002,01,,,瓶,1,,,,,\n",
       "bill_entries.csv:7: unit: the item has no such unit; correct it or add it to item_units.csv\n"},
      {"amount against quantity", "bill_entries.csv", "", entry + "01.002,01,,,,-1,,5,,,\n",
       "bill_entries.csv:7: amount '5': the amount and the quantity have opposite signs; in a return both "
       "are "
       "negative\n"},
      {"negative price", "bill_entries.csv", "", entry + "01.002,01,,,,1,-5,,,,\n",
       "bill_entries.csv:7: price '-5': this is no price; write digits with a point, like 12.34, not "
       "negative\n"},
      {"too few serial numbers", "bill_entries.csv", "320,,,,S1", "320,,,,",
       "bill_entries.csv:6: serials: there are 0 serial numbers for 1 pieces; list one for every piece, "
       "separated "
       "by semicolons\n"},
      {"half a piece", "bill_entries.csv", ",,1,320", ",,1.5,320",
       "bill_entries.csv:6: quantity '1.5': goods with serial numbers are counted in whole pieces; correct "
       "it\n"},
      {"order line", "bill_entries.csv", "D1,1", "D1,2",
       "bill_entries.csv:2: order_line '2': the order has no such line; correct it or add it to "
       "order_entries.csv\n"},
      {"negative order", "order_entries.csv", "箱,10", "箱,-10",
       "order_entries.csv:2: quantity '-10': the value is below 0; correct it\n"},
      {"several at once", "bill_entries.csv", "", entry + "no,no,,,,x,y,,,,\n",
       "bill_entries.csv:7: item 'no': there is no such item; correct it or add it to items.csv\n"
       "bill_entries.csv:7: warehouse 'no': there is no such warehouse; correct it or add it to "
       "warehouses.csv\n"
       "bill_entries.csv:7: quantity 'x': this is no quantity; write digits with at most six decimals, like "
       "12.5, "
       "without separators of thousands\n"
       "bill_entries.csv:7: price 'y': this is no price; write digits with a point, like 12.34, not "
       "negative\n"},
  });
}

// What the book has already stays, and nothing of the folder is written.
TEST(ImportErrors, AgainstTheBook) {
  const std::vector<Case> cases = {
      {"other date", "bills.csv", "2026-09-08", "2026-09-09",
       "bills.csv:2: date: the bill R1 says otherwise in the book; bills in the book stay; correct the row "
       "or "
       "write a bill of another number\n"},
      {"other quantity", "bill_entries.csv", "A1,箱,2", "A1,箱,3",
       "bill_entries.csv:2: quantity: the bill R1 says otherwise in the book; bills in the book stay; "
       "correct the "
       "row or write a bill of another number\n"},
      {"a line less", "bill_entries.csv", "采购收货,R1,2,02,01,,,,2,,500,,,S1;S2\n", "",
       "bills.csv:2: the bill has 1 entries here and 2 in the book; bills in the book stay; list all of "
       "their "
       "entries or leave the bill out\n"},
      {"other base unit", "items.csv", "01.001,酱油,瓶", "01.001,酱油,袋",
       "items.csv:3: unit: the item 01.001 has another one in the book; leave it as it is, or bring the "
       "goods in "
       "as a new item\n"},
      {"a detail becomes a group", "customers.csv", "", "01.1,分店\n",
       "customers.csv:2: number '01': the row is no group in the book and cannot become one; give what "
       "stands "
       "under it another number\n"},
      {"other start", "profile.csv", "StartPeriod,9", "StartPeriod,8",
       "profile.csv:3: key 'StartPeriod': accounting has begun in another period already; take the rows "
       "StartYear "
       "and StartPeriod out\n"},
  };
  ImportFolder folder(SoundFiles());
  ASSERT_TRUE(folder.Import().written);
  const std::string everything =
      "SELECT id, number, name FROM base_data UNION ALL SELECT id, number, date FROM bill";
  const std::string before = folder.Rows(everything);
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Files files = SoundFiles();
    std::string& text = files[each.file];
    if (each.from.empty()) {
      text += each.to;
    } else {
      ASSERT_NE(text.find(each.from), std::string::npos);
      text.replace(text.find(each.from), each.from.size(), each.to);
    }
    // Something that would be new, were the rest sound.
    files["properties.csv"] += "02,蓝色\n";
    folder.Write(files);
    const books::ImportReport report = folder.Import();
    EXPECT_EQ(ImportFolder::ErrorsOf(report), each.errors);
    EXPECT_EQ(folder.Rows(everything), before);
  }
}

}  // namespace
