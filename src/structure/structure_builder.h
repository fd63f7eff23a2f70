// Builds the nodes of one copied root: content list, hierarchical structure, dependency list.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "config/services.h"
#include "exchange/exchange.h"
#include "structure/structure_state.h"

namespace tessel {

// The text of a configured display attribute; empty for a class without it, and when none is configured.
[[nodiscard]] std::string DisplayValue(const PcObject& object, const std::string& attribute);

// Lives as long as the nodes of one copy are built. What the host told of classes, and the description of
// each object, is kept for that time, but not the objects: a copy may have a hundred thousand of them.
class StructureBuilder {
 public:
  // All references outlive the builder.
  StructureBuilder(Services& services, const ExchangeState& exchange, StructureState& state);

  // The object of a key with its data read. Error 91 when the host has none.
  [[nodiscard]] PcObjectPtr Object(const ObjectKey& key);
  [[nodiscard]] std::string ClassName(ClassId classId);
  void FillNodeAttributes(XmlNode element, PcObject& object, int level, std::string_view linkName,
                          int linkDirection);

  // Errors go to the caller; what was added so far stays.
  void BuildContentList(XmlNode rootNode);
  void BuildHierarchicalStructure(XmlNode element);
  void BuildDependencyList(XmlNode list);

 private:
  // "DisplayAttribute1" of an object, read when it is asked for first.
  const std::string& Description(const ObjectKey& key);
  const std::string& Description(const PcObject& object);
  XmlNode AddStructureNode(XmlNode parent, const ObjectKey& key, const char* elementName,
                           const std::string& description);
  void SetAttribute(XmlNode element, std::string_view name, std::string_view value,
                    std::string_view traceText);
  void SetAccess(XmlNode element, PcObject& object);
  void AddChildren(XmlNode element, const ObjectKey& parent);
  [[nodiscard]] bool BothEndsCopied(const ObjectKey& first, const ObjectKey& second) const;
  std::int16_t IsDraxaObj(const PcObject& object);

  Services& services_;
  const CopiedRows& copied_;
  StructureState& state_;
  PcObjectStorePtr store_;
  PcMetaDataPtr metaData_;
  std::unordered_map<ObjectKey, std::string> descriptions_;
  std::unordered_map<ClassId, std::string> classNames_;
  std::unordered_map<ClassId, std::int16_t> draxaClasses_;
};

}  // namespace tessel
