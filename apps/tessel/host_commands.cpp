#include <ostream>

#include "dispatch/exchange_object.h"
#include "embedded/store/database_place.h"
#include "embedded/store/describe.h"
#include "embedded/store/new_database.h"
#include "host/names.h"
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

// What a model may hold but no data exchange can work with.
std::vector<std::string> WarningsOf(const PcMetaData& metaData) {
  std::vector<std::string> warnings;
  // The data exchange uses the first class of the mechanism.
  const PcClassMechanismPtr mechanism = metaData.ClassMechanism(class_mechanism::kTransmittal);
  if (!mechanism || mechanism->SupportedClassCount() == 0) return warnings;
  const PcClassPtr exchange = mechanism->SupportedClass(0);
  const std::string why = Kestrix_ExObj::WhyNoNumber(*exchange);
  if (!why.empty())
    warnings.push_back("class " + exchange->Name() + ": " + why + ": no exchange will be recorded");
  return warnings;
}

}  // namespace

int RunHostCreate(const HostCreate& command, Streams& streams) {
  NativePlatform system;
  const auto metaData = embedded::CreateDatabase(system.Services().files, command.database, command.model);
  const std::string shown = embedded::ShownPlace(command.database);
  const std::vector<std::string> warnings = WarningsOf(*metaData);
  for (const std::string& warning : warnings) {
    if (!streams.quiet) streams.err << "warning: " << warning << "\n";
  }
  if (streams.json)
    return WriteResult(streams, "host create", kDone, {{"database", shown}, {"warnings", warnings}});
  if (!streams.quiet) streams.out << "created: " << shown << "\n";
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
