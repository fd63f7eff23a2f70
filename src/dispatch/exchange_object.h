// Kestrix_ExObj: the data exchange object that records an export in the database.
#pragma once

#include <string>
#include <vector>

#include "config/services.h"
#include "host/metadata.h"
#include "host/names.h"
#include "host/object.h"
#include "host/record_list.h"

namespace tessel {

namespace Kestrix_ExObj {

// Creates the object, links the exported objects, the company and the contact person to it. `objectId` and
// `idValue` are set as far as the creation came; errors are traced, never raised. The lists of `exported`
// hold the columns "CLASS_ID", "OBJECT_ID" and "ROOT_OBJ"; company and contact may be nothing. False when the
// database lacks the object, one of its values or one of its links; what it refused is then a problem of the
// run with the database's reason.
[[nodiscard]] bool CreateExchangeObject(Services& services, const PcSessionPtr& session, ClassId classId,
                                        ObjectId& objectId, const std::string& protocolText,
                                        bool exportSwitch, const std::string& exchangeTypeAttribute,
                                        std::string& idValue, std::int16_t rootLinkSwitch,
                                        const PcObjectPtr& company, const PcObjectPtr& contact,
                                        const std::vector<PcRecordListPtr>& exported);

// Why objects of a class would get no number, so that no exchange is recorded: the first identifying
// attribute is the one that is numbered, whatever sequences those behind it have. Empty when they get one.
[[nodiscard]] std::string WhyNoNumber(const PcClass& exchangeClass);

}  // namespace Kestrix_ExObj
}  // namespace tessel
