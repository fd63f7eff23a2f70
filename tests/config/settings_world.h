// A database with a user, admin settings linked to it, and classes behind the mechanisms.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/hosted_machine.h"
#include "support/onlooker.h"
#include "support/program_services.h"

namespace tessel::test {

// "VRKX_VALUE_1" and the lines of "VRKX_VALUE_LONG" of one settings object.
struct Settings {
  std::string name;
  std::string text;
};

struct SettingsWorldOptions {
  std::vector<Settings> settings = {{"Initialization", ""}};
  // Mechanisms that the database knows, and how many classes support each.
  std::vector<std::pair<std::string, int>> mechanisms = {{"VRKX_DX_SUPPLIER_EXCH_DOC", 2},
                                                         {"VRKX_DX_TRANSMITTAL", 1},
                                                         {"VRKX_DX_SUPPLIER_COMPANY", 1},
                                                         {"VRKX_DX_SUPPLIER_CONT_PERSON", 1}};
  bool generalLink = true;
};

// Class ids: 10 users, 20 admin settings, then the mechanisms' classes from 100 on in steps of 100 for each
// mechanism. Object ids: 1 the user, from 11 on the settings. The program knows its session and behaviour.
class SettingsWorld : public Watched, public HostedMachine, public ProgramServices {
 public:
  explicit SettingsWorld(const SettingsWorldOptions& options = {});
};

}  // namespace tessel::test
