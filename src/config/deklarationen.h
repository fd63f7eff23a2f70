// Deklarationen: what a start-up stores for the whole program, and the reading of the configuration.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "config/configuration.h"
#include "config/configuration_reader.h"
#include "config/startup_values.h"
#include "host/session.h"
#include "messages/error_handling.h"
#include "messages/trace.h"
#include "toolkit/toolkit.h"

namespace tessel {

class Deklarationen : public CatalogueLocation {
 public:
  // The reader is made by `makeReader` when a configuration is first read.
  using ReaderFactory = std::function<std::shared_ptr<ConfigurationReader>()>;
  Deklarationen(Trace& trace, Toolkit& toolkit, std::string programDirectory, ReaderFactory makeReader);

  // The three host start-up steps. False when the step failed.
  bool SetSessionGlobal(const PcSessionPtr& session);
  bool SetDefaultBehavior();
  bool SetIconDirectory();

  // Fixes the host classes and reads every value. False after "e9020" was shown, or when a class mechanism is
  // missing. The messages come from `errors`.
  bool ReadConfiguration(const ErrorHandling& errors);

  // CatalogueLocation. Before the first configuration was read the folder is the program's own.
  [[nodiscard]] std::string Folder() const override;
  [[nodiscard]] std::string Language() const override;

  StartupValues startup;
  Configuration configuration;
  // The configuration reader, "pciniAdminTool"; nothing before the first reading.
  std::shared_ptr<ConfigurationReader> pciniAdminTool;

 private:
  Trace& trace_;
  Toolkit& toolkit_;
  std::string programDirectory_;
  ReaderFactory makeReader_;
};

}  // namespace tessel
