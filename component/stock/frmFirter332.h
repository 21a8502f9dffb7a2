#pragma once

#include "component/stock/InstantStockDialog.h"

namespace component {

// The filter of the instant stock query by rows: that of the instant stock table under its own name.
class frmFirter332 final : public InstantStockDialog {
 public:
  frmFirter332() : InstantStockDialog("frmFirter332") {}
};

}  // namespace component
