#include "embedded/copy_ledger.h"

namespace tessel::embedded {
namespace {

std::string Folded(std::string name) {
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return name;
}

}  // namespace

const CopiedFile* CopyLedger::Find(const std::string& directory, const std::string& name) const {
  const auto files = directories_.find(directory);
  if (files == directories_.end()) return nullptr;
  const auto file = files->second.find(Folded(name));
  return file == files->second.end() ? nullptr : &file->second;
}

void CopyLedger::Add(const std::string& directory, CopiedFile file) {
  std::string key = Folded(file.name);
  directories_[directory].insert_or_assign(std::move(key), std::move(file));
}

}  // namespace tessel::embedded
