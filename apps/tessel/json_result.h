// Results of commands as JSON, one object a line; docs/schemas/command-line.schema.json describes them.
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "host/object_key.h"
#include "messages/problems.h"
#include "tessel/streams.h"

namespace tessel::cli {

using Json = nlohmann::ordered_json;

// Writes the line: "command", "status", then the members of the results. Returns the status.
int WriteResult(Streams& streams, const char* command, int status, const Json& results);

[[nodiscard]] Json JsonOf(const std::vector<Problem>& problems);
// As the command line names objects, CLASS:OBJECT.
[[nodiscard]] Json JsonOf(const ObjectKey& object);

}  // namespace tessel::cli
