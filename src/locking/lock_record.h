// The lock records of documents: objects of the host's class "Object Locking", and which of them are this
// system's.
#pragma once

#include <optional>
#include <string>

#include "host/object.h"
#include "host/session.h"

namespace tessel {

class LockRecords {
 public:
  // The session outlives the object.
  explicit LockRecords(PcSession& session) : session_(session) {}

  // A new record of a document, not yet in the database. Error: HostError without the class "Object Locking".
  [[nodiscard]] PcObjectPtr NewRecord(const ObjectKey& document);
  // A lock record of a document, its data read; one of this system's, when there are several. Nothing when
  // the document has none.
  [[nodiscard]] PcObjectPtr Find(const ObjectKey& document);
  // Whether this system made the record.
  [[nodiscard]] bool IsOwn(const PcObject& record);

 private:
  [[nodiscard]] ClassId LockClass() const;
  // "VRK_DESCRIPTION" or "CN_DESCRIPTION", looked up once; empty when the class has neither.
  [[nodiscard]] const std::string& DescriptionAttribute();

  PcSession& session_;
  std::optional<std::string> descriptionAttribute_;
};

}  // namespace tessel
