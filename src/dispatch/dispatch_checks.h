// What can refuse a dispatch, looked at for all recipients before the first directory or record is made.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/services.h"
#include "dispatch/dispatch_request.h"

namespace tessel {

// Errors: 75 a configured file name or prefix that would leave the directories; 58 two of the export's own
// files, or one of them and a copied document, with one name in any letter case, or a directory that is
// taken; 9 a mail mode with too few mail records; 5 an encoding in which no structure file can be written.
// `hasNeutralFormats` is asked when a document bears the name of the neutral-formats file.
void CheckDispatch(const Services& services, const DispatchRequest& request,
                   const std::string& exchangeDirectory, const std::string& backupDirectory,
                   const std::function<bool()>& hasNeutralFormats);

// The names that an exchange directory may come to bear: its final one, and those that the program which
// sends gives it when it is sent or stopped.
[[nodiscard]] std::vector<std::string> FinalNames(const std::string& directory, const std::string& prefix);

// Error 58 when something of that name exists.
void CheckFree(const FileSystem& files, const std::string& path);

}  // namespace tessel
