#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "desk/Backend.h"

namespace desk {

// A backend that also serves data components, as a stock book does.
class DataBackend : public Backend {
 public:
  // Null for a class that it does not serve.
  virtual platform::Ref<platform::Object> CreateComponent(std::string_view programmaticId) = 0;
};

// Opens the stock book of a file for a user, who is asked for whenever rights or schemes depend on it.
using BookOpener = std::function<std::unique_ptr<DataBackend>(const std::string& file,
                                                              std::function<std::int32_t()> userId)>;

}  // namespace desk
