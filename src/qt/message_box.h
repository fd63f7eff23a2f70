// Message boxes.
#pragma once

#include "qt/language.h"
#include "toolkit/toolkit.h"

class QWidget;

namespace tessel::qt {

// Shows a box over its parent (null: over the screen) and returns what the person answered. A box that was
// closed without an answer counts as OK or No.
[[nodiscard]] MessageAnswer ShowMessageBox(const MessageRequest& request, Language language, QWidget* parent);

}  // namespace tessel::qt
