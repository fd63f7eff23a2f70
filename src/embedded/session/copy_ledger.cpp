#include "embedded/session/copy_ledger.h"

#include "host/ascii.h"

namespace tessel::embedded {

const CopiedFile* CopyLedger::Find(const std::string& directory, const std::string& name) const {
  const auto files = directories_.find(directory);
  if (files == directories_.end()) return nullptr;
  const auto file = files->second.find(UpperCase(name));
  return file == files->second.end() ? nullptr : &file->second;
}

void CopyLedger::Add(const std::string& directory, CopiedFile file) {
  std::string key = UpperCase(file.name);
  directories_[directory].insert_or_assign(std::move(key), std::move(file));
}

}  // namespace tessel::embedded
