// What the sender knows about an exchange between two runs: a small file in the exchange directory, replaced
// as one step and on the disk before the step that it announces. It tells after a crash where the work stood.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/object_key.h"
#include "platform/file_system.h"
#include "sender/exchange_directory.h"
#include "sender/status_texts.h"

namespace tessel::sender {

enum class Stage {
  kQueued,    // nothing has left the house since it was put into the queue
  kSending,   // the transfer has begun, and nobody has said how it ended
  kWaiting,   // handed over whole; the acknowledgement is to come
  kAccepted,  // the other side has taken it; the record may not say so yet
  kStopping,  // it is to stop for the reason; the record may not say so yet
  kStopped,   // the record says so, and the directory bears its name
  kSent,      // likewise
};

struct Journal {
  Stage stage = Stage::kQueued;
  ObjectKey exchange;
  int issue = 1;                // counts how often it was sent again on purpose
  int attempt = 0;              // attempts since it was put into the queue
  std::int64_t notBefore = 0;   // seconds since 1970, of the next attempt
  std::int64_t handedOver = 0;  // likewise, of the last transfer that was begun; 0 before one
  std::string reason;           // why it stops, or why the last attempt failed
  std::string outcome;          // how it was sent, as the status says it
  std::vector<Document> documents;
  long long packageSize = -1;  // of the finished package; -1 without one
  bool recordKnown = true;     // false: it stops although no record may be touched
  bool lost = false;           // the one before was damaged or missing
  std::string protocol;        // lines that the record does not have yet
};

[[nodiscard]] std::string JournalPath(const ExchangeDirectory& directory);
// What is in the file is no journal.
class DamagedJournal : public Reason {
 public:
  using Reason::Reason;
};
// A new one when there is none. Errors: DamagedJournal; as the file system raises them.
[[nodiscard]] Journal ReadJournal(const FileSystem& files, const ExchangeDirectory& directory);
// The sender's folder in the directory, made when it is missing; true when it was. Errors as the file system
// raises them.
bool MakeWorkFolder(FileSystem& files, const ExchangeDirectory& directory);
// On the disk when it returns. Errors as the file system raises them.
void WriteJournal(FileSystem& files, const ExchangeDirectory& directory, const Journal& journal);

}  // namespace tessel::sender
