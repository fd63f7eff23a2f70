// The object dialog: the attributes of an object, for reading.
#pragma once

#include "embedded/dialogs/host_dialogs.h"
#include "qt/dialog_parts.h"

namespace tessel::qt {

// Page 1 lists the attributes of the first object; each text of several lines has a page of its own. The
// caller owns the dialog.
[[nodiscard]] HostDialog* MakeObjectDialog(const embedded::ObjectDialogRequest& request, const QIcon& icon,
                                           Language language, QWidget* parent);

}  // namespace tessel::qt
