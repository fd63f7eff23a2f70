// A unit of work on the host's database: all that the session writes from its beginning to Commit stands or
// falls together, also when the process is killed in between. And a reading: all of one moment.
#pragma once

#include <memory>

namespace tessel {

class PcUnitOfWork {
 public:
  // Without a commit nothing of it stands: neither in the database nor, of the objects that the session read
  // or wrote in it, in memory.
  virtual ~PcUnitOfWork() = default;
  // All of it stands, and is on the disk, when this returns. Error: HostError; nothing of it stands then.
  virtual void Commit() = 0;
};
using PcUnitOfWorkPtr = std::unique_ptr<PcUnitOfWork>;

class PcReading {
 public:
  virtual ~PcReading() = default;
};
using PcReadingPtr = std::unique_ptr<PcReading>;

}  // namespace tessel
