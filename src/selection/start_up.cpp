#include "selection/start_up.h"

#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

bool StartUp(Services& services, StartUpState& state, const PcSessionPtr& session) {
  Deklarationen& declarations = services.declarations;
  state.adminTool = std::make_shared<PelicoreAdminTool>(services.trace);
  if (!declarations.SetSessionGlobal(session) || !declarations.SetDefaultBehavior() ||
      !declarations.SetIconDirectory()) {
    return false;
  }
  PelicoreAdminTool& adminTool = *state.adminTool;
  adminTool.DefaultBehavior = declarations.startup.DefaultBehavior;
  adminTool.AdminObject = adminTool.adm_GetLinkedAdmObj(session, admin_setting::kSetName, nullptr);
  if (!adminTool.AdminObject || !declarations.ReadConfiguration(services.errors)) return false;
  declarations.startup.databaseAlias = session->DatabaseAlias();
  return true;
}

}  // namespace

bool Init(Services& services, StartUpState& state, const PcSessionPtr& session) {
  const bool done = Guarded(services.trace, "Error while initializing the session (Init/CommonXFunctions)",
                            false, [&] { return StartUp(services, state, session); });
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
