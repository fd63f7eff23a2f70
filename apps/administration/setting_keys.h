// The keys that an administrator may set: those of the configuration, and those of our own programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"

namespace tessel::administration {

struct SettingKey {
  enum class Type { kText, kBoolean, kInteger };
  std::string section;
  std::string name;
  std::string defaultText;
  bool defaultIsProgramDirectory = false;
  Type type = Type::kText;
  std::string meaning;

  [[nodiscard]] std::string FullName() const { return section + "." + name; }
};

// Those of the configuration first, in its order.
[[nodiscard]] const std::vector<SettingKey>& SettingKeys();

// By "Key" or "Section.Key". Error: HostError that names the nearest key.
[[nodiscard]] const SettingKey& FindKey(const std::string& name);

// Why a start-up, or the first export after it, would refuse the value; empty when it would not.
[[nodiscard]] std::string RefusalOf(const SettingKey& key, const std::string& value);

}  // namespace tessel::administration
