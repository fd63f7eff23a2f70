#include "toolkit/tree_list.h"

#include <algorithm>

#include "host/error.h"

namespace tessel {

void ImageList::Add(const std::string& key, const std::string& file) {
  if (!positions_.emplace(key, images_.size()).second) return;
  images_.push_back({key, file});
}

void ImageList::Clear() {
  images_.clear();
  positions_.clear();
}

const ImageList::Image* ImageList::Find(const std::string& key) const {
  const auto found = positions_.find(key);
  return found == positions_.end() ? nullptr : &images_[found->second];
}

const TreeList::Node& TreeList::NodeAt(int node) const {
  if (!HasNode(node)) {
    throw RuntimeError(error_number::kSubscriptOutOfRange, Id() + " has no node " + std::to_string(node) +
                                                               " among " + std::to_string(nodes_.size()));
  }
  return nodes_[static_cast<std::size_t>(node)];
}

int TreeList::FindTag(const std::string& tag) const {
  const auto found = firstByTag_.find(tag);
  return found == firstByTag_.end() ? -1 : found->second;
}

void TreeList::AddNode(const std::string& text, const std::string& tag, const std::string& imageKey) {
  firstByTag_.emplace(tag, NodeCount());
  nodes_.push_back({text, tag, imageKey, false});
  Changed(Change::kNodes);
}

void TreeList::RemoveNode(int node) {
  if (NodeAt(node).checked) --checkedCount_;
  nodes_.erase(nodes_.begin() + node);
  firstByTag_.clear();
  for (std::size_t position = 0; position < nodes_.size(); ++position) {
    firstByTag_.emplace(nodes_[position].tag, static_cast<int>(position));
  }
  if (selected_ > node) --selected_;
  selected_ = std::min(selected_, NodeCount() - 1);
  Changed(Change::kNodes);
  Changed(Change::kSelection);
}

void TreeList::Clear() {
  nodes_.clear();
  firstByTag_.clear();
  selected_ = -1;
  checkedCount_ = 0;
  Changed(Change::kNodes);
  Changed(Change::kSelection);
}

void TreeList::Select(int node) {
  const int bounded = HasNode(node) ? node : -1;
  if (selected_ == bounded) return;
  selected_ = bounded;
  Changed(Change::kSelection);
}

void TreeList::SetChecked(int node, bool checked) {
  if (NodeAt(node).checked == checked) return;
  nodes_[static_cast<std::size_t>(node)].checked = checked;
  checkedCount_ += checked ? 1 : -1;
  Changed(Change::kValue);
}

void TreeList::SetImages(const ImageList* images) {
  images_ = images;
  Changed(Change::kImages);
}

void TreeList::UserClickNode(int node, MouseButton button) {
  if (!Enabled() || !HasNode(node)) return;
  Select(node);
  if (OnNodeClick) OnNodeClick(node);
  if (OnClick) OnClick();
  if (OnMouseUp) OnMouseUp(button);
}

void TreeList::UserClickCheckBox(int node) {
  if (!Enabled() || !checkBoxes_ || !HasNode(node)) return;
  SetChecked(node, !NodeAt(node).checked);
  if (OnNodeCheck) OnNodeCheck(node);
  if (OnClick) OnClick();
  if (OnMouseUp) OnMouseUp(MouseButton::kLeft);
}

void TreeList::UserPressKey(char32_t key) {
  if (!Enabled()) return;
  if (OnKeyDown) OnKeyDown(key);
  if (key != U' ' || !checkBoxes_ || selected_ < 0) return;
  SetChecked(selected_, !NodeAt(selected_).checked);
  if (OnNodeCheck) OnNodeCheck(selected_);
}

void TreeList::UserReleaseButton(MouseButton button) {
  if (Enabled() && OnMouseUp) OnMouseUp(button);
}

}  // namespace tessel
