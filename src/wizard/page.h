// Base of the wizard's pages: one window a page, made at the first show and again at the first show after an
// unload, and the rules that all pages share.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "config/services.h"
#include "dispatch/additional_values.h"
#include "exchange/exchange.h"
#include "structure/structure.h"
#include "toolkit/window.h"
#include "wizard/page_flow.h"
#include "wizard/wizard_state.h"

namespace tessel {

// What every page works with. All references outlive the pages.
struct PageContext {
  Services& services;
  ExchangeState& exchange;
  StructureState& structure;
  WizardState& state;
  const AdditionalValuesFactory& additionalValues;
  PageFlow& flow;
};

class Page {
 public:
  Page(const PageContext& context, PageId page) : context_(context), page_(page), name_(PageName(page)) {}
  virtual ~Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  // Loads the page when it is not loaded and shows it modally.
  void Show();
  // Nothing happens when the page is not loaded.
  void Hide();
  // Nothing happens when the page is not loaded; the page may refuse.
  void Unload(CloseReason reason);
  // Unloads the page of an export that nobody can go on with: it neither asks nor refuses.
  void Discard();

  [[nodiscard]] bool Loaded() const { return window_ != nullptr && !window_->Unloaded(); }
  // Nothing when the page is not loaded or was never on the screen.
  [[nodiscard]] std::optional<Rect> Bounds() const;

 protected:
  // Adds the controls with their design captions and geometry, and their events.
  virtual void Build() = 0;
  // Fills a freshly built page.
  virtual void Load() {}
  // Each time the page is shown.
  virtual void Activate() = 0;
  // Each time the window changes its size.
  virtual void Layout() {}
  // False refuses the closing.
  virtual bool QueryClose(CloseReason) { return true; }

  // The window of the last load; it stays valid after an unload until the next show.
  [[nodiscard]] Window& PageWindow() const { return *window_; }
  [[nodiscard]] const std::shared_ptr<Window>& SharedWindow() const { return window_; }
  [[nodiscard]] Services& GetServices() const { return context_.services; }
  [[nodiscard]] const Configuration& Settings() const { return context_.services.Settings(); }
  [[nodiscard]] WizardState& State() const { return context_.state; }
  [[nodiscard]] SendMode Mode() const { return context_.state.SendMode; }
  [[nodiscard]] PageFlow& Flow() const { return context_.flow; }
  [[nodiscard]] const PageContext& Context() const { return context_; }
  [[nodiscard]] std::string Caption(const char* code, const char* defaultText) const;
  void TraceLine(const std::string& text) const { context_.services.trace.Write(text); }

  // An event procedure: an error in the body ends it with a trace line that names the procedure.
  [[nodiscard]] std::function<void()> Trapped(const std::string& procedure, std::function<void()> body) const;

  Frame* AddFrame(const Rect& rect, const std::string& caption);
  Label* AddLabel(const std::string& name, int index, Frame* parent, const Rect& rect,
                  const std::string& caption);
  Button* AddButton(const std::string& name, Frame* parent, const Rect& rect, const std::string& caption,
                    std::function<void()> onClick);

  // Takes position and size of another page's window and lays the controls out; leaves the window where it is
  // when that page has none.
  void TakeBounds(PageId from);
  void BringToTop();
  // For an event that hid the page: it is shown once more when the show that the event belongs to has ended.
  // So shows do not nest however often this happens.
  void ShowAgain() { showAgain_ = true; }
  // Hides the page and goes on where its forward button leads: to the next page or into the dispatch.
  void GoForward();
  // Hides the page and goes on where its back button leads.
  void GoBack();
  // Where the forward button leads; nothing when it starts the dispatch.
  [[nodiscard]] std::optional<PageId> Next() const;
  // Cancel button of a page: the keep-selection question where it is asked, then the end of the wizard.
  void Cancel(bool askToKeepSelection);
  // The confirmation of the last pages. False refuses the closing.
  [[nodiscard]] bool ConfirmClose(CloseReason reason);
  // Shows a catalogue text in a box titled "Kestrix".
  void ShowCatalogueText(const char* code, MessageIcon icon);

 private:
  void MakeWindow();
  void HandOver(PageId to);

  PageContext context_;
  PageId page_;
  std::string name_;
  std::shared_ptr<Window> window_;
  bool showAgain_ = false;
  bool discarded_ = false;
};

}  // namespace tessel
