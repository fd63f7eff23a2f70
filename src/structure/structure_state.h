// The structure file of the running export: its document, and the places where nodes are added.
#pragma once

#include <string>

#include "host/object.h"
#include "structure/xml/xml_document.h"

namespace tessel {

// Module state while one export runs.
struct StructureState {
  XmlDocumentPtr document;
  XmlNode root;
  XmlNode contentList;
  XmlNode hierarchicalStructure;  // empty without "GenerateStructureFile"
  XmlNode dependencyList;         // likewise
  XmlNode currentRootNode;        // the "_STOBJECT_" that CreateStructure found last
  ClassId defaultHierarchicalLinkClassId = 0;
  std::string defaultHierarchicalLinkClassName;
};

}  // namespace tessel
