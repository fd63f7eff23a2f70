// The pages of the wizard and the order in which they follow each other: one function for the pages
// themselves and for whoever walks them unattended.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "config/configuration.h"
#include "dispatch/dispatch.h"

namespace tessel {

// The numbers are the values of NavigatedFrom. The custom input and the mail data page hand over to no other
// page and never stand there.
enum class PageId : std::int16_t {
  kStart = 0,
  kSendMode = 1,
  kSendData = 2,
  kRecipient = 3,
  kCustomInput = 4,
  kMailData = 5,
  kFolderStructure = 44
};

// "Tessel_0" to "Tessel_5" and "Tessel_4a", the names of the windows.
[[nodiscard]] const char* PageName(PageId page);
// The page of a window; nothing for a window that is no page.
[[nodiscard]] std::optional<PageId> PageOfWindow(const std::string& name);

// The modes in which a mail goes to each recipient.
[[nodiscard]] constexpr bool IsMailMode(SendMode mode) {
  return mode == SendMode::kMail || mode == SendMode::kMailStructure;
}

// What the order depends on beside the send mode.
struct FlowSettings {
  bool usePartnerList = false;      // the own send mode asks for recipients
  bool useCustomForm = false;       // Odette and the own send mode ask for custom input
  bool useFolderStructure = false;  // the recipients are followed by the choice of a folder structure
};

[[nodiscard]] FlowSettings FlowSettingsOf(const Configuration& configuration, bool useFolderStructure);

// The page to which the forward button leads when the page's own work is done; nothing when it starts the
// dispatch.
[[nodiscard]] std::optional<PageId> NextPage(PageId page, SendMode mode, const FlowSettings& settings);

// The page to which the back button leads; nothing for a page without one.
[[nodiscard]] std::optional<PageId> PreviousPage(PageId page);

// Whether an export of this kind passes the page on its way from the start to the dispatch.
[[nodiscard]] bool LeadsThrough(PageId page, SendMode mode, const FlowSettings& settings);

// Whether an export counts as finished when the dispatch that the page started has ended, whatever came of
// it.
[[nodiscard]] bool FinishesWithDispatch(PageId page);

}  // namespace tessel
