#pragma once

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"

namespace component {

// All warehouses that the session's lists know, or those that meet a condition.
platform::Ref<platform::Recordset> ReadStockList(const platform::Variant& condition = platform::Missing());

// What is left of the set of warehouses in "FStockID" for the present user, whose right may have been
// withdrawn since it was stored: the set as "strStock", and how it reads as "sShowList". An error reaches
// the caller; what was written by then stays.
void WritePermittedScope(platform::Dictionary& scope);

}  // namespace component
