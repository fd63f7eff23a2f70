#include "structure/structure_builder.h"

#include <algorithm>
#include <unordered_set>

#include "host/names.h"
#include "structure/draxa_objects.h"
#include "structure/xml/dx_xml.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

constexpr const char* kContentElement = "_STOBJECT_";
constexpr const char* kHierarchyElement = "_H_STOBJECT_";
constexpr const char* kDependencyElement = "_D_STOBJECT_";

constexpr const char* kLinkNameTrace = "  Set link name for new XML Node with: ";
constexpr const char* kLinkDirectionTrace = "  Set link direction for new XML Node with: ";

bool HasXmlAttribute(XmlNode element, std::string_view name) {
  return element.HasAttribute(name);
}

std::string GetFileExtension(const std::string& name) {
  const std::size_t stop = name.rfind('.');
  return stop == std::string::npos ? name : name.substr(stop + 1);
}

ObjectKey KeyOf(XmlNode element) {
  return ParseObjectKey(element.Attribute("Identifier"), '_');
}

bool IsHierarchyElement(XmlNode node) {
  return node.Type() == XmlNodeType::kElement && node.Name() == kHierarchyElement;
}

}  // namespace

std::string DisplayValue(const PcObject& object, const std::string& attribute) {
  return object.HasAttribute(attribute) ? object.GetText(attribute) : std::string();
}

StructureBuilder::StructureBuilder(Services& services, const ExchangeState& exchange, StructureState& state)
    : services_(services),
      copied_(exchange.copied),
      state_(state),
      store_(Required(services.Session().ObjectStore(), "object store")),
      metaData_(Required(services.Session().MetaData(), "metadata")) {}

PcObjectPtr StructureBuilder::Object(const ObjectKey& key) {
  PcObjectPtr object = store_->Object(key);
  if (!object) ThrowObjectNotSet("object " + ObjectKeyText(key, '_'));
  object->ReadData();
  return object;
}

const std::string& StructureBuilder::Description(const ObjectKey& key) {
  const auto known = descriptions_.find(key);
  return known != descriptions_.end() ? known->second : Description(*Object(key));
}

const std::string& StructureBuilder::Description(const PcObject& object) {
  const ObjectKey key = object.Key();
  if (const auto known = descriptions_.find(key); known != descriptions_.end()) return known->second;
  return descriptions_.emplace(key, DisplayValue(object, services_.Settings().DisplayAttribute1))
      .first->second;
}

std::string StructureBuilder::ClassName(ClassId classId) {
  const auto known = classNames_.find(classId);
  if (known != classNames_.end()) return known->second;
  const PcClassPtr definition = metaData_->ClassById(classId);
  if (!definition) ThrowObjectNotSet("class " + std::to_string(classId));
  return classNames_.emplace(classId, definition->Name()).first->second;
}

// The mechanisms of an object are those of its class, so a class is asked once.
std::int16_t StructureBuilder::IsDraxaObj(const PcObject& object) {
  const ClassId classId = object.GetClassId();
  const auto known = draxaClasses_.find(classId);
  if (known != draxaClasses_.end()) return known->second;
  return draxaClasses_.emplace(classId, CommonXFunctions::GetIsDraxaObj(object)).first->second;
}

void StructureBuilder::SetAttribute(XmlNode element, std::string_view name, std::string_view value,
                                    std::string_view traceText) {
  std::string line(traceText);
  line += XML::CreateAttribute(*state_.document, name, element, value);
  services_.trace.Write(line);
}

// The flag is used up by the first structure that is built after the lock.
void StructureBuilder::SetAccess(XmlNode element, PcObject& object) {
  Trace& trace = services_.trace;
  XmlDocument& document = *state_.document;
  trace.Write("verify the 'first lock status'");
  const Value firstLock = object.GetValue(attribute::kFirstLockUse);
  if (firstLock.IsNull() || !firstLock.AsBoolean()) {
    trace.Write("'first lock status' is false, set the appropriate attribute in the XML structure file");
    XML::CreateAttribute(document, "ACCESS_AUTHORIZATION", element, "ReadOnly");
    trace.Write("attribute has been set");
    return;
  }
  trace.Write("'first lock status' is true, set the appropriate attribute in the XML structure file");
  XML::CreateAttribute(document, "ACCESS_AUTHORIZATION", element, "Read/Write");
  trace.Write("update object with unsetting the 'first lock status'");
  object.SetValue(attribute::kFirstLockUse, false);
  const PcBehaviorPtr behavior =
      Required(services_.declarations.startup.DefaultBehavior, "default behaviour");
  const int code = object.Update(*behavior);
  trace.Write(code == 0 ? "object updated" : "object not updated, error code: " + std::to_string(code));
}

void StructureBuilder::FillNodeAttributes(XmlNode element, PcObject& object, int level,
                                          std::string_view linkName, int linkDirection) {
  const Configuration& settings = services_.Settings();
  const ObjectKey key = object.Key();
  SetAccess(element, object);
  services_.trace.Write("  Set Access mode for new XML node with: " +
                        element.Attribute("ACCESS_AUTHORIZATION"));
  SetAttribute(element, "FIRST_DESCRIPTION", Description(object),
               "  Set DisplayAttribute1 for new XML Node with: ");
  SetAttribute(element, "SECOND_DESCRIPTION", DisplayValue(object, settings.DisplayAttribute2),
               "  Set DisplayAttribute2 for new XML Node with: ");
  const std::string fileName = object.GetText(attribute::kCadFileName);
  SetAttribute(element, "ORIG_FILE_NAME", fileName, "  Set origin file name for new XML Node with: ");
  SetAttribute(element, "FILE_EXTENSION", GetFileExtension(fileName),
               "  Set File extension for new XML Node with: ");
  SetAttribute(element, "IS_DRAXA_DOC", std::to_string(IsDraxaObj(object)),
               "  Set whether Draxa Doc or not for new XML Node with: ");
  SetAttribute(element, "STRUCTURE_LEVEL", std::to_string(level),
               "  Set structure level for new XML Node with: ");
  SetAttribute(element, "LINK_NAME", linkName, kLinkNameTrace);
  SetAttribute(element, "LINK_DIRECTION", std::to_string(linkDirection), kLinkDirectionTrace);
  SetAttribute(element, "RENAME_FILE_NAME", "",
               "  Set Rename file name (Placeholder) for new XML Node with: ");
  SetAttribute(element, "PELICORE_CLASS_ID", std::to_string(key.classId),
               "  Set ClassID for new XML Node with: ");
  SetAttribute(element, "PELICORE_OBJ_ID", std::to_string(key.objectId),
               "  Set ObejctID for new XML Node with: ");
  SetAttribute(element, "STATUS", object.GetText(attribute::kState), "  Set Status for new XML Node with: ");
  SetAttribute(element, "REVISION", object.GetText("REVISION"), "  Set Revision for new XML Node with: ");
}

XmlNode StructureBuilder::AddStructureNode(XmlNode parent, const ObjectKey& key, const char* elementName,
                                           const std::string& description) {
  const XmlNode element = DX_XML::CreateDXNodeElement(*state_.document, elementName, description, parent,
                                                      ObjectKeyText(key, '_'));
  services_.trace.Write(std::string("Set new xml node with name: ") + elementName +
                        " to parent node: " + parent.Name());
  return element;
}

void StructureBuilder::BuildContentList(XmlNode rootNode) {
  const PcRecordList& files = *Required(copied_.Files().get(), "copied-files list");
  if (!HasXmlAttribute(rootNode, "PELICORE_OBJ_ID") || !HasXmlAttribute(rootNode, "PELICORE_CLASS_ID"))
    return;
  const ObjectKey root{ParseInt16(rootNode.Attribute("PELICORE_CLASS_ID")),
                       ParseInt32(rootNode.Attribute("PELICORE_OBJ_ID"))};
  const int rows = files.RowCount();
  for (int row = 0; row < rows; ++row) {
    const ObjectKey key = files.KeyOfRow(row);
    if (key == root || !IsFileCopied(files.GetValue(attribute::kOperationId, row))) continue;
    const PcObjectPtr object = Object(key);
    const XmlNode element = AddStructureNode(rootNode, key, kContentElement, Description(*object));
    if (element) FillNodeAttributes(element, *object, 2, "NoName", -1);
  }
}

// A link of an object to itself counts the object's rows once.
bool StructureBuilder::BothEndsCopied(const ObjectKey& first, const ObjectKey& second) const {
  const int count = copied_.CopiedCount(first) + (first == second ? 0 : copied_.CopiedCount(second));
  return count == 2;
}

void StructureBuilder::AddChildren(XmlNode element, const ObjectKey& parent) {
  for (const int row : copied_.LinksFrom(parent)) {
    const CopiedLink link = copied_.Link(row);
    (void)ClassName(link.linkClass);
    if (link.linkClass == state_.defaultHierarchicalLinkClassId && BothEndsCopied(parent, link.second)) {
      AddStructureNode(element, link.second, kHierarchyElement, Description(link.second));
    }
  }
  copied_.CheckLinks();
}

// Depth first with a stack of its own, since a structure may be deeper than the program's. An object that
// already stands above is listed, but not followed again.
void StructureBuilder::BuildHierarchicalStructure(XmlNode element) {
  struct Step {
    XmlNode node;
    bool leave = false;
  };
  std::unordered_set<ObjectKey> above;
  for (XmlNode node = element.Parent(); node; node = node.Parent()) {
    if (IsHierarchyElement(node)) above.insert(KeyOf(node));
  }
  std::vector<Step> steps{{element, false}};
  while (!steps.empty()) {
    const Step step = steps.back();
    steps.pop_back();
    if (IsHierarchyElement(step.node)) {
      const ObjectKey key = KeyOf(step.node);
      if (step.leave) {
        above.erase(key);
        continue;
      }
      if (!above.insert(key).second) continue;
      AddChildren(step.node, key);
      steps.push_back({step.node, true});
    }
    const auto firstChild = static_cast<std::ptrdiff_t>(steps.size());
    for (XmlNode child = step.node.FirstChild(); child; child = child.NextSibling()) {
      steps.push_back({child, false});
    }
    std::reverse(steps.begin() + firstChild, steps.end());
  }
}

void StructureBuilder::BuildDependencyList(XmlNode list) {
  const int rows = copied_.LinkCount();
  for (int row = 0; row < rows; ++row) {
    const CopiedLink link = copied_.Link(row);
    const std::string linkName = ClassName(link.linkClass);
    if (!BothEndsCopied(link.first, link.second)) continue;
    const XmlNode first = AddStructureNode(list, link.first, kDependencyElement, Description(link.first));
    AddStructureNode(first, link.second, kDependencyElement, Description(link.second));
    SetAttribute(first, "LINK_NAME", linkName, kLinkNameTrace);
    SetAttribute(first, "LINK_DIRECTION", std::to_string(link.direction), kLinkDirectionTrace);
  }
}

}  // namespace tessel
