// CommonXFunctions: the structure file of an export, from its skeleton to the nodes of each copied root.
#pragma once

#include <string>

#include "config/services.h"
#include "exchange/exchange.h"
#include "structure/structure_state.h"

namespace tessel {

namespace CommonXFunctions {

// A new document with declaration, root, attributes and the empty lists; drops any earlier one.
void StartStructureDocument(Services& services, StructureState& state);
// Adds the nodes of one selected object and returns its "_STOBJECT_" and "_H_STOBJECT_" (empty when not
// made).
struct SelectedObjectNodes {
  XmlNode content;
  XmlNode hierarchical;
};
SelectedObjectNodes AddSelectedObject(Services& services, StructureState& state, const PcObject& object);

// Completes the document for one copied root, named by its tag (class id, "_", object id), and adds the
// copied files to those of the export, also when the root is not among them. False when it or its row is
// missing, or when a list could not be built.
bool CreateStructure(Services& services, ExchangeState& exchange, StructureState& state, bool& generate,
                     const std::string& nodeTag);
bool BuildHierarchicalStructure(Services& services, const ExchangeState& exchange, StructureState& state,
                                XmlNode element, std::int16_t level);
bool BuildDependencyList(Services& services, const ExchangeState& exchange, StructureState& state,
                         XmlNode list);

}  // namespace CommonXFunctions
}  // namespace tessel
