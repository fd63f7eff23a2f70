// Send mode 3: package and job file into the outbox of the transfer station (docs/sender.md tells the
// format).
#include <algorithm>
#include <ctime>

#include "host/error.h"
#include "platform/paths.h"
#include "sender/log.h"
#include "sender/mail_text.h"
#include "sender/status_texts.h"
#include "sender/system.h"
#include "sender/transfer.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kMostAnswer = 2000;
constexpr std::size_t kLongestDataset = 26;  // of the transfer protocol

// Made of the exchange, so that a repeated hand-over meets its own files: "DX900X4900", with the number of
// the issue when it was sent again on purpose.
std::string DatasetOf(const TransferJob& job) {
  std::string name = job.database.DatasetPrefix() + std::to_string(job.data.exchange.classId) + "X" +
                     std::to_string(job.data.exchange.objectId);
  if (job.journal.issue > 1) name += "R" + std::to_string(job.journal.issue);
  if (name.size() > kLongestDataset) {
    throw RuntimeError(error_number::kInvalidCall, "the dataset name " + name + " is longer than " +
                                                       std::to_string(kLongestDataset) + " characters");
  }
  return name;
}

std::string InOutbox(const TransferJob& job, const std::string& suffix) {
  return paths::Join(job.settings.odetteOutbox, DatasetOf(job) + suffix);
}
std::string InAcknowledgements(const TransferJob& job, const std::string& suffix) {
  return paths::Join(job.settings.odetteAcknowledgements, DatasetOf(job) + suffix);
}

std::string JobText(const TransferJob& job, const std::string& partner) {
  const auto line = [](const char* key, const std::string& value) {
    return std::string(key) + "=" + CleanText(value) + "\r\n";
  };
  std::string description = job.identifier;
  for (const std::string& text : job.data.customTexts)
    description += " " + text;
  return "[Job]\r\n" + line("Partner", partner) + line("Dataset", DatasetOf(job)) +
         line("File", DatasetOf(job) + ".zip") + line("Size", std::to_string(job.journal.packageSize)) +
         line("Exchange", job.identifier) + line("Description", description);
}

Outcome Refused(const std::string& text) {
  return {Outcome::Kind::kRefused, text, {}};
}

// A refusal of an earlier hand-over says nothing about this one.
void RemoveRefusal(const TransferJob& job) {
  if (job.files.FileExists(InAcknowledgements(job, ".err")))
    job.files.DeleteFile(InAcknowledgements(job, ".err"));
}

// The package first: the job file tells the station that all is there.
void PutPackage(const TransferJob& job) {
  job.files.CopyFile(job.package, InOutbox(job, ".zip"), true);
  SyncFile(job.files.NativePath(InOutbox(job, ".zip")));
  job.files.SyncFolder(job.settings.odetteOutbox);
}

void TakeBack(const TransferJob& job) {
  try {
    job.files.DeleteFile(InOutbox(job, ".zip"));
  } catch (const RuntimeError&) {
    // Without its job file the station does not look at it.
  }
}

std::string Answer(const TransferJob& job, const char* suffix) {
  const std::string path = InAcknowledgements(job, suffix);
  return OneLine(CleanText(job.files.ReadBytes(path).substr(0, kMostAnswer)));
}

Outcome Acknowledged(const TransferJob& job) {
  const std::string how = TextOf(job.language, StatusText::kByOdette, {DatasetOf(job)});
  const std::string partner = job.database.TextOf(job.data.company, job.settings.odettePartnerAttribute);
  return {Outcome::Kind::kSent, TextOf(job.language, StatusText::kSent, {how, partner}), Answer(job, ".ack")};
}

}  // namespace

Outcome HandToStation(const TransferJob& job) {
  if (job.settings.odetteOutbox.empty()) return Refused("the settings name no outbox of a transfer station");
  if (!job.files.FolderExists(job.settings.odetteOutbox)) {
    return {Outcome::Kind::kLater, "the outbox " + job.settings.odetteOutbox + " is not there", {}};
  }
  const std::string partner = job.database.TextOf(job.data.company, job.settings.odettePartnerAttribute);
  if (CleanText(partner).find_first_not_of(' ') == std::string::npos) {
    return Refused("the company has no value in " + job.settings.odettePartnerAttribute +
                   ", which names the partner");
  }
  if (job.files.FileExists(InAcknowledgements(job, ".ack"))) {
    // It came after we had stopped waiting for it.
    if (job.journal.handedOver > 0) return Acknowledged(job);
    return Refused("the station has acknowledged " + DatasetOf(job) + ", which was not handed over; take " +
                   InAcknowledgements(job, ".ack") + " away");
  }
  if (job.files.FileExists(InOutbox(job, ".job")))
    return Refused("the outbox holds " + DatasetOf(job) + ".job already");
  try {
    RemoveRefusal(job);
    PutPackage(job);
  } catch (const RuntimeError& error) {
    TakeBack(job);
    return {Outcome::Kind::kLater, error.what(), {}};
  }
  job.begin();
  try {
    job.files.WriteBytes(InOutbox(job, ".job"), JobText(job, partner));
    job.files.SyncFolder(job.settings.odetteOutbox);
  } catch (const RuntimeError& error) {
    if (job.files.FileExists(InOutbox(job, ".job"))) return {Outcome::Kind::kUnknown, error.what(), {}};
    TakeBack(job);
    return {Outcome::Kind::kLater, error.what(), {}};
  }
  return {Outcome::Kind::kWaiting, TextOf(job.language, StatusText::kWaiting, {DatasetOf(job)}), {}};
}

bool StationHasJob(const TransferJob& job) {
  return job.files.FileExists(InOutbox(job, ".job")) ||
         job.files.FileExists(InAcknowledgements(job, ".ack")) ||
         job.files.FileExists(InAcknowledgements(job, ".err"));
}

Outcome AskStation(const TransferJob& job) {
  if (job.files.FileExists(InAcknowledgements(job, ".err")))
    return Refused("the transfer station refused " + DatasetOf(job) + ": " + Answer(job, ".err"));
  if (job.files.FileExists(InAcknowledgements(job, ".ack"))) return Acknowledged(job);
  const auto waited = static_cast<double>(std::time(nullptr) - job.journal.handedOver);
  if (waited > job.settings.odetteTimeout.count()) {
    return {Outcome::Kind::kUnknown,
            "no acknowledgement of " + DatasetOf(job) + " after " +
                std::to_string(static_cast<long long>(waited)) + " s",
            {}};
  }
  return {Outcome::Kind::kWaiting, TextOf(job.language, StatusText::kWaiting, {DatasetOf(job)}), {}};
}

}  // namespace tessel::sender
