#include "wizard/page.h"

#include "messages/guard.h"

namespace tessel {
namespace {

constexpr const char* kWindowTitle = "Kestrix";
constexpr Size kClientArea{6990, 5070};

}  // namespace

void Page::Show() {
  if (!Loaded()) MakeWindow();
  GetServices().trace.Flush();
  do {
    showAgain_ = false;
    GetServices().toolkit.ShowModal(window_);
  } while (showAgain_ && Loaded());
}

void Page::Hide() {
  if (Loaded()) GetServices().toolkit.Hide(*window_);
}

void Page::Unload(CloseReason reason) {
  if (!Loaded()) return;
  // The page may be shown anew while the toolkit still unloads this window.
  const std::shared_ptr<Window> window = window_;
  GetServices().toolkit.Unload(*window, reason);
}

void Page::Discard() {
  discarded_ = true;
  Unload(CloseReason::kProgramCode);
}

std::optional<Rect> Page::Bounds() const {
  if (!Loaded() || !window_->Placed()) return std::nullopt;
  return window_->Bounds();
}

void Page::MakeWindow() {
  window_ = std::make_shared<Window>(name_, kWindowTitle, kClientArea);
  discarded_ = false;
  Build();
  window_->OnActivate = Trapped("Form_Activate", [this] { Activate(); });
  window_->OnResize = Trapped("Form_Resize", [this] { Layout(); });
  window_->OnQueryClose = [this](CloseReason reason) {
    return Guarded(GetServices().trace, "Error in (Form_QueryUnload/" + name_ + ")", true,
                   [&] { return discarded_ || QueryClose(reason); });
  };
  window_->OnUnload = [this] {
    if (!State().ExportFinished) State().ExportCancelled = true;
  };
  Trapped("Form_Load", [this] { Load(); })();
}

std::string Page::Caption(const char* code, const char* defaultText) const {
  return GetServices().errors.GetCaptionString(code, defaultText);
}

std::function<void()> Page::Trapped(const std::string& procedure, std::function<void()> body) const {
  return [this, text = "Error in (" + procedure + "/" + name_ + ")", body = std::move(body)] {
    GuardedRun(GetServices().trace, text, body);
  };
}

Frame* Page::AddFrame(const Rect& rect, const std::string& caption) {
  Frame& frame = window_->Add<Frame>("Frame3", -1, nullptr, rect);
  frame.SetCaption(caption);
  return &frame;
}

Label* Page::AddLabel(const std::string& name, int index, Frame* parent, const Rect& rect,
                      const std::string& caption) {
  Label& label = window_->Add<Label>(name, index, parent, rect);
  label.SetCaption(caption);
  return &label;
}

Button* Page::AddButton(const std::string& name, Frame* parent, const Rect& rect, const std::string& caption,
                        std::function<void()> onClick) {
  Button& button = window_->Add<Button>(name, -1, parent, rect);
  button.SetCaption(caption);
  button.OnClick = Trapped(name + "_Click", std::move(onClick));
  return &button;
}

void Page::TakeBounds(PageId from) {
  if (const std::optional<Rect> bounds = Flow().BoundsOf(from)) window_->SetBounds(*bounds);
  Layout();
}

void Page::BringToTop() {
  GetServices().toolkit.BringToTop(*window_);
}

std::optional<PageId> Page::Next() const {
  return NextPage(page_, Mode(), FlowSettingsOf(Settings(), State().UseFolderStructure));
}

void Page::GoForward() {
  if (const std::optional<PageId> next = Next()) {
    HandOver(*next);
    return;
  }
  Hide();
  State().NavigatedFrom = page_;
  Flow().ClickDepatchButton();
  // Whatever became of the dispatch: it runs once, and closing a page is no cancel from then on.
  if (FinishesWithDispatch(page_)) State().ExportFinished = true;
}

void Page::GoBack() {
  if (const std::optional<PageId> previous = PreviousPage(page_)) HandOver(*previous);
}

void Page::HandOver(PageId to) {
  Hide();
  State().NavigatedFrom = page_;
  Flow().ShowNext(to);
}

void Page::Cancel(bool askToKeepSelection) {
  if (askToKeepSelection && Settings().b_EnKeepSel) {
    const MessageAnswer answer = GetServices().toolkit.ShowMessage(
        {"Do you want to keep your selektion?", "", MessageIcon::kNone, MessageButtons::kYesNo});
    if (answer == MessageAnswer::kYes) State().KeepSelection = true;
  }
  State().ExportCancelled = true;
  Hide();
}

bool Page::ConfirmClose(CloseReason reason) {
  if (State().ExportFinished) return true;
  const MessageAnswer answer =
      GetServices().toolkit.ShowMessage({"Do you really want to cancel the data export process?", "Cancel",
                                         MessageIcon::kNone, MessageButtons::kYesNo});
  const bool refusable = reason == CloseReason::kUserCommand || reason == CloseReason::kProgramCode;
  return answer == MessageAnswer::kYes || !refusable;
}

void Page::ShowCatalogueText(const char* code, MessageIcon icon) {
  GetServices().toolkit.ShowMessage({GetServices().errors.ErrorHandle(code), kWindowTitle, icon});
}

}  // namespace tessel
