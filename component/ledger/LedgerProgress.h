#pragma once

#include <cstdint>
#include <string>

#include "component/frame/Bar.h"

namespace component {

// What an assembly tells the progress box. Without a box up, as when a browser calls for a page directly, it
// tells nobody.
class LedgerProgress {
 public:
  explicit LedgerProgress(Bar& bar) : bar_(bar) {}

  void Message(const std::string& text) {
    if (bar_.IsUp()) bar_.SetMsg(text);
  }
  // Before the data component is asked: no bar, as nobody knows how long it takes.
  void BeginFetch(std::int16_t year, std::int16_t period);
  // The bar runs to `rowCount`, to 1 when there is none.
  void BeginRows(std::int16_t year, std::int16_t period, std::int32_t rowCount);
  void Range(std::int32_t most);
  void ShowBar() {
    if (bar_.IsUp()) bar_.ShowProgBar();
  }
  void RowDone() { Value(++rowsDone_); }
  void Value(std::int32_t value) {
    if (bar_.IsUp()) bar_.SetBarValue(value);
  }
  void Full() {
    if (bar_.IsUp()) bar_.SetBarValueWithMax();
  }

 private:
  Bar& bar_;
  std::int32_t rowsDone_ = 0;
};

// "正在计算2024年第3期数据..." of its first words.
std::string PeriodMessage(std::string_view begin, std::int16_t year, std::int16_t period,
                          std::string_view end);

}  // namespace component
