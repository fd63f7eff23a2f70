// A tree list with optional check boxes and images, and the image list that it draws from.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/control.h"

namespace tessel {

// Pictures by key, in the order in which they were added.
class ImageList {
 public:
  struct Image {
    std::string key;
    std::string file;  // path of the picture
  };
  [[nodiscard]] bool Contains(const std::string& key) const { return positions_.contains(key); }
  // Nothing happens when the key is already there.
  void Add(const std::string& key, const std::string& file);
  void Clear();
  [[nodiscard]] const std::vector<Image>& Images() const { return images_; }
  // Null when there is no image of the key.
  [[nodiscard]] const Image* Find(const std::string& key) const;

 private:
  std::vector<Image> images_;
  std::unordered_map<std::string, std::size_t> positions_;
};

enum class MouseButton { kLeft, kRight };

// A flat list as the pages use it: nodes numbered from 0.
class TreeList : public Control {
 public:
  struct Node {
    std::string text;
    std::string tag;
    std::string imageKey;
    bool checked = false;
  };

  TreeList(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect, bool checkBoxes)
      : Control(owner, ControlKind::kTreeList, std::move(name), index, parent, rect),
        checkBoxes_(checkBoxes) {}

  [[nodiscard]] bool HasCheckBoxes() const { return checkBoxes_; }
  [[nodiscard]] int NodeCount() const { return static_cast<int>(nodes_.size()); }
  [[nodiscard]] bool HasNode(int node) const { return node >= 0 && node < NodeCount(); }
  // Error 9 outside.
  [[nodiscard]] const Node& NodeAt(int node) const;
  // Position of the first node with the tag, in constant time; -1 when there is none.
  [[nodiscard]] int FindTag(const std::string& tag) const;
  void AddNode(const std::string& text, const std::string& tag, const std::string& imageKey = {});
  // The selection moves to the next node, or to the last.
  void RemoveNode(int node);
  void Clear();

  // -1 when nothing is selected.
  [[nodiscard]] int Selected() const { return selected_; }
  // A position outside the list selects nothing.
  void Select(int node);
  // Marks set by the program raise no event.
  void SetChecked(int node, bool checked);
  [[nodiscard]] int CheckedCount() const { return checkedCount_; }

  void SetImages(const ImageList* images);
  [[nodiscard]] const ImageList* Images() const { return images_; }

  // Events, in the order in which one gesture raises them.
  std::function<void(char32_t key)> OnKeyDown;  // before the list's own handling of the key
  std::function<void(int node)> OnNodeCheck;    // the user changed a mark
  std::function<void(int node)> OnNodeClick;    // the user clicked a node
  std::function<void()> OnClick;                // after any click in the list
  std::function<void(MouseButton button)> OnMouseUp;

  // Gestures. A click on a node selects it and raises NodeClick, Click and MouseUp; a click on a check box
  // changes the mark and raises NodeCheck, Click and MouseUp; the space key raises KeyDown, then changes the
  // selected node's mark and raises NodeCheck. Other keys raise KeyDown alone.
  void UserClickNode(int node, MouseButton button = MouseButton::kLeft);
  void UserClickCheckBox(int node);
  void UserPressKey(char32_t key);
  // A button release over empty space.
  void UserReleaseButton(MouseButton button);

 private:
  bool checkBoxes_;
  std::vector<Node> nodes_;
  std::unordered_map<std::string, int> firstByTag_;
  int selected_ = -1;
  int checkedCount_ = 0;
  const ImageList* images_ = nullptr;
};

}  // namespace tessel
