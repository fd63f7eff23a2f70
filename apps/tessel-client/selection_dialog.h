// The documents that are collected for the next export, to be looked at and taken from.
#pragma once

#include <QIcon>
#include <functional>
#include <optional>
#include <vector>

#include "host/object_key.h"
#include "qt/language.h"

class QWidget;

namespace tessel::client {

struct SelectedDocument {
  ObjectKey key;
  QString number;
  QString description;
};

// What stays selected, in its order; nothing after a cancel.
[[nodiscard]] std::optional<std::vector<ObjectKey>> EditSelection(
    const std::vector<SelectedDocument>& documents, const std::function<QIcon(ClassId)>& iconOf,
    qt::Language language, QWidget* parent);

}  // namespace tessel::client
