#include "structure/structure.h"

#include "host/names.h"
#include "messages/guard.h"
#include "structure/structure_builder.h"
#include "structure/xml/dx_xml.h"
#include "structure/xml/xml.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr const char* kCreateStructureError = "Fehlerabbruch im Modul (CreateStructure/CommonXFunctions)";
constexpr const char* kHierarchyError =
    "Fehlerabbruch im Modul (BuildHierarchicalStructure/CommonXFunctions)";
constexpr const char* kDependencyError = "Fehlerabbruch im Modul (BuildDependencyList/CommonXFunctions)";
constexpr const char* kContentElement = "_STOBJECT_";
constexpr const char* kHierarchyElement = "_H_STOBJECT_";

bool BuildContentList(Services& services, StructureBuilder& builder, XmlNode rootNode) {
  return Guarded(services.trace, "Fehlerabbruch im Modul (BuildContentList/CommonXFunctions)", false, [&] {
    builder.BuildContentList(rootNode);
    return true;
  });
}

bool BuildHierarchy(Services& services, StructureBuilder& builder, XmlNode element) {
  return Guarded(services.trace, kHierarchyError, false, [&] {
    builder.BuildHierarchicalStructure(element);
    return true;
  });
}

bool BuildDependencies(Services& services, StructureBuilder& builder, XmlNode list) {
  return Guarded(services.trace, kDependencyError, false, [&] {
    builder.BuildDependencyList(list);
    return true;
  });
}

// Holds the link class that the structure of the root follows; 0 and no name when its class has none.
void HoldHierarchicalLinkClass(Services& services, StructureState& state, const PcObject& root) {
  state.defaultHierarchicalLinkClassId =
      Required(root.Class(), "class of the root object")->DefaultHierarchicalLinkClassId();
  const PcClassPtr linkClass =
      Required(services.Session().MetaData(), "metadata")->ClassById(state.defaultHierarchicalLinkClassId);
  state.defaultHierarchicalLinkClassName = linkClass ? linkClass->Name() : std::string();
}

void FillRootNode(Services& services, StructureState& state, StructureBuilder& builder, PcRecordList& files,
                  int row, PcObject& root) {
  // The dump helps when a copy went wrong; an export does not depend on its folder.
  IgnoringErrors([&] { files.WriteToFile("Test", "C:\\temp\\RecFile.txt"); });
  files.SetValue(attribute::kRootObject, row, Value(std::int16_t{1}));
  services.trace.Write("call function to fill the XML attributes");
  builder.FillNodeAttributes(state.currentRootNode, root, 0, "", 0);
  services.trace.Write("selektierte root Object wurde kopiert (CreateStructure/CommonXFunctions)");
}

// The root's own nodes and rows. False when the root is not among the copied files.
bool AddRoot(Services& services, ExchangeState& exchange, StructureState& state, StructureBuilder& builder,
             const ObjectKey& key) {
  Trace& trace = services.trace;
  const PcObjectPtr object = builder.Object(key);
  PcObject& root = *object;
  trace.Write("selektierte Root Object (CreateStructure/CommonXFunctions): " + std::to_string(key.objectId) +
              " ; " + std::to_string(key.classId));
  HoldHierarchicalLinkClass(services, state, root);

  trace.Write("Search for selected root object");
  if (!exchange.copied.Files()) trace.Write("CopiedFilesRec is nothing");
  const int row = exchange.copied.FindFileRow(key);
  if (row >= 0) {
    FillRootNode(services, state, builder, CopiedFilesToMark(services.runtime, exchange.copied), row, root);
  }
  exchange.copied.AddToExport();
  if (row >= 0) return true;
  trace.Write(
      "Error: Could not find selected root object in record list created during copy file operation!");
  trace.WriteError(kCreateStructureError, 0, "");
  return false;
}

bool BuildStructure(Services& services, ExchangeState& exchange, StructureState& state, bool generate,
                    const std::string& nodeTag) {
  const XmlDocument& document = *Required(state.document.get(), "structure document");
  state.currentRootNode = DX_XML::FindSpecificDXNode(nodeTag, document, 0, kContentElement);
  if (!state.currentRootNode) {
    services.trace.Write("No node of the selected object (CreateStructure/CommonXFunctions): " + nodeTag);
    return false;
  }
  services.trace.Write("selektierte Root Item (CreateStructure/CommonXFunctions): " +
                       state.currentRootNode.Name());
  StructureBuilder builder(services, exchange, state);
  if (!AddRoot(services, exchange, state, builder, ParseObjectKey(nodeTag, '_'))) return false;

  services.trace.Write("Default hierarchical ClassID: " +
                       std::to_string(state.defaultHierarchicalLinkClassId));
  if (!BuildContentList(services, builder, state.currentRootNode)) return false;
  if (!generate) return true;
  const XmlNode hierarchical = DX_XML::FindSpecificDXNode(nodeTag, document, 0, kHierarchyElement);
  return BuildHierarchy(services, builder, hierarchical) &&
         BuildDependencies(services, builder, state.dependencyList);
}

}  // namespace

void StartStructureDocument(Services& services, StructureState& state) {
  state = {};
  const Configuration& settings = services.Settings();
  const PcUserPtr user = Required(services.Session().CurrentUser(), "current user");
  state.document = XML::InitXMLDoc();
  XmlDocument& document = *state.document;
  XML::InstructGerman(document, "", settings.XMLStructureEncoding);
  state.root = XML::CreateRootElement(document, "DataEx_Structure", "");
  XML::CreateAttribute(document, "Creation Date", state.root, FileTimeText(services.platform.clock.Now()));
  XML::CreateAttribute(document, "Created by", state.root, user->LoginName());
  XML::CreateAttribute(document, "direction", state.root, "Export");
  state.contentList = XML::CreateElement(document, "Content_List", "", state.root);
  if (!settings.GenStrucFile) return;
  state.hierarchicalStructure = XML::CreateElement(document, "Hierarchical_Structure", "", state.root);
  state.dependencyList = XML::CreateElement(document, "Dependency_List", "", state.root);
}

SelectedObjectNodes AddSelectedObject(Services& services, StructureState& state, const PcObject& object) {
  XmlDocument& document = *Required(state.document.get(), "structure document");
  const std::string& attribute = services.Settings().DisplayAttribute1;
  const std::string description = DisplayValue(object, attribute);
  const std::string identifier = ObjectKeyText(object.Key(), '_');
  if (description.empty()) {
    services.trace.Write("!! NODE NAME (DESCRIPTION1: '" + attribute + "') IS EMPTY FOR OBJECT: '" +
                         identifier + "' !!!");
  }
  SelectedObjectNodes nodes;
  nodes.content =
      DX_XML::CreateDXNodeElement(document, kContentElement, description, state.contentList, identifier);
  if (state.hierarchicalStructure) {
    nodes.hierarchical = DX_XML::CreateDXNodeElement(document, kHierarchyElement, description,
                                                     state.hierarchicalStructure, identifier);
  }
  return nodes;
}

bool CreateStructure(Services& services, ExchangeState& exchange, StructureState& state, bool& generate,
                     const std::string& nodeTag) {
  return Guarded(services.trace, kCreateStructureError, false, [&] {
    const PcReadingPtr reading = services.Session().BeginReading();
    return BuildStructure(services, exchange, state, generate, nodeTag);
  });
}

bool BuildHierarchicalStructure(Services& services, const ExchangeState& exchange, StructureState& state,
                                XmlNode element, std::int16_t /*level*/) {
  return Guarded(services.trace, kHierarchyError, false, [&] {
    StructureBuilder builder(services, exchange, state);
    return BuildHierarchy(services, builder, element);
  });
}

bool BuildDependencyList(Services& services, const ExchangeState& exchange, StructureState& state,
                         XmlNode list) {
  return Guarded(services.trace, kDependencyError, false, [&] {
    StructureBuilder builder(services, exchange, state);
    return BuildDependencies(services, builder, list);
  });
}

}  // namespace tessel::CommonXFunctions
