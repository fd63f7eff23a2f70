// What a page asks of the wizard: other pages, their geometry, and the dispatch. The wizard implements it, so
// that no page knows another's class.
#pragma once

#include <optional>
#include <string>

#include "dispatch/dispatch.h"
#include "toolkit/geometry.h"
#include "wizard/copy_failure.h"
#include "wizard/page_order.h"

namespace tessel {

class PageFlow {
 public:
  virtual ~PageFlow() = default;
  // Names the page to be shown next. It is shown when the show of the page that is open has returned, so that
  // shows do not nest however often the user goes back and forth.
  virtual void ShowNext(PageId page) = 0;
  // Tells a person what the rules pass over without a word, where somebody listens.
  virtual void Tell(const CopyFailure& failure) = 0;
  // Outer position and size of a page's window; nothing when it is not loaded or was never on the screen.
  [[nodiscard]] virtual std::optional<Rect> BoundsOf(PageId page) = 0;
  // Performs the send operation of the mail data page without showing it.
  virtual void ClickDepatchButton() = 0;
  // All that the pages have collected for the dispatch.
  [[nodiscard]] virtual DispatchRequest CollectedRequest() const = 0;
};

}  // namespace tessel
