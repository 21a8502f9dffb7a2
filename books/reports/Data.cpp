#include "books/reports/Data.h"

#include "books/reports/movement/Data10412.h"

namespace books::reports {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

Ref<Recordset> Data::GetRpt10412Data(const std::string& /*props*/, Variant& filter) {
  return ReadMovementSummary(*store_, filter, MovementGoods::kAll);
}

Ref<Recordset> Data::GetRpt10416Data(const std::string& /*props*/, Variant& filter) {
  return ReadMovementSummary(*store_, filter, MovementGoods::kBatchManaged);
}

}  // namespace books::reports
