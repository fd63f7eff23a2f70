#include "sender/login_file.h"

#include <iomanip>
#include <sstream>

#include "sender/system.h"

namespace tessel::sender {

std::string WhyNoLogin(const FileSystem& files, const std::string& path) {
  std::string why = WhyNotPrivate(files.NativePath(path));
  if (!why.empty()) return why;
  std::istringstream lines(files.ReadBytes(path));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string word;
    // Each keyword but these two is followed by its value, which may be any text.
    while (words >> word && word.front() != '#') {
      if (word == "default" || word == "macdef")
        return "\"" + word + "\" would serve for every server; name the server with \"machine\"";
      words >> std::quoted(word);
    }
  }
  return {};
}

}  // namespace tessel::sender
