// Wizard state: one set per loaded program, shared by all pages.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dispatch/dispatch.h"
#include "host/record_list.h"

namespace tessel {

// Values of NavigatedFrom.
namespace navigated_from {
inline constexpr std::int16_t kStartPage = 0;
inline constexpr std::int16_t kSendModePage = 1;
inline constexpr std::int16_t kSendDataPage = 2;
inline constexpr std::int16_t kRecipientPage = 3;
inline constexpr std::int16_t kFolderStructurePage = 44;
}  // namespace navigated_from

struct WizardState {
  std::int32_t SendMode = 2;
  std::int16_t NavigatedFrom = navigated_from::kStartPage;
  // Cleared when an export begins.
  bool ExportFinished = false;
  bool ExportCancelled = false;
  bool KeepSelection = false;
  bool UseFolderStructure = false;
  // The last dispatch ended with an error. Cleared when an export begins, as the two lists below.
  bool DispatchFailed = false;
  // Final directories of the last dispatch, in recipient order.
  std::vector<std::string> finishedDirectories;
  // Those of them whose data exchange object is missing in the database, or incomplete.
  std::vector<std::string> unrecordedDirectories;

  PcRecordListPtr recipients;
  std::string SelectedFolderStructure;  // keeps the last pick
  std::vector<MailRecord> mails;
};

}  // namespace tessel
