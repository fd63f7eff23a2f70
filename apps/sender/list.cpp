#include "sender/list.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "sender/log.h"
#include "sender/status_texts.h"
#include "sender/work.h"

namespace tessel::sender {
namespace {

const char* WordOf(const ListedExchange& exchange) {
  switch (exchange.directory.place) {
    case Place::kSent:
      return "sent";
    case Place::kStopped:
      return "stopped";
    default:
      return exchange.journal.stage == Stage::kWaiting ? "waiting" : "queued";
  }
}

// Fills what the record tells that the directory's name leads to.
void LookByName(const Databases& databases, ListedExchange& exchange) {
  for (const auto& [alias, database] : databases.All()) {
    const auto keys = database->NamingDirectory(exchange.directory.base);
    DataFile usual;
    if (keys.size() == 1) usual.exchange = keys.front();
    const auto record = keys.size() == 1 ? database->Find(usual) : nullptr;
    if (!record) continue;
    exchange.exchange = usual.exchange;
    exchange.alias = alias;
    exchange.identifier = record->Identifier();
    exchange.phase = static_cast<int>(record->CurrentPhase());
  }
}

// Fills what data file, journal and record tell.
void Look(const FileSystem& files, const Databases& databases, ListedExchange& exchange) {
  const std::string name = DataFileIn(files, databases, exchange.directory);
  if (name.empty()) {
    exchange.problem = "it holds no data file";
    return;
  }
  exchange.journal = ReadJournal(files, exchange.directory);
  DataFile data;
  try {
    data = ParseDataFile(files.ReadBytes(exchange.directory.In(name)));
  } catch (const Reason& why) {
    exchange.problem = why.what();
    LookByName(databases, exchange);
    return;
  }
  exchange.exchange = data.exchange;
  exchange.mode = static_cast<int>(data.mode);
  exchange.alias = data.databaseAlias;
  const ExchangeDatabase* database = databases.Find(data.databaseAlias);
  if (database == nullptr) return;
  if (const auto record = database->Find(data)) {
    exchange.identifier = record->Identifier();
    exchange.phase = static_cast<int>(record->CurrentPhase());
  } else {
    exchange.problem = "the data exchange object is gone";
  }
}

std::string Remark(const ListedExchange& exchange) {
  if (!exchange.problem.empty()) return exchange.problem;
  return exchange.directory.place == Place::kSent ? exchange.journal.outcome : exchange.journal.reason;
}

nlohmann::ordered_json ToJson(const ListedExchange& exchange, const FileSystem& files) {
  return {{"state", WordOf(exchange)},
          {"path", files.NativePath(exchange.directory.Path())},
          {"directory", exchange.directory.Name()},
          {"database", exchange.alias},
          {"object", ObjectKeyText(exchange.exchange, ':')},
          {"id", exchange.identifier},
          {"mode", exchange.mode},
          {"phase", exchange.phase},
          {"attempts", exchange.journal.attempt},
          {"notBefore", exchange.journal.notBefore},
          {"documents", exchange.journal.documents.size()},
          {"packageSize", exchange.journal.packageSize},
          {"reason", exchange.journal.reason},
          {"outcome", exchange.journal.outcome},
          {"recorded", exchange.journal.recordKnown},
          {"problem", exchange.problem}};
}

}  // namespace

std::vector<ListedExchange> ListAll(const Settings& settings, const FileSystem& files,
                                    const Databases& databases) {
  std::vector<ListedExchange> all;
  for (const std::string& path : ExchangePaths(settings, files, databases)) {
    for (ExchangeDirectory& directory : ListExchanges(files, path)) {
      ListedExchange& exchange = all.emplace_back();
      exchange.directory = std::move(directory);
      try {
        Look(files, databases, exchange);
      } catch (const std::exception& error) {
        exchange.problem = error.what();
      }
    }
  }
  return all;
}

void PrintList(const std::vector<ListedExchange>& exchanges, const FileSystem& files, bool json,
               std::ostream& out) {
  for (const ListedExchange& exchange : exchanges) {
    if (json) {
      out << ToJson(exchange, files).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
          << "\n";
      continue;
    }
    std::string word = WordOf(exchange);
    word.resize(8, ' ');
    out << word << " " << (exchange.identifier.empty() ? "-" : exchange.identifier) << "  "
        << exchange.directory.Name();
    if (!Remark(exchange).empty()) out << "  " << OneLine(Remark(exchange));
    out << "\n";
  }
}

}  // namespace tessel::sender
