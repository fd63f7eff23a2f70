#include "dispatch/structure_mapping.h"

#include <algorithm>

#include "messages/guard.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

constexpr const char* kSection = "Mapping_XML_StructureFile";

// To a reader that knows namespaces a colon makes a prefix, which nobody declares, and "xmlns" the namespace
// of all that is below.
std::string WithoutNamespace(std::string name) {
  std::replace(name.begin(), name.end(), ':', '_');
  return name == "xmlns" ? "_xmlns" : name;
}

}  // namespace

StructureMapping::StructureMapping(Services& services, PcSessionPtr session, XmlDocument& document,
                                   PcObjectPtr contactSettings, PcObjectPtr companySettings)
    : services_(services),
      session_(std::move(session)),
      document_(document),
      contactSettings_(std::move(contactSettings)),
      companySettings_(std::move(companySettings)) {}

void StructureMapping::AdditionalXMLAttributes(XmlNode node) {
  GuardedRun(services_.trace,
             "Error while creating the XML structure file (AdditionalXMLAttributes/Tessel_4)",
             [&] { WalkLevel(node); });
}

void StructureMapping::WalkLevel(XmlNode node) {
  for (XmlNode child = node.FirstChild(); child; child = child.NextSibling()) {
    if (child.Type() != XmlNodeType::kElement) continue;
    const std::vector<Line>& lines = Lines();
    if (lines.empty()) return;  // the elements below have none either
    SetAttributes(child, lines);
    if (child.FirstChild()) AdditionalXMLAttributes(child);
  }
}

const std::vector<StructureMapping::Line>& StructureMapping::Lines() {
  if (linesRead_) return lines_;
  lines_ = ReadLines(contactSettings_);
  if (lines_.empty()) lines_ = ReadLines(companySettings_);
  linesRead_ = true;
  return lines_;
}

std::vector<StructureMapping::Line> StructureMapping::ReadLines(const PcObjectPtr& settings) {
  std::vector<Line> lines;
  if (!settings) return lines;
  const auto reader = Required(services_.declarations.pciniAdminTool, "configuration reader");
  for (const std::string& line : reader->SectionLines(session_, kSection, {.object = settings})) {
    lines.push_back(SplitText(line, "||"));
    lines.back().front() = WithoutNamespace(lines.back().front());
  }
  return lines;
}

void StructureMapping::SetAttributes(XmlNode element, const std::vector<Line>& lines) {
  const ObjectKey key = ParseObjectKey(element.Attribute("Identifier"), '_');
  const auto known = values_.find(key);
  if (known != values_.end()) {
    for (std::size_t i = 0; i < lines.size(); ++i)
      SetAttribute(element, lines[i], known->second[i]);
    return;
  }
  const PcObjectPtr object = ReadObject(key);
  std::vector<std::string> values;
  for (const Line& line : lines) {
    if (line.size() < 2) {
      throw RuntimeError(error_number::kSubscriptOutOfRange,
                         "Subscript out of range: mapping line \"" + line.front() + "\" has no \"||\"");
    }
    values.push_back(object->GetText(line[1]));
    SetAttribute(element, line, values.back());
  }
  values_.emplace(key, std::move(values));
}

void StructureMapping::SetAttribute(XmlNode element, const Line& line, const std::string& value) {
  XML::CreateAttribute(document_, line[0], element, value);
  services_.trace.Write("Set additional XML attribute (AdditionalXMLAttributes/Tessel_5): " + line[0] +
                        " ; " + line[1] + " ; " + value);
}

PcObjectPtr StructureMapping::ReadObject(const ObjectKey& key) {
  const auto store = Required(session_->ObjectStore(), "object store");
  auto object = store->Object(key);
  if (!object) ThrowObjectNotSet("object " + ObjectKeyText(key, '_') + " of the structure file");
  object->ReadData();
  return object;
}

}  // namespace tessel
