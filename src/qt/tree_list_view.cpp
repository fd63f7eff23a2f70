#include "qt/tree_list_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <algorithm>

#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr int kIconSide = 16;

MouseButton ButtonOf(const QMouseEvent& event) {
  return event.button() == Qt::RightButton ? MouseButton::kRight : MouseButton::kLeft;
}

// The key's character; keys without one have codes above all characters.
char32_t CodeOf(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Delete) return 127;
  const auto characters = event.text().toUcs4();
  return characters.isEmpty() ? static_cast<char32_t>(event.key()) : characters.front();
}

bool IsStep(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End;
}

class TreeListView : public ControlView {
 public:
  TreeListView(TreeList& list, QWidget& parent, const EventRunner& run)
      : widget_(new NodeList(list, &parent, run)) {}
  QWidget& Widget() override { return *widget_; }
  void Take(Change change) override {
    if (change == Change::kNodes) widget_->NodesChanged();
    if (change == Change::kSelection) widget_->ShowSelection();
    if (change == Change::kImages) widget_->ForgetImages();
    widget_->viewport()->update();
  }
  void Settle() override { widget_->Settle(); }

 private:
  NodeList* widget_;
};

}  // namespace

int NodeModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

QVariant NodeModel::data(const QModelIndex& index, int role) const {
  if (!list_.HasNode(index.row())) return {};
  const TreeList::Node& node = list_.NodeAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(node.text).simplified();
    case Qt::ToolTipRole:
      return ToolTip(ToQt(node.text).simplified());
    case Qt::DecorationRole:
      return IconOf(node);
    case Qt::CheckStateRole:
      if (!list_.HasCheckBoxes()) return {};
      return node.checked ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

QIcon NodeModel::IconOf(const TreeList::Node& node) const {
  if (list_.Images() == nullptr || node.imageKey.empty()) return {};
  const QString key = ToQt(node.imageKey);
  const auto known = icons_.constFind(key);
  if (known != icons_.constEnd()) return *known;
  const ImageList::Image* image = list_.Images()->Find(node.imageKey);
  if (image == nullptr) return {};
  const QIcon icon(ToQt(image->file));
  icons_.insert(key, icon);
  return icon;
}

void NodeModel::Reload() {
  beginResetModel();
  rows_ = list_.NodeCount();
  endResetModel();
}

NodeList::NodeList(TreeList& list, QWidget* parent, EventRunner run)
    : QListView(parent), list_(list), run_(std::move(run)), model_(list) {
  setModel(&model_);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setIconSize({kIconSide, kIconSide});
  setFocusPolicy(Qt::StrongFocus);
  setVerticalScrollMode(ScrollPerPixel);
  Reload();
  ShowFocus(false);
}

void NodeList::ShowFocus(bool focused) {
  QPalette colours = QApplication::palette(this);
  if (!focused) {
    colours.setColor(QPalette::Highlight, colours.color(QPalette::Midlight));
    colours.setColor(QPalette::HighlightedText, colours.color(QPalette::Text));
  }
  setPalette(colours);
  viewport()->update();
}

// A menu or a box over the list takes the keys for a moment only.
void NodeList::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  ShowFocus(true);
}

void NodeList::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  const bool forAMoment =
      event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
  if (!forAMoment) ShowFocus(false);
}

void NodeList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(viewport());
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void NodeList::NodesChanged() {
  if (stale_) return;
  stale_ = true;
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void NodeList::Settle() {
  if (stale_) Reload();
}

bool NodeList::event(QEvent* event) {
  if (event->type() == QEvent::User || event->type() == QEvent::Paint) Settle();
  return QListView::event(event);
}

void NodeList::Reload() {
  stale_ = false;
  const int scrolled = verticalScrollBar()->value();
  model_.Reload();
  doItemsLayout();
  verticalScrollBar()->setValue(scrolled);
  ShowSelection();
}

void NodeList::ShowSelection() {
  if (stale_) return;
  const QModelIndex index = model_.index(list_.Selected());
  if (index.isValid()) {
    setCurrentIndex(index);
    scrollTo(index);
  } else {
    clearSelection();
    setCurrentIndex({});
  }
}

QRect NodeList::CheckBoxArea(int row) const {
  if (!list_.HasCheckBoxes()) return {};
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(model_.index(row));
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
}

NodeList::Spot NodeList::SpotAt(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!index.isValid()) return {};
  return {index.row(), CheckBoxArea(index.row()).contains(point)};
}

void NodeList::mousePressEvent(QMouseEvent* event) {
  Settle();
  pressed_ = SpotAt(event->position().toPoint());
}

void NodeList::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void NodeList::mouseMoveEvent(QMouseEvent*) {}

void NodeList::mouseReleaseEvent(QMouseEvent* event) {
  Settle();
  const Spot spot = SpotAt(event->position().toPoint());
  const MouseButton button = ButtonOf(*event);
  const Spot pressed = std::exchange(pressed_, {});
  if (spot.row < 0) {
    run_([this, button] { list_.UserReleaseButton(button); });
  } else if (spot == pressed && spot.onCheckBox && button == MouseButton::kLeft) {
    run_([this, spot] { list_.UserClickCheckBox(spot.row); });
  } else if (spot == pressed) {
    run_([this, spot, button] { list_.UserClickNode(spot.row, button); });
  }
}

int NodeList::RowsOnPage() const {
  const int height = sizeHintForRow(0);
  return height > 0 ? std::max(viewport()->height() / height - 1, 1) : 1;
}

int NodeList::RowBehind(const QKeyEvent& key) const {
  const int last = list_.NodeCount() - 1;
  const int current = list_.Selected();
  switch (key.key()) {
    case Qt::Key_Up:
      return std::max(current - 1, std::min(0, last));
    case Qt::Key_Down:
      return std::min(current + 1, last);
    case Qt::Key_PageUp:
      return std::max(current - RowsOnPage(), std::min(0, last));
    case Qt::Key_PageDown:
      return std::min(current + RowsOnPage(), last);
    case Qt::Key_Home:
      return std::min(0, last);
    case Qt::Key_End:
      return last;
    default:
      break;
  }
  const QString text = key.text().trimmed();
  if (text.isEmpty() || last < 0) return -1;
  const auto found = model_.match(model_.index((current + 1) % (last + 1)), Qt::DisplayRole, text, 1,
                                  Qt::MatchStartsWith | Qt::MatchWrap);
  return found.isEmpty() ? -1 : found.front().row();
}

// The keys of the window go on to it.
void NodeList::keyPressEvent(QKeyEvent* event) {
  Settle();
  const int row = RowBehind(*event);
  const char32_t code = CodeOf(*event);
  const bool ofWindow =
      event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
  run_([&] {
    list_.UserPressKey(code);
    // A list without check boxes takes a step on the spot for a click, so that its only node can be chosen.
    const bool onTheSpot = row == list_.Selected() && (list_.HasCheckBoxes() || !IsStep(event->key()));
    if (row >= 0 && !onTheSpot) list_.UserClickNode(row);
  });
  event->setAccepted(!ofWindow);
}

// By the keyboard alone: a right click has come as a mouse event.
void NodeList::contextMenuEvent(QContextMenuEvent* event) {
  const int row = list_.Selected();
  if (event->reason() != QContextMenuEvent::Keyboard || row < 0) return;
  run_([this, row] { list_.UserClickNode(row, MouseButton::kRight); });
}

std::unique_ptr<ControlView> MakeTreeListView(TreeList& list, QWidget& parent, const EventRunner& run) {
  return std::make_unique<TreeListView>(list, parent, run);
}

}  // namespace tessel::qt
