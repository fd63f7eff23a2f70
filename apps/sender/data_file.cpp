#include "sender/data_file.h"

#include <cstring>
#include <pugixml.hpp>

#include "host/error.h"
#include "host/value.h"
#include "platform/paths.h"

namespace tessel::sender {
namespace {

[[noreturn]] void Refuse(const std::string& what) {
  throw RuntimeError(error_number::kInvalidCall, "The data file is damaged: " + what);
}

class Elements {
 public:
  explicit Elements(const pugi::xml_node& root) : root_(root) {}

  [[nodiscard]] std::string Text(const char* name) const {
    const pugi::xml_node element = root_.child(name);
    if (!element) Refuse(std::string("it has no element \"") + name + "\"");
    if (element.next_sibling(name)) Refuse(std::string("it has a second element \"") + name + "\"");
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
      Refuse(std::string("\"") + name + "\" is no number but \"" + text + "\"");
    }
  }
  [[nodiscard]] ObjectKey Key(const char* classElement, const char* objectElement) const {
    const std::int32_t classId = Number(classElement);
    if (classId < INT16_MIN || classId > INT16_MAX)
      Refuse(std::string("\"") + classElement + "\" is no class id");
    return {static_cast<ClassId>(classId), Number(objectElement)};
  }
  [[nodiscard]] std::string FileName(const char* name) const {
    std::string text = Text(name);
    if (!paths::IsPlainFileName(text)) {
      Refuse(std::string("\"") + name + "\" is no plain file name but \"" + text + "\"");
    }
    return text;
  }

 private:
  pugi::xml_node root_;
};

SendMode ModeOf(std::int32_t number) {
  if (number < 1 || number > 5) Refuse("there is no send mode " + std::to_string(number));
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

DataFile ParseDataFile(std::string_view bytes) {
  pugi::xml_document document;
  // The reader would pass over a NUL, and over a document type that brings entities.
  if (bytes.find('\0') != std::string_view::npos) Refuse("it holds a NUL character");
  const pugi::xml_parse_result parsed =
      document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
  if (!parsed) Refuse(std::string("it is no XML: ") + parsed.description());
  const pugi::xml_node root = document.document_element();
  if (std::strcmp(root.name(), "DataEx_Datas") != 0)
    Refuse(std::string("its root is \"") + root.name() + "\"");
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

}  // namespace tessel::sender
