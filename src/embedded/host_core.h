// What all sessions of one embedded host share.
#pragma once

#include <memory>
#include <string>

#include "embedded/catalog.h"
#include "embedded/database.h"
#include "embedded/embedded_host.h"
#include "embedded/memory_record_list.h"

namespace tessel::embedded {

struct HostCore {
  HostOptions options;
  std::string databasePath;  // kInMemory for a database in memory
  std::string vaultPath;     // empty: no vault
  CatalogPtr catalog;
  std::shared_ptr<Database> memory;  // the one connection of a database in memory
  FailurePlan failures;

  [[nodiscard]] FileSystem& Files() const { return *options.files; }
  [[nodiscard]] HostDialogs& Dialogs() const { return *options.dialogs; }
  [[nodiscard]] std::shared_ptr<Database> Connect() const {
    if (memory) return memory;
    return std::make_shared<Database>(Files().NativePath(databasePath), options.busyTimeout);
  }
  [[nodiscard]] std::shared_ptr<MemoryRecordList> NewRecordList() const {
    return std::make_shared<MemoryRecordList>(Files());
  }
};

}  // namespace tessel::embedded
