// What a start-up fixes for the whole program: session, folders, trace, and the classes of the exchange.
#pragma once

#include <string>

#include "host/object.h"
#include "host/session.h"

namespace tessel {

// Values of the last start-up. Every Init replaces them.
struct StartupValues {
  PcSessionPtr session;  // the stored session
  PcBehaviorPtr DefaultBehavior;
  std::string IconDirectory;
  std::string TracePath;
  bool TraceOn = false;
  std::string databaseAlias;
  // Set by the export hook: the export was started with the operation "StructureMode".
  bool FolderStructureMode = false;
  ClassId TransmittalClassID = 0;
  ClassId CompanyClassID = 0;
  ClassId ContactPersonClassID = 0;
  ClassId FolderStructureClassID = 0;
};

}  // namespace tessel
