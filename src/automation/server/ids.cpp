// The ids of the interface file, defined once.
// The order counts: the first makes definitions of the declarations in the second.
// clang-format off
#include <initguid.h>
#include <prjTessel.h>
// clang-format on
