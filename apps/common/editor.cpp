#include "common/editor.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "host/error.h"

namespace tessel {
namespace {

namespace fs = std::filesystem;

std::string EditorProgram() {
  for (const char* variable : {"VISUAL", "EDITOR"}) {
    const char* program = std::getenv(variable);
    if (program != nullptr && *program != '\0') return program;
  }
  return "vi";
}

// Readable by its owner alone: settings may hold what not everybody is to see.
fs::path PrivateFolder() {
  std::random_device random;
  fs::path folder;
  do {
    folder = fs::temp_directory_path() / ("tessel-settings-" + std::to_string(random()));
  } while (!fs::create_directory(folder));
  fs::permissions(folder, fs::perms::owner_all);
  return folder;
}

std::string WithoutCr(std::string text) {
  for (auto found = text.find("\r\n"); found != std::string::npos; found = text.find("\r\n", found))
    text.erase(found, 1);
  return text;
}

}  // namespace

std::string EditedText(const std::string& text) {
  const fs::path folder = PrivateFolder();
  const fs::path path = folder / "settings.ini";
  std::ofstream(path, std::ios::binary) << WithoutCr(text);
  // The variable may hold arguments, as everywhere; the path is ours and needs no quoting.
  const std::string command = EditorProgram() + " '" + path.string() + "'";
  if (std::system(command.c_str()) != 0) {
    throw RuntimeError(error_number::kPathFileAccess,
                       "The editor \"" + EditorProgram() + "\" failed; the text is kept in " + path.string());
  }
  std::ifstream file(path, std::ios::binary);
  std::string edited{std::istreambuf_iterator<char>(file), {}};
  file.close();
  fs::remove_all(folder);
  return edited;
}

}  // namespace tessel
