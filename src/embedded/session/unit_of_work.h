// Units of work and reading of a session, as transactions of its connection.
#pragma once

#include <memory>
#include <string>

#include "embedded/store/database.h"
#include "host/unit_of_work.h"

namespace tessel::embedded {

// Writes of single objects join the unit and can still fail on their own. Objects that were read or written
// in a unit that is undone are in memory what they were before it. Errors: HostError for a unit inside
// another, DatabaseError.
[[nodiscard]] PcUnitOfWorkPtr BeginWork(std::shared_ptr<Database> database, const std::string& mark);

[[nodiscard]] PcReadingPtr BeginRead(std::shared_ptr<Database> database);

}  // namespace tessel::embedded
