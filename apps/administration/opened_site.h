// A database of the embedded host, opened to administer it: without login, as whoever may read its file may.
#pragma once

#include <string>

#include "administration/site_check.h"
#include "embedded/embedded_host.h"

namespace tessel::administration {

class OpenedSite {
 public:
  // The platform outlives it. Errors: HostError when there is no such database.
  OpenedSite(const std::string& database, Platform& platform);
  [[nodiscard]] const Site& Parts() const { return site_; }
  [[nodiscard]] const PcSessionPtr& Session() const { return site_.session; }

 private:
  embedded::UnattendedDialogs dialogs_;
  embedded::EmbeddedHost host_;
  Site site_;
};

}  // namespace tessel::administration
