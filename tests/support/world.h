// The company, the whole program on top of it, and a scripted person in front: for tests of the wizard and of
// whole hooks.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "entry/program.h"
#include "entry/start_application.h"
#include "headless/headless_toolkit.h"
#include "support/company.h"
#include "support/recording_trace.h"
#include "support/script_driver.h"
#include "support/valid_files.h"

namespace tessel::test {

// What the additional-values component was asked: "edit" or "apply", customer, contact and directory.
using AdditionalValuesCalls = std::vector<std::string>;

// The user is anna, the time 2024-01-31 15:45:02.
class World : public Scripted, public Company {
 public:
  // Settings "Initialization"; without folder structures the database lacks their class mechanism.
  explicit World(const SettingLines& settings = {}, bool folderStructures = true);
  // Whatever a test exported is valid by the schemas.
  ~World() { ExpectValidExchangeFiles(folder); }

  // Selects released objects through the hook.
  void Select(const std::vector<ObjectKey>& keys);
  // Runs the hook StartExport; the script must bring the wizard to its end.
  std::int16_t Export(const std::string& operation = {});

  // The newest window of a page; the test ends when it was never shown.
  [[nodiscard]] Window& PageWindow(const std::string& name) const;
  template <class ControlType>
  [[nodiscard]] ControlType& ControlOf(const std::string& page, const std::string& id) const {
    return dynamic_cast<ControlType&>(*Required(PageWindow(page).FindById(id), id.c_str()));
  }
  [[nodiscard]] bool Traced(const std::string& text) const { return trace->Has(text); }
  [[nodiscard]] WizardState& Wizard() { return program.wizard.state; }
  [[nodiscard]] std::string ExchangePath() const { return folder.Path("exchange"); }
  // Names of what stands in the exchange directory.
  [[nodiscard]] std::vector<std::string> ExchangeFolders() const {
    return platform.files.ListFolders(ExchangePath());
  }

  HeadlessToolkit toolkit{driver};
  std::shared_ptr<RecordingTraceWriter> trace = std::make_shared<RecordingTraceWriter>();
  AdditionalValuesCalls additionalValues;
  Program program;
  StartApplication application{program};
};

}  // namespace tessel::test
