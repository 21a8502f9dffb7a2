#pragma once

#include "component/stock/InstantStockDialog.h"

namespace component {

// The filter of the instant stock table.
class frmFirter302 final : public InstantStockDialog {
 public:
  frmFirter302() : InstantStockDialog("frmFirter302") {}
};

}  // namespace component
