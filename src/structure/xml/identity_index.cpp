#include "structure/xml/identity_index.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <pugixml.hpp>

namespace tessel {
namespace {

constexpr int kNoInstance = -1;
constexpr std::size_t kFirstSize = 64;

// Position of the member of a node; searched from the end, where changes happen.
template <class Members>
std::size_t PositionOf(const Members& members, IdentityIndex::Node node) {
  std::size_t position = members.size() - 1;
  while (members[position].node != node)
    --position;
  return position;
}

int Depth(pugi::xml_node node) {
  int depth = 0;
  for (; node; node = node.parent())
    ++depth;
  return depth;
}

bool IsEarlier(pugi::xml_node left, pugi::xml_node right) {
  int leftDepth = Depth(left);
  int rightDepth = Depth(right);
  const bool leftIsHigher = leftDepth < rightDepth;
  for (; leftDepth > rightDepth; --leftDepth)
    left = left.parent();
  for (; rightDepth > leftDepth; --rightDepth)
    right = right.parent();
  if (left == right) return leftIsHigher;
  while (left.parent() != right.parent()) {
    left = left.parent();
    right = right.parent();
  }
  while (left && left != right)
    left = left.next_sibling();
  return left == right;
}

}  // namespace

// The name decides only the last bits, so that elements of one identifier, which are made one soon after the
// other, lie side by side, and the first ones, which tell their slots apart.
IdentityIndex::Key IdentityIndex::MakeKey(std::string_view name, std::string_view identifier) {
  const std::hash<std::string_view> hash;
  const std::size_t nameHash = hash(name);
  return {name, identifier,
          static_cast<std::uint32_t>(((hash(identifier) << 2) | (nameHash & 3)) ^ (nameHash << 24))};
}

IdentityIndex::Key IdentityIndex::KeyOf(Node node) {
  const pugi::xml_node element(node);
  return MakeKey(element.name(), element.attribute("Identifier").value());
}

int IdentityIndex::InstanceOf(Node node) {
  const std::string_view text = pugi::xml_node(node).attribute("Instance").value();
  int instance = kNoInstance;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), instance);
  return error == std::errc() && end == text.data() + text.size() ? instance : kNoInstance;
}

bool IdentityIndex::Holds(const Slot& slot, const Key& key) const {
  if (slot.hash != key.hash) return false;
  const pugi::xml_node element(slot.group == 0 ? slot.node : groups_[slot.group - 1].members.front().node);
  return key.name == element.name() && key.identifier == element.attribute("Identifier").value();
}

std::size_t IdentityIndex::Locate(const Key& key) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t position = key.hash & mask;
  while (slots_[position].Used() && !Holds(slots_[position], key))
    position = (position + 1) & mask;
  return position;
}

void IdentityIndex::Grow() {
  std::vector<Slot> old = std::move(slots_);
  slots_.assign(std::max(kFirstSize, old.size() * 2), {});
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (!slot.Used()) continue;
    std::size_t position = slot.hash & mask;
    while (slots_[position].Used())
      position = (position + 1) & mask;
    slots_[position] = slot;
  }
}

// Moves later slots of the same run back, so that no probe meets a gap.
void IdentityIndex::FreeSlot(std::size_t position) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t next = (position + 1) & mask;
  for (; slots_[next].Used(); next = (next + 1) & mask) {
    const std::size_t home = slots_[next].hash & mask;
    if (((next - home) & mask) < ((next - position) & mask)) continue;
    slots_[position] = slots_[next];
    position = next;
  }
  slots_[position] = {};
  --used_;
}

std::uint32_t IdentityIndex::NewGroup() {
  if (freeGroups_.empty()) {
    groups_.emplace_back();
    return static_cast<std::uint32_t>(groups_.size());
  }
  const std::uint32_t group = freeGroups_.back();
  freeGroups_.pop_back();
  return group;
}

void IdentityIndex::AddMember(Group& group, const Member& member) {
  if (member.instance != static_cast<int>(group.members.size())) ++group.misplaced;
  group.members.push_back(member);
}

void IdentityIndex::RemoveMember(Group& group, Node node) {
  const std::size_t position = PositionOf(group.members, node);
  std::vector<Member> later(group.members.begin() + static_cast<std::ptrdiff_t>(position) + 1,
                            group.members.end());
  for (std::size_t i = position; i < group.members.size(); ++i) {
    if (group.members[i].instance != static_cast<int>(i)) --group.misplaced;
  }
  group.members.resize(position);
  for (const Member& member : later)
    AddMember(group, member);
}

void IdentityIndex::Add(Node node) {
  Add(node, KeyOf(node), InstanceOf(node));
}

void IdentityIndex::Add(Node node, const Key& key, int instance) {
  if ((used_ + 1) * 2 > slots_.size()) Grow();
  Slot& slot = slots_[Locate(key)];
  if (!slot.Used()) {
    slot = {key.hash, 0, node};
    ++used_;
    return;
  }
  if (slot.group == 0) {
    slot.group = NewGroup();
    AddMember(groups_[slot.group - 1], {slot.node, InstanceOf(slot.node)});
    slot.node = nullptr;
  }
  AddMember(groups_[slot.group - 1], {node, instance});
}

void IdentityIndex::Remove(Node node) {
  const std::size_t position = Locate(KeyOf(node));
  const Slot slot = slots_[position];
  if (slot.group == 0) {
    FreeSlot(position);
    return;
  }
  Group& group = groups_[slot.group - 1];
  RemoveMember(group, node);
  if (!group.members.empty()) return;
  freeGroups_.push_back(slot.group);
  FreeSlot(position);
}

int IdentityIndex::Count(const Key& key) const {
  if (slots_.empty()) return 0;
  const Slot& slot = slots_[Locate(key)];
  if (slot.group == 0) return slot.node == nullptr ? 0 : 1;
  return static_cast<int>(groups_[slot.group - 1].members.size());
}

IdentityIndex::Node IdentityIndex::Find(std::string_view name, std::string_view identifier,
                                        int instance) const {
  if (slots_.empty() || instance < 0) return nullptr;
  const Slot& slot = slots_[Locate(MakeKey(name, identifier))];
  if (slot.group == 0) {
    return slot.node != nullptr && InstanceOf(slot.node) == instance ? slot.node : nullptr;
  }
  const Group& group = groups_[slot.group - 1];
  if (group.misplaced == 0) {
    const auto position = static_cast<std::size_t>(instance);
    return position < group.members.size() ? group.members[position].node : nullptr;
  }
  Node found = nullptr;
  for (const Member& member : group.members) {
    if (member.instance != instance) continue;
    if (found == nullptr || IsEarlier(pugi::xml_node(member.node), pugi::xml_node(found)))
      found = member.node;
  }
  return found;
}

}  // namespace tessel
