// Objects that are linked to an object.
#pragma once

#include "embedded/session/session.h"
#include "host/object.h"

namespace tessel::embedded {

enum class LinkSide { kBelow, kAbove, kBoth };

// One row an object: "OBJECT_ID", "CLASS_ID", the attributes of the "S" classes, then those of the "L"
// classes. A link column whose name is taken by then gets the prefix "LINK_". "S" entries limit the objects
// to their classes and "L" entries the links to theirs; without "S" entries objects of all classes come, with
// ids alone. Rows stand in the order of the links: link classes as in the metadata (or in the list), links by
// their ids; an object that is tied by several links comes with the first of them. Errors: HostError for a
// list of another host.
[[nodiscard]] PcRecordListPtr RetrieveLinked(EmbeddedSession& session, const ObjectKey& object,
                                             const PcAttributeList& attributes, LinkSide side);

}  // namespace tessel::embedded
