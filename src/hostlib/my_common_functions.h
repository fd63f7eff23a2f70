// myCommonFunctions: questions to the database that the system answers itself, links above all.
#pragma once

#include <string>

#include "host/object.h"
#include "host/session.h"
#include "messages/trace.h"

namespace tessel::myCommonFunctions {

// Whether the database has a mechanism of the name; traced.
[[nodiscard]] bool CheckDBMechanismExists(Trace& trace, PcSession& session, const std::string& mechanism);

// Finds the attribute that identifies the objects of a class. True when the host relates something to it;
// otherwise `attribute` is the last definition walked. Neither "SITE_ID" nor "REVISION" is ever found.
[[nodiscard]] bool FindIDAtt(PcObject& object, PcAttributePtr& attribute, PcSequencePtr& related);

// Whether a link of the class leads from the first object to the second. With exactly one such link, `link`
// becomes the link itself; otherwise it stays as it was. Errors as the query raises them.
[[nodiscard]] bool isObjLinked2Obj(const PcObject& first, const PcObject& second, ClassId linkClass,
                                   PcObjectPtr& link);

// Rows of the object's default hierarchical link class in which it is the second end.
[[nodiscard]] PcRecordListPtr RetrieveParents2(const PcObject& object);

// Rows of a link class in which the object is the second end or, when there are none, the first end. The
// third argument is not used.
[[nodiscard]] PcRecordListPtr RetrieveRelations2(const PcObject& object, ClassId linkClass, int unused = 0);

}  // namespace tessel::myCommonFunctions
