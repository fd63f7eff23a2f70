// The dispatch: for each recipient a directory, the structure file, the data exchange object and the data
// file; then the start of the server monitor.
#pragma once

#include <string>
#include <vector>

#include "config/services.h"
#include "dispatch/additional_values.h"
#include "exchange/exchange.h"
#include "host/record_list.h"
#include "structure/structure.h"

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

// What the dispatch tells the wizard, which implements it.
class DispatchListener {
 public:
  virtual ~DispatchListener() = default;
  // The directories are final and the exchange objects made: closing a page is no cancel from here on.
  virtual void ExportFinished() = 0;
  // A recipient's directory stands under its final name.
  virtual void DirectoryFinished(const std::string& path) = 0;
  // The database has no data exchange object for it, or an incomplete one. Called after DirectoryFinished.
  virtual void RecordIncomplete(const std::string& path) = 0;
};

struct DispatchParts {
  Services& services;
  ExchangeState& exchange;
  StructureState& structure;
  AdditionalValuesFactory additionalValues;
};

// Runs the dispatch. False after an error, which was traced; what was final by then stays. The caller hides
// its page when the result is true.
bool RunDispatch(DispatchParts& parts, const DispatchRequest& request, DispatchListener& listener);

}  // namespace tessel
