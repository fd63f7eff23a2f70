// A tree list as a widget: the nodes stay in the control and are drawn from there, so that a list of
// thousands scrolls like one of ten.
#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QIcon>
#include <QListView>
#include <memory>

#include "qt/control_view.h"
#include "toolkit/tree_list.h"

namespace tessel::qt {

// The nodes as Qt's views read them. Between a change of the nodes and Reload it shows what still fits.
class NodeModel : public QAbstractListModel {
 public:
  explicit NodeModel(const TreeList& list) : list_(list) {}
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  void Reload();
  void ForgetImages() { icons_.clear(); }

 private:
  [[nodiscard]] QIcon IconOf(const TreeList::Node& node) const;

  const TreeList& list_;
  int rows_ = 0;
  mutable QHash<QString, QIcon> icons_;  // by image key
};

// Hands gestures to the control, which decides what comes of them; Qt's own handling of clicks and keys is
// left out.
class NodeList : public QListView {
 public:
  NodeList(TreeList& list, QWidget* parent, EventRunner run);

  // Where the part of a row lies that answers to clicks on the node or on its check box.
  [[nodiscard]] QRect CheckBoxArea(int row) const;
  void Reload();
  void ShowSelection();
  void ForgetImages() { model_.ForgetImages(); }
  // Reloads when nodes have changed since.
  void Settle();
  void NodesChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  // What lies below a point; row -1 is empty space.
  struct Spot {
    int row = -1;
    bool onCheckBox = false;
    friend bool operator==(const Spot&, const Spot&) = default;
  };
  [[nodiscard]] Spot SpotAt(const QPoint& point) const;
  // The row that a key moves to; -1 when it moves nowhere.
  [[nodiscard]] int RowBehind(const QKeyEvent& key) const;
  [[nodiscard]] int RowsOnPage() const;
  // The selection is pale and the list without a frame while the keys go elsewhere.
  void ShowFocus(bool focused);

  TreeList& list_;
  EventRunner run_;
  NodeModel model_;
  Spot pressed_;
  bool stale_ = false;
};

[[nodiscard]] std::unique_ptr<ControlView> MakeTreeListView(TreeList& list, QWidget& parent,
                                                            const EventRunner& run);

}  // namespace tessel::qt
