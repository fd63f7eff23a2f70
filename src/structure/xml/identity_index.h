// The identified elements of a document by tag name and attribute "Identifier", for numbering instances and
// finding nodes without a walk. It stores no text: keys are read from the elements themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace pugi {
struct xml_node_struct;
}

namespace tessel {

class IdentityIndex {
 public:
  using Node = pugi::xml_node_struct*;

  struct Key {
    std::string_view name;
    std::string_view identifier;
    std::uint32_t hash = 0;
  };
  [[nodiscard]] static Key MakeKey(std::string_view name, std::string_view identifier);

  // An element that has the attribute "Identifier". It must leave the index before its name or one of its
  // identifying attributes changes.
  void Add(Node node);
  // The same for an element whose key and instance number the caller knows.
  void Add(Node node, const Key& key, int instance);
  void Remove(Node node);

  [[nodiscard]] int Count(const Key& key) const;
  // First in document order of the elements whose "Instance" is the number; null when there is none. Constant
  // time while the instances of an identifier were numbered from 0 in the order of their adding.
  [[nodiscard]] Node Find(std::string_view name, std::string_view identifier, int instance) const;

 private:
  // Open addressing. A slot holds the only element of its key, or the group of all of them.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t group = 0;  // position in groups_ plus 1; 0 none
    Node node = nullptr;
    [[nodiscard]] bool Used() const { return node != nullptr || group != 0; }
  };
  struct Member {
    Node node = nullptr;
    int instance = 0;
  };
  struct Group {
    std::vector<Member> members;
    std::size_t misplaced = 0;  // members whose instance is not their position
  };
  [[nodiscard]] static Key KeyOf(Node node);
  [[nodiscard]] static int InstanceOf(Node node);
  [[nodiscard]] bool Holds(const Slot& slot, const Key& key) const;
  // Position of the key's slot, or of the free slot where it belongs. Only with a table.
  [[nodiscard]] std::size_t Locate(const Key& key) const;
  void Grow();
  void FreeSlot(std::size_t position);
  std::uint32_t NewGroup();
  static void AddMember(Group& group, const Member& member);
  static void RemoveMember(Group& group, Node node);

  std::vector<Slot> slots_;  // a power of two, or empty
  std::size_t used_ = 0;
  std::vector<Group> groups_;
  std::vector<std::uint32_t> freeGroups_;
};

}  // namespace tessel
