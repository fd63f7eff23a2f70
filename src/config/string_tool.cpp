#include "config/string_tool.h"

#include <algorithm>

namespace tessel {

void StringTool::OpenString(std::string text) {
  text_ = std::move(text);
  position_ = 0;
}

std::string_view StringTool::ReadLine() {
  constexpr std::string_view kLineEnd = "\r\n";
  if (EndOfString()) return {};
  const auto end = std::min(text_.find(kLineEnd, position_), text_.size());
  const std::string_view line(text_.data() + position_, end - position_);
  position_ = std::min(end + kLineEnd.size(), text_.size());
  return line;
}

}  // namespace tessel
