// What an export sends, and how: plain data that the wizard collects for the dispatch.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/record_list.h"

namespace tessel {

// The values of the wizard's "SendMode".
enum class SendMode : std::int32_t { kMail = 1, kMailStructure = 2, kOdette = 3, kCustom = 4, kNoSend = 5 };

struct MailRecord {
  std::string sender;
  std::string recipientAddress;
  std::string smtpServer;
  std::string subject;
  std::string content;
};

// What the pages collected.
struct DispatchRequest {
  SendMode sendMode = SendMode::kMailStructure;
  PcRecordListPtr recipients;
  std::vector<MailRecord> mails;  // one a recipient in the mail modes, else empty
  bool useFolderStructure = false;
  std::string selectedFolderStructure;   // tag of the chosen node
  std::vector<std::string> customTexts;  // texts of the custom input page, in field order
};

}  // namespace tessel
