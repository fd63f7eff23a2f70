#include "headless/reporting_launcher.h"
#include "qt/person.h"
#include "walks/walk.h"

namespace tessel::test {

std::string WalkDrawn(SampleCompany& company, const Walk& walk, const Hooks& hooks) {
  Person person(walk);
  WatchedToolkit toolkit(person);
  WatchedDialogs dialogs(toolkit, person);
  ReportingLauncher launcher(company.Processes(), person.scribe);
  HostedProgram hosted(company.Login(), company.Services(launcher), toolkit, dialogs);
  person.SitDown(toolkit);
  hooks(hosted);
  person.GetUp();
  return person.TakeTranscript();
}

}  // namespace tessel::test
