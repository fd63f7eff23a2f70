#include "wizard/tessel_4a.h"

#include "hostlib/qel_function_pool.h"
#include "messages/guard.h"
#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr const char* kNotFoundText = "No folder structure definition for selected object found";
constexpr const char* kNotFoundTag = "-1";
constexpr int kRetrievalMode = 2;

}  // namespace

void Tessel_4a::Build() {
  frame3_ = AddFrame({0, 0, 6972, 4472}, "Customer specific Input");
  label1_ = AddLabel("Label1", -1, frame3_, {120, 480, 1815, 255}, "Folder Structuture Def.:");
  label1_->SetVisible(false);
  treeView1_ = &PageWindow().Add<TreeList>("TreeView1", -1, frame3_, Rect{2040, 480, 4815, 1215}, false);
  treeView1_->SetVisible(false);
  command2_ = AddButton("Command2", nullptr, {0, 4575, 2052, 372}, "<< Zurück", [this] { GoBack(); });
  command1_ = AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Versenden !", [this] { Send(); });
  command1_->IsDefault = true;
}

void Tessel_4a::Activate() {
  TakeBounds(PageId::kRecipient);
  frame3_->SetCaption(Caption("cd001", "No Title"));
  command1_->SetCaption(Caption("c0014", "Versenden!"));
  command2_->SetCaption(Caption("c0013", "<< Back"));
  if (State().UseFolderStructure) {
    treeView1_->SetVisible(true);
    label1_->SetVisible(true);
    label1_->SetCaption(Caption("cd003", "No Title"));
    TraceLine("display 'folder sturcture' list in custom window");
    ListLinkedFolderStruct();
  }
  BringToTop();
}

void Tessel_4a::ListLinkedFolderStruct() {
  GuardedRun(GetServices().trace, "Fehler in function / Sub: (ListLinkedFolderStruct/Tessel_4a)", [this] {
    // First: the page outlives an export, and an error must not leave another object's list to choose from.
    treeView1_->Clear();
    ReadSelectedObject();
    const PcRecordListPtr related = RelatedFolderStructures();
    if (!related || related->RowCount() == 0) {
      treeView1_->AddNode(kNotFoundText, kNotFoundTag);
      return;
    }
    for (int row = 0; row < related->RowCount(); ++row) {
      treeView1_->AddNode(related->GetValue(Settings().DisplayAttribFolderStruc, row).AsText(),
                          ObjectKeyText(related->KeyOfRow(row), '_'));
    }
  });
}

// The structure document's current root is the selected object once it was copied. A missing attribute reads
// as 0.
void Tessel_4a::ReadSelectedObject() {
  const XmlNode root = Context().structure.currentRootNode;
  const auto attribute = [&](const char* name) { return root ? root.Attribute(name) : std::string(); };
  const std::string classText = attribute("PELICORE_CLASS_ID");
  const std::string objectText = attribute("PELICORE_OBJ_ID");
  const ObjectKey key{classText.empty() ? ClassId{0} : ParseInt16(classText),
                      objectText.empty() ? ObjectId{0} : ParseInt32(objectText)};
  selectedObject_ = GetServices().Session().ObjectStore()->Object(key);
}

PcRecordListPtr Tessel_4a::RelatedFolderStructures() const {
  const ClassId classId = GetServices().declarations.startup.FolderStructureClassID;
  if (classId == 0 || !selectedObject_) return nullptr;
  const QelFunctionPool library(GetServices().platform, GetServices().runtime);
  PcRecordListPtr related;
  return library.RetrieveRelations(*selectedObject_, {nullptr, classId, {}}, {}, kRetrievalMode, related);
}

void Tessel_4a::Send() {
  if (State().UseFolderStructure) {
    if (treeView1_->Selected() < 0) {
      ShowCatalogueText("e0130", MessageIcon::kInformation);
      return;
    }
    const TreeList::Node& node = treeView1_->NodeAt(treeView1_->Selected());
    State().SelectedFolderStructure = node.tag;
    TraceLine("UseFolderStructure is 'On' ; selected Folder structure definition: " + node.text +
              " ; Selected Object: " + node.tag);
  }
  GoForward();
}

void Tessel_4a::Layout() {
  const Window& window = PageWindow();
  AnchorForwardButton(window, *command1_);
  AnchorBackButton(window, *command2_);
  AnchorFrame(window, *frame3_, kButtonRowReserve);
  ApplyLayout(window, {{treeView1_, Side::kWidth, Extent::kWidth, 2265},
                       {treeView1_, Side::kHeight, Extent::kHeight, 1575}});
}

}  // namespace tessel
