// The files of a received exchange, wherever they lie: in a directory or in a ZIP archive.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::received {

// Something that cannot be read; the text names the path and the cause.
class ReadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Entry {
  enum class Kind { kFile, kFolder, kOther };  // other: a symbolic link, a device, an encrypted file
  std::string name;                            // UTF-8, below the exchange
  Kind kind = Kind::kFile;
  std::uint64_t size = 0;  // of a file, in bytes
};

class FileSource {
 public:
  virtual ~FileSource() = default;
  // What the person named, for messages.
  [[nodiscard]] virtual const std::string& Path() const = 0;
  // Name of the exchange's directory; for an archive that of its one folder, else of the archive.
  [[nodiscard]] virtual const std::string& Name() const = 0;
  // What lies in the exchange itself, sorted by name. A name that an archive holds twice comes twice.
  [[nodiscard]] virtual const std::vector<Entry>& Entries() const = 0;

  // Whether reading a file to its end shows that it is whole.
  [[nodiscard]] virtual bool HasCheckSums() const = 0;

  // Hands the bytes of a file on in pieces until `piece` returns false. Error: ReadError, also when the bytes
  // do not match an archive's own check sum.
  using PieceSink = std::function<bool(std::string_view piece)>;
  virtual void Read(const std::string& name, const PieceSink& piece) const = 0;

  // Whether there is a file of that name.
  [[nodiscard]] bool Has(std::string_view name) const;
  [[nodiscard]] std::string ReadAll(const std::string& name) const;
  // At most the first bytes.
  [[nodiscard]] std::string ReadBeginning(const std::string& name, std::size_t bytes) const;
};

// Error: ReadError when the path is neither a directory nor a ZIP archive.
[[nodiscard]] std::unique_ptr<FileSource> OpenSource(const std::string& path);

// Error: ReadError when the file is no archive, or one that would leave its directory.
[[nodiscard]] std::unique_ptr<FileSource> OpenArchive(const std::string& path);

}  // namespace tessel::received
