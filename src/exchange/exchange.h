// CommonXFunctions: the exchange directory, the life-cycle copy into it and the lists that the copy leaves.
#pragma once

#include <memory>
#include <string>

#include "config/services.h"
#include "exchange/copied_rows.h"
#include "exchange/export_journal.h"
#include "host/record_list.h"

namespace tessel {

// Module state of the exchange.
struct ExchangeState {
  std::string directoryName;  // empty until the first copy of an export
  std::string directoryPath;  // full path of the exchange directory
  // Held from before the directory is made until nothing temporary of the export stands.
  std::unique_ptr<ExportJournal> journal;
  CopiedRows copied;
};

// What the copy needs of the send-data page, which implements it.
class SendDataView {
 public:
  virtual ~SendDataView() = default;
  // Check1 is checked.
  [[nodiscard]] virtual bool CopyAll() const = 0;
  // Hides the page while the host's own copy window is open.
  virtual void HideForHostWindow() = 0;
};

// Results of copyFile2ExDir.
enum class CopyResult { kFailed = 0, kCopied = 1, kCancelled = 2 };

namespace CommonXFunctions {

// The list of the last copy, to mark rows in. One that stands among the exported ones gives way to a copy of
// it. Error 91 without a list.
PcRecordList& CopiedFilesToMark(HostRuntime& runtime, CopiedRows& copied);

// "@@_", the user's login name, "_" and the time. False after an error, which is traced.
bool CreateExDirName(Services& services, std::string& name);

// Joins base and name and creates the directory. True only when it did not exist and was created; a name that
// would leave the base is refused, and a base that is no full path.
bool CreateNewExDir(Services& services, const std::string& basePath, const std::string& name,
                    std::string& fullPath);

// Makes the exchange directory of an export, unless it has one already, and its journal before it. A
// directory that could not be made leaves no name behind: the next call tries another one, and nobody takes
// somebody else's directory for this export's. False after an error, which is traced.
bool MakeExchangeDirectory(Services& services, ExchangeState& state);

// Lets go of the exchange directory without touching it: what stays of it is put in order as a dead export's.
void ForgetExchangeDirectory(ExchangeState& state);

// The journal of the export; made when the exchange directory came into being without one. Error 58 when
// another export works on that directory.
[[nodiscard]] ExportJournal& JournalOf(Services& services, ExchangeState& state);

// Copies the files of the object that a node's tag names (class id, "_", object id). A copied file that bears
// the name of the structure or the data file, in any letter case, makes the copy a failed one.
CopyResult copyFile2ExDir(Services& services, ExchangeState& state, SendDataView& view,
                          const std::string& nodeTag);

// Keeps copies of the lists that the hook LFCStage2 got; a list that is nothing leaves its copy as it was.
// 0 on success.
int AllCopiedFiles(Services& services, ExchangeState& state, const PcRecordListPtr& first,
                   const PcRecordListPtr& second);

// Copies columns and rows. Without append the destination becomes a new list; with it, rows go below those
// that are there, and columns that the destination has are kept. 0 on success; errors go to the caller.
int CopyRecList(HostRuntime& runtime, const PcRecordList& source, PcRecordListPtr& destination, bool append);

// A new, empty record list of the running client, or else of the record list class.
[[nodiscard]] PcRecordListPtr NewRecList(HostRuntime& runtime);

}  // namespace CommonXFunctions
}  // namespace tessel
