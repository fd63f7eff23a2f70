#include "qt/looks.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

#include "qt/caption_label.h"
#include "qt/text.h"
#include "qt/tree_list_view.h"
#include "qt/units.h"
#include "toolkit/access.h"

namespace tessel::test {
namespace {

// Without the marks of Alt letters.
std::string Unmarked(QString caption) {
  return qt::FromQt(caption.replace(QLatin1String("&&"), QLatin1String("\1"))
                        .remove(QLatin1Char('&'))
                        .replace(QLatin1Char('\1'), QLatin1Char('&')));
}

// What a person reads and sees marked on the widget.
std::string ShownBy(const QWidget& widget) {
  if (const auto* label = dynamic_cast<const qt::CaptionLabel*>(&widget)) return qt::FromQt(label->Caption());
  if (const auto* button = qobject_cast<const QPushButton*>(&widget)) return Unmarked(button->text());
  if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) return qt::FromQt(frame->title());
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return qt::FromQt(line->text());
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget)) return qt::FromQt(text->toPlainText());
  if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) {
    return Unmarked(box->text()) + (box->isChecked() ? " x" : "");
  }
  if (const auto* bar = qobject_cast<const QProgressBar*>(&widget)) {
    return std::to_string(bar->value()) + "/" + std::to_string(bar->maximum());
  }
  if (const auto* list = dynamic_cast<const qt::NodeList*>(&widget)) {
    std::string rows = std::to_string(list->currentIndex().row());
    for (int row = 0; row < list->model()->rowCount(); ++row) {
      const QModelIndex index = list->model()->index(row, 0);
      rows += "|" + qt::FromQt(index.data().toString()) +
              (index.data(Qt::CheckStateRole) == QVariant(Qt::Checked) ? " x" : "");
    }
    return rows;
  }
  return {};
}

std::string ExpectedOf(const Control& control) {
  switch (control.Kind()) {
    case ControlKind::kTextBox:
      return static_cast<const TextBox&>(control).Text();
    case ControlKind::kCheckBox: {
      const auto& box = static_cast<const CheckBox&>(control);
      return box.Caption() + (box.Checked() ? " x" : "");
    }
    case ControlKind::kProgressBar: {
      const auto& bar = static_cast<const ProgressBar&>(control);
      return std::to_string(bar.Value()) + "/" + std::to_string(std::max(bar.Maximum(), 1));
    }
    case ControlKind::kTreeList: {
      const auto& list = static_cast<const TreeList&>(control);
      std::string rows = std::to_string(list.Selected());
      for (int node = 0; node < list.NodeCount(); ++node) {
        rows += "|" + qt::FromQt(qt::ToQt(list.NodeAt(node).text).simplified()) +
                (list.NodeAt(node).checked ? " x" : "");
      }
      return rows;
    }
    case ControlKind::kLabel:
    case ControlKind::kButton:
      return control.Caption();
    case ControlKind::kPicture:
    case ControlKind::kLine:
      return {};
    default:
      return qt::FromQt(qt::Literal(control.Caption()));
  }
}

std::string Differences(const Control& control, const QWidget& widget, const QWidget& window) {
  std::string found;
  if (widget.isVisibleTo(&window) != control.ShownOnWindow()) found += " visible";
  if (widget.isEnabled() != control.Enabled()) found += " enabled";
  if (widget.objectName() != qt::ToQt(control.Id())) found += " name";
  if (widget.accessibleName() != qt::ToQt(SpokenName(control))) found += " spoken name";
  if (ShownBy(widget) != ExpectedOf(control)) found += " shows " + ShownBy(widget);
  const QRect model = qt::PixelsOf(Units(widget.logicalDpiX()), control.Bounds());
  const QRect actual = widget.geometry();
  // A caption may take room on its right, and a progress bar makes way for it.
  const bool begins = actual.topLeft() == model.topLeft() ||
                      (control.Kind() == ControlKind::kProgressBar && actual.right() == model.right());
  if (!begins || actual.height() != model.height() || actual.right() < model.right()) {
    found += " place";
  }
  return found.empty() ? found : control.Id() + ":" + found + "\n";
}

}  // namespace

std::string DifferencesOf(const qt::QtToolkit& toolkit, const Window& window) {
  std::string found;
  const QWidget* widget = toolkit.WidgetOf(window);
  for (const auto& control : window.Controls())
    found += Differences(*control, *toolkit.WidgetOf(*control), *widget);
  return found;
}

}  // namespace tessel::test
