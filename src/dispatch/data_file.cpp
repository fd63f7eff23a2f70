#include "dispatch/data_file.h"

#include <algorithm>

#include "dispatch/exchange_object.h"
#include "exchange/exchange.h"
#include "host/names.h"
#include "messages/guard.h"
#include "platform/paths.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

constexpr const char* kEncoding = "iso-8859-1";
constexpr const char* kNeutralSection = "Neutral_Formats";
constexpr const char* kNeutralKeys[] = {"ProductDocument", "PartDocument", "DrawingDocument"};

// A document with declaration and root that takes text elements in order.
class TextElements {
 public:
  TextElements(const std::string& rootName, const std::string& rootText) : document_(XML::InitXMLDoc()) {
    XML::InstructGerman(*document_, "", kEncoding);
    root_ = XML::CreateRootElement(*document_, rootName, rootText);
  }
  void Add(const std::string& name, const std::string& text) {
    XML::CreateElement(*document_, name, text, root_);
  }
  void Add(const std::string& name, std::int32_t number) { Add(name, std::to_string(number)); }
  void Save(Services& services, const std::string& path) {
    XML::SaveXMLFile(*document_, services.platform.files, services.platform.encodings, services.trace, path);
    XML::TerminateXMLDoc(document_);
  }

 private:
  XmlDocumentPtr document_;
  XmlNode root_;
};

const MailRecord& MailOf(const DispatchRequest& request, std::size_t index) {
  if (index < request.mails.size()) return request.mails[index];
  throw RuntimeError(error_number::kSubscriptOutOfRange,
                     "Subscript out of range: no mail record for recipient " + std::to_string(index + 1));
}

void AddRecipient(TextElements& file, const Recipient& recipient) {
  file.Add("CustomerObjClassID", recipient.customer.classId);
  file.Add("CustomerObjObjectId", recipient.customer.objectId);
  file.Add("ContactPersObjClassID", recipient.contact.classId);
  file.Add("ContactPersObjObjectId", recipient.contact.objectId);
}

// Sender and server are those of the first mail for every recipient.
void AddMail(TextElements& file, const DispatchRequest& request, std::size_t index) {
  const MailRecord& first = MailOf(request, 0);
  const MailRecord& own = MailOf(request, index);
  file.Add("MailSender", first.sender);
  file.Add("MailContent", own.content);
  file.Add("MailRecipient", own.recipientAddress);
  file.Add("Mail_SMTP_Server", first.smtpServer);
  file.Add("MailSubject", own.subject);
}

void AddExchangeObject(TextElements& file, const StartupValues& startup, ObjectId exchangeObjectId) {
  file.Add("DataExchangeClassID", startup.TransmittalClassID);
  file.Add("DataExchangeObjID", exchangeObjectId);
  file.Add("DataExObj_StatusAttrName", attribute::kStatusInfo);
  file.Add("ExImpAttrName", attribute::kExchangeType);
  file.Add("ProtocolAttrName", attribute::kProtocol);
  file.Add("URLAttrName", attribute::kRootDirectory);
}

void AddSurroundings(TextElements& file, const Services& services) {
  file.Add("StructureFileName", services.Settings().StructureFileName);
  file.Add("SubExDir", services.Settings().SubExDir);
  file.Add("DBAlias", services.declarations.startup.databaseAlias);
  file.Add("ZipFileName", "Kestrix.zip");
  file.Add("ContinueStatusAttr", attribute::kProcessPhase);
}

void AddFolderStructure(TextElements& file, const StartupValues& startup, const DispatchRequest& request) {
  file.Add("FolderStrucObjIDs", request.selectedFolderStructure);
  file.Add("UseFoldStruc", request.useFolderStructure ? -1 : 0);
  file.Add("FolderStructureNameAttr", attribute::kTargetFolder);
  file.Add("FolderStrucClassID", startup.FolderStructureClassID);
}

void AddCustomTexts(TextElements& file, Trace& trace, const DispatchRequest& request) {
  PassingOver(trace.problems, "Writing the custom texts", [&] {
    int number = 0;
    for (const std::string& text : request.customTexts) {
      file.Add("CustomText_" + std::to_string(++number), text);
      trace.Write("Set the custom Textvalue in the XML data file: " + text);
    }
  });
}

// Empty without settings object.
std::string NeutralFormat(Services& services, const PcSessionPtr& session, const std::string& key,
                          const PcObjectPtr& settings) {
  if (!settings) return {};
  const auto reader = Required(services.declarations.pciniAdminTool, "configuration reader");
  return reader->ReadValue(session, kNeutralSection, key, "", {.object = settings});
}

using NeutralFormatTexts = std::vector<std::string>;

// The texts of the formats, each empty when neither settings object names it.
NeutralFormatTexts ReadNeutralFormats(Services& services, const PcSessionPtr& session,
                                      const PcObjectPtr& contactSettings,
                                      const PcObjectPtr& companySettings) {
  NeutralFormatTexts formats;
  for (const char* key : kNeutralKeys) {
    formats.push_back(NeutralFormat(services, session, key, contactSettings));
    if (formats.back().empty()) formats.back() = NeutralFormat(services, session, key, companySettings);
  }
  return formats;
}

}  // namespace

std::string FileInDirectory(const std::string& directory, const std::string& name) {
  if (!paths::IsPlainFileName(name)) {
    throw RuntimeError(error_number::kPathFileAccess, "Write file: \"" + name + "\" is no plain file name");
  }
  return paths::Join(directory, name);
}

void WriteDataFile(Services& services, PcSession& session, const DispatchRequest& request, std::size_t index,
                   const Recipient& recipient, ObjectId exchangeObjectId) {
  const StartupValues& startup = services.declarations.startup;
  const Configuration& settings = services.Settings();
  TextElements file("DataEx_Datas", FileTimeText(services.platform.clock.Now()) + "_" +
                                        Required(session.CurrentUser(), "current user")->LoginName());
  file.Add("Protocol", services.errors.ProtocolText);
  file.Add("UserSelected_Send_Mode", static_cast<std::int32_t>(request.sendMode));
  AddRecipient(file, recipient);
  if (request.sendMode == SendMode::kMail || request.sendMode == SendMode::kMailStructure) {
    AddMail(file, request, index);
  }
  AddExchangeObject(file, startup, exchangeObjectId);
  AddSurroundings(file, services);
  AddFolderStructure(file, startup, request);
  if (request.sendMode == SendMode::kCustom && settings.b_UseCustomForm) {
    AddCustomTexts(file, services.trace, request);
  }
  file.Save(services, FileInDirectory(recipient.directory, settings.DataFileName));
}

bool HasNeutralFormats(Services& services, const PcSessionPtr& session, const PcObjectPtr& contactSettings,
                       const PcObjectPtr& companySettings) {
  const NeutralFormatTexts formats = ReadNeutralFormats(services, session, contactSettings, companySettings);
  return std::any_of(formats.begin(), formats.end(), [](const std::string& text) { return !text.empty(); });
}

bool WriteNeutralFormats(Services& services, const PcSessionPtr& session, const std::string& directory,
                         const PcObjectPtr& contactSettings, const PcObjectPtr& companySettings) {
  const NeutralFormatTexts formats = ReadNeutralFormats(services, session, contactSettings, companySettings);
  TextElements file("Neutral_Formats", "");
  bool any = false;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    any = any || !formats[i].empty();
    file.Add(kNeutralKeys[i], formats[i]);
  }
  if (any) file.Save(services, FileInDirectory(directory, kNeutralFormatsFile));
  return any;
}

void RemoveNeutralFormats(Services& services, const std::string& directory) {
  const std::string path = FileInDirectory(directory, kNeutralFormatsFile);
  if (services.platform.files.FileExists(path)) services.platform.files.DeleteFile(path);
}

}  // namespace tessel
