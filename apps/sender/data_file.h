// The data file of an exchange directory (docs/data-file.md), as the sender reads it. Nothing in it is
// trusted.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/names.h"
#include "host/object_key.h"

namespace tessel::sender {

// The numbers of the data file.
enum class SendMode { kMail = 1, kMailStructure = 2, kOdette = 3, kCustom = 4, kNoSend = 5 };

struct DataFile {
  std::string stamp;  // text of the root: time, "_" and the login name
  std::string protocol;
  SendMode mode = SendMode::kNoSend;
  ObjectKey company;
  ObjectKey contact;
  std::string mailSender;
  std::string mailContent;
  std::string mailRecipient;
  std::string mailServer;
  std::string mailSubject;
  ObjectKey exchange;
  std::string statusAttribute = attribute::kStatusInfo;
  std::string typeAttribute = attribute::kExchangeType;
  std::string protocolAttribute = attribute::kProtocol;
  std::string urlAttribute = attribute::kRootDirectory;
  std::string phaseAttribute = attribute::kProcessPhase;
  std::string structureFileName;
  std::string subdirectory;  // may be empty
  std::string databaseAlias;
  std::string zipFileName;
  std::vector<std::string> customTexts;
};

// The data exchange object that can be made out in a data file, however damaged it is; 0:0 when none can.
[[nodiscard]] ObjectKey ObjectIn(std::string_view bytes);

// Parses the bytes. Raises a Reason saying what is wrong: no XML, another root, an element that is missing or
// twice, a number that is none, a name that would leave the directory.
[[nodiscard]] DataFile ParseDataFile(std::string_view bytes);

// Whether the bytes are the export's list of neutral formats, and no document of its name.
[[nodiscard]] bool IsNeutralFormats(std::string_view bytes);

}  // namespace tessel::sender
