#include "sender/package.h"

#include <zip.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "platform/paths.h"
#include "sender/status_texts.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

struct DosTime {
  zip_uint16_t time = 0;
  zip_uint16_t date = 0x21;  // 1980-01-01
};

DosTime DosTimeOf(const std::string& text) {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  const int count =
      std::sscanf(text.c_str(), "%4d%2d%2d_%2d%2d%2d", &year, &month, &day, &hour, &minute, &second);
  if (count != 6 || year < 1980 || year > 2107 || month < 1 || month > 12 || day < 1 || day > 31 ||
      hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60) {
    return {};
  }
  return {static_cast<zip_uint16_t>((hour << 11) | (minute << 5) | (second / 2)),
          static_cast<zip_uint16_t>(((year - 1980) << 9) | (month << 5) | day)};
}

[[noreturn]] void Fail(StatusText why, std::vector<std::string> values) {
  throw Reason(why, std::move(values), error_number::kPathFileAccess);
}

[[noreturn]] void FailWith(const std::string& path, const std::string& why, int systemError) {
  const bool full = systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
  throw Reason(StatusText::kPackageFailed, {path, why},
               full ? error_number::kDiskFull : error_number::kPathFileAccess);
}

class Archive {
 public:
  Archive(std::string native, std::string shown, int flags) : shown_(std::move(shown)) {
    int code = 0;
    archive_ = zip_open(native.c_str(), flags, &code);
    if (archive_ == nullptr) {
      zip_error_t error;
      zip_error_init_with_code(&error, code);
      const std::string why = zip_error_strerror(&error);
      zip_error_fini(&error);
      FailWith(shown_, why, errno);
    }
  }
  ~Archive() {
    if (archive_ != nullptr) zip_discard(archive_);
  }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  void Add(const std::string& name, const std::string& native, const DosTime& time) {
    zip_source_t* source = zip_source_file(archive_, native.c_str(), 0, -1);
    if (source == nullptr) Throw();
    const zip_int64_t index = zip_file_add(archive_, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      zip_source_free(source);
      Throw();
    }
    if (zip_file_set_dostime(archive_, static_cast<zip_uint64_t>(index), time.time, time.date, 0) != 0)
      Throw();
  }
  void Close() {
    if (zip_close(archive_) != 0) Throw();
    archive_ = nullptr;
  }
  // Uncompressed size of an entry, -1 when it is missing.
  [[nodiscard]] long long SizeOf(const std::string& name) const {
    zip_stat_t entry;
    if (zip_stat(archive_, name.c_str(), ZIP_FL_ENC_UTF_8, &entry) != 0) return -1;
    return static_cast<long long>(entry.size);
  }
  [[nodiscard]] long long Count() const { return zip_get_num_entries(archive_, 0); }

 private:
  [[noreturn]] void Throw() const {
    zip_error_t* error = zip_get_error(archive_);
    FailWith(shown_, zip_error_strerror(error),
             zip_error_system_type(error) == ZIP_ET_SYS ? zip_error_code_system(error) : 0);
  }

  zip_t* archive_ = nullptr;
  std::string shown_;
};

// Whether the package holds what the directory has, looked up in both.
void Verify(const FileSystem& files, const ExchangeDirectory& directory,
            const std::vector<Document>& documents, const std::string& path) {
  const Archive archive(files.NativePath(path), path, ZIP_RDONLY);
  if (archive.Count() != static_cast<long long>(documents.size()))
    Fail(StatusText::kPackageIncomplete, {path});
  for (const Document& document : documents) {
    const long long now = RegularFileSize(files.NativePath(directory.In(document.name)));
    if (archive.SizeOf(document.name) != document.size || now != document.size)
      Fail(StatusText::kPackageChanged,
           {path, document.name, std::to_string(document.size), std::to_string(now)});
  }
}

// Takes away what was written when the package was not finished.
class Unfinished {
 public:
  explicit Unfinished(std::string native) : native_(std::move(native)) {}
  ~Unfinished() {
    std::error_code ignored;
    if (!finished_ && RegularFileSize(native_) >= 0)
      std::filesystem::remove(std::filesystem::path(native_), ignored);
  }
  void Finish() { finished_ = true; }

 private:
  std::string native_;
  bool finished_ = false;
};

}  // namespace

void WritePackage(const FileSystem& files, const ExchangeDirectory& directory,
                  const std::vector<Document>& documents, const std::string& time, const std::string& path) {
  if (documents.empty()) Fail(StatusText::kPackageEmpty, {path});
  const std::string native = files.NativePath(path);
  Unfinished unfinished(native);
  const DosTime dosTime = DosTimeOf(time);
  Archive archive(native, path, ZIP_CREATE | ZIP_TRUNCATE);
  for (const Document& document : documents) {
    const std::string file = directory.In(document.name);
    if (RegularFileSize(files.NativePath(file)) != document.size)
      Fail(StatusText::kPackageOther, {path, document.name});
    archive.Add(document.name, files.NativePath(file), dosTime);
  }
  archive.Close();
  Verify(files, directory, documents, path);
  SyncFile(native);
  unfinished.Finish();
}

}  // namespace tessel::sender
