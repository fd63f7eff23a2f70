// A received exchange shown to people and programs.
#pragma once

#include <iosfwd>

#include "received/exchange.h"
#include "received/file_source.h"

namespace tessel::received {

// Contents, hierarchy and dependencies as trees of text lines.
void WriteText(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out);
// One page without scripts that needs nothing beside it.
void WriteHtml(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out);
// One JSON object; docs/received-exchange.md holds its members.
void WriteJson(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out);

// Size for people: "17 bytes", "2.4 MB".
[[nodiscard]] std::string SizeText(std::uint64_t bytes);
// The size of a file, "missing" when there is none.
[[nodiscard]] std::string FileState(const FileSource& source, const std::string& name);
// "2024-01-31 15:45:02" for "20240131_154502"; another text as it stands.
[[nodiscard]] std::string TimeText(const std::string& fileTime);
[[nodiscard]] std::string SendModeText(const Exchange& exchange);

}  // namespace tessel::received
