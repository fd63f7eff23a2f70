#include "received/exchange.h"

#include <algorithm>

#include "exchange/exchange.h"
#include "host/ascii.h"
#include "host/error.h"
#include "host/value.h"
#include "received/xml_file.h"

namespace tessel::received {
namespace {

// In both files the root element stands within the first bytes.
constexpr std::size_t kBeginning = 512;

bool EndsWithXml(const std::string& name) {
  constexpr std::string_view kExtension = ".xml";
  return name.size() >= kExtension.size() &&
         EqualsIgnoringCase(std::string_view(name).substr(name.size() - kExtension.size()), kExtension);
}

bool BeginsWithRoot(const FileSource& source, const std::string& name, FileKind kind) {
  const std::string root = "<" + std::string(RootName(kind));
  try {
    return source.ReadBeginning(name, kBeginning).find(root) != std::string::npos;
  } catch (const ReadError&) {
    return false;  // told when the file itself is looked at
  }
}

// The names are settings of the sender: the file is known by its root element. Files of the usual extension
// are looked at first, the others when none of them is it.
std::string FindByRoot(const FileSource& source, FileKind kind) {
  for (const bool usual : {true, false}) {
    for (const Entry& entry : source.Entries()) {
      if (entry.kind == Entry::Kind::kFile && EndsWithXml(entry.name) == usual &&
          BeginsWithRoot(source, entry.name, kind)) {
        return entry.name;
      }
    }
  }
  return {};
}

class Reader {
 public:
  Reader(const FileSource& source, std::vector<Problem>& problems) : source_(source), problems_(problems) {}

  Exchange Read() {
    ReadData();
    ReadStructure();
    exchange_.neutralFormats = source_.Has(kNeutralFormatsFile);
    if (exchange_.neutralFormats) {
      With(kNeutralFormatsFile, FileKind::kNeutralFormats,
           [this](const XmlElement& root) { exchange_.formats = Texts(root); });
    }
    return std::move(exchange_);
  }

 private:
  template <class Use>
  void With(const std::string& name, FileKind kind, Use use) {
    std::vector<std::string> texts;
    try {
      const XmlFile file(source_.ReadAll(name), kind, texts);
      if (file.Readable()) use(file.Root());
    } catch (const ReadError& error) {
      texts.emplace_back(error.what());
    }
    for (const std::string& text : texts)
      problems_.push_back({name, text});
  }

  static NamedTexts Texts(const XmlElement& root) {
    NamedTexts texts;
    for (const XmlElement& element : root.Children())
      texts.emplace_back(element.Name(), element.Text());
    return texts;
  }

  void ReadData() {
    exchange_.dataFile = FindByRoot(source_, FileKind::kData);
    // The package that a supplier gets holds none: it is the sender's.
    if (exchange_.dataFile.empty() && source_.HasCheckSums()) return;
    if (exchange_.dataFile.empty()) {
      problems_.push_back({"", "there is no data file (root element DataEx_Datas)"});
      return;
    }
    With(exchange_.dataFile, FileKind::kData,
         [this](const XmlElement& root) { exchange_.data = Texts(root); });
  }

  void ReadStructure() {
    std::string name = TextOf(exchange_.data, "StructureFileName");
    if (name.empty()) name = FindByRoot(source_, FileKind::kStructure);
    if (!source_.Has(name)) {
      problems_.push_back({name, name.empty() ? "there is no structure file (root element DataEx_Structure)"
                                              : "the structure file is missing"});
      return;
    }
    exchange_.structureFile = name;
    With(name, FileKind::kStructure, [this](const XmlElement& root) { ReadStructure(root); });
  }

  void ReadStructure(const XmlElement& root) {
    const NamedTexts attributes = root.Attributes();
    exchange_.created = TextOf(attributes, "Creation_Date");
    exchange_.createdBy = TextOf(attributes, "Created_by");
    for (const XmlElement& part : root.Children()) {
      if (part.Name() == "Content_List") exchange_.selected = ObjectsBelow(part);
      if (part.Name() == "Hierarchical_Structure") {
        exchange_.structured = true;
        exchange_.hierarchy = ObjectsBelow(part);
      }
      if (part.Name() == "Dependency_List") ReadDependencies(part);
    }
  }

  // As deep as the file is nested, which has a limit.
  static std::vector<Object> ObjectsBelow(const XmlElement& parent) {
    std::vector<Object> objects;
    for (const XmlElement& element : parent.Children()) {
      Object object = ObjectOf(element);
      object.below = ObjectsBelow(element);
      objects.push_back(std::move(object));
    }
    return objects;
  }

  static Object ObjectOf(const XmlElement& element) {
    Object object;
    object.value = element.Text();
    for (auto& [name, value] : element.Attributes()) {
      if (name == "Identifier") {
        object.identifier = value;
      } else if (name == "Instance") {
        object.instance = value;
      } else {
        object.attributes.emplace_back(name, value);
      }
    }
    return object;
  }

  void ReadDependencies(const XmlElement& list) {
    for (const XmlElement& element : list.Children()) {
      Object first = ObjectOf(element);
      Dependency dependency;
      dependency.linkName = TextOf(first.attributes, "LINK_NAME");
      dependency.direction = TextOf(first.attributes, "LINK_DIRECTION");
      const std::vector<XmlElement> ends = element.Children();
      if (!ends.empty()) dependency.second = ObjectOf(ends.front());
      dependency.first = std::move(first);
      exchange_.dependencies.push_back(std::move(dependency));
    }
  }

  const FileSource& source_;
  std::vector<Problem>& problems_;
  Exchange exchange_;
};

}  // namespace

std::string TextOf(const NamedTexts& texts, std::string_view name) {
  const auto found = std::ranges::find(texts, name, &NamedTexts::value_type::first);
  return found == texts.end() ? std::string() : found->second;
}

ObjectKey Exchange::Record() const {
  try {
    return {ParseInt16(TextOf(data, "DataExchangeClassID")), ParseInt32(TextOf(data, "DataExchangeObjID"))};
  } catch (const RuntimeError&) {
    return {};
  }
}

Exchange ReadExchange(const FileSource& source, std::vector<Problem>& problems) {
  return Reader(source, problems).Read();
}

}  // namespace tessel::received
