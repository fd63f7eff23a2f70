// A small database for the tests of the embedded host: documents in a structure, companies, users, a vault.
#pragma once

#include <string>
#include <vector>

#include "embedded/store/new_database.h"
#include "host/services.h"
#include "support/expect_error.h"
#include "support/hosted_machine.h"
#include "support/onlooker.h"

namespace tessel::test {

inline constexpr ClassId kUsers = 10;
inline constexpr ClassId kLocking = 30;
inline constexpr ClassId kExchange = 900;
inline constexpr ClassId kAssembly = 1201;
inline constexpr ClassId kPart = 1202;
inline constexpr ClassId kGeneralLink = 2000;
inline constexpr ClassId kStructure = 2001;

// A company with these classes and the lookup class 11 State. Objects get the ids 100 (anna), 101 (ben);
// documents are added by `objects` and `links`, lists of JSON objects.
std::string SmallModel(const std::string& objects = "", const std::string& links = "");

// A document of SmallModel with one of the files "a.stp", "b.stp" and "c.stp".
std::string Document(const std::string& className, int id, const std::string& file = "",
                     const std::string& moreValues = "");
std::string Link(const std::string& className, int from, int to);

class SmallWorld : public Watched, public HostedMachine {
 public:
  // The session is anna's.
  explicit SmallWorld(const std::string& objects = "", const std::string& links = "");

  // Nothing when it does not exist.
  [[nodiscard]] PcObjectPtr Object(ClassId classId, ObjectId id) const {
    return session->ObjectStore()->Object({classId, id});
  }
  [[nodiscard]] PcObjectPtr NewObject(ClassId classId) const {
    return session->ObjectStore()->NewObject(classId);
  }

  PcBehaviorPtr behavior = session->NewBehavior();
};

}  // namespace tessel::test
