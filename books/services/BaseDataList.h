#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "books/Book.h"
#include "books/services/Store.h"

// The lists behind lookups, trees and the batch list. Conditions that the component sends go through the
// reader; base data stands behind the alias t1, and for batches t1 is the stock of a batch, t3 its item.
namespace books::services {

std::vector<BaseDataRow> BaseData(Store& store, const BaseDataQuery& query);
platform::Ref<platform::Recordset> ItemList(Store& store, std::int32_t dataType, std::string_view filter,
                                            std::int32_t userId);
platform::Ref<platform::Recordset> Batches(Store& store, const BatchQuery& query);

}  // namespace books::services
