// The services of a program on the fake host, for building structure files.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "exchange/exchange.h"
#include "structure/fake_host.h"
#include "structure/structure.h"
#include "support/machine.h"
#include "support/onlooker.h"
#include "support/program_services.h"

namespace tessel::test {

// Comes before the services among the bases.
struct FakeClient : Watched, Machine {
  explicit FakeClient(ObjectSource& source) : session(std::make_shared<FakeSession>(source)) {}

  std::shared_ptr<FakeSession> session;
  FakeRuntime runtime;
};

class StructureWorld : public FakeClient, public ProgramServices {
 public:
  // The source outlives the world.
  explicit StructureWorld(ObjectSource& source) : FakeClient(source), ProgramServices(*this, runtime, user) {
    declarations.startup.session = session;
    declarations.startup.DefaultBehavior = session->NewBehavior();
    declarations.configuration.DisplayAttribute1 = "VRK_DESCRIPTION";
    declarations.configuration.DisplayAttribute2 = "VRK_ID";
    declarations.configuration.GenStrucFile = true;
    declarations.configuration.XMLStructureEncoding = "iso-8859-1";
  }

  // The lists of a copy: files as key and operation, links as class, ends and direction.
  struct File {
    ObjectKey key;
    int operation = kFileCopied;
  };
  std::shared_ptr<FakeList> SetCopy(const std::vector<File>& files, const std::vector<CopiedLink>& links) {
    std::vector<std::vector<Value>> fileRows;
    fileRows.reserve(files.size());
    for (const File& file : files) {
      fileRows.push_back({file.key.classId, file.key.objectId, file.operation, std::int16_t{0}});
    }
    std::vector<std::vector<Value>> linkRows;
    linkRows.reserve(links.size());
    for (const CopiedLink& link : links) {
      linkRows.push_back({link.linkClass, link.first.classId, link.first.objectId, link.second.classId,
                          link.second.objectId, link.direction});
    }
    auto list = std::make_shared<FakeList>(kFileColumns, std::move(fileRows));
    exchange.copied.SetFiles(list);
    exchange.copied.SetLinks(std::make_shared<FakeList>(kLinkColumns, std::move(linkRows)));
    return list;
  }

  bool Create(const std::string& tag) {
    return CommonXFunctions::CreateStructure(services, exchange, state,
                                             declarations.configuration.GenStrucFile, tag);
  }

  // Of all roots; -1 before the first.
  int ExportedRows() {
    if (exchange.copied.Exported().empty()) return -1;
    int rows = 0;
    for (const PcRecordListPtr& list : exchange.copied.Exported())
      rows += list->RowCount();
    return rows;
  }

  inline static const std::vector<std::string> kFileColumns{"CLASS_ID", "OBJECT_ID", "OPERATION_ID",
                                                            "ROOT_OBJ"};
  inline static const std::vector<std::string> kLinkColumns{"CLASS_ID",  "CLASS_ID1",  "OBJECT_ID1",
                                                            "CLASS_ID2", "OBJECT_ID2", "VRK_DIRECTION"};

  ExchangeState exchange;
  StructureState state;
};

}  // namespace tessel::test
