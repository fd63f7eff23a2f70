#include "headless/reporting_launcher.h"
#include "walks/walk.h"
#include "win32/person.h"

namespace tessel::test {

// The client's own dialogs are answered by the scribe: they are no windows of this toolkit.
std::string WalkDrawn(SampleCompany& company, const Walk& walk, const Hooks& hooks) {
  Person person(walk);
  for (const int answer : walk.lifeCycles)
    person.scribe.AnswerLifeCycle(answer);
  Watched<win32::Win32Toolkit> toolkit(person);
  ReportingLauncher launcher(company.Processes(), person.scribe);
  HostedProgram hosted(company.Login(), company.Services(launcher), toolkit, person.scribe);
  person.SitDown(toolkit);
  hooks(hosted);
  person.GetUp();
  return person.TakeTranscript();
}

}  // namespace tessel::test
