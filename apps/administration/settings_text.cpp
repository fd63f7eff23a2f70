#include "administration/settings_text.h"

#include <algorithm>
#include <set>

#include "host/ascii.h"

namespace tessel::administration {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (auto end = text.find(kLineEnd); end != std::string_view::npos; end = text.find(kLineEnd, begin)) {
    lines.emplace_back(text.substr(begin, end - begin));
    begin = end + kLineEnd.size();
  }
  lines.emplace_back(text.substr(begin));
  return lines;
}

// Key and value of an entry; nothing for another line.
std::optional<std::pair<std::string_view, std::string_view>> EntryOf(std::string_view line) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos || line.find('=', equals + 1) != std::string_view::npos) return {};
  return std::pair{line.substr(0, equals), line.substr(equals + 1)};
}

bool HasKey(std::string_view line, std::string_view key) {
  const auto entry = EntryOf(line);
  return entry && entry->first == key;
}

}  // namespace

SettingsText::SettingsText(std::string_view text) : lines_(SplitLines(text)) {}

std::string SettingsText::Text() const {
  std::string text;
  for (const std::string& line : lines_)
    text.append(&line == &lines_.front() ? "" : kLineEnd).append(line);
  return text;
}

SettingsText::Range SettingsText::SectionLines(std::string_view section) const {
  const std::string header = "[" + std::string(section) + "]";
  const auto found =
      std::ranges::find_if(lines_, [&](const std::string& line) { return line.starts_with(header); });
  if (found == lines_.end()) return {};
  const auto end =
      std::find_if(found + 1, lines_.end(), [](const std::string& line) { return line.starts_with('['); });
  return {static_cast<std::size_t>(found - lines_.begin()) + 1,
          static_cast<std::size_t>(end - lines_.begin())};
}

std::size_t SettingsText::FindLine(std::string_view section, std::string_view key) const {
  const Range range = SectionLines(section);
  for (std::size_t i = range.begin; i < range.end; ++i) {
    if (HasKey(lines_[i], key)) return i;
  }
  return lines_.size();
}

std::optional<std::string> SettingsText::Find(std::string_view section, std::string_view key) const {
  const std::size_t line = FindLine(section, key);
  if (line == lines_.size()) return std::nullopt;
  return std::string(EntryOf(lines_[line])->second);
}

void SettingsText::Set(const std::string& section, const std::string& key, const std::string& value) {
  const std::string entry = key + "=" + value;
  const std::size_t line = FindLine(section, key);
  if (line != lines_.size()) {
    lines_[line] = entry;
    return;
  }
  Range range = SectionLines(section);
  if (range.end == 0) {
    if (!lines_.back().empty()) lines_.emplace_back();
    lines_.insert(lines_.end() - 1, "[" + section + "]");
    range = {lines_.size() - 1, lines_.size() - 1};
  }
  // Before the empty lines that set the next section apart.
  while (range.end > range.begin && lines_[range.end - 1].empty())
    --range.end;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(range.end), entry);
  if (range.end + 1 == lines_.size()) lines_.emplace_back();
}

bool SettingsText::Unset(std::string_view section, std::string_view key) {
  const Range range = SectionLines(section);
  const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(range.begin);
  const auto end = lines_.begin() + static_cast<std::ptrdiff_t>(range.end);
  const auto rest = std::remove_if(begin, end, [&](const std::string& line) { return HasKey(line, key); });
  const bool found = rest != end;
  lines_.erase(rest, end);
  return found;
}

std::vector<SuspectLine> FindSuspectLines(std::string_view text) {
  std::vector<SuspectLine> suspects;
  std::set<std::string, std::less<>> sections;
  std::set<std::string> keys;
  std::string section;
  int number = 0;
  for (const std::string& line : SplitLines(text)) {
    ++number;
    const auto tell = [&](const char* why) { suspects.push_back({number, line, why}); };
    if (line.find('\n') != std::string::npos) {
      tell("it holds a line end without CR: what stands behind it is not found");
    } else if (line.starts_with('[')) {
      section = line.substr(0, line.find(']'));
      keys.clear();
      if (line.find(']') == std::string::npos) tell("the bracket is not closed");
      if (!sections.insert(section).second)
        tell("the section is there a second time; only the first is read");
    } else if (!line.empty() && !line.starts_with('#') && line.find('=') != std::string::npos) {
      const auto entry = EntryOf(line);
      if (!entry) {
        tell("it has a second \"=\" and is never found");
      } else if (section.empty()) {
        tell("it stands before the first section and is never found");
      } else if (Trimmed(entry->first) != entry->first) {
        tell("blanks belong to the key, which is not found therefore");
      } else if (!keys.insert(std::string(entry->first)).second) {
        tell("the key is there a second time; only the first counts");
      }
    } else if (const auto trimmed = Trimmed(line); trimmed.starts_with('[')) {
      tell("blanks before the bracket: it begins no section");
    }
  }
  return suspects;
}

bool HasBareLineFeeds(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) return true;
  }
  return false;
}

std::string WithCrLf(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) result += '\r';
    result += text[i];
  }
  return result;
}

}  // namespace tessel::administration
