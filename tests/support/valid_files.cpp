#include "support/valid_files.h"

#include <gtest/gtest.h>

#ifdef TESSEL_WITH_RECEIVED
#include "received/xml_file.h"
#endif

namespace tessel::test {

void ExpectValidExchangeFiles([[maybe_unused]] const TemporaryFolder& folder) {
#ifdef TESSEL_WITH_RECEIVED
  using received::FileKind;
  for (const std::string& path : folder.Tree()) {
    if (!path.ends_with(".xml")) continue;
    const std::string bytes = folder.Read(path);
    for (const FileKind kind : {FileKind::kStructure, FileKind::kData, FileKind::kNeutralFormats}) {
      if (bytes.substr(0, 200).find("<" + std::string(RootName(kind))) == std::string::npos) continue;
      std::vector<std::string> problems;
      const received::XmlFile file(bytes, kind, problems);
      for (const std::string& problem : problems)
        ADD_FAILURE() << path << ": " << problem << "\n" << bytes;
    }
  }
#endif
}

}  // namespace tessel::test
