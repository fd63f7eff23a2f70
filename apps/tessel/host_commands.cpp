#include <ostream>

#include "embedded/store/describe.h"
#include "embedded/store/new_database.h"
#include "platform/native/native_platform.h"
#include "tessel/commands.h"
#include "tessel/json_result.h"

namespace tessel::cli {
namespace {

Json JsonOf(const std::vector<embedded::Account>& users) {
  Json all = Json::array();
  for (const embedded::Account& user : users) {
    all.push_back({{"login", user.loginName},
                   {"object", cli::JsonOf(user.object)},
                   {"administrator", user.administrator},
                   {"roles", user.roles}});
  }
  return all;
}

Json JsonOf(const std::vector<embedded::DescribedObject>& objects) {
  Json all = Json::array();
  for (const embedded::DescribedObject& object : objects) {
    Json texts = Json::object();
    for (const auto& [column, text] : object.texts)
      texts[column] = text;
    all.push_back({{"object", cli::JsonOf(object.key)}, {"texts", texts}});
  }
  return all;
}

Json JsonOf(const std::vector<embedded::DescribedClass>& classes) {
  Json all = Json::array();
  for (const embedded::DescribedClass& one : classes) {
    all.push_back({{"id", one.id},
                   {"name", one.name},
                   {"table", one.table},
                   {"link", one.linkClass},
                   {"objects", JsonOf(one.objects)}});
  }
  return all;
}

}  // namespace

int RunHostCreate(const HostCreate& command, Streams& streams) {
  NativePlatform system;
  embedded::CreateDatabase(system.Services().files, command.database, command.model);
  if (streams.json) return WriteResult(streams, "host create", kDone, {{"database", command.database}});
  if (!streams.quiet) streams.out << "created: " << command.database << "\n";
  return kDone;
}

int RunHostShow(const HostShow& command, Streams& streams) {
  NativePlatform system;
  const auto description = embedded::DescribeDatabase(system.Services().files, command.database);
  if (!streams.json) {
    embedded::PrintDescription(description, streams.out);
    return kDone;
  }
  return WriteResult(streams, "host show", kDone,
                     {{"alias", description.alias},
                      {"language", description.language},
                      {"vault", {{"path", description.vault}, {"files", description.vaultFiles}}},
                      {"users", JsonOf(description.users)},
                      {"classes", JsonOf(description.classes)}});
}

}  // namespace tessel::cli
