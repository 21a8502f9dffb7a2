#include "books/reports/Data.h"

#include "books/reports/movement/Data10412.h"
#include "books/reports/stock/Data10411.h"
#include "books/reports/tracking/LinkedBills.h"

namespace books::reports {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

Ref<Recordset> Data::GetRpt10403Data(const std::string& /*props*/, Variant& filter) {
  return ReadLinkedBills(*store_, filter);
}

Ref<Recordset> Data::GetRpt10411Data(const std::string& /*props*/, Variant& filter) {
  return ReadShelfLife(*store_, filter);
}

Ref<Recordset> Data::GetRpt10412Data(const std::string& /*props*/, Variant& filter) {
  return ReadMovementSummary(*store_, filter, MovementGoods::kAll);
}

Ref<Recordset> Data::GetRpt10416Data(const std::string& /*props*/, Variant& filter) {
  return ReadMovementSummary(*store_, filter, MovementGoods::kBatchManaged);
}

}  // namespace books::reports
