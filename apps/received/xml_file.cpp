#include "received/xml_file.h"

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <limits>
#include <new>

namespace tessel::received {
namespace {

constexpr std::size_t kProblemsToldOfOneFile = 20;
constexpr int kDeepestNesting = 1000;

std::string Text(const xmlChar* text) {
  return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

std::string Told(const xmlError* error) {
  if (error == nullptr) return "no XML";
  std::string message = error->message == nullptr ? "no XML" : error->message;
  message.erase(message.find_last_not_of(" \r\n") + 1);
  return "line " + std::to_string(error->line) + ": " + message;
}

struct FreeParser {
  void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};

// A document type could define entities, with which a small file fills the memory.
void RefuseDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
  auto* parser = static_cast<xmlParserCtxt*>(context);
  *static_cast<bool*>(parser->_private) = true;
  xmlStopParser(parser);
}

bool NestsTooDeep(const xmlNode* root) {
  int depth = 0;
  const xmlNode* node = root;
  while (node != nullptr) {
    if (node->children != nullptr && node->type == XML_ELEMENT_NODE) {
      node = node->children;
      if (++depth > kDeepestNesting) return true;
      continue;
    }
    while (node != root && node->next == nullptr) {
      node = node->parent;
      --depth;
    }
    node = node == root ? nullptr : node->next;
  }
  return false;
}

xmlDoc* Parse(std::string_view bytes, std::vector<std::string>& problems) {
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    problems.emplace_back("it is larger than 2 GB");
    return nullptr;
  }
  const std::unique_ptr<xmlParserCtxt, FreeParser> parser(xmlNewParserCtxt());
  if (!parser) throw std::bad_alloc();
  bool documentType = false;
  parser->_private = &documentType;
  parser->sax->internalSubset = RefuseDocumentType;
  // Huge: the structure file of a large assembly exceeds the limits meant for strangers' files.
  constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
  xmlDoc* document = xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                       nullptr, kOptions);
  if (documentType) {
    problems.emplace_back("it has a document type");
  } else if (document == nullptr) {
    problems.push_back("it is no well-formed XML: " + Told(xmlCtxtGetLastError(parser.get())));
  } else if (NestsTooDeep(xmlDocGetRootElement(document))) {
    problems.emplace_back("its elements are nested too deep");
  } else {
    return document;
  }
  xmlFreeDoc(document);
  return nullptr;
}

struct FreeSchemaParser {
  void operator()(xmlSchemaParserCtxt* parser) const { xmlSchemaFreeParserCtxt(parser); }
};
struct FreeSchema {
  void operator()(xmlSchema* schema) const { xmlSchemaFree(schema); }
};
struct FreeValidation {
  void operator()(xmlSchemaValidCtxt* validation) const { xmlSchemaFreeValidCtxt(validation); }
};

void Validate(xmlDoc* document, FileKind kind, std::vector<std::string>& problems) {
  const std::string_view text = SchemaText(kind);
  const std::unique_ptr<xmlSchemaParserCtxt, FreeSchemaParser> parser(
      xmlSchemaNewMemParserCtxt(text.data(), static_cast<int>(text.size())));
  const std::unique_ptr<xmlSchema, FreeSchema> schema(xmlSchemaParse(parser.get()));
  const std::unique_ptr<xmlSchemaValidCtxt, FreeValidation> validation(xmlSchemaNewValidCtxt(schema.get()));
  std::vector<std::string> found;
  xmlSchemaSetValidStructuredErrors(
      validation.get(),
      [](void* told, auto* error) {
        auto& texts = *static_cast<std::vector<std::string>*>(told);
        if (texts.size() < kProblemsToldOfOneFile) texts.push_back(Told(error));
      },
      &found);
  const int result = xmlSchemaValidateDoc(validation.get(), document);
  if (result != 0 && found.empty()) found.emplace_back("it cannot be checked by its schema");
  problems.insert(problems.end(), found.begin(), found.end());
}

}  // namespace

std::string XmlElement::Name() const {
  return received::Text(node_->name);
}

std::string XmlElement::Text() const {
  std::string text;
  for (const xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
      text += received::Text(child->content);
    }
  }
  return text;
}

std::vector<std::pair<std::string, std::string>> XmlElement::Attributes() const {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (const xmlAttr* attribute = node_->properties; attribute != nullptr; attribute = attribute->next) {
    xmlChar* value = xmlNodeListGetString(node_->doc, attribute->children, 1);
    attributes.emplace_back(received::Text(attribute->name), received::Text(value));
    xmlFree(value);
  }
  return attributes;
}

std::vector<XmlElement> XmlElement::Children() const {
  std::vector<XmlElement> children;
  for (xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) children.emplace_back(child);
  }
  return children;
}

XmlFile::XmlFile(std::string_view bytes, FileKind kind, std::vector<std::string>& problems)
    : document_(Parse(bytes, problems)) {
  if (!document_) return;
  Validate(document_.get(), kind, problems);
  if (Root().Name() != RootName(kind)) document_.reset();
}

XmlElement XmlFile::Root() const {
  return XmlElement(xmlDocGetRootElement(document_.get()));
}

void XmlFile::Free::operator()(_xmlDoc* document) const {
  xmlFreeDoc(document);
}

}  // namespace tessel::received
