// The outside components as automation classes, made by the ProgID that the local settings file names. Errors
// of making them: HostError with number 429.
#pragma once

#include <memory>
#include <string>

#include "automation/com/late_bound.h"
#include "config/configuration_reader.h"
#include "dispatch/additional_values.h"
#include "messages/trace.h"

namespace tessel::automation {

// WriteEntry(text, number, description, directory, name, on), all by reference.
[[nodiscard]] std::shared_ptr<TraceWriter> NewOutsideTraceWriter(const std::string& progId,
                                                                 std::shared_ptr<MemberIds> ids);
// ReadValue, SectionEntries and SectionLines as in config/configuration_reader.h; lists are arrays of texts.
[[nodiscard]] std::shared_ptr<ConfigurationReader> NewOutsideReader(const std::string& progId,
                                                                    std::shared_ptr<MemberIds> ids);
// Edit and Apply(session, customer class id, customer object id, contact class id, contact object id,
// directory, trace writer).
[[nodiscard]] std::unique_ptr<AdditionalValues> NewOutsideAdditionalValues(const std::string& progId,
                                                                           std::shared_ptr<MemberIds> ids);

}  // namespace tessel::automation
