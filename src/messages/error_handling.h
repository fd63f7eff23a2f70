// ErrorHandling: message texts, captions and protocol lines from the catalogue files.
#pragma once

#include <string>
#include <string_view>

namespace tessel {

class FileSystem;
class Problems;
class TextEncoding;

// Where the catalogue files lie and which language they are wanted in. The configuration implements it.
class CatalogueLocation {
 public:
  virtual ~CatalogueLocation() = default;
  // "LanguageFilePath".
  [[nodiscard]] virtual std::string Folder() const = 0;
  // Language text of the stored session. Errors as the host raises them; 91 without a session.
  [[nodiscard]] virtual std::string Language() const = 0;
};

class ErrorHandling {
 public:
  // All references outlive the object. `ansi` is the code page of the catalogue files. A catalogue that
  // cannot be read is a problem of the run; its texts are missing like those of a catalogue that is not
  // there.
  ErrorHandling(const FileSystem& files, const TextEncoding& ansi, const CatalogueLocation& location,
                Problems& problems)
      : files_(files), ansi_(ansi), location_(location), problems_(problems) {}

  // The catalogue text of a code with its placeholders filled; "no Message found" when there is none.
  [[nodiscard]] std::string ErrorHandle(std::string_view code, std::string_view value1 = {},
                                        std::string_view value2 = {}, std::string_view value3 = {}) const;
  // Appends the filled text and CR LF to the protocol.
  void WriteProtocolString(std::string_view code, std::string_view value1 = {}, std::string_view value2 = {},
                           std::string_view value3 = {});
  // The catalogue text of a code, or the default when there is none and the default is not empty.
  [[nodiscard]] std::string GetCaptionString(std::string_view code, std::string_view defaultText) const;

  // The exchange protocol collected so far.
  std::string ProtocolText;

 private:
  [[nodiscard]] std::string ReadCatalogueText(std::string_view code) const;

  const FileSystem& files_;
  const TextEncoding& ansi_;
  const CatalogueLocation& location_;
  Problems& problems_;
};

}  // namespace tessel
