// Lists objects of the database in a dialog.
#pragma once

#include <QTreeWidget>
#include <functional>

#include "embedded/dialogs/host_dialogs.h"
#include "qt/language.h"

namespace tessel::qt {

// Two columns: description with the class's picture, and key. The position of an object in the request is
// kept as its item's user data.
[[nodiscard]] QTreeWidget* MakeObjectList(const std::vector<embedded::DialogObject>& objects,
                                          const std::function<QIcon(const ObjectKey&)>& iconOf,
                                          Language language, QWidget* parent);

// Position of a listed object in the request.
[[nodiscard]] std::size_t PositionOf(const QTreeWidgetItem& item);

}  // namespace tessel::qt
