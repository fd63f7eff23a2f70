#include "embedded/store/transaction.h"

#include "embedded/store/connection.h"

namespace tessel::embedded {

WriteTransaction::WriteTransaction(Database& database) : database_(database) {
  database_.connection_->BeginWrite();
}

WriteTransaction::~WriteTransaction() {
  if (open_) database_.connection_->UndoWrite();
}

void WriteTransaction::Commit() {
  database_.connection_->CommitWrite();
  open_ = false;
}

ReadSnapshot::ReadSnapshot(Database& database) : database_(database) {
  ++database_.connection_->snapshots;
}

ReadSnapshot::~ReadSnapshot() {
  if (--database_.connection_->snapshots == 0) database_.connection_->EndMoment();
}

}  // namespace tessel::embedded
