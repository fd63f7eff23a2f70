#include "selection/start_up.h"

#include "config/pelicore_admin_tool.h"
#include "host/names.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

bool StartUp(Services& services, const PcSessionPtr& session) {
  Deklarationen& declarations = services.declarations;
  if (!declarations.SetSessionGlobal(session) || !declarations.SetDefaultBehavior() ||
      !declarations.SetIconDirectory()) {
    return false;
  }
  PelicoreAdminTool adminTool(services.trace);
  adminTool.DefaultBehavior = declarations.startup.DefaultBehavior;
  adminTool.AdminObject = adminTool.adm_GetLinkedAdmObj(session, admin_setting::kSetName, nullptr);
  if (!adminTool.AdminObject || !declarations.ReadConfiguration(services.errors)) return false;
  declarations.startup.databaseAlias = session->DatabaseAlias();
  return true;
}

}  // namespace

bool Init(Services& services, const PcSessionPtr& session) {
  const bool done = Guarded(services.trace, "Error while initializing the session (Init/CommonXFunctions)",
                            false, [&] { return StartUp(services, session); });
  if (!done) {
    services.toolkit.ShowMessage(
        {services.errors.ErrorHandle("e9030"), "Kestrix Error", MessageIcon::kCritical});
  }
  return done;
}

void TerminateObjs(Services& services, RunObjects& objects) {
  services.trace.Release();
  GuardedRun(services.trace, "Error while unloading the pages (TerminateObjs/CommonXFunctions)",
             [&] { objects.UnloadPages(); });
  objects.ClearExchangeDirectoryName();
}

}  // namespace tessel::CommonXFunctions
