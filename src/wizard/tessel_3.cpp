#include "wizard/tessel_3.h"

#include <algorithm>

#include "host/error.h"
#include "wizard/page_layout.h"
#include "wizard/partner_lists.h"

namespace tessel {
namespace {

constexpr double kReserveMulti = 3270;
constexpr double kReserveSingle = 1950;
constexpr double kListHeightMulti = 2175;
constexpr double kListGap = 205;

const TreeList::Node& SelectedNode(const TreeList& list) {
  if (list.Selected() < 0) ThrowObjectNotSet("selected node of " + list.Id());
  return list.NodeAt(list.Selected());
}

// A collected node's tag: the keys of customer and contact person joined by "_".
Recipient RecipientOfTag(const std::string& tag) {
  const std::vector<std::string> parts = SplitText(tag, "_");
  if (parts.size() < 4) {
    throw RuntimeError(error_number::kSubscriptOutOfRange, "\"" + tag + "\" names no pair of objects");
  }
  return {{ParseInt16(parts[0]), ParseInt32(parts[1])}, {ParseInt16(parts[2]), ParseInt32(parts[3])}, {}};
}

}  // namespace

void Tessel_3::Build() {
  frame3_ = AddFrame({0, 0, 6972, 4472}, "Schritt 3 von 3:   Empfänger auswählen");
  BuildLists();
  BuildButtons();
  mnuKontext_ = {
      "mnuKontext", "Kontext", {{"mnuAddValues", "Additional Values", Trapped("mnuAddValues_Click", [this] {
                                   EditAdditionalValues();
                                 })}}};
}

void Tessel_3::BuildLists() {
  Window& window = PageWindow();
  label1_ = AddLabel("Label1", -1, frame3_, {120, 360, 975, 255}, "Partnerliste");
  label2_ = AddLabel("Label2", -1, frame3_, {3450, 360, 1215, 255}, "Kontaktperson");
  treeView1_ = &window.Add<TreeList>("TreeView1", -1, frame3_, Rect{120, 600, 3195, 3495}, false);
  treeView2_ = &window.Add<TreeList>("TreeView2", -1, frame3_, Rect{3405, 600, 3195, 3495}, false);
  command4_ = AddButton("Command4", frame3_, {120, 3120, 495, 375}, ">>", [this] { CollectPair(); });
  command5_ = AddButton("Command5", frame3_, {120, 3720, 495, 375}, "<<", [this] { RemovePair(); });
  treeView3_ = &window.Add<TreeList>("TreeView3", -1, frame3_, Rect{720, 3120, 5895, 975}, false);
  for (Control* control : std::initializer_list<Control*>{command4_, command5_, treeView3_})
    control->SetVisible(false);
  treeView1_->OnNodeClick = [this](int) {
    CommonXFunctions::ListContactPerson(GetServices(), *treeView1_, *treeView2_);
  };
  treeView3_->OnNodeClick = [this](int) { nodeClicked_ = true; };
  treeView3_->OnMouseUp = [this](MouseButton button) { ReleaseButton(button); };
}

void Tessel_3::BuildButtons() {
  command2_ = AddButton("Command2", nullptr, {120, 4575, 2052, 372}, "<< Zurück", [this] { GoBack(); });
  command3_ = AddButton("Command3", nullptr, {2400, 4575, 2052, 372}, "Abbruch", [this] {
    if (State().ExportFinished) {
      Hide();
    } else {
      Cancel(false);
    }
  });
  command3_->IsCancel = true;
  command1_ = AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Versenden !", [this] { Send(); });
  command1_->IsDefault = true;
}

void Tessel_3::Load() {
  nodeClicked_ = false;
  frame3_->SetCaption(Caption("c0015", "Schritt 3 von 3:   Empfänger auswählen"));
  command3_->SetCaption(Caption("c0008", "Abbruch"));
  command1_->SetCaption(Caption("c0014", "Versenden"));
  command2_->SetCaption(Caption("c0013", "<< Zurück"));
  label1_->SetCaption(Caption("c0017", "Partnerliste"));
  label2_->SetCaption(Caption("c0018", "Kontaktpersonen"));
  if (!MultiRecipient()) return;
  treeView1_->SetHeight(kListHeightMulti);
  treeView2_->SetHeight(kListHeightMulti);
  for (Control* control : std::initializer_list<Control*>{command4_, command5_, treeView3_})
    control->SetVisible(true);
}

void Tessel_3::Activate() {
  heightReserve_ = MultiRecipient() ? kReserveMulti : kReserveSingle;
  TakeBounds(State().NavigatedFrom);
  treeView1_->Clear();
  treeView2_->Clear();
  treeView3_->Clear();
  CommonXFunctions::ListCustomer(GetServices(), *treeView1_);
  if (treeView1_->NodeCount() > 0) treeView1_->Select(0);
  BringToTop();
}

bool Tessel_3::PairSelected() const {
  return treeView1_->Selected() >= 0 && treeView2_->Selected() >= 0;
}

void Tessel_3::AddPair() {
  const TreeList::Node& customer = SelectedNode(*treeView1_);
  const TreeList::Node& contact = SelectedNode(*treeView2_);
  treeView3_->AddNode(customer.text + " >> " + contact.text, customer.tag + "_" + contact.tag);
}

void Tessel_3::CollectPair() {
  if (!PairSelected()) {
    ShowCatalogueText("e0070", MessageIcon::kInformation);
    return;
  }
  const TreeList::Node& customer = SelectedNode(*treeView1_);
  const TreeList::Node& contact = SelectedNode(*treeView2_);
  TraceLine("MULTISELECTION: selektierter Kunde: '" + customer.text + "' ; selektierte Kontaktperson: '" +
            contact.text);
  const std::string tag = customer.tag + "_" + contact.tag;
  if (treeView3_->FindTag(tag) >= 0) {
    ShowCatalogueText("e0150", MessageIcon::kInformation);
    return;
  }
  AddPair();
  TraceLine("MULTISELECTION: Kundenobjekte in Liste hinzugefuegt: " + tag);
}

void Tessel_3::RemovePair() {
  if (treeView3_->Selected() >= 0) treeView3_->RemoveNode(treeView3_->Selected());
}

void Tessel_3::Send() {
  if (!ReadyToSend()) {
    ShowCatalogueText("e0070", MessageIcon::kInformation);
    return;
  }
  if (!MultiRecipient()) {
    treeView3_->Clear();
    AddPair();
    TraceLine("selektierter Kunde: '" + SelectedNode(*treeView1_).text + "' ; selektierte Kontaktperson: '" +
              SelectedNode(*treeView2_).text);
  }
  FillRecipientList();
  GoForward();
}

bool Tessel_3::ReadyToSend() {
  return MultiRecipient() ? treeView3_->NodeCount() > 0 : PairSelected();
}

// The list starts afresh at each press, so that no row of an earlier press or export stays in it.
void Tessel_3::FillRecipientList() {
  PcRecordListPtr recipients = NewRecipientList(GetServices().runtime);
  for (int row = 0; row < treeView3_->NodeCount(); ++row) {
    Recipient recipient = RecipientOfTag(treeView3_->NodeAt(row).tag);
    recipient.directory = RecipientDirectory(Context().exchange.directoryPath, row);
    AppendRecipient(*recipients, recipient);
  }
  State().recipients = std::move(recipients);
}

// The menu belongs to a node: it opens only when the right button is released right after a click on one.
void Tessel_3::ReleaseButton(MouseButton button) {
  const bool openMenu = button == MouseButton::kRight && nodeClicked_;
  nodeClicked_ = false;
  if (openMenu) GetServices().toolkit.OpenPopupMenu(PageWindow(), mnuKontext_);
}

void Tessel_3::EditAdditionalValues() {
  const Recipient recipient = RecipientOfTag(SelectedNode(*treeView3_).tag);
  lastAdditionalValues_ = Context().additionalValues();
  Services& services = GetServices();
  lastAdditionalValues_->Edit({services.declarations.startup.session, recipient.customer, recipient.contact,
                               Context().exchange.directoryPath, services.trace.Writer()});
}

// The clean-up of an export that was cancelled closes the page too; by then the user knows.
bool Tessel_3::QueryClose(CloseReason reason) {
  if (reason != CloseReason::kProgramCode && !State().ExportFinished) {
    ShowCatalogueText("e0190", MessageIcon::kNone);
  }
  return true;
}

void Tessel_3::Layout() {
  const Window& window = PageWindow();
  AnchorForwardButton(window, *command1_);
  AnchorMiddleButton(window, *command3_);
  AnchorBackButton(window, *command2_);
  AnchorFrame(window, *frame3_, kButtonRowReserve);
  const auto [left, top, width, height] = window.Bounds();
  if (width > 345) {
    const double listWidth = std::max(width / 2 - 345, 0.0);
    treeView1_->SetWidth(listWidth);
    treeView2_->SetWidth(listWidth);
  }
  if (width > 540) {
    treeView2_->SetLeft(treeView1_->Bounds().width + kListGap);
    label2_->SetLeft(treeView1_->Bounds().width + kListGap);
  }
  ApplyLayout(window, {{treeView1_, Side::kHeight, Extent::kHeight, heightReserve_},
                       {treeView2_, Side::kHeight, Extent::kHeight, heightReserve_}});
  if (!MultiRecipient()) return;
  ApplyLayout(window, {{command4_, Side::kTop, Extent::kHeight, 2325},
                       {command5_, Side::kTop, Extent::kHeight, 1725},
                       {treeView3_, Side::kTop, Extent::kHeight, 2325}});
  // The list's width waits for a window high enough to show it.
  if (height > 1185) treeView3_->SetWidth(std::max(width - 1185, 0.0));
}

}  // namespace tessel
