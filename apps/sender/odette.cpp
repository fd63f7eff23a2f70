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
  if (name.size() > kLongestDataset)
    throw Reason(StatusText::kDatasetLength, {name, std::to_string(kLongestDataset)});
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

Outcome Refused(const TransferJob& job, StatusText why, const std::vector<std::string>& values = {}) {
  return {Outcome::Kind::kRefused, TextOf(job.language, why, values), {}};
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
  if (job.settings.odetteOutbox.empty()) return Refused(job, StatusText::kNoOutbox);
  if (!job.files.FolderExists(job.settings.odetteOutbox)) {
    return {Outcome::Kind::kLater,
            TextOf(job.language, StatusText::kOutboxGone, {job.settings.odetteOutbox}),
            {}};
  }
  const std::string partner = job.database.TextOf(job.data.company, job.settings.odettePartnerAttribute);
  if (CleanText(partner).find_first_not_of(' ') == std::string::npos)
    return Refused(job, StatusText::kNoPartner, {job.settings.odettePartnerAttribute});
  if (job.files.FileExists(InAcknowledgements(job, ".ack"))) {
    // It came after we had stopped waiting for it.
    if (job.journal.handedOver > 0) return Acknowledged(job);
    return Refused(job, StatusText::kStrangeAnswer, {DatasetOf(job), InAcknowledgements(job, ".ack")});
  }
  if (job.files.FileExists(InOutbox(job, ".job")))
    return Refused(job, StatusText::kJobThere, {DatasetOf(job)});
  try {
    RemoveRefusal(job);
    PutPackage(job);
  } catch (const RuntimeError& error) {
    TakeBack(job);
    return {Outcome::Kind::kLater, ReasonText(job.language, error), {}};
  }
  job.begin();
  try {
    job.files.WriteBytes(InOutbox(job, ".job"), JobText(job, partner));
    job.files.SyncFolder(job.settings.odetteOutbox);
  } catch (const RuntimeError& error) {
    if (job.files.FileExists(InOutbox(job, ".job")))
      return {Outcome::Kind::kUnknown, ReasonText(job.language, error), {}};
    TakeBack(job);
    return {Outcome::Kind::kLater, ReasonText(job.language, error), {}};
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
    return Refused(job, StatusText::kStationRefused, {DatasetOf(job), Answer(job, ".err")});
  if (job.files.FileExists(InAcknowledgements(job, ".ack"))) return Acknowledged(job);
  const auto waited = static_cast<double>(std::time(nullptr) - job.journal.handedOver);
  if (waited > job.settings.odetteTimeout.count()) {
    return {Outcome::Kind::kUnknown,
            TextOf(job.language, StatusText::kStationSilent,
                   {DatasetOf(job), std::to_string(static_cast<long long>(waited))}),
            {}};
  }
  return {Outcome::Kind::kWaiting, TextOf(job.language, StatusText::kWaiting, {DatasetOf(job)}), {}};
}

}  // namespace tessel::sender
