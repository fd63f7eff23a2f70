// The text of a settings object, changed line by line: what is not changed stays as it is, byte for byte.
// Sections, entries and comments are those of PelicoreAdminTool.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::administration {

class SettingsText {
 public:
  explicit SettingsText(std::string_view text);

  // The value that a reader finds; nothing when it takes the default.
  [[nodiscard]] std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  // Replaces the value where it stands, or adds an entry at the end of its section, which is made when
  // missing.
  void Set(const std::string& section, const std::string& key, const std::string& value);
  // Takes every entry of the key away. False when there was none.
  bool Unset(std::string_view section, std::string_view key);
  [[nodiscard]] std::string Text() const;

 private:
  // Lines of the first section of the name, without its header; both 0 when there is none.
  struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  [[nodiscard]] Range SectionLines(std::string_view section) const;
  // Line of the first entry; the size when there is none.
  [[nodiscard]] std::size_t FindLine(std::string_view section, std::string_view key) const;

  std::vector<std::string> lines_;  // joined by CR LF; the last is empty when the text ends with a line end
};

struct SuspectLine {
  int number;  // from 1
  std::string text;
  std::string why;
};

// Lines that look like settings and are none: blanks around the "=", a second "=", a line end without CR, a
// second section or entry of a name, an entry outside the sections.
[[nodiscard]] std::vector<SuspectLine> FindSuspectLines(std::string_view text);

// Whether lines end with LF alone somewhere.
[[nodiscard]] bool HasBareLineFeeds(std::string_view text);
// The same text with every line ending with CR LF.
[[nodiscard]] std::string WithCrLf(std::string_view text);

}  // namespace tessel::administration
