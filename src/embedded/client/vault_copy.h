// The copy of an object's file and of the files of everything below it in the product structure.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "embedded/client/product_structure.h"

namespace tessel::embedded {

class VaultCopy {
 public:
  // Of the objects and of all that hangs below them, see ReadStructure.
  VaultCopy(EmbeddedSession& session, const std::vector<ObjectKey>& roots);

  // All that the copy touches.
  [[nodiscard]] const std::vector<StructureObject>& Objects() const { return objects_; }

  // Copies the files from the vault into a directory, under CAD_REF_FILE_NAME or else FILE_NAME. A file that
  // this session copied there for the same object, or without a known owner, is replaced when `overwrite`
  // says so. A copy that cannot be complete is refused before the first file: HostError for a name that is no
  // plain file name, a file that is missing in the vault, two objects with one file name (names that differ
  // in letter case alone count as one), or a name that another object's file has in the directory. False when
  // the host's CopyWatch cancelled the copy; the files before the one in hand stay.
  [[nodiscard]] bool Run(const std::string& directory, bool overwrite);

  // "CLASS_ID", "OBJECT_ID", "OPERATION_ID" (6: the file was copied, 0: the object has none), "FILE_NAME".
  [[nodiscard]] PcRecordListPtr CopiedRows() const;
  // Every link of any link class between two of the objects, by first end in copied order, link class and
  // link.
  [[nodiscard]] PcRecordListPtr Links() const;

 private:
  void Check(const std::string& directory, bool overwrite) const;
  void CheckName(const StructureObject& object) const;
  void CheckTarget(const StructureObject& object, const std::string& directory, bool overwrite) const;
  [[nodiscard]] bool CopyOne(const StructureObject& object, const std::string& directory, bool overwrite,
                             const FileSystem::CopyProgress& progress) const;
  void AppendLinks(MemoryRecordList& rows, const std::unordered_map<ObjectKey, std::size_t>& places,
                   std::size_t begin, std::size_t end) const;
  [[nodiscard]] std::string VaultFile(const StructureObject& object) const;

  EmbeddedSession& session_;
  std::vector<StructureObject> objects_;
};

}  // namespace tessel::embedded
