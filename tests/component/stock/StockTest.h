#pragma once

#include "tests/component/FetchTest.h"

namespace component {

using StockTest = FetchTest;

}  // namespace component
