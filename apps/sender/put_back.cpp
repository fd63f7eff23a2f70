#include "sender/put_back.h"

#include "sender/root_directory.h"

namespace tessel::sender {

bool IsContinued(const WorkParts& parts, const Databases& databases, const ExchangeDirectory& directory) {
  try {
    const std::string name = DataFileIn(parts.files, databases, directory);
    if (name.empty()) return false;
    const DataFile data = ParseDataFile(parts.files.ReadBytes(directory.In(name)));
    const ExchangeDatabase* database = databases.Find(data.databaseAlias);
    const auto record = database == nullptr ? nullptr : database->Find(data);
    return record && record->CurrentPhase() == Phase::kContinued &&
           BelongsTo(parts.files, record->RootDirectory(), directory);
  } catch (const std::exception&) {
    return false;  // it was stopped for some reason, which stands in its record
  }
}

void PutBack(const WorkParts& parts, const ExchangeDirectory& directory) {
  parts.files.Move(directory.Path(), directory.At(Place::kQueued).Path());
  parts.files.SyncFolder(directory.parent);
  parts.log.Write({directory.Name(), "queued", "its exchange is continued", StepKind::kInfo});
}

}  // namespace tessel::sender
