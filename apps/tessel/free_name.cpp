#include "tessel/free_name.h"

#include <set>
#include <thread>

#include "dispatch/dispatch_checks.h"
#include "dispatch/recipients.h"
#include "exchange/export_journal.h"
#include "platform/paths.h"

namespace tessel::cli {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{50};

using Names = std::set<std::string>;

Names NamesIn(const FileSystem& files, const std::string& folder) {
  Names names;
  if (!files.FolderExists(folder)) return names;
  for (auto list : {&FileSystem::ListFiles, &FileSystem::ListFolders}) {
    for (std::string& name : (files.*list)(folder))
      names.insert(std::move(name));
  }
  return names;
}

bool AreFree(const Names& taken, const std::string& name, const std::string& prefix, int recipients) {
  if (taken.contains(ExportJournal::PathOf(name)) || taken.contains(name + "_temp")) return false;
  for (int row = 0; row < recipients; ++row) {
    const std::string directory = RecipientDirectory(name, row);
    if (taken.contains(directory)) return false;
    for (const std::string& finalName : FinalNames(directory, prefix)) {
      if (taken.contains(finalName)) return false;
    }
  }
  if (recipients < 2) return true;
  // Another export that runs may have several recipients, too, and would share their names.
  const std::string tenSeconds = name.substr(0, name.size() - 1);
  for (auto next = taken.lower_bound(tenSeconds); next != taken.end() && next->starts_with(tenSeconds);
       ++next) {
    if (ExportJournal::IsName(*next)) return false;
  }
  return true;
}

}  // namespace

bool AwaitFreeNames(Services& services, int recipients, std::chrono::steady_clock::time_point deadline) {
  const Configuration& settings = services.Settings();
  const std::string login = Required(services.Session().CurrentUser(), "current user")->LoginName();
  for (;;) {
    const std::string name = "@@_" + login + "_" + FileTimeText(services.platform.clock.Now());
    const Names taken = NamesIn(services.platform.files, settings.ExchangeDirectory);
    if (AreFree(taken, name, settings.ExportPrefix, recipients)) return true;
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

}  // namespace tessel::cli
