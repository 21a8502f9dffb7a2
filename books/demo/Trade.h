#pragma once

#include <functional>

#include "books/demo/Company.h"
#include "books/demo/Journal.h"
#include "books/demo/Prices.h"
#include "books/demo/Shelves.h"

namespace books::demo {

// Plays the company's days one after the other and writes what happens into the journal. `progress` is told
// the share of the days that is done.
void PlayTrade(const Plan& plan, const Company& company, Shelves& shelves, const Prices& prices,
               Journal& journal, const std::function<void(double)>& progress);

}  // namespace books::demo
