// The two files beside the structure file: the data file for the server monitor and the neutral formats.
#pragma once

#include <string>

#include "config/services.h"
#include "dispatch/dispatch_request.h"
#include "dispatch/recipients.h"
#include "host/object.h"

namespace tessel {

// A file of the recipient's directory. Error 75 for a name that would lead out of it.
[[nodiscard]] std::string FileInDirectory(const std::string& directory, const std::string& name);

// Writes the data file of recipient `index`. Errors: 9 when a mail record is missing, and those of host and
// file system.
void WriteDataFile(Services& services, PcSession& session, const DispatchRequest& request, std::size_t index,
                   const Recipient& recipient, ObjectId exchangeObjectId);

// Whether one of the settings objects, which may be nothing, names a neutral format.
[[nodiscard]] bool HasNeutralFormats(Services& services, const PcSessionPtr& session,
                                     const PcObjectPtr& contactSettings, const PcObjectPtr& companySettings);
// Writes "NeutralFormats.xml" when the settings objects name a format; they may be nothing. True when
// written.
bool WriteNeutralFormats(Services& services, const PcSessionPtr& session, const std::string& directory,
                         const PcObjectPtr& contactSettings, const PcObjectPtr& companySettings);
// Takes the file away that a directory got with another recipient's content.
void RemoveNeutralFormats(Services& services, const std::string& directory);

}  // namespace tessel
