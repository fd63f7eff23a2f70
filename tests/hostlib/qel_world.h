// A small company for the tests of the host wrapper library: a structure with links both ways, lookups,
// references, sequences, and a client whose dialogs are scripted.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hostlib/qel_function_pool.h"
#include "support/hosted_machine.h"
#include "support/script_driver.h"

namespace tessel::test {

// Documents 1201:1 (gearbox, above 1201:2 and 1202:3), 1201:2 (shaft group, above 1202:4 twice), 1202:3
// (cover) and 1202:4 (shaft); the drawing 1203:5 that describes 1202:4; exchanges 900:6 and 900:7, the
// gearbox linked to the first, the second linked to the gearbox. Users anna and bert.
class QelWorld : public Scripted, public HostedMachine {
 public:
  QelWorld();

  // "class|object" of each row, in order, "; " between them.
  [[nodiscard]] static std::string Keys(const PcRecordListPtr& records) {
    return records ? RowsText(*records, {"CLASS_ID", "OBJECT_ID"}) : "";
  }
};

class QelFunctionPoolTest : public testing::Test {
 protected:
  QelWorld world_;
  QelFunctionPool pool_{world_.platform, world_.host};
  PcSession& session_ = *world_.session;
  const PcObjectPtr gearbox_ = world_.Object({1201, 1});
  const PcObjectPtr cover_ = world_.Object({1202, 3});
  const PcObjectPtr shaft_ = world_.Object({1202, 4});
  const PcObjectPtr anna_ = world_.Object({10, 31});
  PcRecordListPtr records_;
};

}  // namespace tessel::test
