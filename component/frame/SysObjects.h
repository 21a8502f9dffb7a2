#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/form/Form.h"

namespace component {

// Services that live as long as the process; each is created on its first use.
platform::Object& GetGLData();
platform::Object& GetGLView();
platform::Object& GetSystemProfileObject();

// A value of the account's profile, `fallback` when the profile has none.
platform::Variant GetSystemProfile(std::string_view category, std::string_view key,
                                   const platform::Variant& fallback);

// First and last day of the period in which stock accounting began, as "YYYY-MM-DD". Both are left alone
// when there is no such period or it cannot be read.
void GetStockPeriodDates(std::string& begin, std::string& end);
// The first day of stock accounting; Date() when it cannot be read.
platform::Date GetStockStartDate();

// Year and period in which stock accounting began, and the current ones; 0 where the profile has none.
std::int16_t GetStartYearPeriod(std::int32_t& year, std::int32_t& period);
std::int16_t GetCurrentYearPeriod(std::int32_t& year, std::int32_t& period);
// The first day of the current period as text, with the period taken as a month.
std::string GetCurrentPeriodFirstDay();

// The number of periods from the one to the other, both included, twelve a year. What does not fit in 16
// bits raises kOverflow.
std::int16_t PeriodSpan(std::int16_t beginYear, std::int16_t beginPeriod, std::int16_t endYear,
                        std::int16_t endPeriod);

// -1 or 0; -1 unless the profile forbids the calculation.
std::int16_t GetCanQuickCalculate();
// Values new business that waits for its cost, after asking the user when `prompt` is set. Tells the user of
// any error and returns: a failed calculation never stops a report.
std::int16_t CheckQuickCost(const platform::Ref<platform::Object>& owner, bool prompt = false);

}  // namespace component
