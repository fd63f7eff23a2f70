// What all sessions of one embedded host share.
#pragma once

#include <memory>
#include <string>

#include "embedded/model/metadata.h"
#include "embedded/session/failures.h"
#include "embedded/session/host_options.h"
#include "embedded/store/database_place.h"
#include "embedded/store/memory_record_list.h"

namespace tessel::embedded {

class ClientWork;

struct HostCore {
  HostOptions options;
  std::string databasePath;  // or address; kInMemory for a database in memory
  std::string vaultPath;     // empty: no vault
  MetadataPtr metadata;
  std::shared_ptr<const ClientWork> client;
  std::shared_ptr<Database> memory;  // the one connection of a database in memory
  FailurePlan failures;

  [[nodiscard]] FileSystem& Files() const { return *options.files; }
  [[nodiscard]] HostDialogs& Dialogs() const { return *options.dialogs; }
  [[nodiscard]] std::shared_ptr<Database> Connect() const {
    if (memory) return memory;
    return OpenDatabase(Files(), databasePath, {options.busyTimeout, options.statementWatch});
  }
  [[nodiscard]] std::shared_ptr<MemoryRecordList> NewRecordList() const {
    return std::make_shared<MemoryRecordList>(Files());
  }
};

}  // namespace tessel::embedded
