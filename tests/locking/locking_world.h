// The company with three exchanges of its gearbox, and programs of several users on it.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "selection/start_up.h"
#include "support/company.h"
#include "support/onlooker.h"
#include "support/program_services.h"

namespace tessel::test {

// The company, to which come the assembly 1201:6 "A-6" and the exchanges 900:17, 900:42 and 900:30 of the
// gearbox, the second linked the other way round.
[[nodiscard]] CompanyOptions LockingCompany(const SettingLines& settings = {});

// The rows of documents as a hook gets them: ids, the life-cycle state, and "row 0", "row 1" ... in "VRK_ID".
[[nodiscard]] PcRecordListPtr DocumentRows(HostRuntime& runtime, const std::vector<ObjectKey>& keys,
                                           const Value& state);

// One loaded program of a logged-in user.
class LoadedProgram : public ProgramServices {
 public:
  LoadedProgram(Machine& machine, embedded::EmbeddedHost& host, Toolkit& toolkit, const std::string& login,
                std::shared_ptr<RecordingTraceWriter> writer = std::make_shared<RecordingTraceWriter>());

  bool Lock(const PcRecordListPtr& rows);
  bool Unlock(const PcRecordListPtr& rows);

  PcSessionPtr session;
};

class LockingWorld : public Watched, public Company {
 public:
  explicit LockingWorld(const CompanyOptions& options = LockingCompany());

  // The program of a user; made at the first call.
  LoadedProgram& Program(const std::string& login);
  [[nodiscard]] PcRecordListPtr Rows(const std::vector<ObjectKey>& keys,
                                     const Value& state = std::int16_t{1}) {
    return DocumentRows(host, keys, state);
  }

  // Every row of every table: "TABLE OBJECT_ID=1 ...", empty values left out.
  using Snapshot = std::set<std::string>;
  [[nodiscard]] Snapshot Database();
  // What changed since a snapshot, "- row" for what went and "+ row" for what came, one line each.
  [[nodiscard]] std::string Changes(const Snapshot& before);
  [[nodiscard]] std::string Seen() { return user.Take(); }

 private:
  std::map<std::string, std::unique_ptr<LoadedProgram>> programs_;
};

}  // namespace tessel::test
