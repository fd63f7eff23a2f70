#include "wizard/wizard.h"

#include "wizard/page_flow.h"
#include "wizard/tessel_0.h"
#include "wizard/tessel_1.h"
#include "wizard/tessel_2.h"
#include "wizard/tessel_3.h"
#include "wizard/tessel_4.h"
#include "wizard/tessel_4a.h"
#include "wizard/tessel_5.h"

namespace tessel {

struct Wizard::Pages : public PageFlow {
  Pages(Services& services, ExchangeState& exchange, StructureState& structure, WizardState& state,
        AdditionalValuesFactory factory)
      : additionalValues(std::move(factory)),
        context{services, exchange, structure, state, additionalValues, *this},
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

  void ShowPage(PageId page) override { Of(page).Show(); }
  [[nodiscard]] std::optional<Rect> BoundsOf(PageId page) override { return Of(page).Bounds(); }
  void ClickDepatchButton() override { mailData.ClickDepatchButton(); }
  [[nodiscard]] std::vector<std::string> CustomTexts() const override { return customInput.Texts(); }

  AdditionalValuesFactory additionalValues;
  PageContext context;
  Tessel_0 start;
  Tessel_1 sendMode;
  Tessel_2 sendData;
  Tessel_3 recipient;
  Tessel_4 customInput;
  Tessel_4a folderStructure;
  Tessel_5 mailData;
};

Wizard::Wizard(Services& services, ExchangeState& exchange, StructureState& structure,
               AdditionalValuesFactory additionalValues)
    : pages_(std::make_unique<Pages>(services, exchange, structure, state, std::move(additionalValues))) {}

Wizard::~Wizard() = default;

void Wizard::Show() {
  pages_->ShowPage(PageId::kStart);
}

void Wizard::UnloadPages() {
  for (const PageId page : {PageId::kSendMode, PageId::kSendData, PageId::kRecipient, PageId::kCustomInput})
    pages_->Of(page).Unload(CloseReason::kProgramCode);
}

}  // namespace tessel
