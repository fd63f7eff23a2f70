// What a page asks of the wizard: other pages, their geometry, and the dispatch. The wizard implements it, so
// that no page knows another's class.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolkit/geometry.h"

namespace tessel {

enum class PageId { kStart, kSendMode, kSendData, kRecipient, kCustomInput, kFolderStructure, kMailData };

class PageFlow {
 public:
  virtual ~PageFlow() = default;
  // Shows a page modally; returns when it was hidden or unloaded.
  virtual void ShowPage(PageId page) = 0;
  // Outer position and size of a page's window; nothing when it is not loaded or was never on the screen.
  [[nodiscard]] virtual std::optional<Rect> BoundsOf(PageId page) = 0;
  // Performs the send operation of the mail data page without showing it.
  virtual void ClickDepatchButton() = 0;
  // What the user typed into the custom input page, in field order; empty when it is not loaded.
  [[nodiscard]] virtual std::vector<std::string> CustomTexts() const = 0;
};

}  // namespace tessel
