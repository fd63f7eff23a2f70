#include "wizard/tessel_2.h"

#include "host/error.h"
#include "messages/guard.h"
#include "selection/selection.h"
#include "wizard/page_layout.h"

namespace tessel {

void Tessel_2::Build() {
  frame3_ = AddFrame({0, 0, 6972, 3975}, "Schritt 2 von 3:   Versendedaten bearbeiten");
  treeView2_ = &PageWindow().Add<TreeList>("TreeView2", -1, frame3_, Rect{120, 240, 6645, 3660}, true);
  treeView2_->OnKeyDown = [this](char32_t key) { KeyDown(key); };
  treeView2_->OnNodeCheck = [this](int node) { NodeCheck(node); };
  treeView2_->OnClick = [this] { TreeClick(); };
  BuildProgress();
  BuildButtons();
}

void Tessel_2::BuildProgress() {
  check1_ = &PageWindow().Add<CheckBox>("Check1", -1, nullptr, Rect{30, 4120, 1335, 320});
  check1_->SetCaption("Copy all");
  check1_->OnClick = Trapped("Check1_Click", [this] { ClickCopyAll(); });
  label1_ = AddLabel("Label1", -1, nullptr, {1560, 4155, 615, 330}, "0 / 0");
  label1_->SetVisible(false);
  progressBar1_ = &PageWindow().Add<ProgressBar>("ProgressBar1", -1, nullptr, Rect{2160, 4080, 4815, 375});
  progressBar1_->SetVisible(false);
  label2_ = AddLabel("Label2", -1, nullptr, {2640, 4200, 4335, 255}, "");
  label2_->SetVisible(false);
}

void Tessel_2::BuildButtons() {
  command2_ = AddButton("Command2", nullptr, {0, 4575, 2052, 372}, "<< Zurück", [this] {
    // Going back in the middle of a run would leave it standing below the pages shown from here.
    if (!running_) GoBack();
  });
  command3_ =
      AddButton("Command3", nullptr, {2400, 4560, 2052, 372}, "Abbruch", [this] { Cancel(!CopyComplete()); });
  command3_->IsCancel = true;
  command1_ = AddButton("Command1", nullptr, {4800, 4560, 2172, 372}, "Bearbeiten", [this] { Process(); });
  command1_->IsDefault = true;
}

void Tessel_2::Load() {
  clickedNode_ = -1;
  spacePressed_ = false;
  GuardedRun(GetServices().trace, "Error in Form_Load Fenster Tessel_2", [this] {
    treeView2_->Clear();
    imageList1_.Clear();
    SetCaptions();
    CommonXFunctions::StartStructureDocument(GetServices(), Context().structure);
    Context().exchange.copied.StartExport();
    ListSelection();
  });
}

void Tessel_2::SetCaptions() {
  frame3_->SetCaption(Caption("c0010", "Schritt 2 von 3:   Versendedaten bearbeiten"));
  command3_->SetCaption(Caption("c0008", "Abbruch"));
  command1_->SetCaption(Caption("c0012", "Bearbeiten"));
  command2_->SetCaption(Caption("c0013", "<< Zurück"));
  check1_->SetCaption(Caption("c0024", "Alle Kopieren"));
}

void Tessel_2::ListSelection() {
  PcSession& session = GetServices().Session();
  const PcReadingPtr reading = session.BeginReading();
  const Value count = session.GlobalData().Get(global_data::kCount);
  const int objects = count.IsNull() ? 0 : count.AsInt32();
  for (int number = 1; number <= objects; ++number)
    ListObject(number);
  if (treeView2_->NodeCount() > 0) treeView2_->Select(0);
}

void Tessel_2::ListObject(int number) {
  const std::string entry = global_data::ObjectName(number);
  const PcObjectPtr object =
      Required(CommonXFunctions::RetrieveObjFromGlobalData(GetServices(), entry), entry.c_str());
  const std::string position = std::to_string(number - 1);
  const std::string classText = std::to_string(object->GetClassId());
  TraceLine("lese Objekte aus den globalen Variablen aus(Form_Load/Tessel_2): " + position + " " +
            std::to_string(object->GetObjectId()) + " " + classText);
  const std::size_t imageCount = imageList1_.Images().size();
  CommonXFunctions::GetIcon(GetServices(), *object, imageList1_);
  if (imageList1_.Images().size() != imageCount) treeView2_->SetImages(&imageList1_);
  treeView2_->AddNode(CommonXFunctions::RetrieveDisplayVal(Settings().DisplayAttribute1,
                                                           Settings().DisplayAttribute2, object),
                      ObjectKeyText(object->Key(), '_'), "Class" + classText);
  const auto nodes = CommonXFunctions::AddSelectedObject(GetServices(), Context().structure, *object);
  TraceLine("liste selektierte Daten auf(Form_Load/Tessel_2): " + position + " " + nodes.content.Name());
  if (nodes.hierarchical) {
    TraceLine("liste selektierte Daten auf -> hierarchische struktur(Form_Load/Tessel_2): " + position + " " +
              nodes.hierarchical.Name());
  }
}

void Tessel_2::Activate() {
  TakeBounds(State().NavigatedFrom == PageId::kSendMode ? PageId::kSendMode : PageId::kRecipient);
  // The send mode may have changed since the copy was complete.
  if (CopyComplete()) SetForwardCaption();
  // A disabled box says that the user copies object by object; the page comes back here after each.
  if (Settings().b_PresetCopyAllBox && check1_->Enabled()) {
    check1_->SetChecked(true);
    label1_->SetVisible(true);
  }
  BringToTop();
}

void Tessel_2::SetForwardCaption() {
  command1_->SetCaption(Mode() == SendMode::kNoSend ? Caption("c0014", "Versenden")
                                                    : Caption("c0009", "Weiter >>"));
}

void Tessel_2::ClickCopyAll() {
  if (check1_->Checked()) label1_->SetCaption("0 / " + std::to_string(treeView2_->NodeCount()));
  label1_->SetVisible(check1_->Checked());
}

// The list's own toggle on the space key comes after this event and restores the mark. Only the space key
// changes a mark, so other keys leave nothing behind that the next click on a check box could take for
// theirs.
void Tessel_2::KeyDown(char32_t key) {
  const int selected = treeView2_->Selected();
  if (key != U' ' || selected < 0) return;
  spacePressed_ = true;
  treeView2_->SetChecked(selected, !treeView2_->NodeAt(selected).checked);
}

void Tessel_2::NodeCheck(int node) {
  clickedNode_ = spacePressed_ ? -1 : node;
  spacePressed_ = false;
}

void Tessel_2::TreeClick() {
  if (treeView2_->HasNode(clickedNode_)) {
    treeView2_->SetChecked(clickedNode_, !treeView2_->NodeAt(clickedNode_).checked);
  }
  clickedNode_ = -1;
}

void Tessel_2::Layout() {
  const Window& window = PageWindow();
  AnchorForwardButton(window, *command1_);
  AnchorMiddleButton(window, *command3_);
  AnchorBackButton(window, *command2_);
  AnchorFrame(window, *frame3_, 1450);
  ApplyLayout(window, {{treeView2_, Side::kWidth, Extent::kWidth, 540},
                       {treeView2_, Side::kHeight, Extent::kHeight, 1800},
                       {check1_, Side::kTop, Extent::kHeight, 1355},
                       {label1_, Side::kTop, Extent::kHeight, 1325},
                       {progressBar1_, Side::kTop, Extent::kHeight, 1395},
                       {progressBar1_, Side::kWidth, Extent::kWidth, 2625}});
}

}  // namespace tessel
