// How an exchange leaves the house: one way a send mode.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/operating_system.h"
#include "sender/data_file.h"
#include "sender/exchange_directory.h"
#include "sender/journal.h"
#include "sender/record.h"
#include "sender/settings.h"

namespace tessel::sender {

struct Outcome {
  enum class Kind {
    kSent,     // `text` says how, `receipt` what the other side said
    kWaiting,  // handed over whole, `text` says as what
    kLater,    // failed for a passing reason, nothing was sent
    kRefused,  // failed for good, nothing was sent
    kUnknown,  // perhaps it arrived, perhaps not
  };
  Kind kind = Kind::kRefused;
  std::string text;
  std::string receipt;
};

// What a transfer is given.
struct TransferJob {
  const Settings& settings;
  FileSystem& files;
  const Clock& clock;
  const ExchangeDatabase& database;
  const ExchangeDirectory& directory;
  const DataFile& data;
  const Journal& journal;
  std::string identifier;  // of the data exchange object: "DX-000001"
  std::string package;     // path of the zip file
  std::string language;
  // Called before the first byte that could reach the other side; when it returns, a crash will not be taken
  // for "nothing was sent" any more.
  std::function<void()> begin;
};

// Sends by mail. Raised is what `begin` raises, and a HostError.
[[nodiscard]] Outcome SendMail(const TransferJob& job);

// Puts package and job file into the outbox.
[[nodiscard]] Outcome HandToStation(const TransferJob& job);
// Whether the job file of this hand-over lies in the outbox, or an answer to it is there.
[[nodiscard]] bool StationHasJob(const TransferJob& job);
// What the station said by now; kWaiting while it said nothing.
[[nodiscard]] Outcome AskStation(const TransferJob& job);

// Runs the configured program.
[[nodiscard]] Outcome RunCommand(const TransferJob& job);

}  // namespace tessel::sender
