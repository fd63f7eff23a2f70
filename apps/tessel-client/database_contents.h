// What the client's lists show of a database: documents, what hangs below them, data exchanges. Everything is
// read through the host's own interface.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/object_key.h"
#include "host/session.h"

namespace tessel::client {

struct DocumentRow {
  ObjectKey key;
  QString className;
  QString number;
  QString revision;
  QString description;
  int state = 0;  // 0 when it has none
  QString lockedBy;
};

constexpr int kPhaseStopped = 3;
constexpr int kPhaseSent = 4;

struct ExchangeRow {
  ObjectKey key;
  QString number;
  QString date;    // "2024-03-05 10:15:00"; empty when the directory does not say
  QString sender;  // login name; as the date
  int documents = 0;
  int phase = 0;
  QString status;
  QString company;
  QString contact;
  QString directory;
  QString workDirectory;  // under its temporary name, as the protocol tells it; empty when it does not
};

// The folder of a data exchange object's directory, which may name a file in it.
[[nodiscard]] QString FolderOf(const QString& directory);

// Sets the directory, and the date and sender that its name tells.
void SetDirectory(ExchangeRow& row, const QString& directory);

// The data exchange object that the data file in a finished directory names; nothing when there is none.
[[nodiscard]] std::optional<ObjectKey> RecordOf(const QString& nativeFolder);

// Where an exchange lies whose record does not say it yet: in the folder of its work directory, under the
// name that it got at last. Folders are listed once each and kept in `listed`. Empty when it is not to be
// found.
using NativePathOf = std::function<QString(const QString&)>;
[[nodiscard]] QString FindDirectory(const QString& workDirectory, const ObjectKey& record,
                                    const NativePathOf& native, std::map<QString, QStringList>& listed);

class DatabaseContents {
 public:
  explicit DatabaseContents(PcSessionPtr session);

  // Documents that can be exchanged, by class and object id. Errors: HostError.
  [[nodiscard]] std::vector<DocumentRow> Documents() const;
  // The newest first.
  [[nodiscard]] std::vector<ExchangeRow> Exchanges() const;
  // Empty for an exchange that is gone.
  [[nodiscard]] QString ProtocolOf(const ObjectKey& exchange) const;
  // What hangs directly below a document, in the order of the links; objects of other classes are left out.
  [[nodiscard]] std::vector<ObjectKey> Below(const ObjectKey& key) const;
  // The number of an object; its key when it has none.
  [[nodiscard]] QString NumberOf(const ObjectKey& key) const;
  // The documents that the session has collected for the next export.
  [[nodiscard]] std::vector<ObjectKey> Collected() const;

  [[nodiscard]] QIcon IconOf(ClassId classId) const;
  [[nodiscard]] bool IsDocument(ClassId classId) const;

 private:
  [[nodiscard]] std::vector<PcClassPtr> ClassesOf(const char* mechanism) const;
  void AddDocuments(const PcClass& objectClass, std::vector<DocumentRow>& rows) const;
  [[nodiscard]] std::map<ObjectId, QString> Logins() const;
  void AddExchanges(const PcClass& objectClass, std::vector<ExchangeRow>& rows) const;
  // How many documents hang below each object of a class.
  [[nodiscard]] std::map<ObjectId, int> DocumentCounts(const PcClass& objectClass) const;

  PcSessionPtr session_;
  QString iconDirectory_;
  std::map<ObjectId, QString> logins_;  // by object of the user
  mutable std::map<ClassId, QIcon> icons_;
};

}  // namespace tessel::client
