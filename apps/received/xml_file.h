// XML files of an exchange, read strictly: well-formed, without a document type, and valid by their schema.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "received/schemas.h"

struct _xmlDoc;
struct _xmlNode;

namespace tessel::received {

// One element; valid as long as its file.
class XmlElement {
 public:
  explicit XmlElement(_xmlNode* node) : node_(node) {}
  [[nodiscard]] std::string Name() const;
  // Text and CDATA sections directly in the element, UTF-8.
  [[nodiscard]] std::string Text() const;
  // In document order.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> Attributes() const;
  [[nodiscard]] std::vector<XmlElement> Children() const;

 private:
  _xmlNode* node_;
};

class XmlFile {
 public:
  // What is wrong comes into `problems`, one text each, with line numbers.
  XmlFile(std::string_view bytes, FileKind kind, std::vector<std::string>& problems);
  // False when it is not well-formed or of another kind: there is no root then.
  [[nodiscard]] bool Readable() const { return document_ != nullptr; }
  [[nodiscard]] XmlElement Root() const;

 private:
  struct Free {
    void operator()(_xmlDoc* document) const;
  };
  std::unique_ptr<_xmlDoc, Free> document_;
};

}  // namespace tessel::received
