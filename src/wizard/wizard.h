// The wizard: owns the pages of the export and the rules that tie them together.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "dispatch/dispatch.h"
#include "wizard/copy_failure.h"
#include "wizard/wizard_state.h"

namespace tessel {

class Wizard {
 public:
  // All references outlive the wizard.
  Wizard(Services& services, ExchangeState& exchange, StructureState& structure,
         AdditionalValuesFactory additionalValues);
  ~Wizard();

  // Shows the start page modally; returns when the wizard has closed, whichever way.
  void Show();
  // Unloads Tessel_1 to Tessel_4, in this order, as program code does.
  void UnloadPages();
  // The same after an export that was broken off: no page asks whether it may go.
  void DiscardPages();

  WizardState state;
  // Tells a person what the rules pass over without a word: what could not be done, with its path. Nobody is
  // told while it is empty, as in a client that has the rules alone.
  std::function<void(const CopyFailure& failure)> tell;

 private:
  struct Pages;
  std::unique_ptr<Pages> pages_;
};

}  // namespace tessel
