#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/object/Object.h"
#include "platform/object/Ref.h"

namespace component {

// The kinds of base data that dialogs look up.
enum DataType : std::int32_t {
  kNoDataType = 0,
  kCustomer = 1,
  kDepartment = 2,
  kEmployee = 3,
  kItem = 4,
  kStock = 5,
  kSupplier = 8,
  kAuxiliaryProperty = 10,
  kBatch = 21,
};

// Lets the user choose base data of a kind. The answer has the member "ReturnObject" with "Number",
// "FShortNumber" and "Detail"; null when the user cancels, when the kind has no lookup, and after an error,
// of which the user is told here. `filter` is a condition that is joined with the one on disabled data.
platform::Ref<platform::Object> LookupBaseData(std::int32_t dataType, const std::string& text,
                                               const std::string& filter, std::int16_t show);

// Lets the user choose a batch in stock; answers its number, "" when none was chosen. An error reaches the
// caller.
std::string LookupBatch(const platform::Variant& keyWord, const std::string& filter, bool stockOnly,
                        const std::string& filterItem);

}  // namespace component
