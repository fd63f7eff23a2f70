// Scopes in which statements of one connection belong together.
#pragma once

#include "embedded/store/database.h"

namespace tessel::embedded {

// A write transaction: it holds the database's write lock from its beginning, so that what it reads stays
// true, and is undone unless it is committed. One inside another joins it: undone, it takes back what it did
// itself; committed, it shares the fate of the outer one. Errors: DatabaseError, SQLITE_BUSY when another
// connection did not let go in time. After a failed commit the transaction is undone by its end.
class WriteTransaction {
 public:
  explicit WriteTransaction(Database& database);
  ~WriteTransaction();
  WriteTransaction(const WriteTransaction&) = delete;
  WriteTransaction& operator=(const WriteTransaction&) = delete;
  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

// While it lives, all that the connection reads is of one moment, which begins with the first read. A write
// ends the moment; the next read begins another one. Snapshots may nest.
class ReadSnapshot {
 public:
  explicit ReadSnapshot(Database& database);
  ~ReadSnapshot();
  ReadSnapshot(const ReadSnapshot&) = delete;
  ReadSnapshot& operator=(const ReadSnapshot&) = delete;

 private:
  Database& database_;
};

}  // namespace tessel::embedded
