// Makes the objects of a class by a function.
#pragma once

#include <functional>

#include "automation/com/com_ptr.h"
#include "automation/server/module.h"

namespace tessel::automation {

// A new object with one reference. May throw.
using ObjectMaker = std::function<IUnknown*()>;

// As DllGetClassObject returns it.
[[nodiscard]] HRESULT NewClassFactory(Module& module, ObjectMaker make, REFIID interfaceId, void** result);

}  // namespace tessel::automation
