#include "tessel/export_driver.h"

#include <algorithm>
#include <chrono>
#include <ostream>
#include <utility>

#include "host/error.h"
#include "platform/caught_signals.h"
#include "tessel/free_name.h"
#include "toolkit/tree_list.h"
#include "wizard/partner_lists.h"

namespace tessel::cli {
namespace {

const TreeList* FindList(const Window& window, const char* name) {
  return dynamic_cast<const TreeList*>(window.Find(name));
}

// Positions of the nodes with a tag, or else of those with a text.
std::vector<int> FindNodes(const TreeList& list, const std::string& wanted) {
  std::vector<int> byTag;
  std::vector<int> byText;
  for (int node = 0; node < list.NodeCount(); ++node) {
    if (list.NodeAt(node).tag == wanted) byTag.push_back(node);
    if (list.NodeAt(node).text == wanted) byText.push_back(node);
  }
  return byTag.empty() ? byText : byTag;
}

// Text boxes that the page made for its fields, in page order; the hidden templates have the index 0.
std::vector<const Control*> FieldBoxes(const Window& window) {
  std::vector<const Control*> boxes;
  for (const auto& control : window.Controls()) {
    if (control->Kind() == ControlKind::kTextBox && control->Index() > 0) boxes.push_back(control.get());
  }
  return boxes;
}

}  // namespace

void ExportDriver::Act(HeadlessToolkit& toolkit) {
  HeedSignals();
  const std::shared_ptr<Window> window = toolkit.TopWindow();
  const std::optional<PageId> page = PageOfWindow(window->Name());
  if (leaving_) {
    Leave(toolkit);
  } else if (page) {
    ActOn(*page, toolkit, *window);
  } else {
    GiveUp("unknown page " + window->Name());
  }
}

void ExportDriver::ActOn(PageId page, HeadlessToolkit& toolkit, Window& window) {
  switch (page) {
    case PageId::kStart:
      return OnStartPage(toolkit);
    case PageId::kSendMode:
      return OnSendModePage(toolkit);
    case PageId::kSendData:
      return OnSendDataPage(toolkit, window);
    case PageId::kRecipient:
      return OnRecipientPage(toolkit, window);
    case PageId::kCustomInput:
      return OnCustomInputPage(toolkit, window);
    case PageId::kFolderStructure:
      return OnFolderStructurePage(toolkit, window);
    case PageId::kMailData:
      return OnMailPage(toolkit, window);
  }
}

FlowSettings ExportDriver::PathSettings() const {
  return FlowSettingsOf(program_->services.Settings(), program_->wizard.state.UseFolderStructure);
}

std::string ExportDriver::FindObstacle() {
  if (!plan_.folderStructure.empty() && !Passes(PageId::kFolderStructure)) {
    return "this send mode uses no folder structure";
  }
  if (!plan_.fields.empty() && !Passes(PageId::kCustomInput)) return "this send mode shows no custom form";
  if (!Passes(PageId::kMailData) && !(plan_.subject + plan_.content).empty())
    return "this send mode writes no mail";
  if (const std::string text = FindUntypeable(); !text.empty()) return text;
  if (!Passes(PageId::kRecipient)) {
    return plan_.recipients.empty() ? "" : "this send mode asks for no recipient";
  }
  if (plan_.recipients.empty()) return "this send mode needs a recipient";
  if (plan_.recipients.size() > 1 && !program_->services.Settings().b_AllowMultiRecipientSelection) {
    return "the configuration allows one recipient only";
  }
  return FindRecipients();
}

// Nobody could type these, and what a box makes of them is not what was asked for.
std::string ExportDriver::FindUntypeable() const {
  const auto hasControl = [](const std::string& text, std::string_view allowed) {
    return std::any_of(text.begin(), text.end(), [allowed](char c) {
      return (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) && allowed.find(c) == std::string_view::npos;
    });
  };
  if (hasControl(plan_.subject, "\t")) return "the subject holds a line break or another control character";
  if (hasControl(plan_.content, "\t\r\n")) return "the content holds a control character";
  for (const auto& [number, text] : plan_.fields) {
    if (hasControl(text, "\t\r\n")) return "field " + std::to_string(number) + " holds a control character";
  }
  return {};
}

// The lists of the recipient page, filled without the page. Texts may hold a colon themselves, so every place
// to split is tried.
std::string ExportDriver::FindRecipients() {
  Window scratch("Recipients", "", {});
  auto& customers = scratch.Add<TreeList>("TreeView1", -1, nullptr, Rect{}, false);
  auto& contacts = scratch.Add<TreeList>("TreeView2", -1, nullptr, Rect{}, false);
  CommonXFunctions::ListCustomer(program_->services, customers);
  for (const std::string& wanted : plan_.recipients) {
    std::vector<FoundRecipient> hits;
    for (auto colon = wanted.find(':'); colon != std::string::npos; colon = wanted.find(':', colon + 1)) {
      for (const int customer : FindNodes(customers, wanted.substr(0, colon))) {
        customers.Select(customer);
        CommonXFunctions::ListContactPerson(program_->services, customers, contacts);
        for (const int contact : FindNodes(contacts, wanted.substr(colon + 1))) {
          const TreeList::Node& company = customers.NodeAt(customer);
          const TreeList::Node& person = contacts.NodeAt(contact);
          hits.push_back({company.tag, person.tag, company.text + " >> " + person.text});
        }
      }
    }
    if (hits.size() != 1) {
      return (hits.empty() ? "unknown recipient \"" : "ambiguous recipient \"") + wanted + "\"";
    }
    const auto same = [&hits](const FoundRecipient& other) {
      return other.customerTag == hits.front().customerTag && other.contactTag == hits.front().contactTag;
    };
    if (std::any_of(recipients_.begin(), recipients_.end(), same)) {
      return "the recipient \"" + wanted + "\" is named twice";
    }
    recipients_.push_back(hits.front());
  }
  return {};
}

void ExportDriver::OnStartPage(HeadlessToolkit& toolkit) {
  if (const std::string obstacle = FindObstacle(); !obstacle.empty()) {
    GiveUp(obstacle);
    return;
  }
  Did(UserActions(toolkit).Click("Command1"));
}

void ExportDriver::OnSendModePage(HeadlessToolkit& toolkit) {
  UserActions actions(toolkit);
  const std::string box = "Check1(" + std::to_string(static_cast<int>(plan_.mode)) + ")";
  if (!actions.Check(box, CheckWish::kChecked).empty()) {
    GiveUp("this send mode is not offered by the configuration");
    return;
  }
  Did(actions.Click("Command1"));
}

void ExportDriver::OnSendDataPage(HeadlessToolkit& toolkit, Window& window) {
  const TreeList* list = FindList(window, "TreeView2");
  UserActions actions(toolkit);
  if (!copyStarted_) {
    copyStarted_ = true;
    for (int node = 0; node < list->NodeCount(); ++node)
      documents_.push_back(list->NodeAt(node).text);
    if (list->NodeCount() != plan_.documents) {
      GiveUp("only " + std::to_string(list->NodeCount()) + " of " + std::to_string(plan_.documents) +
             " documents could be listed");
      return;
    }
    if (Did(actions.Check("Check1", CheckWish::kChecked))) StartCopy(toolkit, *list);
    return;
  }
  if (list->NodeCount() == 0 || list->CheckedCount() != list->NodeCount()) {
    GiveUp("only " + std::to_string(list->CheckedCount()) + " of " + std::to_string(list->NodeCount()) +
           " documents could be copied");
    return;
  }
  progress_.Complete();
  GoForward(toolkit, PageId::kSendData);
}

// A name that somebody was faster with is tried again in the next second.
void ExportDriver::StartCopy(HeadlessToolkit& toolkit, const TreeList& list) {
  const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
  Problems& problems = program_->trace.problems;
  const int recipients = std::max(1, static_cast<int>(recipients_.size()));
  for (bool inTime = true; inTime;) {
    inTime = AwaitFreeNames(program_->services, recipients, deadline);
    const std::size_t before = problems.Kept().size();
    held_.emplace();
    bool clicked = false;
    try {
      clicked = Did(UserActions(toolkit).Click("Command1"));
    } catch (...) {
      SayHeld();
      throw;
    }
    const bool taken = program_->exchange.directoryName.empty() && problems.Kept().size() > before &&
                       problems.Kept().back().number == error_number::kFileAlreadyExists;
    const bool again = clicked && taken && list.CheckedCount() == 0 && inTime;
    if (!again) return SayHeld();
    held_.reset();
    problems.ForgetBehind(before);
  }
}

void ExportDriver::OnRecipientPage(HeadlessToolkit& toolkit, Window& window) {
  UserActions actions(toolkit);
  const auto nodeOf = [&window](const char* list, const std::string& tag) {
    return NodeChoice(FindList(window, list)->FindTag(tag));
  };
  for (const FoundRecipient& recipient : recipients_) {
    if (!Did(actions.ClickNode("TreeView1", nodeOf("TreeView1", recipient.customerTag))) ||
        !Did(actions.ClickNode("TreeView2", nodeOf("TreeView2", recipient.contactTag)))) {
      return;
    }
    // Several recipients are collected; a single one is just chosen.
    if (window.Find("Command4")->Visible() && !Did(actions.Click("Command4"))) return;
  }
  GoForward(toolkit, PageId::kRecipient);
}

void ExportDriver::OnCustomInputPage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<const Control*> boxes = FieldBoxes(window);
  for (const auto& [number, text] : plan_.fields) {
    if (number < 1 || number > static_cast<int>(boxes.size())) {
      GiveUp("the custom form has no field " + std::to_string(number));
      return;
    }
    const auto& box = dynamic_cast<const TextBox&>(*boxes[static_cast<std::size_t>(number - 1)]);
    if (!box.MultiLine() && text.find_first_of("\r\n") != std::string::npos) {
      GiveUp("field " + std::to_string(number) + " of the custom form has one line only");
      return;
    }
    if (!Did(UserActions(toolkit).Type(box.Id(), text))) return;
  }
  GoForward(toolkit, PageId::kCustomInput);
}

void ExportDriver::OnFolderStructurePage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<int> nodes = FindNodes(*FindList(window, "TreeView1"), plan_.folderStructure);
  if (nodes.size() != 1) {
    GiveUp((nodes.empty() ? "unknown folder structure \"" : "ambiguous folder structure \"") +
           plan_.folderStructure + "\"");
    return;
  }
  if (!Did(UserActions(toolkit).ClickNode("TreeView1", nodes.front()))) return;
  GoForward(toolkit, PageId::kFolderStructure);
}

void ExportDriver::OnMailPage(HeadlessToolkit& toolkit, Window& window) {
  UserActions actions(toolkit);
  const auto* address = dynamic_cast<const TextBox*>(window.Find("Text1", 0));
  if (address->Text().empty() && mailsWritten_ < recipients_.size()) {
    Say("warning: no e-mail address of " + recipients_[mailsWritten_].text);
  }
  if (!Did(actions.Type("Text1(2)", plan_.subject)) || !Did(actions.Type("Text1(3)", plan_.content))) return;
  ++mailsWritten_;
  // The page's own count: the press behind the last mail is the one that sends.
  if (static_cast<int>(mailsWritten_) >= program_->wizard.state.recipients->RowCount()) {
    GoForward(toolkit, PageId::kMailData);
  } else {
    Press(toolkit);
  }
}

void ExportDriver::GoForward(HeadlessToolkit& toolkit, PageId page) {
  if (NextPage(page, plan_.mode, PathSettings())) {
    Press(toolkit);
    return;
  }
  if (plan_.dryRun) {
    if (!streams_.json) PrintRehearsal();
    rehearsalEnded_ = true;
    leaving_ = true;
    return;
  }
  if (!Press(toolkit)) return;
  const std::shared_ptr<Window> top = toolkit.TopWindow();
  if (top && top->Name() == PageName(page)) GiveUp("the export could not be dispatched");
}

bool ExportDriver::Press(HeadlessToolkit& toolkit) {
  return Did(UserActions(toolkit).Click("Command1"));
}

void ExportDriver::PrintRehearsal() {
  std::ostream& out = streams_.out;
  for (const std::string& document : documents_)
    out << "document: " << document << "\n";
  for (const FoundRecipient& recipient : recipients_)
    out << "recipient: " << recipient.text << "\n";
  if (!plan_.folderStructure.empty()) out << "folder structure: " << plan_.folderStructure << "\n";
  for (const auto& [number, text] : plan_.fields)
    out << "field " << number << ": " << text << "\n";
  if (Passes(PageId::kMailData)) out << "subject: " << plan_.subject << "\n";
  out << "nothing was sent: dry run\n";
}

Json ExportDriver::Rehearsal() const {
  Json recipients = Json::array();
  for (const FoundRecipient& recipient : recipients_)
    recipients.push_back(recipient.text);
  Json fields = Json::object();
  for (const auto& [number, text] : plan_.fields)
    fields[std::to_string(number)] = text;
  return {{"dryRun", true},           {"documents", documents_},
          {"recipients", recipients}, {"folderStructure", plan_.folderStructure},
          {"fields", fields},         {"subject", plan_.subject}};
}

bool ExportDriver::Did(const Refusal& refusal) {
  if (!refusal.empty()) GiveUp(refusal);
  return refusal.empty();
}

void ExportDriver::GiveUp(const std::string& reason) {
  Say(reason);
  gaveUp_ = true;
  leaving_ = true;
}

void ExportDriver::Leave(HeadlessToolkit& toolkit) {
  UserActions actions(toolkit);
  for (const auto& control : toolkit.TopWindow()->Controls()) {
    const auto* button = dynamic_cast<const Button*>(control.get());
    if (button != nullptr && button->IsCancel && actions.Click(button->Id()).empty()) return;
  }
  if (!actions.CloseWindow().empty() || toolkit.TopWindow()) toolkit.CloseForShutdown();
}

MessageAnswer ExportDriver::Answer(const MessageRequest& request) {
  progress_.End();
  if (request.buttons == MessageButtons::kYesNo) {
    // The keep-selection question is answered No; that the export is to be cancelled, Yes when it is.
    const bool confirmsCancel = request.title == "Cancel";
    return confirmsCancel && leaving_ ? MessageAnswer::kYes : MessageAnswer::kNo;
  }
  if (!leaving_) Say((request.title.empty() ? kDefaultMessageTitle : request.title) + ": " + request.text);
  return MessageAnswer::kOk;
}

void ExportDriver::HeedSignals() {
  const int signal = CaughtSignals::Caught();
  if (signal != 0 && !leaving_)
    GiveUp(std::string("the export was ended by ") + CaughtSignals::Name(signal) + "; nothing was exported");
}

// In the middle of a copy, where a person could press the page's cancel button.
void ExportDriver::EventsPumped(HeadlessToolkit& toolkit) {
  if (leaving_ || !toolkit.TopWindow()) return;
  HeedSignals();
  if (leaving_) Leave(toolkit);
}

bool ExportDriver::CopyRuns(const embedded::CopyStep& step) {
  progress_.Step(step);
  return CaughtSignals::Caught() == 0;
}

void ExportDriver::WindowRedrawn(const Window& window) {
  if (PageOfWindow(window.Name()) != PageId::kSendData) return;
  const auto* bar = dynamic_cast<const ProgressBar*>(window.Find("ProgressBar1"));
  if (bar != nullptr && bar->Visible() && bar->Maximum() > 0)
    progress_.Documents(bar->Value(), bar->Maximum());
}

void ExportDriver::WindowHidden(const Window&) {
  progress_.End();
}

void ExportDriver::ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                                  std::int32_t processId) {
  if (processId > 0 && streams_.quiet) return;
  std::string line = processId > 0 ? "started: " : "could not start: ";
  line += program;
  for (const std::string& argument : arguments)
    line += " " + argument;
  Say(line);
}

void ExportDriver::ShowSystemMessage(const std::vector<std::string>& texts) {
  for (const std::string& text : texts)
    Say(text);
}

void ExportDriver::SayHeld() {
  const auto texts = std::exchange(held_, std::nullopt);
  for (const std::string& text : texts.value_or(std::vector<std::string>()))
    Say(text);
}

void ExportDriver::Say(const std::string& text) {
  if (held_) return held_->push_back(text);
  progress_.End();
  streams_.err << text << "\n";
}

}  // namespace tessel::cli
