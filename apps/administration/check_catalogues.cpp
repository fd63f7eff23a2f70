// The message catalogues: every code in every language in use.
#include <algorithm>

#include "administration/catalogue_codes.h"
#include "administration/site_check.h"
#include "platform/paths.h"

namespace tessel::administration {
namespace {

constexpr std::size_t kCodeLength = 5;

std::set<std::string> CodesIn(const FileSystem& files, const std::string& path) {
  std::set<std::string> codes;
  files.ReadLines(path, [&](std::string_view line) {
    codes.emplace(line.substr(0, kCodeLength));
    return true;
  });
  return codes;
}

std::vector<std::string> Wanted(char kind, int customFields) {
  std::vector<std::string> codes;
  for (const char* code : kCatalogueCodes) {
    if (code[0] == kind) codes.emplace_back(code);
  }
  if (kind == 'c' && customFields >= 0) {
    for (int number = 1; number <= customFields + 2; ++number)
      codes.push_back("cc00" + std::to_string(number));
  }
  return codes;
}

struct Kind {
  char letter;
  const char* file;
  const char* effect;  // of a missing code
};
constexpr Kind kKinds[] = {{'p', "protocol.Kestrix_", "the protocol says \"no Message found\""},
                           {'e', "error.Kestrix_", "the message says \"no Message found\""},
                           {'c', "caption.Kestrix_", "the German caption is shown"}};

}  // namespace

void CheckCatalogues(const Site& site, const std::string& folder, const std::set<std::string>& languages,
                     int customFields, Findings& findings) {
  const FileSystem& files = site.platform.files;
  if (folder.empty() || !files.FolderExists(folder)) {
    findings.Error("catalogues",
                   (folder.empty() ? "the settings name no folder" : "there is no folder " + folder) +
                       ": messages say \"no Message found\"",
                   "tessel config set DB LanguageFile FOLDER");
    return;
  }
  for (const std::string& language : languages) {
    for (const Kind& kind : kKinds) {
      const std::string path = paths::Join(folder, kind.file + language);
      if (!files.FileExists(path)) {
        findings.Error("catalogues", "there is no file " + path + ": " + kind.effect,
                       "write the file, or change the language of its users");
        continue;
      }
      const std::set<std::string> codes = CodesIn(files, path);
      std::string missing;
      for (const std::string& code : Wanted(kind.letter, customFields)) {
        if (!codes.contains(code)) missing += (missing.empty() ? "" : ", ") + code;
      }
      if (!missing.empty()) {
        findings.Warning("catalogues", path + " lacks " + missing + ": " + kind.effect, "add the lines");
      }
    }
  }
}

}  // namespace tessel::administration
