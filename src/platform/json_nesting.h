// How deep the lists and objects of a JSON text nest, told before the text is parsed.
#pragma once

#include <string_view>

namespace tessel {

// Whether more than `limit` brackets are open at once anywhere; those in texts and in comments do not count.
// Costs one pass. A text that is no JSON may be answered either way.
[[nodiscard]] bool NestsDeeperThan(std::string_view json, int limit);

}  // namespace tessel
