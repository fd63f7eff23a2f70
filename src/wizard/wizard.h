// The wizard: owns the pages of the export and the rules that tie them together.
#pragma once

#include <memory>

#include "dispatch/dispatch.h"
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

  WizardState state;

 private:
  struct Pages;
  std::unique_ptr<Pages> pages_;
};

}  // namespace tessel
