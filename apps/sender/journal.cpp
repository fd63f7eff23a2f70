#include "sender/journal.h"

#include <nlohmann/json.hpp>

#include "platform/paths.h"
#include "sender/system.h"

namespace tessel::sender {

NLOHMANN_JSON_SERIALIZE_ENUM(Stage, {{Stage::kQueued, "queued"},
                                     {Stage::kSending, "sending"},
                                     {Stage::kWaiting, "waiting"},
                                     {Stage::kAccepted, "accepted"},
                                     {Stage::kStopping, "stopping"},
                                     {Stage::kStopped, "stopped"},
                                     {Stage::kSent, "sent"}})

namespace {

using Json = nlohmann::json;

Json ToJson(const Journal& journal) {
  Json documents = Json::array();
  for (const Document& document : journal.documents)
    documents.push_back({{"name", document.name}, {"size", document.size}});
  return {{"stage", journal.stage},
          {"exchange", ObjectKeyText(journal.exchange, ':')},
          {"issue", journal.issue},
          {"attempt", journal.attempt},
          {"notBefore", journal.notBefore},
          {"handedOver", journal.handedOver},
          {"reason", journal.reason},
          {"outcome", journal.outcome},
          {"documents", documents},
          {"packageSize", journal.packageSize},
          {"recordKnown", journal.recordKnown},
          {"lost", journal.lost},
          {"protocol", journal.protocol}};
}

// It would lead us to files that are none of the exchange's.
bool IsLinkedFolder(const FileSystem& files, const std::string& folder) {
  return files.FolderExists(folder) && !IsRealFolder(files.NativePath(folder));
}

Journal FromJson(const Json& json) {
  Journal journal;
  journal.stage = json.at("stage").get<Stage>();
  // A text that names no stage would read as the first one, as if nothing had been sent.
  if (Json(journal.stage) != json.at("stage")) throw std::runtime_error("unknown stage");
  journal.exchange = ParseObjectKey(json.at("exchange").get<std::string>(), ':');
  json.at("issue").get_to(journal.issue);
  json.at("attempt").get_to(journal.attempt);
  json.at("notBefore").get_to(journal.notBefore);
  json.at("handedOver").get_to(journal.handedOver);
  json.at("reason").get_to(journal.reason);
  json.at("outcome").get_to(journal.outcome);
  for (const Json& document : json.at("documents"))
    journal.documents.push_back({document.at("name"), document.at("size")});
  json.at("packageSize").get_to(journal.packageSize);
  json.at("recordKnown").get_to(journal.recordKnown);
  journal.lost = json.value("lost", false);
  json.at("protocol").get_to(journal.protocol);
  return journal;
}

}  // namespace

std::string JournalPath(const ExchangeDirectory& directory) {
  return paths::Join(directory.WorkFolder(), "journal.json");
}

Journal ReadJournal(const FileSystem& files, const ExchangeDirectory& directory) {
  const std::string path = JournalPath(directory);
  if (IsLinkedFolder(files, directory.WorkFolder()))
    throw DamagedJournal(StatusText::kNoWorkFolder, {directory.WorkFolder()});
  if (!files.FileExists(path)) return {};
  const std::string bytes = files.ReadBytes(path);
  try {
    return FromJson(Json::parse(bytes));
  } catch (const std::exception& error) {
    throw DamagedJournal(StatusText::kJournalDamaged, {path, error.what()});
  }
}

bool MakeWorkFolder(FileSystem& files, const ExchangeDirectory& directory) {
  if (IsLinkedFolder(files, directory.WorkFolder()))
    throw Reason(StatusText::kNoWorkFolder, {directory.WorkFolder()}, error_number::kPathFileAccess);
  if (files.FolderExists(directory.WorkFolder())) return false;
  files.CreateFolder(directory.WorkFolder());
  return true;
}

void WriteJournal(FileSystem& files, const ExchangeDirectory& directory, const Journal& journal) {
  const std::string folder = directory.WorkFolder();
  const bool newFolder = MakeWorkFolder(files, directory);
  files.WriteBytes(JournalPath(directory),
                   ToJson(journal).dump(1, ' ', false, Json::error_handler_t::replace) + "\n");
  files.SyncFolder(folder);
  if (newFolder) files.SyncFolder(directory.Path());
}

}  // namespace tessel::sender
