// The additional attributes that partners want on the elements of the structure file.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "config/services.h"
#include "host/object.h"
#include "structure/xml/xml_document.h"

namespace tessel {

// One walk over a structure document for one recipient. The mapping lines and the values of an object are
// read once a walk.
class StructureMapping {
 public:
  // The settings objects "DRAXASettings" of contact person and company; either may be nothing.
  StructureMapping(Services& services, PcSessionPtr session, XmlDocument& document,
                   PcObjectPtr contactSettings, PcObjectPtr companySettings);

  // Sets the mapped attributes on every element below the node. An error ends its level, traced, and the
  // level above goes on; nothing is raised.
  void AdditionalXMLAttributes(XmlNode node);

 private:
  // A line cut at "||"; a well-formed one has the XML name and the host attribute's name.
  using Line = std::vector<std::string>;

  void WalkLevel(XmlNode node);
  [[nodiscard]] const std::vector<Line>& Lines();
  [[nodiscard]] std::vector<Line> ReadLines(const PcObjectPtr& settings);
  void SetAttributes(XmlNode element, const std::vector<Line>& lines);
  void SetAttribute(XmlNode element, const Line& line, const std::string& value);
  [[nodiscard]] PcObjectPtr ReadObject(const ObjectKey& key);

  Services& services_;
  PcSessionPtr session_;
  XmlDocument& document_;
  PcObjectPtr contactSettings_;
  PcObjectPtr companySettings_;
  bool linesRead_ = false;
  std::vector<Line> lines_;
  std::unordered_map<ObjectKey, std::vector<std::string>> values_;  // one value a line
};

}  // namespace tessel
