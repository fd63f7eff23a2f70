// Two pages that behave as the wizard's do, small enough to read at a glance.
#pragma once

#include <memory>
#include <string>

#include "headless/headless_toolkit.h"

namespace tessel::test {

// Tessel_0: Command1 goes on to Tessel_1, Command2 cancels (and answers Escape). Tessel_1: Command2 goes
// back, Command1 works through three steps and ends, a close is confirmed; TreeView3 opens a menu by right
// click.
class SamplePages {
 public:
  explicit SamplePages(HeadlessToolkit& toolkit) : toolkit_(toolkit) {
    BuildFirst();
    BuildSecond();
  }

  void Run() { toolkit_.ShowModal(first); }

  std::shared_ptr<Window> first = std::make_shared<Window>("Tessel_0", "Kestrix", Size{6990, 5070});
  std::shared_ptr<Window> second = std::make_shared<Window>("Tessel_1", "Kestrix", Size{6990, 5070});
  bool cancelled = false;
  int stepsDone = 0;
  std::string menuChoices;

 private:
  void BuildFirst() {
    auto& next = first->Add<Button>("Command1", -1, nullptr, Rect{4800, 4575, 2172, 372});
    next.SetCaption("Weiter >>");
    next.IsDefault = true;
    next.OnClick = [this] {
      toolkit_.Hide(*first);
      toolkit_.ShowModal(second);
    };
    auto& cancel = first->Add<Button>("Command2", -1, nullptr, Rect{2400, 4575, 2052, 372});
    cancel.IsCancel = true;
    cancel.OnClick = [this] {
      cancelled = true;
      toolkit_.Hide(*first);
    };
    first->OnUnload = [this] { cancelled = true; };
  }

  void BuildSecond() {
    auto& frame = second->Add<Frame>("Frame3", -1, nullptr, Rect{0, 0, 6972, 4472});
    auto& hiddenFrame = second->Add<Frame>("Frame4", -1, nullptr, Rect{});
    hiddenFrame.SetVisible(false);
    second->Add<CheckBox>("Check1", 1, &frame, Rect{});
    second->Add<CheckBox>("Check1", 2, &frame, Rect{}).SetVisible(false);
    second->Add<CheckBox>("Check1", 3, &hiddenFrame, Rect{});
    second->Add<Button>("Command4", -1, nullptr, Rect{}).SetEnabled(false);
    second->Add<TextBox>("Text1", 0, &frame, Rect{}, false);
    second->Add<ProgressBar>("ProgressBar1", -1, nullptr, Rect{}).SetMaximum(3);
    auto& list = second->Add<TreeList>("TreeView3", -1, &frame, Rect{}, true);
    list.AddNode("Gear", "1201_1");
    list.AddNode("Shaft", "1201_2");
    list.OnMouseUp = [this](MouseButton button) {
      if (button == MouseButton::kRight) toolkit_.OpenPopupMenu(*second, menu_);
    };
    second->Add<Button>("Command1", -1, nullptr, Rect{}).OnClick = [this] { Work(); };
    second->Add<Button>("Command2", -1, nullptr, Rect{}).OnClick = [this] {
      toolkit_.Hide(*second);
      toolkit_.ShowModal(first);
    };
    second->OnQueryClose = [this](CloseReason reason) {
      const auto answer = toolkit_.ShowMessage({"Do you really want to cancel the data export process?",
                                                "Cancel", MessageIcon::kNone, MessageButtons::kYesNo});
      const bool asked = reason == CloseReason::kUserCommand || reason == CloseReason::kProgramCode;
      return answer == MessageAnswer::kYes || !asked;
    };
    second->OnUnload = [this] { cancelled = true; };
  }

  void Work() {
    auto& bar = static_cast<ProgressBar&>(*second->Find("ProgressBar1"));
    for (int step = 1; step <= 3 && !cancelled; ++step) {
      toolkit_.PumpEvents();
      bar.SetValue(step);
      toolkit_.Redraw(*second);
      stepsDone = step;
    }
    toolkit_.ShowMessage({"Kopiervorgang \"erfolgreich\"", "Kestrix", MessageIcon::kInformation});
    toolkit_.Hide(*second);
  }

  HeadlessToolkit& toolkit_;
  PopupMenu menu_{"mnuKontext",
                  "Kontext",
                  {{"mnuAddValues", "Additional Values", [this] { menuChoices += "values "; }},
                   {"mnuOther", "Other", [this] { menuChoices += "other "; }}}};
};

}  // namespace tessel::test
