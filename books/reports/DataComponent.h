#pragma once

#include <memory>
#include <string_view>

#include "books/services/Store.h"
#include "platform/object/Object.h"

namespace books::reports {

// The data component of this programmatic id on a book; null for an id that no data component has. It shares
// the book and may outlive its other holders.
platform::Ref<platform::Object> CreateDataComponent(std::string_view programmaticId,
                                                    const std::shared_ptr<services::Store>& store);

}  // namespace books::reports
