// Private-profile strings in INI files: a section's name stands in brackets, an entry is "name=value". Blanks
// around names and values do not count, a value may stand in quotes, ";" begins a comment line, and of two
// equal sections or keys the first counts.
#pragma once

#include "platform/file_system.h"
#include "platform/operating_system.h"
#include "platform/text_encoding.h"

namespace tessel {

class ProfileStringsFile : public ProfileStrings {
 public:
  // Both references outlive the object. `ansi` is the code page of the files.
  ProfileStringsFile(FileSystem& files, const TextEncoding& ansi) : files_(files), ansi_(ansi) {}

  [[nodiscard]] std::string Get(const std::string& file, const std::string& section, const std::string& key,
                                const std::string& defaultText, std::size_t size) const override;
  // The other lines stay as they are. 0 as well for a text with a line break, which would be a second line.
  [[nodiscard]] std::int32_t Write(const std::string& file, const std::string& section,
                                   const std::string& key, const std::string& value) override;

 private:
  FileSystem& files_;
  const TextEncoding& ansi_;
};

}  // namespace tessel
