// Program: the composition root. Owns all state of one loaded program; several entry objects share it.
#pragma once

#include <memory>
#include <string>

#include "config/deklarationen.h"
#include "config/services.h"
#include "config/system_tool.h"
#include "dispatch/additional_values.h"
#include "dispatch/export_outcome.h"
#include "exchange/exchange.h"
#include "host/application.h"
#include "locking/lock_outcome.h"
#include "messages/error_handling.h"
#include "messages/trace.h"
#include "platform/operating_system.h"
#include "selection/start_up.h"
#include "structure/structure.h"
#include "toolkit/toolkit.h"
#include "wizard/wizard.h"

namespace tessel {

class Program : public RunObjects {
 public:
  // All references outlive the program. Error 5 when the platform's ANSI code page is unknown.
  Program(Platform& platform, Toolkit& toolkit, HostRuntime& runtime, Trace::Factory traceWriter,
          AdditionalValuesFactory additionalValues);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The state, public for the entry object and for what reports on a run.
  Platform& platform;
  Trace trace;
  Deklarationen declarations;
  std::shared_ptr<const TextEncoding> ansi;
  ErrorHandling errors;
  Services services;
  SystemTool systemTool;
  ExchangeState exchange;
  StructureState structure;
  Wizard wizard;

  // What became of the last hook of each kind; the hooks themselves return what their callers expect.
  ExportOutcome exportOutcome;
  LockOutcome lockOutcome;
  ContinueOutcome continueOutcome;

  // RunObjects
  void UnloadPages() override { wizard.UnloadPages(); }
  void ClearExchangeDirectoryName() override { exchange.directoryName.clear(); }
};

}  // namespace tessel
