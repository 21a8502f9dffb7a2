#pragma once

#include <filesystem>
#include <string>

#include "books/database/Connection.h"

namespace books::test {

// A book file of a few hand-written rows for the tests of services and reports, removed with this object.
//
// Warehouses: 50 "01" 华东 (group) with 51 "01.01" 上海仓 (users 2, 7) and 52 "01.02" 杭州仓 (user 12);
// 53 "02" 北京仓 (user 7); 54 "03" 赠品仓 (gift, nobody), disabled.
// Users: 1 admin without restriction; 2, 7 and 12 restricted; 9 disabled.
// Items, with stock (warehouse: quantity) and levels:
//
//   id number  name      51    52   53   54   own levels  levels by warehouse
//   41 01.001  青岛啤酒   60    30    5         100 – 500
//   42 01.002  矿泉水     30.5             20     0 – 50
//   43 01.003  饼干       25          3          none       51: 10 – 20, 53: 5 – none
//   44 01.004  停售糖果                          10 – 20, disabled
//   45 02.001  毛巾       15                     10 – 20
//   46 02.002  拖把      1000                    none
//   47 02.003  脸盆       20                     10 – 20
//   48 02.004  水桶       10                     10 – 20
//   49 02.005  牙刷                              10 – none   52: 4 – 8
//
// Item 41 is counted in 箱 too (aux quantity: bottles by 12) and kept by batch: B001 (2026-01-05, 365 days)
// 40 in 51 and 30 in 52, B002 20 in 51 and 5 in 53; B010 lies nowhere.
class SmallBook {
 public:
  SmallBook();
  ~SmallBook();
  SmallBook(const SmallBook&) = delete;
  SmallBook& operator=(const SmallBook&) = delete;

  const std::filesystem::path& File() const { return file_; }
  // For further rows.
  database::Connection Write() const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path file_;
};

}  // namespace books::test
