// CommonXFunctions: the exchange directory, the life-cycle copy into it and the lists that the copy leaves.
#pragma once

#include <string>

#include "config/services.h"
#include "exchange/copied_rows.h"
#include "host/record_list.h"

namespace tessel {

// Written into a recipient's directory beside the structure file and the data file.
inline constexpr const char* kNeutralFormatsFile = "NeutralFormats.xml";

// Module state of the exchange.
struct ExchangeState {
  std::string directoryName;  // empty until the first copy of an export
  std::string directoryPath;  // full path of the exchange directory
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

// "@@_", the user's login name, "_" and the time. False after an error, which is traced.
bool CreateExDirName(Services& services, std::string& name);

// Joins base and name and creates the directory. True only when it did not exist and was created; a name that
// would leave the base is refused.
bool CreateNewExDir(Services& services, const std::string& basePath, const std::string& name,
                    std::string& fullPath);

// Copies the files of the object that a node's tag names (class id, "_", object id). A copied file that bears
// the name of one that the dispatch writes into the directory makes the copy a failed one.
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
