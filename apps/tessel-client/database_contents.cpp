#include "database_contents.h"

#include <QDir>
#include <QRegularExpression>
#include <algorithm>
#include <initializer_list>

#include "embedded/embedded_host.h"
#include "host/error.h"
#include "host/names.h"
#include "qt/text.h"
#include "selection/selection.h"

namespace tessel::client {
namespace {

using qt::ToQt;

// Attributes of documents.
constexpr const char* kRevision = "REVISION";
// Attributes of data exchange objects.

std::string IdentifyingAttribute(const PcClass& objectClass) {
  for (int index = 0; index < objectClass.AttributeCount(); ++index) {
    const PcAttributePtr attribute = objectClass.Attribute(index);
    if (attribute->IsIdentifying(attribute->Name())) return attribute->Name();
  }
  return {};
}

// Every object of a class with some attributes, as far as the class has them.
PcRecordListPtr AllOf(PcSession& session, const PcClass& objectClass,
                      std::initializer_list<std::string> attributes) {
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetClass(objectClass.Id());
  query->AddSelect(attribute::kClassId);
  query->AddSelect(attribute::kObjectId);
  for (const std::string& attribute : attributes) {
    if (objectClass.FindAttribute(attribute)) query->AddSelect(attribute);
  }
  return query->Run();
}

// One row of a result; what a class does not have is empty.
class Row {
 public:
  Row(const PcRecordList& list, int row) : list_(list), row_(row) {}
  [[nodiscard]] Value Get(const std::string& name) const {
    return list_.HasColumn(name) ? list_.GetValue(std::string_view(name), row_) : Value();
  }
  [[nodiscard]] QString Text(const std::string& name) const { return ToQt(Get(name).AsText()); }
  [[nodiscard]] int Number(const std::string& name) const {
    const Value value = Get(name);
    return value.IsNull() ? 0 : value.AsInt32();
  }
  [[nodiscard]] bool Flag(const std::string& name) const {
    const Value value = Get(name);
    return !value.IsNull() && value.AsBoolean();
  }

 private:
  const PcRecordList& list_;
  int row_;
};

constexpr QLatin1String kWorkMark("@@");

QString FileNameOf(const QString& path) {
  return path.mid(std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/'))) + 1);
}

// What a protocol says of the directory while it was filled, in whatever words around it.
QString WorkDirectoryIn(const QString& protocol) {
  static const QRegularExpression path(
      QStringLiteral("(?:[A-Za-z]:[\\\\/]|[\\\\/])[^\r\n]*[\\\\/]@@_[^\\\\/\r\n]+_\\d{8}_\\d{6}"));
  return path.match(protocol).captured(0);
}

}  // namespace

QString FolderOf(const QString& directory) {
  const auto cut =
      std::max(directory.lastIndexOf(QLatin1Char('\\')), directory.lastIndexOf(QLatin1Char('/')));
  const bool namesFile = directory.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
  return namesFile && cut > 0 ? directory.left(cut) : directory;
}

void SetDirectory(ExchangeRow& row, const QString& directory) {
  // The name of an exchange directory says who sent it and when.
  static const QRegularExpression name(
      QStringLiteral("[^_\\\\/]+_([^\\\\/]+)_(\\d{4})(\\d\\d)(\\d\\d)_(\\d\\d)(\\d\\d)(\\w\\w)[^\\\\/]*$"));
  row.directory = directory;
  const QRegularExpressionMatch match = name.match(FolderOf(directory));
  if (!match.hasMatch()) return;
  row.sender = match.captured(1);
  row.date =
      QStringLiteral("%1-%2-%3 %4:%5")
          .arg(match.captured(2), match.captured(3), match.captured(4), match.captured(5), match.captured(6));
  // The directories of further recipients have a letter in their seconds.
  bool seconds = false;
  static_cast<void>(match.captured(7).toInt(&seconds));
  if (seconds) row.date += QLatin1Char(':') + match.captured(7);
}

QString FindDirectory(const QString& workDirectory, const ObjectKey& record, const NativePathOf& native,
                      std::map<QString, QStringList>& listed) {
  const QString name = FileNameOf(workDirectory);
  const QString base = workDirectory.chopped(name.size());
  // The mark in front becomes the prefix, and the directories of further recipients differ in their end.
  if (name.size() <= kWorkMark.size()) return {};
  const QString inside = name.mid(kWorkMark.size()).chopped(1);
  const QString folder = native(base);
  const auto [known, fresh] = listed.try_emplace(folder);
  if (fresh) known->second = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  for (const QString& entry : known->second) {
    if (entry.contains(inside) && RecordOf(QDir(folder).filePath(entry)) == record) return base + entry;
  }
  return {};
}

std::optional<ObjectKey> RecordOf(const QString& nativeFolder) {
  static const QRegularExpression record(QStringLiteral(
      "<DataExchangeClassID>(\\d+)</DataExchangeClassID>\\s*<DataExchangeObjID>(\\d+)</DataExchangeObjID>"));
  constexpr qint64 kMostBytes = 1 << 20;
  for (const QFileInfo& info : QDir(nativeFolder).entryInfoList({QStringLiteral("*.xml")}, QDir::Files)) {
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly)) continue;
    const auto match = record.match(QString::fromLatin1(file.read(kMostBytes)));
    if (match.hasMatch())
      return ObjectKey{static_cast<ClassId>(match.captured(1).toInt()), match.captured(2).toInt()};
  }
  return std::nullopt;
}

DatabaseContents::DatabaseContents(PcSessionPtr session)
    : session_(std::move(session)),
      iconDirectory_(ToQt(session_->ConfigurationValue(embedded::kIconsDirKey))),
      logins_(Logins()) {}

std::map<ObjectId, QString> DatabaseContents::Logins() const {
  std::map<ObjectId, QString> logins;
  for (const PcUserPtr& user : session_->Users()) {
    if (const PcObjectPtr object = user->UserObject())
      logins.emplace(object->GetObjectId(), ToQt(user->LoginName()));
  }
  return logins;
}

std::vector<PcClassPtr> DatabaseContents::ClassesOf(const char* mechanism) const {
  std::vector<PcClassPtr> classes;
  const PcClassMechanismPtr found = session_->MetaData()->ClassMechanism(mechanism);
  for (int index = 0; found && index < found->SupportedClassCount(); ++index)
    classes.push_back(found->SupportedClass(index));
  return classes;
}

std::vector<DocumentRow> DatabaseContents::Documents() const {
  std::vector<DocumentRow> rows;
  for (const PcClassPtr& objectClass : ClassesOf(class_mechanism::kExchangeDocument))
    AddDocuments(*objectClass, rows);
  return rows;
}

void DatabaseContents::AddDocuments(const PcClass& objectClass, std::vector<DocumentRow>& rows) const {
  const std::string number = IdentifyingAttribute(objectClass);
  const PcRecordListPtr list = AllOf(*session_, objectClass,
                                     {number, kRevision, attribute::kDescription, attribute::kState,
                                      attribute::kLockState, attribute::kLockedBy});
  for (int position = 0; position < list->RowCount(); ++position) {
    const Row row(*list, position);
    DocumentRow document{list->KeyOfRow(position),
                         ToQt(objectClass.Name()),
                         row.Text(number),
                         row.Text(kRevision),
                         row.Text(attribute::kDescription),
                         row.Number(attribute::kState),
                         {}};
    if (row.Flag(attribute::kLockState)) {
      const auto login = logins_.find(row.Number(attribute::kLockedBy));
      document.lockedBy = login == logins_.end() ? QStringLiteral("?") : login->second;
    }
    rows.push_back(std::move(document));
  }
}

std::map<ObjectId, int> DatabaseContents::DocumentCounts(const PcClass& objectClass) const {
  std::map<ObjectId, int> counts;
  const PcClassPtr link = session_->MetaData()->ClassById(objectClass.DefaultHierarchicalLinkClassId());
  if (!link) return counts;
  const PcQueryPtr query = session_->ObjectStore()->NewQuery();
  query->SetSql("select OBJECT_ID1, CLASS_ID2 from " + link->TableName() +
                " where CLASS_ID1 = " + std::to_string(objectClass.Id()));
  const PcRecordListPtr list = query->Run();
  for (int row = 0; row < list->RowCount(); ++row) {
    if (IsDocument(list->GetValue(attribute::kClassId2, row).AsInt16()))
      ++counts[list->GetValue(attribute::kObjectId1, row).AsInt32()];
  }
  return counts;
}

void DatabaseContents::AddExchanges(const PcClass& objectClass, std::vector<ExchangeRow>& rows) const {
  const std::string number = IdentifyingAttribute(objectClass);
  const PcRecordListPtr list =
      AllOf(*session_, objectClass,
            {number, attribute::kProcessPhase, attribute::kStatusInfo, attribute::kSendToCompany,
             attribute::kSendToContact, attribute::kRootDirectory, attribute::kProtocol});
  std::map<ObjectId, int> counts = DocumentCounts(objectClass);
  for (int position = 0; position < list->RowCount(); ++position) {
    const Row row(*list, position);
    const ObjectKey key = list->KeyOfRow(position);
    rows.push_back({key,
                    row.Text(number),
                    {},
                    {},
                    counts[key.objectId],
                    row.Number(attribute::kProcessPhase),
                    row.Text(attribute::kStatusInfo),
                    row.Text(attribute::kSendToCompany),
                    row.Text(attribute::kSendToContact),
                    {},
                    WorkDirectoryIn(row.Text(attribute::kProtocol))});
    ExchangeRow& exchange = rows.back();
    // The record has its directory from the program that sends it; who made it and when, the protocol tells.
    SetDirectory(exchange, exchange.workDirectory);
    SetDirectory(exchange, row.Text(attribute::kRootDirectory));
  }
}

std::vector<ExchangeRow> DatabaseContents::Exchanges() const {
  std::vector<ExchangeRow> rows;
  for (const PcClassPtr& objectClass : ClassesOf(class_mechanism::kTransmittal))
    AddExchanges(*objectClass, rows);
  std::stable_sort(rows.begin(), rows.end(), [](const ExchangeRow& first, const ExchangeRow& second) {
    return first.key.objectId > second.key.objectId;
  });
  return rows;
}

QString DatabaseContents::ProtocolOf(const ObjectKey& exchange) const {
  const PcObjectPtr object = session_->ObjectStore()->Object(exchange);
  if (!object || !object->HasAttribute(attribute::kProtocol)) return {};
  object->ReadData();
  return ToQt(object->GetText(attribute::kProtocol));
}

std::vector<ObjectKey> DatabaseContents::Below(const ObjectKey& key) const {
  std::vector<ObjectKey> keys;
  const PcMetaDataPtr metaData = session_->MetaData();
  const PcClassPtr objectClass = metaData->ClassById(key.classId);
  const PcClassPtr link =
      objectClass ? metaData->ClassById(objectClass->DefaultHierarchicalLinkClassId()) : nullptr;
  if (!link) return keys;
  const PcQueryPtr query = session_->ObjectStore()->NewQuery();
  query->SetSql("select CLASS_ID2, OBJECT_ID2 from " + link->TableName() +
                " where CLASS_ID1 = " + std::to_string(key.classId) +
                " and OBJECT_ID1 = " + std::to_string(key.objectId) + " order by OBJECT_ID");
  const PcRecordListPtr list = query->Run();
  for (int row = 0; row < list->RowCount(); ++row) {
    const ObjectKey below{list->GetValue(attribute::kClassId2, row).AsInt16(),
                          list->GetValue(attribute::kObjectId2, row).AsInt32()};
    if (IsDocument(below.classId)) keys.push_back(below);
  }
  return keys;
}

QString DatabaseContents::NumberOf(const ObjectKey& key) const {
  const PcObjectPtr object = session_->ObjectStore()->Object(key);
  QString number;
  if (object) {
    object->ReadData();
    const std::string attribute = IdentifyingAttribute(*object->Class());
    if (!attribute.empty()) number = ToQt(object->GetText(attribute));
  }
  return number.isEmpty() ? ToQt(ObjectKeyText(key, ':')) : number;
}

std::vector<ObjectKey> DatabaseContents::Collected() const {
  std::vector<ObjectKey> keys;
  const PcGlobalData& data = session_->GlobalData();
  const Value count = data.Get(global_data::kCount);
  for (int number = 1; !count.IsNull() && number <= count.AsInt32(); ++number) {
    const std::string text = data.Get(global_data::ObjectName(number)).AsText();
    const auto colon = text.find(':');
    if (colon == std::string::npos) continue;
    keys.push_back({ParseInt16(text.substr(0, colon)), ParseInt32(text.substr(colon + 1))});
  }
  return keys;
}

QIcon DatabaseContents::IconOf(ClassId classId) const {
  const auto known = icons_.find(classId);
  if (known != icons_.end()) return known->second;
  const PcClassPtr objectClass = session_->MetaData()->ClassById(classId);
  QIcon icon;
  if (objectClass && !objectClass->IconFileName().empty())
    icon = QIcon(QDir(iconDirectory_).filePath(ToQt(objectClass->IconFileName())));
  icons_.emplace(classId, icon);
  return icon;
}

bool DatabaseContents::IsDocument(ClassId classId) const {
  const PcClassMechanismPtr mechanism =
      session_->MetaData()->ClassMechanism(class_mechanism::kExchangeDocument);
  return mechanism && mechanism->Supports(classId);
}

}  // namespace tessel::client
