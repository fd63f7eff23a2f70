// A small company for the tests of the host wrapper library: a structure with links both ways, lookups,
// references, sequences, and a client whose dialogs are scripted.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "embedded/embedded_host.h"
#include "host/error.h"
#include "hostlib/qel_function_pool.h"
#include "platform/posix/posix_platform.h"
#include "support/script_driver.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// Documents 1201:1 (gearbox, above 1201:2 and 1202:3), 1201:2 (shaft group, above 1202:4 twice), 1202:3 and
// 1202:4; the drawing 1203:5 that describes 1202:4; exchanges 900:6 and 900:7, the gearbox linked to the
// first, the second linked to the gearbox. Users anna and bert.
class QelWorld {
 public:
  QelWorld();

  [[nodiscard]] PcObjectPtr Object(ClassId classId, ObjectId id) const;
  // "class:object" of each row, in order.
  [[nodiscard]] static std::vector<std::string> Keys(const PcRecordListPtr& records);
  // The rows of a query as "value value", one a row.
  [[nodiscard]] std::vector<std::string> Rows(const std::string& sql) const;

  TemporaryFolder folder;
  ScriptDriver driver;
  PosixPlatform posix;
  embedded::EmbeddedHost host;
  PcSessionPtr session;
  QelFunctionPool pool;

 private:
  [[nodiscard]] embedded::HostOptions Options();
};

class QelFunctionPoolTest : public testing::Test {
 protected:
  QelWorld world_;
  QelFunctionPool& pool_ = world_.pool;
  PcSession& session_ = *world_.session;
  PcRecordListPtr records_;
};

}  // namespace tessel::test
