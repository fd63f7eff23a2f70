// A machine with the embedded host on it: a database in memory (or on a server) with a vault, and a session
// of anna.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/embedded_host.h"
#include "embedded/store/new_database.h"
#include "host/error.h"
#include "support/machine.h"
#include "support/rows.h"
#include "support/test_database.h"

namespace tessel::test {

// For a host on a machine; the vault is the folder "vault".
inline embedded::HostOptions HostOptionsOf(Machine& machine, embedded::HostDialogs& dialogs) {
  embedded::HostOptions options;
  options.files = &machine.platform.files;
  options.dialogs = &dialogs;
  options.vaultPath = machine.folder.MakeFolder("vault");
  return options;
}

// A text as JSON writes it.
inline std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character == '\r' ? "\\r" : character == '\n' ? "\\n" : std::string(1, character);
  }
  return quoted + "\"";
}

class HostedMachine : public Machine {
 public:
  // Gives the text of a model, and writes the files that it names into the folder "model".
  using ModelWriter = std::function<std::string(const TemporaryFolder& folder)>;

  // The dialogs outlive the machine.
  HostedMachine(embedded::HostDialogs& dialogs, const ModelWriter& model, const std::string& password = {},
                bool clientRuns = true)
      : host(NewHost(model(folder), Options(dialogs, clientRuns))),
        session(host.OpenSession("anna", password)) {}

  // Error 91 when it does not exist.
  [[nodiscard]] PcObjectPtr Object(const ObjectKey& key) const {
    return Required(session->ObjectStore()->Object(key), "object of the test");
  }
  // Value of an attribute of an object as it stands in the database.
  [[nodiscard]] std::string Stored(const ObjectKey& key, const std::string& attribute) const {
    return Object(key)->GetText(attribute);
  }
  // Writes attributes of an object.
  void Set(const ObjectKey& key, const std::vector<std::pair<std::string, Value>>& values) const {
    const PcObjectPtr object = Object(key);
    for (const auto& [name, value] : values)
      object->SetValue(name, value);
    if (object->Update(*session->NewBehavior()) != 0) throw HostError("The test cannot write");
  }
  // Text of a value of the session's global data; "Null" when it is not there.
  [[nodiscard]] std::string GlobalText(const std::string& name) const {
    const Value value = session->GlobalData().Get(name);
    return value.IsNull() ? "Null" : value.AsText();
  }
  // What a query gives: cells separated by "|", Null as "-", rows by "; ".
  [[nodiscard]] std::string Rows(const std::string& sql) const { return QueryRows(*session, sql); }

  embedded::EmbeddedHost host;
  PcSessionPtr session;

 private:
  // In memory, or, in a run over PostgreSQL, on the server.
  embedded::EmbeddedHost NewHost(const std::string& model, const embedded::HostOptions& options) {
    if (!OnServer()) return {model, folder.Path("model"), options};
    std::filesystem::remove(options.vaultPath);
    const std::string place = NewServerPlace(platform.files) + "&vault=" + options.vaultPath;
    embedded::CreateDatabase(platform.files, place, folder.Write("model/model.json", model));
    return {place, options};
  }

  embedded::HostOptions Options(embedded::HostDialogs& dialogs, bool clientRuns) {
    embedded::HostOptions options = HostOptionsOf(*this, dialogs);
    options.clientRuns = clientRuns;
    return options;
  }
};

}  // namespace tessel::test
