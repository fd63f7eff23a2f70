#include "tessel/export_driver.h"

#include <algorithm>
#include <ostream>

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
  const std::shared_ptr<Window> window = toolkit.TopWindow();
  if (leaving_) {
    Leave(toolkit);
  } else if (window->Name() == "Tessel_0") {
    OnStartPage(toolkit);
  } else if (window->Name() == "Tessel_1") {
    OnSendModePage(toolkit);
  } else if (window->Name() == "Tessel_2") {
    OnSendDataPage(toolkit, *window);
  } else if (window->Name() == "Tessel_3") {
    OnRecipientPage(toolkit, *window);
  } else if (window->Name() == "Tessel_4") {
    OnCustomInputPage(toolkit, *window);
  } else if (window->Name() == "Tessel_4a") {
    OnFolderStructurePage(toolkit, *window);
  } else if (window->Name() == "Tessel_5") {
    OnMailPage(toolkit, *window);
  } else {
    GiveUp("unknown page " + window->Name());
  }
}

bool ExportDriver::IsMail() const {
  return plan_.mode == SendMode::kMail || plan_.mode == SendMode::kMailStructure;
}

bool ExportDriver::ShowsRecipients() const {
  return IsMail() || plan_.mode == SendMode::kOdette ||
         (plan_.mode == SendMode::kCustom && program_->services.Settings().b_UsePartnerList);
}

bool ExportDriver::ShowsFolderStructures() const {
  return ShowsRecipients() && program_->wizard.state.UseFolderStructure;
}

bool ExportDriver::ShowsCustomForm() const {
  return (plan_.mode == SendMode::kOdette || plan_.mode == SendMode::kCustom) &&
         program_->services.Settings().b_UseCustomForm;
}

std::string ExportDriver::FindObstacle() {
  if (!plan_.folderStructure.empty() && !ShowsFolderStructures()) {
    return "this send mode uses no folder structure";
  }
  if (!plan_.fields.empty() && !ShowsCustomForm()) return "this send mode shows no custom form";
  if (!IsMail() && !(plan_.subject + plan_.content).empty()) return "this send mode writes no mail";
  if (!ShowsRecipients()) {
    return plan_.recipients.empty() ? "" : "this send mode asks for no recipient";
  }
  if (plan_.recipients.empty()) return "this send mode needs a recipient";
  if (plan_.recipients.size() > 1 && !program_->services.Settings().b_AllowMultiRecipientSelection) {
    return "the configuration allows one recipient only";
  }
  return FindRecipients();
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
             " documents could be listed; the trace says why");
      return;
    }
    if (Did(actions.Check("Check1", CheckWish::kChecked))) Did(actions.Click("Command1"));
    return;
  }
  EndProgress();
  if (list->NodeCount() == 0 || list->CheckedCount() != list->NodeCount()) {
    GiveUp("only " + std::to_string(list->CheckedCount()) + " of " + std::to_string(list->NodeCount()) +
           " documents could be copied; the trace says why");
    return;
  }
  GoForward(toolkit, window, !ShowsRecipients() && !ShowsCustomForm());
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
  GoForward(toolkit, window, !ShowsFolderStructures() && !IsMail() && !ShowsCustomForm());
}

void ExportDriver::OnCustomInputPage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<const Control*> boxes = FieldBoxes(window);
  for (const auto& [number, text] : plan_.fields) {
    if (number < 1 || number > static_cast<int>(boxes.size())) {
      GiveUp("the custom form has no field " + std::to_string(number));
      return;
    }
    if (!Did(UserActions(toolkit).Type(boxes[static_cast<std::size_t>(number - 1)]->Id(), text))) return;
  }
  GoForward(toolkit, window, true);
}

void ExportDriver::OnFolderStructurePage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<int> nodes = FindNodes(*FindList(window, "TreeView1"), plan_.folderStructure);
  if (nodes.size() != 1) {
    GiveUp((nodes.empty() ? "unknown folder structure \"" : "ambiguous folder structure \"") +
           plan_.folderStructure + "\"");
    return;
  }
  if (!Did(UserActions(toolkit).ClickNode("TreeView1", nodes.front()))) return;
  GoForward(toolkit, window, !IsMail() && !ShowsCustomForm());
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
  GoForward(toolkit, window,
            static_cast<int>(mailsWritten_) >= program_->wizard.state.recipients->RowCount());
}

void ExportDriver::GoForward(HeadlessToolkit& toolkit, Window& window, bool dispatches) {
  if (dispatches && plan_.dryRun) {
    ReportRehearsal(window);
    rehearsalEnded_ = true;
    leaving_ = true;
    return;
  }
  // A copy, since the click may unload the window.
  const std::string page(window.Name());  // NOLINT(performance-unnecessary-copy-initialization)
  if (!Did(UserActions(toolkit).Click("Command1")) || !dispatches) return;
  const std::shared_ptr<Window> top = toolkit.TopWindow();
  if (top && top->Name() == page) GiveUp("the export could not be dispatched; the trace says why");
}

void ExportDriver::ReportRehearsal(const Window& window) {
  for (const std::string& document : documents_)
    report_ << "document: " << document << "\n";
  for (const FoundRecipient& recipient : recipients_)
    report_ << "recipient: " << recipient.text << "\n";
  if (!plan_.folderStructure.empty()) report_ << "folder structure: " << plan_.folderStructure << "\n";
  for (const auto& [number, text] : plan_.fields)
    report_ << "field " << number << ": " << text << "\n";
  if (window.Name() == "Tessel_5") report_ << "subject: " << plan_.subject << "\n";
  report_ << "nothing was sent: dry run\n";
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
  const std::string page = toolkit.TopWindow()->Name();
  const char* cancel = page == "Tessel_2" || page == "Tessel_3" ? "Command3" : "Command2";
  const bool hasCancel = page != "Tessel_4" && page != "Tessel_4a" && page != "Tessel_5";
  if (hasCancel && actions.Click(cancel).empty()) return;
  if (!actions.CloseWindow().empty() || toolkit.TopWindow()) toolkit.CloseForShutdown();
}

MessageAnswer ExportDriver::Answer(const MessageRequest& request) {
  EndProgress();
  if (request.buttons == MessageButtons::kYesNo) {
    // The keep-selection question is answered No; that the export is to be cancelled, Yes when it is.
    const bool confirmsCancel = request.title == "Cancel";
    return confirmsCancel && leaving_ ? MessageAnswer::kYes : MessageAnswer::kNo;
  }
  if (!leaving_) Say((request.title.empty() ? kDefaultMessageTitle : request.title) + ": " + request.text);
  return MessageAnswer::kOk;
}

void ExportDriver::WindowRedrawn(const Window& window) {
  if (progress_ == nullptr || window.Name() != "Tessel_2") return;
  const auto* bar = dynamic_cast<const ProgressBar*>(window.Find("ProgressBar1"));
  if (bar == nullptr || !bar->Visible() || bar->Maximum() < 1) return;
  constexpr int kWidth = 40;
  const int filled = kWidth * bar->Value() / bar->Maximum();
  *progress_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
             << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << bar->Value() << " / "
             << bar->Maximum() << std::flush;
  progressDrawn_ = true;
}

void ExportDriver::WindowHidden(const Window&) {
  EndProgress();
}

void ExportDriver::EndProgress() {
  if (progressDrawn_) *progress_ << "\n";
  progressDrawn_ = false;
}

void ExportDriver::ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                                  std::int32_t processId) {
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

void ExportDriver::Say(const std::string& text) {
  EndProgress();
  messages_ << text << "\n";
}

}  // namespace tessel::cli
