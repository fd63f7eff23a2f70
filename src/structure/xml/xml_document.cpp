#include "structure/xml/xml_document.h"

#include <algorithm>
#include <pugixml.hpp>

#include "host/error.h"
#include "structure/xml/identity_index.h"
#include "structure/xml/xml_encoding.h"
#include "structure/xml/xml_name_pool.h"
#include "structure/xml/xml_tree.h"
#include "structure/xml/xml_writer.h"

namespace tessel {

using namespace xml_tree;

namespace {

constexpr std::string_view kIdentifier = "Identifier";
constexpr std::string_view kInstance = "Instance";
constexpr std::string_view kDeclaration = "xml";

[[noreturn]] void Refuse(const std::string& description) {
  throw RuntimeError(error_number::kInvalidCall, "Invalid procedure call: " + description);
}

// The tree ends a text at NUL, so NUL is kept as another character that XML does not allow.
class TreeText {
 public:
  explicit TreeText(std::string_view text) : text_(text) {
    if (text.find('\0') == std::string_view::npos) return;
    copy_ = text;
    for (char& character : copy_) {
      if (character == '\0') character = '\1';
    }
    text_ = copy_;
  }
  [[nodiscard]] std::string_view Get() const { return text_; }

 private:
  std::string_view text_;
  std::string copy_;
};

pugi::xml_node AddChild(pugi::xml_node parent, pugi::xml_node_type type) {
  const pugi::xml_node child = parent.append_child(type);
  if (!child) throw RuntimeError(error_number::kOutOfMemory, "Out of memory: XML node");
  return child;
}

template <class Item>
void SetTreeValue(Item item, std::string_view text) {
  const TreeText kept(text);
  if (!item.set_value(kept.Get().data(), kept.Get().size())) {
    throw RuntimeError(error_number::kOutOfMemory, "Out of memory: XML text");
  }
}

// Value of a pseudo-attribute of the declaration; empty when it has none.
std::string PseudoAttribute(std::string_view data, std::string_view name) {
  std::size_t start = data.find(name);
  if (start == std::string_view::npos) return {};
  start = data.find_first_of("\"'", start);
  if (start == std::string_view::npos) return {};
  const std::size_t end = data.find(data[start], start + 1);
  return std::string(data.substr(start + 1, end == std::string_view::npos ? end : end - start - 1));
}

bool IsUtf16(std::string_view encoding) {
  constexpr std::string_view kUtf16 = "utf-16";
  if (encoding.size() != kUtf16.size()) return false;
  for (std::size_t i = 0; i < kUtf16.size(); ++i) {
    if ((encoding[i] | 0x20) != (kUtf16[i] | 0x20)) return false;
  }
  return true;
}

}  // namespace

struct XmlDocument::Content {
  pugi::xml_document tree;
  pugi::xml_node document = tree.append_child(pugi::node_element);
  pugi::xml_node detached = tree.append_child(pugi::node_element);
  XmlNamePool names{tree};
  IdentityIndex index;
  // Hashes of the attribute names of the element whose attributes are being set, so that setting one more
  // does not walk all of them.
  const XmlNodeRecord* named = nullptr;
  std::vector<std::size_t> attributeNames;

  static XmlNode Handle(const pugi::xml_node& node) { return XmlNode(RecordOf(node)); }

  [[nodiscard]] bool IsAttached(pugi::xml_node node) const {
    if (!detached.first_child()) return true;
    while (node && node != document && node != detached)
      node = node.parent();
    return node == document;
  }

  pugi::xml_node AddElement(pugi::xml_node parent, std::string_view name) {
    const pugi::xml_node element = names.AppendElement(parent, name);
    if (!element) throw RuntimeError(error_number::kOutOfMemory, "Out of memory: XML node");
    return element;
  }

  void SelectNamed(XmlNodeRecord* node) {
    const pugi::xml_node element = Follow(node);
    if (element.type() != pugi::node_element || IsTopNode(element)) Refuse("only an element has attributes");
    named = node;
    attributeNames.clear();
    for (const pugi::xml_attribute& attribute : element.attributes()) {
      attributeNames.push_back(XmlNamePool::Hash(attribute.name()));
    }
  }

  // Adds or replaces an attribute, without a look at the index.
  void PutAttribute(XmlNodeRecord* node, std::string_view attributeName, std::string_view value) {
    if (node == nullptr || node != named) SelectNamed(node);
    pugi::xml_node element = Follow(node);
    const std::size_t hash = XmlNamePool::Hash(attributeName);
    if (std::find(attributeNames.begin(), attributeNames.end(), hash) != attributeNames.end()) {
      if (const pugi::xml_attribute present = FindAttribute(element, attributeName)) {
        SetTreeValue(present, value);
        return;
      }
    }
    SetTreeValue(names.AppendAttribute(element, attributeName), value);
    attributeNames.push_back(hash);
  }

  // Adds or removes the identified elements of a subtree.
  void Reindex(const pugi::xml_node& top, bool add) {
    for (pugi::xml_node node = top; node; node = NextBelow(node, top)) {
      if (!FindAttribute(node, kIdentifier)) continue;
      if (add) {
        index.Add(node.internal_object());
      } else {
        index.Remove(node.internal_object());
      }
    }
  }

  [[nodiscard]] pugi::xml_node Declaration() const {
    return document.find_child([](const pugi::xml_node& child) {
      return child.type() == pugi::node_pi && kDeclaration == child.name();
    });
  }

  void Detach(const pugi::xml_node& node) {
    if (IsAttached(node)) Reindex(node, false);
    detached.append_move(node);
  }

  void CheckParent(const pugi::xml_node& parent, pugi::xml_node_type childType) const {
    if (parent.type() != pugi::node_element) Refuse("only an element has children");
    if (parent != document) return;
    if (childType != pugi::node_element) Refuse("text needs an element around it");
    for (const pugi::xml_node& child : document.children()) {
      if (child.type() == pugi::node_element) Refuse("an XML document has one top element only");
    }
  }
};

XmlDocument::XmlDocument() : content_(std::make_unique<Content>()) {}
XmlDocument::~XmlDocument() = default;

XmlNode XmlDocument::Root() const {
  return Content::Handle(content_->document);
}

XmlNode XmlDocument::NewElement(std::string_view name) {
  return Content::Handle(content_->AddElement(content_->detached, name));
}

XmlNode XmlDocument::AppendElement(XmlNode parent, std::string_view name) {
  const pugi::xml_node above = Follow(parent.node_);
  content_->CheckParent(above, pugi::node_element);
  return Content::Handle(content_->AddElement(above, name));
}

void XmlDocument::Append(XmlNode parent, XmlNode child) {
  pugi::xml_node above = Follow(parent.node_);
  const pugi::xml_node node = Follow(child.node_);
  if (IsTopNode(node)) Refuse("a document has no parent");
  content_->CheckParent(above, node.type());
  for (pugi::xml_node ancestor = above; ancestor; ancestor = ancestor.parent()) {
    if (ancestor == node) Refuse("a node cannot stand below itself");
  }
  if (content_->IsAttached(node)) content_->Reindex(node, false);
  above.append_move(node);
  if (content_->IsAttached(node)) content_->Reindex(node, true);
}

void XmlDocument::InsertProcessingInstruction(std::string_view target, std::string_view data) {
  XmlNamePool::Check(target);
  pugi::xml_node instruction = target == kDeclaration ? content_->Declaration() : pugi::xml_node();
  if (instruction) {
    content_->document.prepend_move(instruction);
  } else {
    instruction = content_->document.prepend_child(pugi::node_pi);
    instruction.set_name(std::string(target).c_str());
  }
  SetTreeValue(instruction, data);
}

void XmlDocument::SetText(XmlNode element, std::string_view text) {
  const pugi::xml_node node = Follow(element.node_);
  content_->CheckParent(node, pugi::node_pcdata);
  while (const pugi::xml_node child = node.first_child())
    content_->Detach(child);
  if (!text.empty()) SetTreeValue(AddChild(node, pugi::node_pcdata), text);
}

void XmlDocument::AppendCData(XmlNode element, std::string_view text) {
  const pugi::xml_node node = Follow(element.node_);
  content_->CheckParent(node, pugi::node_cdata);
  SetTreeValue(AddChild(node, pugi::node_cdata), text);
}

void XmlDocument::SetAttribute(XmlNode element, std::string_view name, std::string_view value) {
  const bool identifying = name == kIdentifier || name == kInstance;
  if (!identifying || !content_->IsAttached(Follow(element.node_))) {
    content_->PutAttribute(element.node_, name, value);
    return;
  }
  const pugi::xml_node node = Follow(element.node_);
  if (FindAttribute(node, kIdentifier)) content_->index.Remove(node.internal_object());
  content_->PutAttribute(element.node_, name, value);
  if (FindAttribute(node, kIdentifier)) content_->index.Add(node.internal_object());
}

int XmlDocument::SetIdentity(XmlNode element, std::string_view name, std::string_view identifier) {
  const pugi::xml_node node = Follow(element.node_);
  const bool indexed = content_->IsAttached(node);
  if (indexed && FindAttribute(node, kIdentifier)) content_->index.Remove(node.internal_object());
  const IdentityIndex::Key key = IdentityIndex::MakeKey(name, identifier);
  const int instance = content_->index.Count(key);
  content_->PutAttribute(element.node_, kIdentifier, identifier);
  content_->PutAttribute(element.node_, kInstance, std::to_string(instance));
  if (!indexed) return instance;
  if (name != node.name() || identifier.find('\0') != std::string_view::npos) {
    content_->index.Add(node.internal_object());
  } else {
    content_->index.Add(node.internal_object(), key, instance);
  }
  return instance;
}

void XmlDocument::Remove(XmlNode node) {
  const pugi::xml_node removed = Follow(node.node_);
  if (IsTopNode(removed)) Refuse("a document cannot be removed");
  content_->Detach(removed);
}

std::vector<XmlNode> XmlDocument::ElementsByTagName(std::string_view name) const {
  std::vector<XmlNode> elements;
  const pugi::xml_node top = content_->document;
  for (pugi::xml_node node = NextBelow(top, top); node; node = NextBelow(node, top)) {
    if (node.type() == pugi::node_element && name == node.name()) elements.push_back(Content::Handle(node));
  }
  return elements;
}

int XmlDocument::CountIdentified(std::string_view name, std::string_view identifier) const {
  return content_->index.Count(IdentityIndex::MakeKey(name, identifier));
}

XmlNode XmlDocument::FindIdentified(std::string_view name, std::string_view identifier, int instance) const {
  return Content::Handle(pugi::xml_node(content_->index.Find(name, identifier, instance)));
}

void XmlDocument::Save(FileSystem& files, const TextEncodings& encodings, const std::string& path,
                       int& replaced) const {
  const std::string_view declaration = content_->Declaration().value();
  const bool declares = declaration.find("encoding") != std::string_view::npos;
  const std::string name = declares ? PseudoAttribute(declaration, "encoding") : "UTF-8";
  const std::shared_ptr<const TextEncoding> encoding = encodings.Open(name);
  CheckXmlEncoding(encodings, *encoding, name);
  files.WriteStream(path, [&](const FileSystem::ByteSink& sink) {
    XmlWriter writer(*encoding, sink);
    if (IsUtf16(name)) writer.WriteByteOrderMark();
    writer.WriteContent(content_->document);
    writer.Finish();
    replaced = writer.Replaced();
  });
}

}  // namespace tessel
