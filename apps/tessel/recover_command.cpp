// Puts in order what exports left that were cut off. It needs no login: whoever can open the database may.
#include <ostream>
#include <set>

#include "common/hosted_program.h"
#include "config/configuration.h"
#include "config/pelicore_admin_tool.h"
#include "dispatch/recovery.h"
#include "embedded/embedded_host.h"
#include "headless/headless_toolkit.h"
#include "host/names.h"
#include "host/object_store.h"
#include "locking/continuation_recovery.h"
#include "messages/guard.h"
#include "platform/native/native_platform.h"
#include "tessel/commands.h"
#include "tessel/message_driver.h"
#include "tessel/outcome_report.h"

namespace tessel::cli {
namespace {

const ConfigurationKey& ExchangePathKey() {
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    if (std::string(key.key) == "ExchangePath") return key;
  }
  throw HostError("There is no setting \"ExchangePath\"");
}

// Every exchange path that a settings object of the database names.
std::set<std::string> ExchangePaths(PcSession& session) {
  const PcMetaDataPtr metaData = Required(session.MetaData(), "metadata");
  const PcObjectStorePtr store = Required(session.ObjectStore(), "object store");
  const ConfigurationKey& key = ExchangePathKey();
  std::set<std::string> paths;
  const PcQueryPtr query = store->NewQuery();
  query->SetClass(metaData->ClassIdByName(admin_setting::kClassName));
  query->AddSelect(attribute::kClassId);
  query->AddSelect(attribute::kObjectId);
  query->AddCondition(admin_setting::kNameAttribute, "=", Value(admin_setting::kSetName));
  const PcRecordListPtr rows = query->Run();
  for (int row = 0; row < rows->RowCount(); ++row) {
    const PcObjectPtr settings = store->Object(rows->KeyOfRow(row));
    if (!settings) continue;
    paths.insert(PelicoreAdminTool::IniValue_Retrieve(settings->GetText(admin_setting::kTextAttribute),
                                                      key.section, key.key, key.defaultText));
  }
  if (paths.empty()) paths.insert(key.defaultText);
  return paths;
}

const char* TextOf(RecoveryStep step) {
  switch (step) {
    case RecoveryStep::kForward:
      return "handed over";
    case RecoveryStep::kRemoved:
      return "removed";
    case RecoveryStep::kRecord:
      return "record deleted";
    case RecoveryStep::kContinued:
      break;
  }
  return "continued";
}

std::string ListOf(const std::set<std::string>& paths, const FileSystem& files) {
  std::string list;
  for (const std::string& path : paths)
    list += " " + files.NativePath(path);
  return list;
}

Json StepsOf(const std::vector<Recovered>& done) {
  Json steps = Json::array();
  for (const Recovered& one : done)
    steps.push_back({{"step", TextOf(one.step)}, {"subject", one.subject}});
  return steps;
}

PcSessionPtr SessionWithoutUser(embedded::EmbeddedHost& host) {
  const PcEnginePtr engine = host.CreateEngine();
  const std::string name = engine->DefaultDatabaseName();
  PcSessionPtr session = engine->NewSession(name);
  engine->OpenConnection(*session, engine->Database(name).connectionText, "", 0);
  return session;
}

}  // namespace

int RunRecover(const Recover& command, Streams& streams) {
  NativePlatform system;
  MessageDriver driver(streams.err);
  FileSystem& files = system.Services().files;
  embedded::HostOptions options;
  options.files = &files;
  options.dialogs = &driver;
  embedded::EmbeddedHost host(command.database, options);
  const PcSessionPtr session = SessionWithoutUser(host);
  Trace trace{nullptr};
  std::vector<Recovered> done;
  const std::set<std::string> paths = ExchangePaths(*session);
  for (const std::string& path : paths) {
    const auto found = RecoverExports(trace, files, *session, path, {command.dryRun, command.strays});
    done.insert(done.end(), found.begin(), found.end());
  }
  const auto continued = CommonXFunctions::RecoverContinuations(trace, files, *session, command.dryRun);
  for (const std::string& exchange : continued)
    done.push_back({RecoveryStep::kContinued, exchange});
  ReportProblems(trace.problems.Kept(), streams);
  const int status = trace.problems.Count() == 0 ? kDone : kRefused;
  if (streams.json) {
    return WriteResult(
        streams, "recover", status,
        {{"dryRun", command.dryRun}, {"steps", StepsOf(done)}, {"problems", JsonOf(trace.problems.Kept())}});
  }
  if (done.empty() && status == kDone && !streams.quiet)
    streams.out << "nothing to put in order below:" << ListOf(paths, files) << "\n";
  for (const Recovered& one : done)
    streams.out << (command.dryRun ? "would be " : "") << TextOf(one.step) << ": " << one.subject << "\n";
  return status;
}

}  // namespace tessel::cli
