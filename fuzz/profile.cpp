// Profile strings: any INI file is read, and what was written reads back while other entries stay.
#include "fuzzing.h"
#include "one_file.h"
#include "platform/posix/iconv_encodings.h"
#include "platform/profile_strings_file.h"

namespace {

// Texts that stand in an entry as they are.
bool IsPlain(const std::string& text) {
  if (text.empty() || text.size() > 200) return false;
  for (const char c : text) {
    if (c <= ' ' || c > '~' || std::string_view("[]=;\"'").find(c) != std::string_view::npos) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessel;
  constexpr std::size_t kBuffer = 256;
  static const posix::IconvEncodings kEncodings;
  static const auto kAnsi = kEncodings.Open("windows-1252");
  fuzz::Input input(data, size);
  const std::string section = input.Part();
  const std::string key = input.Part();
  const std::string value = input.Part();
  fuzz::OneFile file;
  file.bytes = input.Rest();
  ProfileStringsFile profiles(file, *kAnsi);
  const std::string traceBefore = profiles.Get("p.ini", "Trace", "TracePath", "none", kBuffer);
  (void)profiles.Get("p.ini", section, key, value, kBuffer);

  const bool written = profiles.Write("p.ini", section, key, value) != 0;
  if (!IsPlain(section) || !IsPlain(key) || !IsPlain(value)) return 0;
  fuzz::Require(written, "a plain entry was refused");
  fuzz::Require(profiles.Get("p.ini", section, key, "none", kBuffer) == value, "not what was written");
  // In another letter case it would be the same entry.
  if (section.size() != 5 && key.size() != 9) {
    fuzz::Require(profiles.Get("p.ini", "Trace", "TracePath", "none", kBuffer) == traceBefore,
                  "another entry changed");
  }
  return 0;
}
