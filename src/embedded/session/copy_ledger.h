// Which object each copied file belongs to.
#pragma once

#include <map>
#include <string>

#include "embedded/model/text_map.h"
#include "host/object_key.h"

namespace tessel::embedded {

struct CopiedFile {
  std::string name;
  ObjectKey owner;
};

// File names that differ in the case of ASCII letters alone are one name: receivers' file systems do not all
// tell them apart.
class CopyLedger {
 public:
  // Nothing when no file of that name was copied to the directory.
  [[nodiscard]] const CopiedFile* Find(const std::string& directory, const std::string& name) const;
  void Add(const std::string& directory, CopiedFile file);

 private:
  std::map<std::string, TextMap<CopiedFile>> directories_;
};

}  // namespace tessel::embedded
