#include "hostlib/active_window.h"

#include "host/services.h"

namespace tessel {

void RefreshActiveWindow(PcSession& session, const ObjectKey& key, int mode) {
  const auto window = CreateService<PcGUIServices>(session)->ActiveWindow();
  if (window) window->RefreshObject(key, mode);
}

}  // namespace tessel
