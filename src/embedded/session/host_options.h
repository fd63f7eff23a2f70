// How an embedded host is set up, and what its callers need to know by name.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "embedded/dialogs/host_dialogs.h"
#include "embedded/store/database.h"
#include "host/session.h"
#include "platform/file_system.h"

namespace tessel::embedded {

// Configuration keys.
inline constexpr const char* kIconsDirKey = "$Local\\Directory Structure\\ICONS_DIR";
inline constexpr const char* kViewDirKey = "$Local\\Directory Structure\\ReadOnlyDir";
inline constexpr const char* kWorkDirKey = "$Local\\Directory Structure\\USER_DIR";

// Codes of refused writes beside those of the database.
inline constexpr int kCodeObjectGone = 9001;  // the row was deleted meanwhile, or never added
inline constexpr int kCodeAlreadyAdded = 9002;

// Called during "COPYFILE", before the operation returns: session, operation, copied rows, links, nothing.
using LifeCycleHook =
    std::function<void(const PcSessionPtr&, const std::string& operation, const PcRecordListPtr&,
                       const PcRecordListPtr&, const PcRecordListPtr&)>;

// How far a copy is.
struct CopyStep {
  std::size_t filesDone = 0;
  std::size_t files = 0;
  std::string fileName;         // of the file in hand
  std::uint64_t bytesDone = 0;  // of that file
  std::uint64_t bytes = 0;
  std::uint64_t bytesCopied = 0;  // of all files of this copy so far
};

// Called on the session's thread before the first file of a copy, then several times a second, at least after
// every piece of a large file, and after the last file. False cancels the copy.
using CopyWatch = std::function<bool(const CopyStep& step)>;

struct HostOptions {
  // Both required, and outlive the host and its sessions.
  FileSystem* files = nullptr;
  HostDialogs* dialogs = nullptr;
  LifeCycleHook lfcStage2;
  CopyWatch copyWatch;
  // Of sessions that are opened without one; empty: the user's, else the database's.
  std::string language;
  // Before the database's configuration, behind the user's own settings.
  std::map<std::string, std::string> configuration;
  // Directory of the files of a database in memory; empty: it has none.
  std::string vaultPath;
  // False: HostRuntime finds no running client, so that callers start an engine of their own.
  bool clientRuns = true;
  std::chrono::milliseconds busyTimeout{10000};
  // Of every connection; see DatabaseOptions.
  StatementWatch statementWatch;
};

}  // namespace tessel::embedded
