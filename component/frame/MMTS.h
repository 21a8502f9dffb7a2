#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/form/Form.h"
#include "platform/rows/Recordset.h"

namespace component {

// The session's connection text, the first argument of every call to the middle tier.
std::string GetPropsString();

// One value of the session, asked of the cache facade and, for a login of this process's own, of the shared
// props. A login from outside serves a fixed list of keys; any other key leaves Empty. An error of the
// services reaches the caller.
platform::Variant GetSessionValue(std::string_view key);
// The same with errors skipped: what cannot be read is Empty.
platform::Variant GetSessionValueOrEmpty(std::string_view key);

// Runs a statement through the application's connection. Null when it fails: callers go by that, and the
// reason is dropped on purpose.
platform::Ref<platform::Recordset> ExecuteSql(const std::string& sql);
// The same for callers with a trap of their own: an error reaches them.
platform::Ref<platform::Recordset> ExecuteSqlOrRaise(const std::string& sql);

// Values that the components of this process share. A key that is not there, a store that is not there and
// an error all answer the fallback, Empty when none is given.
platform::Variant GetProcessValue(std::string_view key,
                                  const std::optional<platform::Variant>& fallback = {});
// Does nothing when the process has no store.
void SetProcessValue(std::string_view key, const platform::Variant& value);

// The application type: one of the bits 1, 2 and 4, by which columns, fields and choices are offered.
std::int32_t GetAppType();
// 1 speaks of theoretical quantities and real weights.
std::int32_t GetIndustryType();
// Whether vouchers of the general ledger and stock bills are linked.
bool GetGLAndICUnite();

// Whether codes are full numbers, read from the profile. True also when the profile is not set or cannot be
// read.
bool ReadIsLongNumber();

// Records the use of a report. Errors are dropped: a record is no reason to stop a report.
void WriteUsageLog(const std::string& code, const std::string& text);

}  // namespace component
