#include "platform/profile_strings_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/ascii.h"
#include "host/error.h"

namespace tessel {
namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr std::string_view kBlanks = " \t\r";

// The name in a header line; nothing for another line.
std::optional<std::string_view> SectionName(std::string_view line) {
  line = Trimmed(line, kBlanks);
  if (!line.starts_with('[')) return std::nullopt;
  return Trimmed(line.substr(1, line.find(']', 1) - 1), kBlanks);
}

// Name and value of an entry line; nothing for another line.
std::optional<std::pair<std::string_view, std::string_view>> Entry(std::string_view line) {
  line = Trimmed(line, kBlanks);
  const auto equals = line.find('=');
  if (line.starts_with(';') || equals == std::string_view::npos) return std::nullopt;
  return std::pair(Trimmed(line.substr(0, equals), kBlanks), Trimmed(line.substr(equals + 1), kBlanks));
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string FirstCharacters(std::string_view utf8, std::size_t count) {
  std::size_t end = 0;
  bool malformed = false;
  while (count-- > 0 && end < utf8.size()) {
    (void)NextCodePoint(utf8, end, malformed);
  }
  return std::string(utf8.substr(0, end));
}

// The lines of a file; none when it does not exist.
std::vector<std::string> Lines(const FileSystem& files, const std::string& file) {
  std::vector<std::string> lines;
  if (!files.FileExists(file)) return lines;
  files.ReadLines(file, [&lines](std::string_view line) {
    lines.emplace_back(line);
    return true;
  });
  return lines;
}

// Puts an entry into the lines: over the first one of that name, or behind the section's last entry, or in a
// new section at the end.
void PutEntry(std::vector<std::string>& lines, std::string_view section, std::string_view key,
              const std::string& entryLine) {
  const auto isHeader = [](const std::string& line) { return SectionName(line).has_value(); };
  const auto header = std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
    const auto name = SectionName(line);
    return name && EqualsIgnoringCase(*name, section);
  });
  if (header == lines.end()) {
    lines.push_back("[" + std::string(section) + "]");
    lines.push_back(entryLine);
    return;
  }
  const auto sectionEnd = std::find_if(header + 1, lines.end(), isHeader);
  const auto existing = std::find_if(header + 1, sectionEnd, [&](const std::string& line) {
    const auto entry = Entry(line);
    return entry && EqualsIgnoringCase(entry->first, key);
  });
  if (existing != sectionEnd) {
    *existing = entryLine;
    return;
  }
  auto place = sectionEnd;
  while (place != header + 1 && Trimmed(*(place - 1), kBlanks).empty()) {
    --place;
  }
  lines.insert(place, entryLine);
}

}  // namespace

std::string ProfileStringsFile::Get(const std::string& file, const std::string& section,
                                    const std::string& key, const std::string& defaultText,
                                    std::size_t size) const {
  const std::string sectionBytes = ansi_.Encode(section);
  const std::string keyBytes = ansi_.Encode(key);
  std::optional<std::string> value;
  try {
    if (!files_.FileExists(file)) return FirstCharacters(defaultText, size - 1);
    bool inSection = false;
    files_.ReadLines(file, [&](std::string_view line) {
      if (const auto name = SectionName(line)) {
        if (inSection) return false;
        inSection = EqualsIgnoringCase(*name, Trimmed(sectionBytes, kBlanks));
      } else if (const auto entry = Entry(line);
                 inSection && entry && EqualsIgnoringCase(entry->first, Trimmed(keyBytes, kBlanks))) {
        value = ansi_.Decode(Unquoted(entry->second));
      }
      return !value;
    });
  } catch (const RuntimeError&) {
    // An unreadable file reads as one without the key.
  }
  return FirstCharacters(value ? *value : defaultText, size - 1);
}

std::int32_t ProfileStringsFile::Write(const std::string& file, const std::string& section,
                                       const std::string& key, const std::string& value) {
  constexpr std::string_view kLineBreaks("\r\n\0", 3);
  if ((section + key + value).find_first_of(kLineBreaks) != std::string::npos) return 0;
  try {
    std::vector<std::string> lines = Lines(files_, file);
    PutEntry(lines, ansi_.Encode(section), ansi_.Encode(key), ansi_.Encode(key + "=" + value));
    std::string bytes;
    for (const std::string& line : lines) {
      bytes.append(line).append(kLineEnd);
    }
    files_.WriteBytes(file, bytes);
    return 1;
  } catch (const RuntimeError&) {
    return 0;
  }
}

}  // namespace tessel
