// The settings of the site, for administrators.
#pragma once

#include "host/session.h"
#include "qt/language.h"

class QWidget;

namespace tessel::client {

// Lists every key of every settings object with its value, default and meaning, and lets values be changed.
// What a start-up would refuse is refused with its reason; OK writes what was changed. Errors: HostError for
// settings that cannot be read; what the database refuses is told, and the dialog stays.
void EditSettings(const PcSessionPtr& session, qt::Language language, QWidget* parent);

}  // namespace tessel::client
