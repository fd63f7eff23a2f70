// The toolkit without a screen: a driver takes the place of the person.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "headless/driver.h"
#include "toolkit/modal_toolkit.h"

namespace tessel {

class HeadlessToolkit : public ModalToolkit {
 public:
  // The screen that windows are centred on, in twips.
  static constexpr Size kScreen{28800, 16200};
  static constexpr std::size_t kDeepestNesting = 500;

  explicit HeadlessToolkit(Driver& driver) : ModalToolkit(kDeepestNesting), driver_(driver) {}

  void BringToTop(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override;
  void Redraw(Window& window) override;
  // Tells the driver and is over at once.
  void Pause(std::chrono::milliseconds atMost) override;

  // The newest window of a name among those that were shown and still live; null when there is none.
  [[nodiscard]] std::shared_ptr<Window> FindWindow(std::string_view name) const;

 protected:
  void Prepare(const std::shared_ptr<Window>& window) override;
  void BecameVisible(Window& window) override;
  void Wait(Window& window) override;
  void Conceal(Window& window) override;

 private:
  Driver& driver_;
  std::vector<std::weak_ptr<Window>> known_;  // the one shown last at the end
};

}  // namespace tessel
