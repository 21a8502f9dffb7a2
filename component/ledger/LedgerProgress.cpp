#include "component/ledger/LedgerProgress.h"

#include "component/frame/VEZPublic.h"

namespace component {

std::string PeriodMessage(std::string_view begin, std::int16_t year, std::int16_t period,
                          std::string_view end) {
  std::string message;
  message.reserve(96);  // told for every period of every item
  message += ResString(begin);
  message += std::to_string(year);
  message += ResString("年第");
  message += std::to_string(period);
  message += ResString(end);
  return message;
}

void LedgerProgress::BeginFetch(std::int16_t year, std::int16_t period) {
  if (!bar_.IsUp()) return;
  bar_.SetBarValue(0);
  bar_.HideProgBar();
  bar_.SetMsg(PeriodMessage("正在从服务器读取", year, period, "期数据..."));
}

void LedgerProgress::BeginRows(std::int16_t year, std::int16_t period, std::int32_t rowCount) {
  rowsDone_ = 0;
  if (!bar_.IsUp()) return;
  bar_.SetBarMinValue(0);
  bar_.SetBarMaxValue(rowCount == 0 ? 1 : rowCount);
  bar_.SetBarValue(0);
  bar_.SetMsg(PeriodMessage("正在计算", year, period, "期数据..."));
}

void LedgerProgress::Range(std::int32_t most) {
  if (!bar_.IsUp()) return;
  bar_.SetBarMaxValue(most);
  bar_.SetBarMinValue(0);
}

}  // namespace component
