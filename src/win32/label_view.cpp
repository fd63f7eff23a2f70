#include "win32/label_view.h"

#include "win32/handles.h"
#include "win32/text.h"

namespace tessel::win32 {
namespace {

constexpr double kHeadlineHeight = 450;  // twips; labels of this height and more are headlines
constexpr double kHeadlineShare = 0.75;  // of the label's height
constexpr int kSmallestHeadline = 11;    // pixels
constexpr int kSlack = 2;                // measuring and drawing may differ by a pixel

class LabelView : public ControlView {
 public:
  LabelView(Label& label, const Ground& ground)
      : ControlView(
            label, ground, WC_STATICW,
            SS_NOPREFIX | SS_ENDELLIPSIS | (label.Bounds().height < kHeadlineHeight ? 0 : SS_CENTERIMAGE)) {}
  void Take(Change) override {
    ShowText(OnOneLine(Model().Caption()));
    if (Headline()) FitHeadline();
  }
  void SetFont(HFONT font) override {
    page_ = font;
    ControlView::SetFont(font);
    if (Headline()) FitHeadline();
  }
  void Resized() override {
    if (Headline()) FitHeadline();
  }
  [[nodiscard]] int CaptionWidth() const override {
    return Headline() ? 0 : Measure(OnOneLine(Model().Caption())).cx + kSlack;
  }

 private:
  [[nodiscard]] bool Headline() const { return Model().Bounds().height >= kHeadlineHeight; }

  // The largest bold print in which the caption fits; the page's own when none does.
  void FitHeadline() {
    LOGFONTW look{};
    GetObjectW(page_, sizeof look, &look);
    look.lfWeight = FW_BOLD;
    RECT room{};
    GetClientRect(Handle(), &room);
    for (int size = static_cast<int>(room.bottom * kHeadlineShare); size > kSmallestHeadline; --size) {
      look.lfHeight = -size;
      FontHandle font(CreateFontIndirectW(&look));
      ControlView::SetFont(font.get());
      const bool fits = Measure(ShownText()).cx <= room.right;
      headline_.swap(font);
      if (fits) return;
    }
    ControlView::SetFont(page_);
  }

  HFONT page_ = nullptr;
  FontHandle headline_;
};

}  // namespace

std::unique_ptr<ControlView> MakeLabelView(Label& label, const Ground& ground) {
  return std::make_unique<LabelView>(label, ground);
}

}  // namespace tessel::win32
