#include "embedded/session/global_data.h"

namespace tessel::embedded {

Value GlobalData::Get(std::string_view name) const {
  const auto found = entries_.find(name);
  return found == entries_.end() ? Value() : found->second.value;
}

void GlobalData::Set(const std::string& name, const Value& value) {
  const auto found = entries_.find(name);
  if (found != entries_.end()) {
    found->second.value = value;
  } else {
    entries_.emplace(name, Entry{++lastPosition_, value});
  }
}

int GlobalData::Position(std::string_view name) const {
  const auto found = entries_.find(name);
  return found == entries_.end() ? 0 : found->second.position;
}

void GlobalData::Remove(std::string_view name) {
  const auto found = entries_.find(name);
  if (found != entries_.end()) entries_.erase(found);
}

}  // namespace tessel::embedded
