#include "wizard/wizard.h"

#include <utility>

#include "messages/guard.h"
#include "wizard/page_flow.h"
#include "wizard/tessel_0.h"
#include "wizard/tessel_1.h"
#include "wizard/tessel_2.h"
#include "wizard/tessel_3.h"
#include "wizard/tessel_4.h"
#include "wizard/tessel_4a.h"
#include "wizard/tessel_5.h"

namespace tessel {
namespace {

// A page that could not be shown costs nobody his export: the page before it stays.
constexpr const char* kPageError = "The page could not be shown. The export is still where it was.";

// What the end of a run unloads, in this order.
constexpr PageId kPagesOfARun[] = {PageId::kSendMode, PageId::kSendData, PageId::kRecipient,
                                   PageId::kCustomInput};

}  // namespace

struct Wizard::Pages : public PageFlow {
  Pages(Services& services, ExchangeState& exchange, StructureState& structure, Wizard& wizard,
        AdditionalValuesFactory factory)
      : additionalValues(std::move(factory)),
        context{services, exchange, structure, wizard.state, additionalValues, *this},
        wizard_(wizard),
        start(context),
        sendMode(context),
        sendData(context),
        recipient(context),
        customInput(context),
        folderStructure(context),
        mailData(context) {}

  [[nodiscard]] Page& Of(PageId page) {
    switch (page) {
      case PageId::kStart:
        return start;
      case PageId::kSendMode:
        return sendMode;
      case PageId::kSendData:
        return sendData;
      case PageId::kRecipient:
        return recipient;
      case PageId::kCustomInput:
        return customInput;
      case PageId::kFolderStructure:
        return folderStructure;
      case PageId::kMailData:
        break;
    }
    return mailData;
  }

  // Shows one page after the other until one names none to follow.
  void ShowFrom(PageId first) {
    PageId open = first;
    Of(open).Show();
    while (next_) {
      const PageId page = *std::exchange(next_, std::nullopt);
      if (ShowTrapped(page)) {
        open = page;
      } else if (page != open) {
        context.services.toolkit.ShowMessage({kPageError, "Kestrix", MessageIcon::kExclamation});
        next_ = open;
      }
    }
  }

  [[nodiscard]] bool ShowTrapped(PageId page) {
    const std::string text = std::string("Error while showing the page (Show/") + PageName(page) + ")";
    return Guarded(context.services.trace, text, false, [&] {
      Of(page).Show();
      return true;
    });
  }

  void ShowNext(PageId page) override { next_ = page; }
  void Tell(const CopyFailure& failure) override {
    if (wizard_.tell) wizard_.tell(failure);
  }
  [[nodiscard]] std::optional<Rect> BoundsOf(PageId page) override { return Of(page).Bounds(); }
  void ClickDepatchButton() override { mailData.ClickDepatchButton(); }
  [[nodiscard]] DispatchRequest CollectedRequest() const override {
    const WizardState& state = context.state;
    DispatchRequest request;
    request.sendMode = state.SendMode;
    request.recipients = state.recipients;
    if (IsMailMode(state.SendMode)) request.mails = state.mails;
    request.useFolderStructure = state.UseFolderStructure;
    request.selectedFolderStructure = state.SelectedFolderStructure;
    request.customTexts = customInput.Texts();
    return request;
  }

  AdditionalValuesFactory additionalValues;
  PageContext context;
  Wizard& wizard_;
  Tessel_0 start;
  Tessel_1 sendMode;
  Tessel_2 sendData;
  Tessel_3 recipient;
  Tessel_4 customInput;
  Tessel_4a folderStructure;
  Tessel_5 mailData;

 private:
  std::optional<PageId> next_;
};

Wizard::Wizard(Services& services, ExchangeState& exchange, StructureState& structure,
               AdditionalValuesFactory additionalValues)
    : pages_(std::make_unique<Pages>(services, exchange, structure, *this, std::move(additionalValues))) {}

Wizard::~Wizard() = default;

void Wizard::Show() {
  pages_->ShowFrom(PageId::kStart);
}

void Wizard::UnloadPages() {
  for (const PageId page : kPagesOfARun)
    pages_->Of(page).Unload(CloseReason::kProgramCode);
}

void Wizard::DiscardPages() {
  for (const PageId page : kPagesOfARun)
    pages_->Of(page).Discard();
}

}  // namespace tessel
