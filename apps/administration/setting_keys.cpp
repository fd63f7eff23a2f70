#include "administration/setting_keys.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "common/checksum_setting.h"
#include "config/configuration.h"
#include "host/error.h"
#include "host/value.h"
#include "platform/paths.h"

namespace tessel::administration {
namespace {

SettingKey KeyOf(const ConfigurationKey& row) {
  constexpr std::array kTypes = {SettingKey::Type::kText, SettingKey::Type::kBoolean,
                                 SettingKey::Type::kInteger};
  SettingKey key{row.section, row.key, {}, row.defaultText == nullptr, kTypes[row.member.index()],
                 row.meaning};
  if (row.defaultText != nullptr) key.defaultText = row.defaultText;
  return key;
}

std::vector<SettingKey> AllKeys() {
  std::vector<SettingKey> keys;
  for (const ConfigurationKey& row : ConfigurationKeys())
    keys.push_back(KeyOf(row));
  keys.push_back({checksum_setting::kSection, checksum_setting::kKey, checksum_setting::kDefault, false,
                  SettingKey::Type::kBoolean, checksum_setting::kMeaning});
  return keys;
}

// How many letters have to be changed, added or left out.
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

const SettingKey& NearestKey(std::string_view name) {
  return *std::ranges::min_element(SettingKeys(), {}, [&](const SettingKey& key) {
    return std::min(Distance(name, key.name), Distance(name, key.FullName()));
  });
}

bool HasBlanksAround(const std::string& value) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  return !value.empty() && (isBlank(value.front()) || isBlank(value.back()));
}

bool NamesFile(const SettingKey& key) {
  return key.name == "StructurFileName" || key.name == "DataFileName";
}

std::string RefusalOfText(const SettingKey& key, const std::string& value) {
  if (NamesFile(key) && !paths::IsPlainFileName(value)) return "it is no plain file name";
  if (key.name == "ExportPrefix" && !paths::IsPlainFileName(value + "_"))
    return "it is no part of a file name";
  if (NamesFile(key) && paths::IsSameFileName(value, kNeutralFormatsFile)) {
    return "that is the name of the neutral formats";
  }
  if (key.name == "ExchangePath" && value.empty()) return "no path would make exchange directories anywhere";
  if (key.name == "ExchangePath" && !paths::IsFullPath(value)) return "it does not begin at a drive or at /";
  return {};
}

}  // namespace

const std::vector<SettingKey>& SettingKeys() {
  static const std::vector<SettingKey> keys = AllKeys();
  return keys;
}

const SettingKey& FindKey(const std::string& name) {
  const auto found = std::ranges::find_if(
      SettingKeys(), [&](const SettingKey& key) { return key.name == name || key.FullName() == name; });
  if (found != SettingKeys().end()) return *found;
  throw HostError("There is no key \"" + name + "\"; the nearest is " + NearestKey(name).FullName());
}

std::string RefusalOf(const SettingKey& key, const std::string& value) {
  if (value.find_first_of("\r\n") != std::string::npos) return "it holds a line end";
  if (value.find('=') != std::string::npos) return "an entry with a second \"=\" is never found";
  const bool converted = key.type == SettingKey::Type::kBoolean || key.type == SettingKey::Type::kInteger;
  if (converted && HasBlanksAround(value)) return "it has blanks around it";
  try {
    if (key.type == SettingKey::Type::kBoolean) static_cast<void>(ParseBoolean(value));
    if (key.type == SettingKey::Type::kInteger) static_cast<void>(ParseInt16(value));
  } catch (const RuntimeError&) {
    return key.type == SettingKey::Type::kBoolean ? "it is no Boolean (True, False or a number)"
                                                  : "it is no integer of 16 bits";
  }
  return RefusalOfText(key, value);
}

}  // namespace tessel::administration
