#include "platform/rows/RowAppender.h"

namespace platform {

RowAppender::RowAppender(Recordset& recordset) : rows_(recordset.rows_) {
  recordset.RequireOpen();
  row_ = rows_->ClaimTail();
  at_ = rows_->At(row_);
}

RowAppender::~RowAppender() {
  rows_->DropTail();
  rows_->ReleaseTail();
}

}  // namespace platform
