#include "tests/books/import/ImportFolder.h"

#include <atomic>
#include <fstream>

#include <unistd.h>

#include "books/check/Check.h"
#include "books/schema/Schema.h"
#include "tests/books/TinyBook.h"

namespace books::test {

Files SoundFiles() {
  return {
      {"profile.csv", "category,key,value\nIC,StartYear,2026\nIC,StartPeriod,9\n"},
      {"units.csv", "name\n瓶\n箱\n台\n袋\n"},
      {"suppliers.csv", "number,name\n01,粮油供应商\n01.001,北方粮油\n"},
      {"customers.csv", "number,name\n01,便利店\n"},
      {"properties.csv", "number,name\n01,红色\n"},
      {"warehouses.csv", "number,name,type\n01,中心仓,ordinary\n02,门店仓,\n09,赠品仓,gift\n"},
      {"items.csv",
       "number,name,unit,aux_unit,valuation,batch_managed,serial_managed,supplier\n"
       "01,食品,,,,,,\n"
       "01.001,酱油,瓶,,moving,1,0,01.001\n"
       "01.002,大米,袋,箱,monthly,0,0,\n"
       "02,电钻,台,,fifo,0,1,\n"},
      {"item_units.csv", "item,unit,factor,package\n01.001,箱,12,1\n"},
      {"batches.csv", "item,number,production_date,shelf_life_days\n01.001,A1,2026-08-01,365\n"},
      {"serials.csv", "item,number\n02,S1\n02,S2\n"},
      {"opening_stock.csv", "item,warehouse,batch,quantity,amount\n01.002,01,,10,45\n"},
      {"orders.csv", "class,number,date,supplier\n采购订单,D1,2026-09-01,01.001\n"},
      {"order_entries.csv", "class,number,line,item,unit,quantity,price\n采购订单,D1,1,01.001,箱,10,90\n"},
      {"bills.csv",
       "class,number,date,supplier,customer\n"
       "采购收货,R1,2026-09-08,01.001,\n"
       "调拨,T1,2026-09-12,,\n"
       "1030002,S1,2026-10-05,,01\n"},
      {"bill_entries.csv",
       "class,number,line,item,warehouse,to_warehouse,batch,unit,quantity,price,amount,order_number,order_"
       "line,"
       "serials\n"
       "采购收货,R1,1,01.001,01,,A1,箱,2,90,,D1,1,\n"
       "采购收货,R1,2,02,01,,,,2,,500,,,S1;S2\n"
       "调拨,T1,1,01.001,01,02,A1,,6,,,,,\n"
       "1030002,S1,1,01.001,02,,A1,,4,9.9,,,,\n"
       "1030002,S1,2,02,01,,,,1,320,,,,S1\n"},
  };
}

ImportFolder::ImportFolder() {
  static std::atomic<int> count = 0;
  top_ = std::filesystem::temp_directory_path() /
         ("import_test_" + std::to_string(getpid()) + "_" + std::to_string(++count));
  folder_ = top_ / "csv";
  book_ = top_ / "book.db";
  std::filesystem::create_directories(folder_);
}

ImportFolder::~ImportFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(top_, ignored);
}

void ImportFolder::Write(const Files& files) const {
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(folder_);
  for (const auto& [name, text] : files) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
}

ImportReport ImportFolder::Import(bool dryRun) const {
  ImportOptions options;
  options.dryRun = dryRun;
  return books::Import(book_, folder_, options);
}

std::string ImportFolder::ErrorsOf(const ImportReport& report) {
  std::string text;
  for (const ImportError& error : report.errors) text += error.ToText() + "\n";
  return text;
}

std::string ImportFolder::Rows(std::string_view sql) const {
  database::Connection connection = schema::OpenBook(book_, database::Access::kReadOnly);
  const std::string rows = test::Rows(connection, sql);
  return rows.empty() ? rows : rows + "\n";
}

std::string ImportFolder::Violations() const {
  database::Connection connection = schema::OpenBook(book_, database::Access::kReadOnly);
  std::string text;
  for (const check::Violation& each : check::Check(connection))
    text += each.rule + ": " + each.description + "\n";
  return text;
}

}  // namespace books::test
