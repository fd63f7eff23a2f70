#include "exchange/export_journal.h"

#include <algorithm>

#include "host/error.h"
#include "host/value.h"
#include "platform/paths.h"

namespace tessel {
namespace {

constexpr const char* kEnding = ".journal";
constexpr const char* kMade = "made";
constexpr const char* kRecorded = "recorded";
constexpr const char* kReady = "ready";

std::string Escaped(const std::string& text) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string escaped;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x20 && character != '%') {
      escaped += character;
    } else {
      escaped += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
  }
  return escaped;
}

int Digit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  return character >= 'a' && character <= 'f' ? character - 'a' + 10 : -1;
}

std::string Unescaped(const std::string& text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool coded =
        text[at] == '%' && at + 2 < text.size() && Digit(text[at + 1]) >= 0 && Digit(text[at + 2]) >= 0;
    plain += coded ? static_cast<char>(Digit(text[at + 1]) * 16 + Digit(text[at + 2])) : text[at];
    if (coded) at += 2;
  }
  return plain;
}

}  // namespace

bool IsTemporaryExportName(const std::string& name) {
  return name.starts_with("@@_") && paths::IsPlainFileName(name);
}

std::string ExportJournal::PathOf(const std::string& directory) {
  return directory + kEnding;
}

bool ExportJournal::IsName(const std::string& name) {
  return IsTemporaryExportName(name) && name.ends_with(kEnding);
}

std::unique_ptr<ExportJournal> ExportJournal::Begin(FileSystem& files, const std::string& directory) {
  const std::string path = PathOf(directory);
  std::unique_ptr<HeldFile> file = files.Hold(path, true);
  // One without a line was left by a process that had made nothing yet.
  if (!file || !file->Read().empty()) {
    throw RuntimeError(error_number::kFileAlreadyExists,
                       "Create folder: an export works, or stopped, on " + directory);
  }
  return std::unique_ptr<ExportJournal>(new ExportJournal(path, std::move(file)));
}

std::unique_ptr<ExportJournal> ExportJournal::TakeOver(FileSystem& files, const std::string& path) {
  std::unique_ptr<HeldFile> file = files.Hold(path, false);
  if (!file) return nullptr;
  std::unique_ptr<ExportJournal> journal(new ExportJournal(path, std::move(file)));
  std::vector<std::string> lines = SplitText(journal->file_->Read(), "\n");
  if (!lines.empty()) lines.pop_back();  // empty, or half written
  for (const std::string& line : lines) {
    std::vector<std::string> parts = SplitText(line, "\t");
    std::transform(parts.begin(), parts.end(), parts.begin(), Unescaped);
    journal->Take(parts);
  }
  return journal;
}

void ExportJournal::Take(const std::vector<std::string>& parts) {
  if (parts.size() < 2 || !IsTemporaryExportName(parts[1])) return;
  Entry& entry = EntryOf(paths::Join(paths::Parent(path_), parts[1]));
  if (parts[0] == kMade) {
    entry = {.directory = entry.directory, .prefix = {}, .mark = {}, .record = {}};
  } else if (parts[0] == kRecorded && parts.size() == 4) {
    entry.record = ParseObjectKey(parts[2] + "_" + parts[3], '_');
  } else if (parts[0] == kReady && parts.size() == 4) {
    entry.ready = true;
    entry.prefix = parts[2];
    entry.mark = parts[3];
  }
}

ExportJournal::Entry& ExportJournal::EntryOf(const std::string& directory) {
  const auto known = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.directory == directory; });
  if (known != entries_.end()) return *known;
  entries_.push_back({.directory = directory, .prefix = {}, .mark = {}, .record = {}});
  return entries_.back();
}

void ExportJournal::Write(const std::vector<std::string>& parts) {
  std::string line;
  for (const std::string& part : parts)
    line += (line.empty() ? "" : "\t") + Escaped(part);
  file_->Append(line + "\n");
  Take(parts);
}

void ExportJournal::Making(const std::string& directory) {
  Write({kMade, paths::FileName(directory)});
}

void ExportJournal::Recorded(const std::string& directory, const ObjectKey& record) {
  Write({kRecorded, paths::FileName(directory), std::to_string(record.classId),
         std::to_string(record.objectId)});
}

void ExportJournal::Ready(const std::string& directory, const std::string& prefix, const std::string& mark) {
  Write({kReady, paths::FileName(directory), prefix, mark});
}

}  // namespace tessel
