#include "administration/opened_site.h"

#include "embedded/model/metadata.h"
#include "embedded/store/accounts.h"
#include "embedded/store/database_place.h"

namespace tessel::administration {
namespace {

embedded::HostOptions OptionsOf(Platform& platform, embedded::HostDialogs& dialogs) {
  embedded::HostOptions options;
  options.files = &platform.files;
  options.dialogs = &dialogs;
  return options;
}

PcSessionPtr OpenWithoutLogin(embedded::EmbeddedHost& host) {
  const PcEnginePtr engine = host.RunningApplication()->Engine();
  const DatabaseEntry entry = engine->Database(host.Alias());
  PcSessionPtr session = engine->NewSession(entry.name);
  engine->OpenConnection(*session, entry.connectionText, entry.password, 0);
  return session;
}

}  // namespace

OpenedSite::OpenedSite(const std::string& database, Platform& platform)
    : host_(database, OptionsOf(platform, dialogs_)), site_{OpenWithoutLogin(host_), platform, {}, {}, {}} {
  const auto sql = embedded::OpenDatabase(platform.files, database);
  for (const embedded::Account& account : embedded::ReadAccounts(*sql)) {
    if (!account.language.empty()) site_.languages[account.loginName] = account.language;
  }
  if (const auto* metadata = dynamic_cast<const embedded::Metadata*>(host_.MetaData().get())) {
    site_.defaultLanguage = metadata->language;
    for (const auto& definition : metadata->Classes())
      site_.uniqueSets[definition->id] = definition->uniqueSets;
  }
}

}  // namespace tessel::administration
