#include "qt/control_views.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <iterator>

#include "qt/caption_label.h"
#include "qt/frame_widget.h"
#include "qt/logo.h"
#include "qt/text.h"
#include "qt/tree_list_view.h"

namespace tessel::qt {
namespace {

class LabelView : public ControlView {
 public:
  LabelView(Label& label, QWidget& parent, const Units& units)
      : label_(label), widget_(new CaptionLabel(&parent, units.Pixels(kHeadlineHeight))) {}
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override { widget_->SetCaption(ToQt(label_.Caption())); }
  [[nodiscard]] int CaptionWidth() const override { return widget_->CaptionWidth(); }

 private:
  // Labels of this height and more are headlines.
  static constexpr double kHeadlineHeight = 450;

  Label& label_;
  CaptionLabel* widget_;
};

class FrameView : public ControlView {
 public:
  FrameView(Frame& frame, QWidget& parent) : frame_(frame), widget_(new FrameWidget(&parent)) {}
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override { widget_->setTitle(Literal(frame_.Caption())); }

 private:
  Frame& frame_;
  FrameWidget* widget_;
};

class LineView : public ControlView {
 public:
  LineView(const Line& line, QWidget& parent) : widget_(new QFrame(&parent)) {
    const bool lying = line.Bounds().width >= line.Bounds().height;
    widget_->setFrameShape(lying ? QFrame::HLine : QFrame::VLine);
    widget_->setFrameShadow(QFrame::Sunken);
  }
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override {}

 private:
  QFrame* widget_;
};

class PictureView : public ControlView {
 public:
  PictureView(Picture& picture, QWidget& parent) : picture_(picture), widget_(new QLabel(&parent)) {}
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override {
    const QSize room = widget_->size();
    if (room.isEmpty()) return;
    if (picture_.File().empty()) {
      widget_->setPixmap(Logo(std::min(room.width(), room.height()), widget_->devicePixelRatioF()));
    } else {
      widget_->setPixmap(
          QPixmap(ToQt(picture_.File())).scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }
  }
  void Resized() override { Take(Change::kImages); }

 private:
  Picture& picture_;
  QLabel* widget_;
};

class ButtonView : public ControlView {
 public:
  ButtonView(Button& button, QWidget& parent, const EventRunner& run)
      : button_(button), widget_(new QPushButton(&parent)) {
    widget_->setAutoDefault(false);
    widget_->setDefault(button.IsDefault);
    QObject::connect(widget_, &QPushButton::clicked, widget_,
                     [&button, run] { run([&button] { button.UserClick(); }); });
  }
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override { widget_->setDefault(button_.IsDefault); }
  void ShowCaption(const QString& marked) override { widget_->setText(marked); }

 private:
  Button& button_;
  QPushButton* widget_;
};

class CheckBoxView : public ControlView {
 public:
  CheckBoxView(CheckBox& box, QWidget& parent, const EventRunner& run)
      : box_(box), widget_(new QCheckBox(&parent)) {
    // The control decides what a click comes to, so the widget follows it afterwards.
    QObject::connect(widget_, &QCheckBox::clicked, widget_, [this, run] {
      run([this] { box_.UserToggle(); });
      Take(Change::kValue);
    });
  }
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override { widget_->setChecked(box_.Checked()); }
  void ShowCaption(const QString& marked) override { widget_->setText(marked); }
  [[nodiscard]] int CaptionWidth() const override { return widget_->sizeHint().width(); }

 private:
  CheckBox& box_;
  QCheckBox* widget_;
};

class LineEditView : public ControlView {
 public:
  LineEditView(TextBox& box, QWidget& parent, const EventRunner& run)
      : box_(box), widget_(new QLineEdit(&parent)) {
    QObject::connect(widget_, &QLineEdit::textEdited, widget_, [this, run](const QString& text) {
      // Where the control allows less than was typed, what stands behind the cursor stays behind it.
      const auto behind = text.size() - widget_->cursorPosition();
      run([this, typed = FromQt(text)] { box_.UserType(typed); });
      Take(Change::kValue);
      widget_->setCursorPosition(static_cast<int>(std::max<qsizetype>(widget_->text().size() - behind, 0)));
    });
  }
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override {
    const QString text = ToQt(box_.Text());
    if (widget_->text() == text) return;
    widget_->setText(text);
    widget_->setCursorPosition(0);
  }

 private:
  TextBox& box_;
  QLineEdit* widget_;
};

class TextEditView : public ControlView {
 public:
  TextEditView(TextBox& box, QWidget& parent, const EventRunner& run)
      : box_(box), widget_(new QPlainTextEdit(&parent)) {
    // The keyboard has to get out of it again.
    widget_->setTabChangesFocus(true);
    QObject::connect(widget_, &QPlainTextEdit::textChanged, widget_, [this, run] {
      run([this] { box_.UserType(FromQt(Shown())); });
      Take(Change::kValue);
    });
  }
  QWidget& Widget() override { return *widget_; }
  // Replaces only what differs, so that the cursor stays where the user is typing.
  void Take(Change) override {
    // The widget knows one kind of line break only.
    QString text = ToQt(box_.Text());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const QString shown = Shown();
    if (shown == text) return;
    const auto same = std::mismatch(shown.begin(), shown.end(), text.begin(), text.end());
    const auto sameEnd = std::mismatch(shown.rbegin(), std::make_reverse_iterator(same.first), text.rbegin(),
                                       std::make_reverse_iterator(same.second));
    const QSignalBlocker quiet(widget_);
    QTextCursor change(widget_->document());
    change.setPosition(static_cast<int>(same.first - shown.begin()));
    change.setPosition(static_cast<int>(sameEnd.first.base() - shown.begin()), QTextCursor::KeepAnchor);
    change.insertText(QString(same.second, sameEnd.second.base() - same.second));
  }

 private:
  // The text without the widget's own signs; spaces stay what they are.
  [[nodiscard]] QString Shown() const {
    return widget_->document()
        ->toRawText()
        .replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'))
        .replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
  }

  TextBox& box_;
  QPlainTextEdit* widget_;
};

class ProgressView : public ControlView {
 public:
  ProgressView(ProgressBar& bar, QWidget& parent) : bar_(bar), widget_(new QProgressBar(&parent)) {
    widget_->setTextVisible(false);
  }
  QWidget& Widget() override { return *widget_; }
  void Take(Change) override {
    // A range of nothing would be drawn as an unending one.
    widget_->setRange(0, std::max(bar_.Maximum(), 1));
    widget_->setValue(bar_.Value());
  }

 private:
  ProgressBar& bar_;
  QProgressBar* widget_;
};

template <class ControlType>
ControlType& As(Control& control) {
  return static_cast<ControlType&>(control);
}

}  // namespace

std::unique_ptr<ControlView> MakeControlView(Control& control, QWidget& parent, const Units& units,
                                             const EventRunner& run) {
  switch (control.Kind()) {
    case ControlKind::kLabel:
      return std::make_unique<LabelView>(As<Label>(control), parent, units);
    case ControlKind::kFrame:
      return std::make_unique<FrameView>(As<Frame>(control), parent);
    case ControlKind::kLine:
      return std::make_unique<LineView>(As<Line>(control), parent);
    case ControlKind::kPicture:
      return std::make_unique<PictureView>(As<Picture>(control), parent);
    case ControlKind::kButton:
      return std::make_unique<ButtonView>(As<Button>(control), parent, run);
    case ControlKind::kCheckBox:
      return std::make_unique<CheckBoxView>(As<CheckBox>(control), parent, run);
    case ControlKind::kProgressBar:
      return std::make_unique<ProgressView>(As<ProgressBar>(control), parent);
    case ControlKind::kTreeList:
      return MakeTreeListView(As<TreeList>(control), parent, run);
    case ControlKind::kTextBox:
      break;
  }
  TextBox& box = As<TextBox>(control);
  if (box.MultiLine()) return std::make_unique<TextEditView>(box, parent, run);
  return std::make_unique<LineEditView>(box, parent, run);
}

}  // namespace tessel::qt
