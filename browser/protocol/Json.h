#pragma once

#include <nlohmann/json.hpp>

namespace browser {

// Keys keep the order in which they are written, so that a message begins with its type.
using Json = nlohmann::ordered_json;

}  // namespace browser
