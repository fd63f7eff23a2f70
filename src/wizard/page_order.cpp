#include "wizard/page_order.h"

namespace tessel {
namespace {

struct NamedPage {
  PageId page;
  const char* name;
};

constexpr NamedPage kPages[] = {
    {PageId::kStart, "Tessel_0"},       {PageId::kSendMode, "Tessel_1"},
    {PageId::kSendData, "Tessel_2"},    {PageId::kRecipient, "Tessel_3"},
    {PageId::kCustomInput, "Tessel_4"}, {PageId::kFolderStructure, "Tessel_4a"},
    {PageId::kMailData, "Tessel_5"},
};

bool AsksForRecipient(SendMode mode, const FlowSettings& settings) {
  return mode != SendMode::kNoSend && (mode != SendMode::kCustom || settings.usePartnerList);
}

// What follows the pages that are the same for all modes.
std::optional<PageId> InputPage(SendMode mode, const FlowSettings& settings) {
  if (IsMailMode(mode)) return PageId::kMailData;
  if (mode != SendMode::kNoSend && settings.useCustomForm) return PageId::kCustomInput;
  return std::nullopt;
}

}  // namespace

const char* PageName(PageId page) {
  for (const NamedPage& named : kPages) {
    if (named.page == page) return named.name;
  }
  return "";
}

std::optional<PageId> PageOfWindow(const std::string& name) {
  for (const NamedPage& named : kPages) {
    if (named.name == name) return named.page;
  }
  return std::nullopt;
}

FlowSettings FlowSettingsOf(const Configuration& configuration, bool useFolderStructure) {
  return {configuration.b_UsePartnerList, configuration.b_UseCustomForm, useFolderStructure};
}

std::optional<PageId> NextPage(PageId page, SendMode mode, const FlowSettings& settings) {
  switch (page) {
    case PageId::kStart:
      return PageId::kSendMode;
    case PageId::kSendMode:
      return PageId::kSendData;
    case PageId::kSendData:
      return AsksForRecipient(mode, settings) ? PageId::kRecipient : InputPage(mode, settings);
    case PageId::kRecipient:
      return settings.useFolderStructure ? PageId::kFolderStructure : InputPage(mode, settings);
    case PageId::kFolderStructure:
      return InputPage(mode, settings);
    case PageId::kCustomInput:
    case PageId::kMailData:
      break;
  }
  return std::nullopt;
}

std::optional<PageId> PreviousPage(PageId page) {
  switch (page) {
    case PageId::kSendData:
      return PageId::kSendMode;
    case PageId::kRecipient:
      return PageId::kSendData;
    case PageId::kFolderStructure:
      return PageId::kRecipient;
    default:
      return std::nullopt;
  }
}

bool LeadsThrough(PageId page, SendMode mode, const FlowSettings& settings) {
  std::optional<PageId> passed = PageId::kStart;
  while (passed && *passed != page)
    passed = NextPage(*passed, mode, settings);
  return passed.has_value();
}

bool FinishesWithDispatch(PageId page) {
  return page == PageId::kSendData || page == PageId::kRecipient;
}

}  // namespace tessel
