// The database as the sender sees it: the values that the rules keep there, and the data exchange objects in
// which it reports. It uses an account of its own.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/session.h"
#include "sender/data_file.h"
#include "sender/settings.h"

namespace tessel::embedded {
class EmbeddedHost;
}

namespace tessel::sender {

enum class Phase { kNew = 1, kContinued = 2, kStopped = 3, kSent = 4 };

// What is reported at a time; one write of the database.
struct Report {
  std::optional<Phase> phase;
  std::string status;
  std::string protocol;       // appended, unless it is there already
  std::string rootDirectory;  // empty: stays
};

class ExchangeRecord {
 public:
  // Error 5 when the data file names attributes or a class in which nobody may report.
  ExchangeRecord(PcSessionPtr session, PcObjectPtr object, const DataFile& data);

  [[nodiscard]] Phase CurrentPhase() const;
  [[nodiscard]] std::string RootDirectory() const;
  [[nodiscard]] std::string Identifier() const;  // "DX-000001"
  // Error: HostError when the database refuses it.
  void Write(const Report& report);

 private:
  PcSessionPtr session_;
  PcObjectPtr object_;
  std::string statusAttribute_;
  std::string protocolAttribute_;
  std::string urlAttribute_;
  std::string phaseAttribute_;
};

// Values of the settings object "Initialization" that is linked to the account's own object.
struct DatabaseRules {
  std::string exchangePath;
  std::string dataFileName;
  std::string mailServer;  // that data files name; may be empty
  bool useUrl = false;
};

class ExchangeDatabase {
 public:
  // Opens the database and logs in. Errors: HostError; 5 for a password file that others may read.
  ExchangeDatabase(const DatabaseLogin& login, FileSystem& files);
  ~ExchangeDatabase();

  [[nodiscard]] std::string Alias() const;
  [[nodiscard]] std::string Language() const { return session_->Language(); }
  [[nodiscard]] const std::string& DatasetPrefix() const { return datasetPrefix_; }
  [[nodiscard]] const DatabaseRules& Rules() const { return rules_; }
  // Nothing when the object is gone. Errors: see ExchangeRecord.
  [[nodiscard]] std::unique_ptr<ExchangeRecord> Find(const DataFile& data) const;
  // The data exchange objects whose path lies in a directory of this base name.
  [[nodiscard]] std::vector<ObjectKey> NamingDirectory(const std::string& base) const;
  // Text of an attribute of some object; empty when the object or the attribute is not there.
  [[nodiscard]] std::string TextOf(const ObjectKey& key, const std::string& attribute) const;

 private:
  class Dialogs;
  std::string datasetPrefix_;
  std::unique_ptr<Dialogs> dialogs_;
  std::unique_ptr<embedded::EmbeddedHost> host_;
  PcSessionPtr session_;
  DatabaseRules rules_;
};

// The configured databases of one thread, opened when they are first needed.
class Databases {
 public:
  Databases(const Settings& settings, FileSystem& files) : settings_(settings), files_(files) {}
  // Opens those that are not open. What failed, one text a database. Error 5 when two have one alias.
  std::vector<std::string> Open();
  // Nothing when no open database has the alias.
  [[nodiscard]] ExchangeDatabase* Find(const std::string& alias) const;
  [[nodiscard]] const std::map<std::string, std::unique_ptr<ExchangeDatabase>>& All() const { return open_; }

 private:
  const Settings& settings_;
  FileSystem& files_;
  std::map<std::string, std::unique_ptr<ExchangeDatabase>> open_;  // by alias
  std::map<std::size_t, std::string> aliases_;                     // by position in the settings
};

// The value of a key in INI text as the database keeps it: lines end with CR LF, an entry has exactly one
// "=", and nothing is trimmed.
[[nodiscard]] std::string RuleValue(const std::string& text, const std::string& section,
                                    const std::string& key, const std::string& defaultText);

}  // namespace tessel::sender
