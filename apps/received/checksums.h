// SHA-256 sums of the files of an exchange.
#pragma once

#include <string>
#include <vector>

#include "received/exchange.h"
#include "received/file_source.h"

namespace tessel::received {

struct FileSum {
  std::string name;
  std::uint64_t size = 0;
  std::string sha256;  // 64 hexadecimal digits in small letters
};

// One for each file, in the order of their names. Error: ReadError.
[[nodiscard]] std::vector<FileSum> SumsOf(const FileSource& source);

// One line a file: sum, size and name, set apart by blanks.
[[nodiscard]] std::string SumsText(const std::vector<FileSum>& sums);
// The reverse. Error: ReadError for a text of another form.
[[nodiscard]] std::vector<FileSum> ParseSums(const std::string& text);

// Each file that is missing, was added or differs comes into `problems`.
void CompareSums(const FileSource& source, const std::vector<FileSum>& recorded,
                 std::vector<Problem>& problems);

}  // namespace tessel::received
