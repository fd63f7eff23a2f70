// verify and inspect: commands for whoever holds a finished exchange.
#include <algorithm>
#include <ostream>
#include <sstream>

#include "embedded/store/database_place.h"
#include "embedded/store/exchange_sums.h"
#include "host/error.h"
#include "platform/file_system.h"
#include "platform/native/native_platform.h"
#include "received/checksums.h"
#include "received/inspection.h"
#include "received/verification.h"
#include "tessel/cli.h"
#include "tessel/command.h"
#include "tessel/command_group.h"
#include "tessel/json_result.h"

namespace tessel::cli {
namespace {

using received::Exchange;
using received::FileSource;
using received::Problem;

struct VerifyOptions {
  std::vector<std::string> paths;
  std::string database;  // empty: the sums are not compared
};

struct InspectOptions {
  std::string path;
  std::string html;  // file; empty: none
  bool json = false;
};

void CompareRecorded(const FileSource& source, const Exchange& exchange, embedded::Database& database,
                     std::vector<Problem>& problems) {
  const ObjectKey key = exchange.Record();
  const auto recorded = embedded::ReadExchangeSums(database, key);
  if (recorded) return received::CompareSums(source, received::ParseSums(*recorded), problems);
  problems.push_back({"", "the database keeps no check sums of the exchange " + ObjectKeyText(key, '_')});
}

std::unique_ptr<embedded::Database> OpenDatabase(const std::string& path) {
  if (path.empty()) return nullptr;
  NativePlatform system;
  return embedded::OpenDatabase(system.Services().files, path);
}

// The problems of one exchange, in the order in which they were found.
int VerifyOne(const std::string& path, embedded::Database* database, Streams& streams, Json& exchanges) {
  std::vector<Problem> problems;
  const auto source = received::OpenSource(path);
  const Exchange exchange = received::ReadExchange(*source, problems);
  received::Verify(*source, exchange, problems);
  if (database != nullptr) CompareRecorded(*source, exchange, *database, problems);
  Json listed = Json::array();
  for (const Problem& problem : problems) {
    listed.push_back({{"file", problem.file}, {"text", problem.text}});
    streams.err << path << ": " << (problem.file.empty() ? "" : problem.file + ": ") << problem.text << "\n";
  }
  exchanges.push_back({{"path", path},
                       {"ok", problems.empty()},
                       {"documents", received::DocumentCount(exchange)},
                       {"problems", listed}});
  if (!problems.empty()) return kRefused;
  if (streams.json) return kDone;
  streams.out << "ok: " << path << " (" << received::DocumentCount(exchange) << " documents)\n";
  return kDone;
}

int RunVerify(const VerifyOptions& options, Streams& streams) {
  const auto database = OpenDatabase(options.database);
  int status = kDone;
  Json exchanges = Json::array();
  for (const std::string& path : options.paths) {
    try {
      status = std::max(status, VerifyOne(path, database.get(), streams, exchanges));
    } catch (const received::ReadError& error) {
      streams.err << error.what() << "\n";
      exchanges.push_back({{"path", path},
                           {"ok", false},
                           {"documents", 0},
                           {"problems", Json::array({{{"file", ""}, {"text", error.what()}}})}});
      status = kRefused;
    }
  }
  return streams.json ? WriteResult(streams, "verify", status, {{"exchanges", exchanges}}) : status;
}

int RunInspect(const InspectOptions& options, Streams& streams) {
  std::vector<Problem> problems;
  const auto source = received::OpenSource(options.path);
  const Exchange exchange = received::ReadExchange(*source, problems);
  received::Verify(*source, exchange, problems);
  if (!options.html.empty()) {
    std::ostringstream page;
    received::WriteHtml(*source, exchange, problems, page);
    NativePlatform system;
    system.Services().files.WriteBytes(options.html, page.str());
    streams.out << "written: " << options.html << "\n";
  } else if (options.json) {
    received::WriteJson(*source, exchange, problems, streams.out);
  } else {
    received::WriteText(*source, exchange, problems, streams.out);
  }
  return kDone;
}

}  // namespace

void AddReceivedCommands(CLI::App& app, CommandRun& run) {
  auto verify = std::make_shared<VerifyOptions>();
  CLI::App* command =
      app.add_subcommand("verify", "Check finished exchanges: every file there, no other one");
  command->add_option("exchange", verify->paths, "Directories or ZIP archives")->required();
  command->add_option("--database", verify->database,
                      "Compare the check sums that the export recorded there");
  OnCommand(*command, run, verify, &RunVerify);

  auto inspect = std::make_shared<InspectOptions>();
  command = app.add_subcommand("inspect", "Show what is in a finished exchange");
  command->add_option("exchange", inspect->path, "Directory or ZIP archive")->required();
  CLI::Option* html =
      command->add_option("--html", inspect->html, "Write one page for a browser into a file");
  command->add_flag("--json", inspect->json, "Write JSON")->excludes(html);
  OnCommand(*command, run, inspect, &RunInspect);
}

}  // namespace tessel::cli
