#include "tessel/export_driver.h"

#include <algorithm>
#include <ostream>

#include "toolkit/tree_list.h"

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
    GiveUp(toolkit, "unknown page " + window->Name());
  }
}

void ExportDriver::OnStartPage(HeadlessToolkit& toolkit) {
  Do(toolkit, UserActions(toolkit).Click("Command1"));
}

void ExportDriver::OnSendModePage(HeadlessToolkit& toolkit) {
  UserActions actions(toolkit);
  const std::string box = "Check1(" + std::to_string(static_cast<int>(plan_.mode)) + ")";
  if (!actions.Check(box, CheckWish::kChecked).empty()) {
    GiveUp(toolkit, "this send mode is not offered by the configuration");
    return;
  }
  Do(toolkit, actions.Click("Command1"));
}

void ExportDriver::OnSendDataPage(HeadlessToolkit& toolkit, Window& window) {
  const TreeList* list = FindList(window, "TreeView2");
  if (!copyStarted_) {
    copyStarted_ = true;
    documents_.clear();
    for (int node = 0; node < list->NodeCount(); ++node)
      documents_.push_back(list->NodeAt(node).text);
    const Refusal refusal = UserActions(toolkit).Check("Check1", CheckWish::kChecked);
    Do(toolkit, refusal.empty() ? UserActions(toolkit).Click("Command1") : refusal);
    return;
  }
  EndProgress();
  if (list->NodeCount() == 0 || list->CheckedCount() != list->NodeCount()) {
    GiveUp(toolkit, "only " + std::to_string(list->CheckedCount()) + " of " +
                        std::to_string(list->NodeCount()) + " documents could be copied");
    return;
  }
  if (plan_.mode == SendMode::kNoSend) {
    PressForDispatch(toolkit, window, "Command1");
  } else {
    Do(toolkit, UserActions(toolkit).Click("Command1"));
  }
}

bool ExportDriver::PickRecipient(HeadlessToolkit& toolkit, Window& window, const std::string& recipient) {
  const TreeList* customers = FindList(window, "TreeView1");
  const TreeList* contacts = FindList(window, "TreeView2");
  UserActions actions(toolkit);
  int hits = 0;
  std::pair<int, int> hit;
  // Texts may hold a colon themselves, so every place to split is tried.
  for (auto colon = recipient.find(':'); colon != std::string::npos; colon = recipient.find(':', colon + 1)) {
    for (const int customer : FindNodes(*customers, recipient.substr(0, colon))) {
      Do(toolkit, actions.ClickNode("TreeView1", customer));
      if (gaveUp_) return false;
      for (const int contact : FindNodes(*contacts, recipient.substr(colon + 1))) {
        hit = {customer, contact};
        ++hits;
      }
    }
  }
  if (hits != 1) {
    GiveUp(toolkit, (hits == 0 ? "unknown recipient \"" : "ambiguous recipient \"") + recipient + "\"");
    return false;
  }
  Do(toolkit, actions.ClickNode("TreeView1", hit.first));
  if (!gaveUp_) Do(toolkit, actions.ClickNode("TreeView2", hit.second));
  if (gaveUp_) return false;
  chosen_.push_back(customers->NodeAt(hit.first).text + " >> " + contacts->NodeAt(hit.second).text);
  return true;
}

void ExportDriver::OnRecipientPage(HeadlessToolkit& toolkit, Window& window) {
  const bool several = window.Find("Command4")->Visible();
  if (plan_.recipients.empty()) {
    GiveUp(toolkit, "this send mode needs a recipient");
    return;
  }
  if (!several && plan_.recipients.size() > 1) {
    GiveUp(toolkit, "the configuration allows one recipient only");
    return;
  }
  chosen_.clear();
  for (const std::string& recipient : plan_.recipients) {
    if (!PickRecipient(toolkit, window, recipient)) return;
    if (several) {
      Do(toolkit, UserActions(toolkit).Click("Command4"));
      if (gaveUp_) return;
    }
  }
  // Whether this press dispatches or opens another page is the page's matter; a dry run looks at the next
  // page where there is one.
  const bool lastPage = plan_.folderStructure.empty() && plan_.fields.empty() &&
                        (plan_.mode == SendMode::kOdette || plan_.mode == SendMode::kCustom);
  if (lastPage) {
    PressForDispatch(toolkit, window, "Command1");
  } else {
    Do(toolkit, UserActions(toolkit).Click("Command1"));
  }
}

void ExportDriver::OnCustomInputPage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<const Control*> boxes = FieldBoxes(window);
  for (const auto& [number, text] : plan_.fields) {
    if (number < 1 || number > static_cast<int>(boxes.size())) {
      GiveUp(toolkit, "the custom form has no field " + std::to_string(number));
      return;
    }
    Do(toolkit, UserActions(toolkit).Type(boxes[static_cast<std::size_t>(number - 1)]->Id(), text));
    if (gaveUp_) return;
  }
  PressForDispatch(toolkit, window, "Command1");
}

void ExportDriver::OnFolderStructurePage(HeadlessToolkit& toolkit, Window& window) {
  const std::vector<int> nodes = FindNodes(*FindList(window, "TreeView1"), plan_.folderStructure);
  if (nodes.size() != 1) {
    GiveUp(toolkit, (nodes.empty() ? "unknown folder structure \"" : "ambiguous folder structure \"") +
                        plan_.folderStructure + "\"");
    return;
  }
  Do(toolkit, UserActions(toolkit).ClickNode("TreeView1", nodes.front()));
  if (gaveUp_) return;
  const bool mail = plan_.mode == SendMode::kMail || plan_.mode == SendMode::kMailStructure;
  if (mail || !plan_.fields.empty()) {
    Do(toolkit, UserActions(toolkit).Click("Command1"));
  } else {
    PressForDispatch(toolkit, window, "Command1");
  }
}

void ExportDriver::OnMailPage(HeadlessToolkit& toolkit, Window& window) {
  UserActions actions(toolkit);
  const auto* address = dynamic_cast<const TextBox*>(window.Find("Text1", 0));
  const std::string recipient = mailsWritten_ < chosen_.size() ? chosen_[mailsWritten_] : std::string();
  if (address->Text().empty()) Say("warning: no e-mail address of " + recipient);
  Do(toolkit, actions.Type("Text1(2)", plan_.subject));
  if (!gaveUp_) Do(toolkit, actions.Type("Text1(3)", plan_.content));
  if (gaveUp_) return;
  ++mailsWritten_;
  if (mailsWritten_ < chosen_.size()) {
    Do(toolkit, actions.Click("Command1"));
  } else {
    PressForDispatch(toolkit, window, "Command1");
  }
}

void ExportDriver::PressForDispatch(HeadlessToolkit& toolkit, Window& window, const std::string& button) {
  if (plan_.dryRun) {
    ReportRehearsal(window);
    rehearsalEnded_ = true;
    leaving_ = true;
    return;
  }
  const std::string before = window.Name();
  Do(toolkit, UserActions(toolkit).Click(button));
  // A page that is still on top after its dispatch was pressed has told why, or the trace has.
  if (!gaveUp_ && toolkit.TopWindow() && toolkit.TopWindow()->Name() == before) {
    GiveUp(toolkit, "the export could not be dispatched; the trace says why");
  }
}

void ExportDriver::ReportRehearsal(const Window& window) {
  for (const std::string& document : documents_)
    report_ << "document: " << document << "\n";
  for (const std::string& recipient : chosen_)
    report_ << "recipient: " << recipient << "\n";
  if (!plan_.folderStructure.empty()) report_ << "folder structure: " << plan_.folderStructure << "\n";
  for (const auto& [number, text] : plan_.fields)
    report_ << "field " << number << ": " << text << "\n";
  if (window.Name() == "Tessel_5") report_ << "subject: " << plan_.subject << "\n";
  report_ << "nothing was sent: dry run\n";
}

void ExportDriver::Do(HeadlessToolkit& toolkit, const Refusal& refusal) {
  if (!refusal.empty()) GiveUp(toolkit, refusal);
}

void ExportDriver::GiveUp(HeadlessToolkit&, const std::string& reason) {
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
