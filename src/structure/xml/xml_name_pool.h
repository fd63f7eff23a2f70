// The names of a document's elements and attributes. A structure file has few different ones, and each of
// them thousands of times: it is kept once, and shared by all nodes that bear it.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace tessel {

class XmlNamePool {
 public:
  // The tree outlives the pool. What the pool keeps lies in a top node of its own.
  explicit XmlNamePool(pugi::xml_document& tree) : patterns_(tree.append_child(pugi::node_element)) {}

  // Error 5 for a text that is no XML name.
  static void Check(std::string_view name);
  // Quick, and good enough to tell the names of one element apart.
  [[nodiscard]] static std::size_t Hash(std::string_view name);

  // A new last child, or a new last attribute without value; empty when the memory does not suffice. Errors
  // as Check.
  [[nodiscard]] pugi::xml_node AppendElement(pugi::xml_node parent, std::string_view name);
  [[nodiscard]] pugi::xml_attribute AppendAttribute(pugi::xml_node element, std::string_view name);

 private:
  // An element of the name with an attribute of the name; a copy of either shares the text. Without one the
  // name is not shared.
  struct Entry {
    std::string name;
    pugi::xml_node element;
    pugi::xml_attribute attribute;
  };
  const Entry& Accepted(std::string_view name);
  void MakePattern(Entry& entry);

  pugi::xml_node patterns_;
  std::map<std::string, Entry, std::less<>> entries_;
  std::array<const Entry*, 64> recent_{};  // by hash
  Entry unshared_;                         // of a name beyond those that are kept
};

}  // namespace tessel
