// Catalogue files of any content, and texts put into their placeholders.
#include "fuzzing.h"
#include "messages/error_handling.h"
#include "messages/problems.h"
#include "one_file.h"
#include "platform/posix/iconv_encodings.h"

namespace {

using namespace tessel;

class Location : public CatalogueLocation {
 public:
  [[nodiscard]] std::string Folder() const override { return "/catalogues"; }
  [[nodiscard]] std::string Language() const override { return "GER"; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const posix::IconvEncodings kEncodings;
  static const auto kAnsi = kEncodings.Open("windows-1252");
  fuzz::Input input(data, size);
  const std::string code = input.Part();
  const std::string first = input.Part();
  const std::string second = input.Part();
  fuzz::OneFile file;
  file.bytes = input.Rest();
  const Location location;
  Problems problems;
  ErrorHandling errors(file, *kAnsi, location, problems);
  for (const std::string& each : {code, std::string("e0010"), std::string("c0008")}) {
    const std::string text = errors.ErrorHandle(each, first, second, first);
    // A byte of the file becomes three of UTF-8 at most.
    fuzz::Require(text.size() <= 3 * (file.bytes.size() + 16) * (1 + first.size() + second.size()),
                  "more than the placeholders was filled");
    fuzz::Require(errors.GetCaptionString(each, "default") == "default" ||
                      errors.GetCaptionString(each, "default") == errors.GetCaptionString(each, ""),
                  "a caption is neither the catalogue's nor the default");
    errors.WriteProtocolString(each, first, second);
  }
  return 0;
}
