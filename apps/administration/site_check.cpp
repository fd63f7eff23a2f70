#include "administration/site_check.h"

namespace tessel::administration {

std::vector<Finding> CheckSite(const Site& site) {
  Findings findings;
  CheckDatabase(site, findings);
  CheckSettings(site, findings);
  CheckPartners(site, findings);
  return std::move(findings.list);
}

}  // namespace tessel::administration
