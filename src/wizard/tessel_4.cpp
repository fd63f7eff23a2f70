#include "wizard/tessel_4.h"

#include <algorithm>

#include "host/error.h"
#include "messages/guard.h"
#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr const char* kSection = "CustomFormIni";
constexpr double kFirstTop = 120;
constexpr double kTopOffset = 360;
constexpr double kSingleLineHeight = 315;
constexpr double kEntryGap = 165;
constexpr double kFixedReserve = 1350;
constexpr double kBoxReserve = 2865;

}  // namespace

void Tessel_4::Build() {
  fields_.clear();
  entryCount_ = 0;
  built_ = false;
  frame3_ = AddFrame({0, 0, 6972, 4472}, "Mail Daten");
  label1_ = AddLabel("Label1", 0, frame3_, {240, 480, 3495, 255}, "An:");
  Window& window = PageWindow();
  text1_ = &window.Add<TextBox>("Text1", 0, frame3_, Rect{2400, 480, 4215, 315}, false);
  text2_ = &window.Add<TextBox>("Text2", 0, frame3_, Rect{2400, 960, 4215, 1500}, true);
  for (Control* control : std::initializer_list<Control*>{label1_, text1_, text2_})
    control->SetVisible(false);
  // Before the button, so that the tab key goes through them first.
  Trapped("Form_Load", [this] { MakeFields(); })();
  command1_ = AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Versenden !", [this] {
    Hide();
    Flow().ClickDepatchButton();
  });
}

void Tessel_4::Load() {
  FinishBuild();
}

// The section could not be read at the load: another attempt.
void Tessel_4::Activate() {
  if (built_) return;
  MakeFields();
  FinishBuild();
}

void Tessel_4::MakeFields() {
  const Deklarationen& declarations = GetServices().declarations;
  const std::vector<std::string> entries = Required(declarations.pciniAdminTool, "configuration reader")
                                               ->SectionEntries(declarations.startup.session, kSection);
  entryCount_ = static_cast<int>(entries.size());
  int number = 0;
  for (const std::string& entry : entries)
    MakeField(++number, entry);
  built_ = true;
}

void Tessel_4::FinishBuild() {
  SetCaptions();
  TakeBounds(State().NavigatedFrom);
  BringToTop();
}

void Tessel_4::MakeField(int number, const std::string& entry) {
  const std::vector<std::string> parts = SplitText(entry, "||");
  if (parts[0].find("MultiLine_") == std::string::npos) return;
  // An entry that does not say makes a single line: a field too small is better than none.
  const bool multiLine =
      parts.size() > 1 && Guarded(GetServices().trace, "Entry of " + std::string(kSection) + ": " + entry,
                                  false, [&] { return ParseBoolean(parts[1]); });
  const char* name = multiLine ? "Text2" : "Text1";
  const auto sameKind = std::count_if(fields_.begin(), fields_.end(), [&](const Field& field) {
    return field.box->MultiLine() == multiLine;
  });
  TextBox& box = PageWindow().Add<TextBox>(name, static_cast<int>(sameKind) + 1, frame3_,
                                           (multiLine ? text2_ : text1_)->Bounds(), multiLine);
  Label* label = AddLabel("Label1", number, frame3_, label1_->Bounds(), "");
  fields_.push_back({number, label, &box});
}

void Tessel_4::SetCaptions() {
  frame3_->SetCaption(Caption("cc001", "No Title"));
  command1_->SetCaption(Caption("cc002", "Versenden"));
  for (const Field& field : fields_) {
    const std::string code = "cc00" + std::to_string(field.number + 2);
    field.label->SetCaption(Caption(code.c_str(), "No Title"));
  }
}

int Tessel_4::MultiLineCount() const {
  return static_cast<int>(std::count_if(fields_.begin(), fields_.end(),
                                        [](const Field& field) { return field.box->MultiLine(); }));
}

void Tessel_4::Layout() {
  AnchorForwardButton(PageWindow(), *command1_);
  AnchorFrame(PageWindow(), *frame3_, kButtonRowReserve);
  LayOutFields();
}

// The multi-line boxes share what the single-line ones and the fixed parts leave of the height.
void Tessel_4::LayOutFields() {
  const Rect& window = PageWindow().Bounds();
  const int multiLines = MultiLineCount();
  const double fixedHeight =
      (entryCount_ - multiLines) * kSingleLineHeight + entryCount_ * kEntryGap + kFixedReserve;
  double top = kFirstTop;
  for (const Field& field : fields_) {
    if (!field.box->MultiLine()) {
      field.box->SetHeight(kSingleLineHeight);
    } else if (window.height > fixedHeight) {
      field.box->SetHeight((window.height - fixedHeight) / multiLines);
    }
    if (window.width > kBoxReserve) field.box->SetWidth(window.width - kBoxReserve);
    field.box->SetTop(top + kTopOffset);
    field.label->SetTop(top + kTopOffset);
    top += field.box->Bounds().height;
  }
}

std::vector<std::string> Tessel_4::Texts() const {
  std::vector<std::string> texts;
  if (!Loaded()) return texts;
  for (const Field& field : fields_)
    texts.push_back(field.box->Text());
  return texts;
}

}  // namespace tessel
