#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "config/configuration.h"

namespace tessel {
namespace {

std::string TypeName(const ConfigurationKey& key) {
  constexpr const char* kNames[] = {"text", "Boolean", "integer"};
  return kNames[key.member.index()];
}

std::string DefaultCell(const ConfigurationKey& key) {
  if (key.defaultText == nullptr) return "the program's directory";
  return *key.defaultText == '\0' ? "(empty)" : "`" + std::string(key.defaultText) + "`";
}

// The table of docs/configuration.md.
std::string Table() {
  std::string table;
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    table += std::string("| `") + key.section + "` | `" + key.key + "` | " + DefaultCell(key) + " | " +
             TypeName(key) + " | " + key.meaning + " |\n";
  }
  return table;
}

TEST(ConfigurationDocument, HoldsTheTableOfTheCode) {
  std::ifstream file(std::string(TESSEL_DOCS) + "/configuration.md", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_NE(text.str().find("|---|---|---|---|---|\n" + Table() + "\n"), std::string::npos)
      << "docs/configuration.md should hold this table:\n"
      << Table();
}

}  // namespace
}  // namespace tessel
