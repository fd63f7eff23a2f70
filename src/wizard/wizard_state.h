// Wizard state: one set per loaded program, shared by all pages.
#pragma once

#include <string>
#include <vector>

#include "dispatch/dispatch.h"
#include "host/record_list.h"
#include "wizard/page_order.h"

namespace tessel {

struct WizardState {
  tessel::SendMode SendMode = tessel::SendMode::kMailStructure;
  PageId NavigatedFrom = PageId::kStart;  // the page that handed over last
  // Cleared when an export begins.
  bool ExportFinished = false;
  bool ExportCancelled = false;
  bool KeepSelection = false;
  bool UseFolderStructure = false;
  // What became of the export so far; its problems are added when the run ends. Cleared when an export
  // begins.
  ExportOutcome outcome;

  PcRecordListPtr recipients;
  std::string SelectedFolderStructure;  // keeps the last pick
  std::vector<MailRecord> mails;
};

}  // namespace tessel
