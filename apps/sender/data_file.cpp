#include "sender/data_file.h"

#include <cstring>
#include <pugixml.hpp>

#include "host/error.h"
#include "host/value.h"
#include "platform/paths.h"
#include "sender/status_texts.h"

namespace tessel::sender {
namespace {

[[noreturn]] void Refuse(StatusText why, std::vector<std::string> values = {}) {
  throw Reason(why, std::move(values));
}

class Elements {
 public:
  explicit Elements(const pugi::xml_node& root) : root_(root) {}

  [[nodiscard]] std::string Text(const char* name) const {
    const pugi::xml_node element = root_.child(name);
    if (!element) Refuse(StatusText::kDataNoElement, {name});
    if (element.next_sibling(name)) Refuse(StatusText::kDataTwice, {name});
    return element.text().get();
  }
  // The empty text when the element is missing, as in the send modes that have no mail.
  [[nodiscard]] std::string Optional(const char* name) const {
    return root_.child(name) ? Text(name) : std::string();
  }
  [[nodiscard]] std::int32_t Number(const char* name) const {
    const std::string text = Text(name);
    try {
      return ParseInt32(text);
    } catch (const RuntimeError&) {
      Refuse(StatusText::kDataNoNumber, {name, text});
    }
  }
  [[nodiscard]] ObjectKey Key(const char* classElement, const char* objectElement) const {
    const std::int32_t classId = Number(classElement);
    if (classId < INT16_MIN || classId > INT16_MAX) Refuse(StatusText::kDataNoClass, {classElement});
    return {static_cast<ClassId>(classId), Number(objectElement)};
  }
  [[nodiscard]] std::string FileName(const char* name) const {
    std::string text = Text(name);
    if (!paths::IsPlainFileName(text)) Refuse(StatusText::kDataFileName, {name, text});
    return text;
  }

 private:
  pugi::xml_node root_;
};

SendMode ModeOf(std::int32_t number) {
  if (number < 1 || number > 5) Refuse(StatusText::kDataNoMode, {std::to_string(number)});
  return static_cast<SendMode>(number);
}

void ReadMail(const Elements& elements, DataFile& file) {
  file.mailSender = elements.Text("MailSender");
  file.mailContent = elements.Text("MailContent");
  file.mailRecipient = elements.Text("MailRecipient");
  file.mailServer = elements.Text("Mail_SMTP_Server");
  file.mailSubject = elements.Text("MailSubject");
}

void ReadNames(const Elements& elements, DataFile& file) {
  file.statusAttribute = elements.Text("DataExObj_StatusAttrName");
  file.typeAttribute = elements.Text("ExImpAttrName");
  file.protocolAttribute = elements.Text("ProtocolAttrName");
  file.urlAttribute = elements.Text("URLAttrName");
  file.phaseAttribute = elements.Text("ContinueStatusAttr");
  file.structureFileName = elements.FileName("StructureFileName");
  file.zipFileName = elements.FileName("ZipFileName");
  file.subdirectory = elements.Text("SubExDir");
  if (!file.subdirectory.empty()) file.subdirectory = elements.FileName("SubExDir");
  file.databaseAlias = elements.Text("DBAlias");
}

}  // namespace

ObjectKey ObjectIn(std::string_view bytes) {
  const auto number = [&](const std::string& element) -> std::int32_t {
    const std::string begin = "<" + element + ">";
    const auto at = bytes.find(begin);
    if (at == std::string_view::npos || bytes.find(begin, at + 1) != std::string_view::npos) return 0;
    const std::string_view rest = bytes.substr(at + begin.size());
    const auto end = rest.find("</" + element + ">");
    if (end == std::string_view::npos || rest.find_first_not_of("0123456789") != end) return 0;
    try {
      return ParseInt32(std::string(rest.substr(0, end)));
    } catch (const RuntimeError&) {
      return 0;
    }
  };
  const std::int32_t classId = number("DataExchangeClassID");
  const std::int32_t objectId = number("DataExchangeObjID");
  if (classId < 1 || classId > INT16_MAX || objectId < 1) return {};
  return {static_cast<ClassId>(classId), objectId};
}

DataFile ParseDataFile(std::string_view bytes) {
  pugi::xml_document document;
  // The reader would pass over a NUL, and over a document type that brings entities.
  if (bytes.find('\0') != std::string_view::npos) Refuse(StatusText::kDataNul);
  const pugi::xml_parse_result parsed =
      document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
  if (!parsed) Refuse(StatusText::kDataNoXml, {parsed.description()});
  const pugi::xml_node root = document.document_element();
  if (std::strcmp(root.name(), "DataEx_Datas") != 0) Refuse(StatusText::kDataRoot, {root.name()});
  const Elements elements(root);
  DataFile file;
  file.stamp = root.text().get();
  file.protocol = elements.Text("Protocol");
  file.mode = ModeOf(elements.Number("UserSelected_Send_Mode"));
  file.company = elements.Key("CustomerObjClassID", "CustomerObjObjectId");
  file.contact = elements.Key("ContactPersObjClassID", "ContactPersObjObjectId");
  if (file.mode == SendMode::kMail || file.mode == SendMode::kMailStructure) ReadMail(elements, file);
  file.exchange = elements.Key("DataExchangeClassID", "DataExchangeObjID");
  ReadNames(elements, file);
  for (int number = 1; root.child(("CustomText_" + std::to_string(number)).c_str()); ++number)
    file.customTexts.push_back(elements.Text(("CustomText_" + std::to_string(number)).c_str()));
  return file;
}

bool IsNeutralFormats(std::string_view bytes) {
  pugi::xml_document document;
  return document.load_buffer(bytes.data(), bytes.size()) &&
         std::strcmp(document.document_element().name(), "Neutral_Formats") == 0;
}

}  // namespace tessel::sender
