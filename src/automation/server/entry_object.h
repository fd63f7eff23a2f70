// The entry object as automation sees it.
#pragma once

#include <prjTessel.h>

#include <functional>
#include <memory>

#include "automation/server/loaded_program.h"
#include "automation/server/module.h"

namespace tessel::automation {

// The program of the library, made at the first use and kept by the entry objects that share it.
using ProgramSource = std::function<std::shared_ptr<LoadedProgram>()>;

// A new entry object with one reference. Errors of making the program: as its constructor.
[[nodiscard]] IUnknown* NewEntryObject(Module& module, const ProgramSource& program);

}  // namespace tessel::automation
