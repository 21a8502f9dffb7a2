#include "component/ledger/LedgerProgress.h"

#include <charconv>
#include <iterator>

#include "component/frame/VEZPublic.h"

namespace component {

LedgerProgress::LedgerProgress(Bar& bar)
    : bar_(bar),
      fetching_(ResString("正在从服务器读取")),
      calculating_(ResString("正在计算")),
      ofYear_(ResString("年第")),
      periodData_(ResString("期数据...")) {}

// "正在计算2024年第3" of its first words.
void LedgerProgress::ComposePeriod(const std::string& begin, std::int16_t year, std::int16_t period) {
  auto append = [this](std::int16_t number) {
    char digits[8];
    message_.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
  };
  message_ = begin;
  append(year);
  message_ += ofYear_;
  append(period);
}

void LedgerProgress::TellPeriod(const std::string& begin, std::int16_t year, std::int16_t period) {
  ComposePeriod(begin, year, period);
  message_ += periodData_;
  bar_.SetMsg(message_);
}

void LedgerProgress::BeginFetch(std::int16_t year, std::int16_t period) {
  if (!bar_.IsUp()) return;
  bar_.SetBarValue(0);
  bar_.HideProgBar();
  TellPeriod(fetching_, year, period);
}

void LedgerProgress::BeginRows(std::int16_t year, std::int16_t period, std::int32_t rowCount) {
  rowsDone_ = 0;
  if (!bar_.IsUp()) return;
  bar_.SetBarMinValue(0);
  bar_.SetBarMaxValue(rowCount == 0 ? 1 : rowCount);
  bar_.SetBarValue(0);
  TellPeriod(calculating_, year, period);
}

void LedgerProgress::BeginItem(std::int16_t year, std::int16_t period, const std::string& name) {
  if (!bar_.IsUp()) return;
  ComposePeriod(calculating_, year, period);
  message_ += ResString("期物料") + name + ResString("...");
  bar_.SetMsg(message_);
}

void LedgerProgress::Range(std::int32_t most) {
  if (!bar_.IsUp()) return;
  bar_.SetBarMaxValue(most);
  bar_.SetBarMinValue(0);
}

}  // namespace component
