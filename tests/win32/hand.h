// What a hand does to native windows, and what an eye sees of them. Everything on the thread of the windows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "win32/api.h"

namespace tessel::test {

// Calls something again and again from the message loop that runs, be it the toolkit's or one of Windows.
class Ticks {
 public:
  explicit Ticks(std::function<void()> action);
  ~Ticks();
  Ticks(const Ticks&) = delete;
  Ticks& operator=(const Ticks&) = delete;

 private:
  HWND window_;
  std::function<void()> action_;
};

void ClickAt(HWND control, POINT point, bool right = false);
// As Windows sends it to the window that has the keyboard; characters come along.
void PressKey(WPARAM key);
void PressAlt(char letter);
// At the beginning of an edit control, UTF-8.
void TypeText(HWND edit, const std::string& text);

[[nodiscard]] std::string ShownText(HWND window);
// Where a node's text, or its check box, is drawn; it is scrolled to.
[[nodiscard]] POINT PlaceOfNode(HWND tree, int node, bool box);
[[nodiscard]] bool NodeIsMarked(HWND tree, int node);
[[nodiscard]] std::string TextOfNode(HWND tree, int node);
// The dialog or the popup menu that is open in this thread; null when there is none.
[[nodiscard]] HWND DialogOfThread();
[[nodiscard]] HWND MenuOfThread();

}  // namespace tessel::test
