#include "structure/xml/xml_name_pool.h"

#include "host/error.h"
#include "structure/xml/xml_names.h"

namespace tessel {
namespace {

constexpr std::size_t kMostNames = 1000;

}  // namespace

void XmlNamePool::Check(std::string_view name) {
  constexpr const char* kRefused = "Invalid procedure call: an XML name may not ";
  if (name.empty()) throw RuntimeError(error_number::kInvalidCall, std::string(kRefused) + "be empty");
  const std::string_view offence = FindNameOffence(name);
  if (offence.empty()) return;
  // Where the arrow points is part of the message that traces show.
  throw RuntimeError(error_number::kInvalidCall,
                     std::string(kRefused) + "contain the character -->" + std::string(offence) + "<-- here");
}

std::size_t XmlNamePool::Hash(std::string_view name) {
  if (name.empty()) return 0;
  const auto at = [name](std::size_t position) { return static_cast<unsigned char>(name[position]); };
  return name.size() + 31U * at(0) + 8191U * at(name.size() / 2) + 524287U * at(name.size() - 1);
}

const XmlNamePool::Entry& XmlNamePool::Accepted(std::string_view name) {
  const Entry*& recent = recent_[Hash(name) % recent_.size()];
  if (recent != nullptr && recent->name == name) return *recent;
  if (const auto known = entries_.find(name); known != entries_.end()) return *(recent = &known->second);
  Check(name);
  if (entries_.size() >= kMostNames) {
    unshared_.name = name;
    return unshared_;
  }
  Entry& entry = entries_[std::string(name)];
  entry.name = name;
  MakePattern(entry);
  return *(recent = &entry);
}

// A parsed name lies in the text that was parsed, and copies within its tree point to the same place.
void XmlNamePool::MakePattern(Entry& entry) {
  const std::string text = "<" + entry.name + " " + entry.name + "=\"\"/>";
  if (!patterns_.append_buffer(text.data(), text.size(), pugi::parse_minimal, pugi::encoding_utf8)) return;
  const pugi::xml_node element = patterns_.last_child();
  entry.attribute = element.first_attribute();
  entry.element = patterns_.append_copy(element);
  entry.element.remove_attributes();
}

pugi::xml_node XmlNamePool::AppendElement(pugi::xml_node parent, std::string_view name) {
  const Entry& entry = Accepted(name);
  if (entry.element) return parent.append_copy(entry.element);
  pugi::xml_node element = parent.append_child(pugi::node_element);
  return element && element.set_name(entry.name.c_str()) ? element : pugi::xml_node();
}

pugi::xml_attribute XmlNamePool::AppendAttribute(pugi::xml_node element, std::string_view name) {
  const Entry& entry = Accepted(name);
  return entry.attribute ? element.append_copy(entry.attribute)
                         : element.append_attribute(entry.name.c_str());
}

}  // namespace tessel
