#pragma once

#include <string_view>

// The scripts of schema version 1, in the order in which they run.
namespace books::schema {

extern const std::string_view kVersion1BaseData;
extern const std::string_view kVersion1Documents;
extern const std::string_view kVersion1Stock;
extern const std::string_view kVersion1Session;
extern const std::string_view kVersion1Views;
extern const std::string_view kVersion1Rows;

}  // namespace books::schema
