// The package: one zip file over documents, the same bytes for the same documents and time.
#pragma once

#include <string>
#include <vector>

#include "sender/exchange_directory.h"

namespace tessel::sender {

// Documents are streamed into the package, with UTF-8 names and beyond 4 GB. `time` is "yyyymmdd_hhmmss", the
// time that every file in it bears; anything else stands for the first of January 1980. The file is on the
// disk under its name when it returns, and absent after a failure. Errors: 61 when the disk is full, 75 when
// a document is missing, or has become another than it was while it was read.
void WritePackage(const FileSystem& files, const ExchangeDirectory& directory,
                  const std::vector<Document>& documents, const std::string& time, const std::string& path);

}  // namespace tessel::sender
