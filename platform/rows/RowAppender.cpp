#include "platform/rows/RowAppender.h"

namespace platform {

RowAppender::RowAppender(Recordset& recordset) : rows_(recordset.rows_) {
  recordset.RequireOpen();
  row_ = rows_->ClaimTail();
}

RowAppender::~RowAppender() {
  rows_->DropTail();
  rows_->ReleaseTail();
}

}  // namespace platform
