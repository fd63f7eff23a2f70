// What became of an export, in a window: what was handed over, to whom and where, and what is not as it
// should be.
#pragma once

#include <functional>

#include "database_contents.h"
#include "dispatch/export_outcome.h"
#include "qt/dialog_parts.h"

namespace tessel::client {

// Whether there is anything to tell: not of an export that was left before anything was sent.
[[nodiscard]] bool WorthTelling(const ExportOutcome& outcome);

// The window for an export that is worth telling. The exchanges are those of the database after it; a
// directory without one of its own is shown as not recorded. Paths are shown as `native` gives them; `open`
// is called with the host's path of the folder to be opened. The caller owns the dialog.
[[nodiscard]] qt::HostDialog* MakeExportReport(const ExportOutcome& outcome,
                                               const std::vector<ExchangeRow>& exchanges,
                                               const std::function<QString(const QString&)>& native,
                                               const std::function<void(const QString&)>& open,
                                               qt::Language language, QWidget* parent);

}  // namespace tessel::client
