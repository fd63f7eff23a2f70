// The company and the services of one program, for tests of what an export does below its pages.
#pragma once

#include "support/company.h"
#include "support/onlooker.h"
#include "support/program_services.h"

namespace tessel::test {

class ExportWorld : public Watched, public Company, public ProgramServices {
 public:
  explicit ExportWorld(const CompanyOptions& options = {})
      : Company(user, options), ProgramServices(*this, host, user) {}
};

}  // namespace tessel::test
