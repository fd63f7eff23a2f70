#include "sender/record.h"

#include <set>

#include "embedded/embedded_host.h"
#include "host/error.h"
#include "host/names.h"
#include "sender/root_directory.h"
#include "sender/status_texts.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kMostStatus = 250;  // bytes; installed databases have 255

// At most so many bytes of UTF-8, ended behind a whole character.
std::string Shortened(const std::string& text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t end = most - 3;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
    --end;
  return text.substr(0, end) + "...";
}

// Exchanges of two databases could not be told apart.
struct DoubleAlias {
  std::string alias;
};

// Attributes that somebody may report in: there, different, and no part of the object's identity.
void CheckAttributes(const PcClass& objectClass, const std::vector<std::string>& names) {
  std::set<std::string> seen;
  for (const std::string& name : names) {
    const PcAttributePtr attribute = objectClass.FindAttribute(name);
    if (!attribute) throw Reason(StatusText::kDataNoAttribute, {objectClass.Name(), name});
    if (!seen.insert(name).second || attribute->IsIdentifying(name) || name == attribute::kClassId ||
        name == attribute::kObjectId)
      throw Reason(StatusText::kDataForeign, {name});
  }
}

std::string Password(const DatabaseLogin& login, const FileSystem& files) {
  if (login.passwordFile.empty()) return {};
  const std::string why = WhyNotPrivate(files.NativePath(login.passwordFile));
  if (!why.empty()) {
    throw RuntimeError(error_number::kInvalidCall,
                       "The password file " + login.passwordFile + " is not used: " + why);
  }
  const std::string text = files.ReadBytes(login.passwordFile);
  return text.substr(0, text.find_first_of("\r\n"));
}

// Objects of class "Admin Setting" that are linked to an object; nothing when there can be none.
PcRecordListPtr LinkedSettings(PcSession& session, const PcObject& base) {
  const ClassId settingClass = session.MetaData()->ClassIdByName(admin_setting::kClassName);
  if (settingClass == 0) return nullptr;
  const PcMetaDataPtr metaData = session.MetaData();
  auto links = metaData->LinkClassesBetween(base.GetClassId(), settingClass);
  if (links.empty()) links = metaData->LinkClassesBetween(settingClass, base.GetClassId());
  if (links.empty()) return nullptr;
  const PcAttributeListPtr attributes = session.ObjectStore()->NewAttributeList();
  attributes->Add(settingClass, "*", "S");
  attributes->Add(links.front()->Id(), "*", "L");
  return base.Relations(*attributes, *session.NewBehavior());
}

std::string RulesText(PcSession& session) {
  const PcUserPtr user = Required(session.CurrentUser(), "user");
  const PcObjectPtr base = user->UserObject();
  const PcRecordListPtr rows = base ? LinkedSettings(session, *base) : nullptr;
  for (int row = 0; rows && row < rows->RowCount(); ++row) {
    if (rows->GetValue(admin_setting::kNameAttribute, row).AsText() == admin_setting::kSetName)
      return rows->GetValue(admin_setting::kTextAttribute, row).AsText();
  }
  throw HostError(
      "The account \"" + user->LoginName() +
      "\" is linked to no admin setting \"Initialization\"; link it to the one of the other users");
}

}  // namespace

std::string RuleValue(const std::string& text, const std::string& section, const std::string& key,
                      const std::string& defaultText) {
  bool inside = false;
  for (const std::string& line : SplitText(text, "\r\n")) {
    if (line.starts_with('[')) {
      if (inside) break;
      inside = line.starts_with("[" + section + "]");
    } else if (inside) {
      const auto parts = SplitText(line, "=");
      if (parts.size() == 2 && parts[0] == key) return parts[1];
    }
  }
  return defaultText;
}

ExchangeRecord::ExchangeRecord(PcSessionPtr session, PcObjectPtr object, const DataFile& data)
    : session_(std::move(session)),
      object_(std::move(object)),
      statusAttribute_(data.statusAttribute),
      protocolAttribute_(data.protocolAttribute),
      urlAttribute_(data.urlAttribute),
      phaseAttribute_(data.phaseAttribute) {
  const PcClassPtr objectClass = object_->Class();
  const PcClassMechanismPtr mechanism = session_->MetaData()->ClassMechanism(class_mechanism::kTransmittal);
  if (!mechanism || !mechanism->Supports(objectClass->Id()))
    throw Reason(StatusText::kDataOtherClass, {objectClass->Name()});
  CheckAttributes(*objectClass, {statusAttribute_, protocolAttribute_, urlAttribute_, phaseAttribute_});
}

Phase ExchangeRecord::CurrentPhase() const {
  const Value phase = object_->GetValue(phaseAttribute_);
  const std::int32_t number = phase.IsNull() ? 1 : phase.AsInt32();
  return number >= 1 && number <= 4 ? static_cast<Phase>(number) : Phase::kNew;
}

std::string ExchangeRecord::RootDirectory() const {
  return object_->GetText(urlAttribute_);
}

std::string ExchangeRecord::Identifier() const {
  const PcClassPtr objectClass = object_->Class();
  for (int i = 0; i < objectClass->AttributeCount(); ++i) {
    const std::string name = objectClass->Attribute(i)->Name();
    if (objectClass->Attribute(i)->IsIdentifying(name)) return object_->GetText(name);
  }
  return ObjectKeyText(object_->Key(), '_');
}

void ExchangeRecord::Write(const Report& report) {
  object_->ReadData();
  if (report.phase) object_->SetValue(phaseAttribute_, Value(static_cast<std::int32_t>(*report.phase)));
  object_->SetValue(statusAttribute_, Value(Shortened(report.status, kMostStatus)));
  if (!report.rootDirectory.empty()) object_->SetValue(urlAttribute_, Value(report.rootDirectory));
  const std::string protocol = object_->GetText(protocolAttribute_);
  // A report that was written before a crash is written again after it.
  if (!report.protocol.empty() && protocol.find(report.protocol) == std::string::npos)
    object_->SetValue(protocolAttribute_, Value(protocol + report.protocol));
  const PcBehaviorPtr behavior = session_->NewBehavior();
  behavior->Set(1, 2);
  for (int setting = 2; setting <= 4; ++setting)
    behavior->Set(setting, 0);
  if (const int code = object_->Update(*behavior); code != 0) {
    throw HostError("The database refused the status of " + Identifier() + ", code " + std::to_string(code),
                    code);
  }
}

class ExchangeDatabase::Dialogs : public embedded::UnattendedDialogs {};

ExchangeDatabase::ExchangeDatabase(const DatabaseLogin& login, FileSystem& files)
    : datasetPrefix_(login.odettePrefix), dialogs_(std::make_unique<Dialogs>()) {
  embedded::HostOptions options;
  options.files = &files;
  options.dialogs = dialogs_.get();
  host_ = std::make_unique<embedded::EmbeddedHost>(login.path, options);
  session_ = host_->OpenSession(login.user, Password(login, files), login.language);
  const std::string text = RulesText(*session_);
  rules_.exchangePath = RuleValue(text, "Path", "ExchangePath", "C:\\temp\\Exchange");
  rules_.dataFileName = RuleValue(text, "ini_xml", "DataFileName", "Kestrix_Data.xml");
  rules_.mailServer = RuleValue(text, "Mail", "SMTPServer", "");
  rules_.useUrl = ParseBoolean(RuleValue(text, "AddInis", "UseURL2RefExDir", "False"));
}

ExchangeDatabase::~ExchangeDatabase() {
  if (session_) session_->Close();
}

std::string ExchangeDatabase::Alias() const {
  return host_->Alias();
}

std::unique_ptr<ExchangeRecord> ExchangeDatabase::Find(const DataFile& data) const {
  PcObjectPtr object = session_->ObjectStore()->Object(data.exchange);
  if (!object) return nullptr;
  return std::make_unique<ExchangeRecord>(session_, std::move(object), data);
}

std::vector<ObjectKey> ExchangeDatabase::NamingDirectory(const std::string& base) const {
  const std::string path = DataFile{}.urlAttribute;
  std::vector<ObjectKey> keys;
  const PcClassMechanismPtr mechanism = session_->MetaData()->ClassMechanism(class_mechanism::kTransmittal);
  for (int i = 0; mechanism && i < mechanism->SupportedClassCount(); ++i) {
    const PcClassPtr objectClass = mechanism->SupportedClass(i);
    if (!objectClass->FindAttribute(path)) continue;
    const PcQueryPtr query = session_->ObjectStore()->NewQuery();
    query->SetClass(objectClass->Id());
    for (const std::string& column :
         {std::string(attribute::kClassId), std::string(attribute::kObjectId), path})
      query->AddSelect(column);
    const PcRecordListPtr rows = query->Run();
    for (int row = 0; row < rows->RowCount(); ++row) {
      if (LiesIn(rows->GetValue(std::string_view(path), row).AsText(), base))
        keys.push_back(rows->KeyOfRow(row));
    }
  }
  return keys;
}

std::string ExchangeDatabase::TextOf(const ObjectKey& key, const std::string& attribute) const {
  const PcObjectPtr object = session_->ObjectStore()->Object(key);
  return object && object->HasAttribute(attribute) ? object->GetText(attribute) : std::string();
}

std::vector<std::string> Databases::Open() {
  std::vector<std::string> problems;
  for (std::size_t i = 0; i < settings_.databases.size(); ++i) {
    if (aliases_.contains(i)) continue;
    try {
      auto database = std::make_unique<ExchangeDatabase>(settings_.databases[i], files_);
      const std::string alias = database->Alias();
      if (open_.contains(alias)) throw DoubleAlias{alias};
      aliases_[i] = alias;
      open_.emplace(alias, std::move(database));
    } catch (const DoubleAlias& error) {
      throw RuntimeError(error_number::kInvalidCall, "The settings name two databases with the alias \"" +
                                                         error.alias + "\", the second of them " +
                                                         settings_.databases[i].path);
    } catch (const std::exception& error) {
      problems.push_back(settings_.databases[i].path + ": " + error.what());
    }
  }
  return problems;
}

ExchangeDatabase* Databases::Find(const std::string& alias) const {
  const auto found = open_.find(alias);
  return found == open_.end() ? nullptr : found->second.get();
}

}  // namespace tessel::sender
