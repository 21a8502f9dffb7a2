#pragma once

#include "platform/rows/Recordset.h"

namespace desk {

// The rows that a report hands back as one recordset with a cursor of its own: a recordset itself, a list
// that holds one, or a list of dictionaries, a row each. Null for anything else.
platform::Ref<platform::Recordset> ReportRows(const platform::Variant& rows);

}  // namespace desk
