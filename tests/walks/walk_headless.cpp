#include <gtest/gtest.h>

#include <sstream>

#include "headless/reporting_launcher.h"
#include "support/script_driver.h"
#include "walks/walk.h"

namespace tessel::test {
namespace {

void DumpList(const TreeList& list, std::ostream& out) {
  out << " selected " << list.Selected();
  for (int node = 0; node < list.NodeCount(); ++node) {
    const TreeList::Node& shown = list.NodeAt(node);
    out << "\n    " << shown.text << "|" << shown.tag << "|" << shown.imageKey << (shown.checked ? "|x" : "");
  }
}

void DumpControl(const Control& control, std::ostream& out) {
  const Rect& bounds = control.Bounds();
  out << "  " << control.Id() << (control.Visible() ? "" : " hidden")
      << (control.Enabled() ? "" : " disabled") << " (" << bounds.left << ", " << bounds.top << ", "
      << bounds.width << ", " << bounds.height << ")";
  if (!control.Caption().empty()) out << " \"" << control.Caption() << "\"";
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) out << (box->Checked() ? " checked" : "");
  if (const auto* text = dynamic_cast<const TextBox*>(&control)) out << " [" << text->Text() << "]";
  if (const auto* bar = dynamic_cast<const ProgressBar*>(&control)) {
    out << " " << bar->Value() << "/" << bar->Maximum();
  }
  if (const auto* list = dynamic_cast<const TreeList*>(&control)) DumpList(*list, out);
  out << "\n";
}

Refusal Perform(const Step& step, UserActions& user) {
  switch (step.kind) {
    case Step::Kind::kClick:
      return user.Click(step.control);
    case Step::Kind::kClickNode:
      return user.ClickNode(step.control, step.node, step.button);
    case Step::Kind::kClickNodeBox:
      return user.CheckNode(step.control, step.node, CheckWish::kToggled);
    case Step::Kind::kKey:
      return user.PressKey(step.control, step.key);
    case Step::Kind::kEnter:
      return user.PressEnter();
    case Step::Kind::kEscape:
      return user.PressEscape();
    case Step::Kind::kType:
      return user.Type(step.control, step.text);
    case Step::Kind::kResize:
      return user.SetBounds(step.bounds);
    case Step::Kind::kClose:
      break;
  }
  return user.CloseWindow();
}

}  // namespace

std::string DumpOf(const Window& window) {
  std::ostringstream out;
  out << window.Name() << " " << window.Bounds().width << " x " << window.Bounds().height << "\n";
  for (const auto& control : window.Controls())
    DumpControl(*control, out);
  return out.str();
}

std::string WalkHeadless(SampleCompany& company, const Walk& walk, const Hooks& hooks) {
  ScriptDriver driver;
  HeadlessToolkit toolkit(driver);
  ReportingLauncher launcher(company.Processes(), driver);
  std::string seen;
  for (const Step& step : walk.steps) {
    driver.Do([&seen, &toolkit, &driver, step](UserActions& user) {
      seen += driver.TakeTranscript() + DumpOf(*toolkit.TopWindow());
      EXPECT_EQ(Perform(step, user), "") << seen;
    });
  }
  for (const MessageAnswer answer : walk.boxes)
    driver.AnswerBox(answer);
  for (const std::string& item : walk.menus)
    driver.ChooseItem(item);
  for (const int answer : walk.lifeCycles)
    driver.AnswerLifeCycle(answer);
  HostedProgram hosted(company.Login(), company.Services(launcher), toolkit, driver);
  hooks(hosted);
  return seen + driver.TakeTranscript();
}

}  // namespace tessel::test
