#pragma once

#include <cstdint>
#include <string>

#include "component/frame/Bar.h"

namespace component {

// What an assembly tells the progress box. Without a box up, as when a browser calls for a page directly, it
// tells nobody.
class LedgerProgress {
 public:
  explicit LedgerProgress(Bar& bar);

  void Message(const std::string& text) {
    if (bar_.IsUp()) bar_.SetMsg(text);
  }
  // Before the data component is asked: no bar, as nobody knows how long it takes.
  void BeginFetch(std::int16_t year, std::int16_t period);
  // The bar runs to `rowCount`, to 1 when there is none.
  void BeginRows(std::int16_t year, std::int16_t period, std::int32_t rowCount);
  // The same of one item among all.
  void BeginItem(std::int16_t year, std::int16_t period, const std::string& name);
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
  void ComposePeriod(const std::string& begin, std::int16_t year, std::int16_t period);
  void TellPeriod(const std::string& begin, std::int16_t year, std::int16_t period);

  Bar& bar_;
  std::int32_t rowsDone_ = 0;
  // A message comes twice with every period of every item: its words, and the room for it, are kept.
  std::string fetching_;
  std::string calculating_;
  std::string ofYear_;
  std::string periodData_;
  std::string message_;
};

}  // namespace component
