// What holds for the windows of every toolkit. A toolkit's tests instantiate the suite with a world that has
//   ModalToolkit& Get();
//   void Then(std::function<void()> action);   queued; each is performed when a window waits for the person
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/error.h"
#include "toolkit/modal_toolkit.h"

namespace tessel::test {

template <class World>
class ModalContract : public ::testing::Test {
 protected:
  ModalContract() {
    for (const auto& window : {first_, second_})
      window->OnActivate = [this, name = window->Name()] { log_ += "activate " + name + "\n"; };
  }
  ModalToolkit& Get() { return world_.Get(); }
  void Show(const std::shared_ptr<Window>& window) {
    Get().ShowModal(window);
    log_ += "return " + window->Name() + "\n";
  }
  int ErrorOfShowing(const std::shared_ptr<Window>& window) {
    try {
      Get().ShowModal(window);
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }

  World world_;
  std::shared_ptr<Window> first_ = std::make_shared<Window>("first", "Kestrix", Size{6990, 5070});
  std::shared_ptr<Window> second_ = std::make_shared<Window>("second", "Kestrix", Size{6990, 5070});
  std::string log_;
};

TYPED_TEST_SUITE_P(ModalContract);

TYPED_TEST_P(ModalContract, WindowsHandOverAndEveryPendingShowReturns) {
  const auto handOver = [this](auto& from, auto& to) {
    this->world_.Then([&] {
      this->Get().Hide(*from);
      EXPECT_FALSE(from->Visible());
      this->Show(to);
    });
  };
  handOver(this->first_, this->second_);
  handOver(this->second_, this->first_);
  this->world_.Then([&] {
    EXPECT_TRUE(this->first_->Visible() && this->first_->Placed());
    EXPECT_EQ(this->Get().TopWindow(), this->first_);
    this->Get().Hide(*this->first_);
  });
  this->Show(this->first_);
  EXPECT_EQ(this->log_,
            "activate first\nactivate second\nactivate first\nreturn first\nreturn second\nreturn first\n");
  EXPECT_EQ(this->Get().TopWindow(), nullptr);
}

TYPED_TEST_P(ModalContract, AWindowHiddenBelowReturnsOnceTheUpperOneHas) {
  this->world_.Then([&] { this->Show(this->second_); });
  this->world_.Then([&] {
    EXPECT_EQ(this->Get().VisibleWindows(), (std::vector{this->first_, this->second_}));
    this->Get().Hide(*this->first_);
    EXPECT_EQ(this->Get().VisibleWindows(), std::vector{this->second_});
  });
  this->world_.Then([&] { this->Get().Hide(*this->second_); });
  this->Show(this->first_);
  EXPECT_EQ(this->log_, "activate first\nactivate second\nreturn second\nreturn first\n");
}

TYPED_TEST_P(ModalContract, UnloadingAsksAndEndsForGood) {
  int asked = 0;
  int unloaded = 0;
  this->first_->OnQueryClose = [&](CloseReason) { return ++asked > 1; };
  this->first_->OnUnload = [&] { ++unloaded; };
  this->world_.Then([&] {
    EXPECT_FALSE(this->Get().Unload(*this->first_, CloseReason::kUserCommand));
    EXPECT_TRUE(this->first_->Visible());
    EXPECT_TRUE(this->Get().Unload(*this->first_, CloseReason::kProgramCode));
    EXPECT_TRUE(this->Get().Unload(*this->first_, CloseReason::kProgramCode)) << "and asks no third time";
  });
  this->Show(this->first_);
  EXPECT_EQ(std::pair(asked, unloaded), std::pair(2, 1));
  EXPECT_EQ(this->ErrorOfShowing(this->first_), error_number::kInvalidCall);
}

TYPED_TEST_P(ModalContract, AShutdownIsNotHeldUp) {
  this->first_->OnQueryClose = [](CloseReason reason) { return reason != CloseReason::kSystemShutdown; };
  this->world_.Then([&] { this->Get().CloseForShutdown(); });
  this->Show(this->first_);
  EXPECT_TRUE(this->first_->Unloaded());
}

TYPED_TEST_P(ModalContract, AnErrorEndsTheShowAndGoesToTheCaller) {
  this->second_->OnActivate = [] { throw RuntimeError(error_number::kTypeMismatch, "Type mismatch"); };
  this->world_.Then([&] {
    EXPECT_EQ(this->ErrorOfShowing(this->second_), error_number::kTypeMismatch);
    EXPECT_FALSE(this->second_->Visible());
    EXPECT_EQ(this->Get().TopWindow(), this->first_);
    this->Get().Hide(*this->first_);
  });
  this->Show(this->first_);
}

TYPED_TEST_P(ModalContract, TooDeepIsRefusedAndTheWindowStays) {
  this->first_->OnActivate = [&] {
    if (this->Get().CanShowMore()) return this->Get().ShowModal(this->first_);
    EXPECT_EQ(this->ErrorOfShowing(this->second_), error_number::kOutOfStackSpace);
    EXPECT_FALSE(this->second_->Visible());
    EXPECT_EQ(this->Get().TopWindow(), this->first_);
    this->Get().Hide(*this->first_);
  };
  this->Show(this->first_);
  EXPECT_EQ(this->log_, "return first\n");
  EXPECT_TRUE(this->Get().CanShowMore());
}

REGISTER_TYPED_TEST_SUITE_P(ModalContract, WindowsHandOverAndEveryPendingShowReturns,
                            AWindowHiddenBelowReturnsOnceTheUpperOneHas, UnloadingAsksAndEndsForGood,
                            AShutdownIsNotHeldUp, AnErrorEndsTheShowAndGoesToTheCaller,
                            TooDeepIsRefusedAndTheWindowStays);

}  // namespace tessel::test
