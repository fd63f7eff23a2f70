// An XML document in memory, written in any encoding. Names and values are UTF-8.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace tessel {

enum class XmlNodeType { kElement = 1, kText = 3, kCData = 4, kProcessingInstruction = 7, kDocument = 9 };

// What a handle leads to; known to the sources of this folder alone.
struct XmlNodeRecord;

// A handle to a node; cheap to copy, valid as long as its document. An empty one stands for nothing.
class XmlNode {
 public:
  XmlNode() = default;
  explicit operator bool() const { return node_ != nullptr; }
  friend bool operator==(const XmlNode&, const XmlNode&) = default;

  [[nodiscard]] XmlNodeType Type() const;
  // Element or target name; "#text" and "#cdata-section" for the others.
  [[nodiscard]] std::string Name() const;
  // Text below an element, its CDATA sections included; the content of the others.
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] XmlNode Parent() const;
  [[nodiscard]] XmlNode FirstChild() const;
  [[nodiscard]] XmlNode NextSibling() const;
  [[nodiscard]] bool HasAttribute(std::string_view name) const;
  // Empty when there is none.
  [[nodiscard]] std::string Attribute(std::string_view name) const;
  // Name and value in document order.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> Attributes() const;

 private:
  friend class XmlDocument;
  explicit XmlNode(XmlNodeRecord* node) : node_(node) {}
  XmlNodeRecord* node_ = nullptr;
};

class XmlDocument {
 public:
  XmlDocument();
  ~XmlDocument();
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;

  // The document node, parent of the root element.
  [[nodiscard]] XmlNode Root() const;
  // A detached element. Error: RuntimeError whose description holds "-->" and the offending character when
  // the name is no XML 1.0 (fourth edition) name; an empty name is refused too.
  [[nodiscard]] XmlNode NewElement(std::string_view name);
  // The same as the last child of a parent; cheaper, and as fast at any depth.
  XmlNode AppendElement(XmlNode parent, std::string_view name);
  // Moves a node below a parent. Error 5 below itself, for a second top element, and for a parent that is no
  // element.
  void Append(XmlNode parent, XmlNode child);
  // Before all else. A new declaration (target "xml") takes the place of the old.
  void InsertProcessingInstruction(std::string_view target, std::string_view data);
  void SetText(XmlNode element, std::string_view text);  // replaces the element's content
  void AppendCData(XmlNode element, std::string_view text);
  // Adds or replaces an attribute. Error as NewElement for a name that XML does not accept.
  void SetAttribute(XmlNode element, std::string_view name, std::string_view value);
  // Sets "Identifier", and "Instance" to the number of elements of `name` in the document that already have
  // the identifier; returns that number.
  int SetIdentity(XmlNode element, std::string_view name, std::string_view identifier);
  // Detaches a node with all that it holds.
  void Remove(XmlNode node);

  // Elements of the document with a tag name in document order; detached ones are not among them.
  [[nodiscard]] std::vector<XmlNode> ElementsByTagName(std::string_view name) const;

  // Look-ups, true under every change: elements of a name whose attribute "Identifier" has a value, and the
  // first of them whose "Instance" has a number. In constant time while instances are numbered in the order
  // in which they join the document.
  [[nodiscard]] int CountIdentified(std::string_view name, std::string_view identifier) const;
  [[nodiscard]] XmlNode FindIdentified(std::string_view name, std::string_view identifier,
                                       int instance) const;

  // Writes the document in the encoding of its declaration (UTF-8 without one): no white space added, what
  // the encoding lacks as numeric references. `replaced` counts characters that XML does not allow and that
  // were written as U+FFFD or "?". Errors: 5 for an encoding that is unknown or cannot hold XML, and those of
  // the file system; an existing file is replaced as one step.
  void Save(FileSystem& files, const TextEncodings& encodings, const std::string& path, int& replaced) const;

 private:
  struct Content;
  std::unique_ptr<Content> content_;
};
using XmlDocumentPtr = std::shared_ptr<XmlDocument>;

}  // namespace tessel
