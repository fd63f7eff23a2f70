// The headers of automation. Included in place of them.
#pragma once

#include "platform/win32/windows_api.h"

// The order counts: the others need the first.
// clang-format off
#include <oaidl.h>
#include <cguid.h>
#include <dispex.h>
#include <oleauto.h>
// clang-format on
