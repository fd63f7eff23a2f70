// Writes its arguments behind the first into the file that the first names, each with "|" at its end.
#include <filesystem>
#include <fstream>

#include "platform/native/native_platform.h"

int main(int count, char** arguments) {
  const std::vector<std::string> given = tessel::ProgramArguments(count, arguments);
  if (given.empty()) return 2;
  std::ofstream file(given[0] + ".part", std::ios::binary);
  for (std::size_t i = 1; i < given.size(); ++i)
    file << given[i] << "|";
  file.close();
  std::filesystem::rename(given[0] + ".part", given[0]);
  return 0;
}
