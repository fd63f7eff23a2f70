// Cost of building and saving a structure file, beside the same tree built and saved with bare pugixml in the
// same run. Each document of the selection has three nested ones, a chain of three links and its own copy.
//
// Usage: bench_structure [--check] [DOCUMENTS...]
// Times are microseconds of processor time a selected document. "work" is the document work alone: the tree
// of the whole build, made again in the same order through the XML modules, without host and trace, and
// saved. "build" is the whole CreateStructure of every document, and "host" the part of it that the fake host
// takes for the same reads.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "structure/structure_world.h"
#include "structure/xml/dx_xml.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

constexpr ClassId kDocumentClass = 1201;
constexpr ClassId kLinkClass = 500;
constexpr int kNested = 3;
constexpr int kContentNodes = 1 + kNested;  // a selected document

// Objects 1, 2, 3, ...; each selected one is followed by its nested ones.
class NumberedDocuments : public test::ObjectSource {
 public:
  [[nodiscard]] bool Has(const ObjectKey& key) const override { return key.objectId > 0; }
  [[nodiscard]] Value Get(const ObjectKey& key, std::string_view name) const override {
    if (name == "VRK_DESCRIPTION") return "Bearbeitetes Geh\u00E4use " + std::to_string(key.objectId);
    if (name == "VRK_ID") return "DOC-" + std::to_string(key.objectId);
    if (name == "CAD_REF_FILE_NAME") return "document_" + std::to_string(key.objectId) + ".model";
    if (name == "VRKX_DX_FIRST_LOCK_USE") return false;
    return name == "STATE" ? "Released" : "A";
  }
  void Set(const ObjectKey&, std::string_view, const Value&) override {}
};

// Processor time, so that neither other programs nor the flush to disk count.
double Microseconds(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
  };
  const double start = now();
  work();
  return now() - start;
}

std::size_t UsedMemory() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

ObjectId RootId(int document) {
  return 1 + document * kContentNodes;
}
std::string Tag(int document) {
  return ObjectKeyText({kDocumentClass, RootId(document)}, '_');
}

// The whole build on the fake host.
class Build {
 public:
  explicit Build(int documents) : documents_(documents) {
    world_.trace.trace = Trace(nullptr);
    auto& metaData = *world_.session->metaData;
    metaData.mechanisms = {"VRK_DRAXA_DOCUMENT", "VRK_DRAXA_PART"};
    for (const auto& [id, name] : {std::pair{kDocumentClass, "Document"}, std::pair{kLinkClass, "Uses"}}) {
      metaData.classes[id] =
          std::make_shared<test::FakeClass>(id, name, kLinkClass, std::vector<std::string>{"VRK_DRAXA_PART"});
    }
    CommonXFunctions::StartStructureDocument(world_.services, world_.state);
    for (int document = 0; document < documents_; ++document) {
      const auto object = world_.session->ObjectStore()->Object({kDocumentClass, RootId(document)});
      CommonXFunctions::AddSelectedObject(world_.services, world_.state, *object);
    }
  }

  void Run() {
    for (int document = 0; document < documents_; ++document) {
      std::vector<test::StructureWorld::File> files;
      std::vector<CopiedLink> links;
      for (ObjectId id = RootId(document); id < RootId(document + 1); ++id) {
        files.push_back({{kDocumentClass, id}});
        if (id > RootId(document)) {
          links.push_back({kLinkClass, {kDocumentClass, id - 1}, {kDocumentClass, id}, 1});
        }
      }
      world_.SetCopy(files, links);
      if (!world_.Create(Tag(document))) std::abort();
    }
  }

  // What the build reads: attributes and classes of every node.
  double HostReads() {
    std::size_t length = 0;
    const double time = Microseconds([&] {
      for (ObjectId id = 1; id < RootId(documents_); ++id) {
        const auto object = world_.session->ObjectStore()->Object({kDocumentClass, id});
        object->ReadData();
        for (const char* name : {"VRK_DESCRIPTION", "VRK_DESCRIPTION", "VRK_DESCRIPTION", "VRK_DESCRIPTION",
                                 "VRK_ID", "CAD_REF_FILE_NAME", "STATE", "REVISION"}) {
          length += object->GetText(name).size();
        }
        length += object->GetValue("VRKX_DX_FIRST_LOCK_USE").AsBoolean() ? 1 : 0;
      }
    });
    return length > 0 ? time : 0;
  }

  test::StructureWorld& World() { return world_; }

 private:
  NumberedDocuments source_;
  test::StructureWorld world_{source_};
  int documents_;
};

// One node of the finished tree, so that both sides make the same from plain memory.
struct Node {
  std::string name;
  std::string value;
  std::vector<std::pair<std::string, std::string>> attributes;  // after "Identifier" and "Instance"
  int parent;
};

// The elements of a structure document in the order in which the build makes them.
class Recording {
 public:
  explicit Recording(const StructureState& state) {
    const int root = Add(state.root, -1);
    const int content = Add(state.contentList, root);
    const int hierarchy = Add(state.hierarchicalStructure, root);
    const int dependencies = Add(state.dependencyList, root);
    const std::vector<XmlNode> roots = Elements(state.contentList);
    const std::vector<XmlNode> tops = Elements(state.hierarchicalStructure);
    const std::vector<XmlNode> links = Elements(state.dependencyList);
    const int first = static_cast<int>(nodes.size());
    for (std::size_t i = 0; i < roots.size(); ++i) {
      Add(roots[i], content);
      Add(tops[i], hierarchy);
    }
    for (std::size_t i = 0; i < roots.size(); ++i) {
      const int selected = first + 2 * static_cast<int>(i);
      AddBelow(roots[i], selected);
      AddBelow(tops[i], selected + 1);
      for (std::size_t link = i * kNested; link < (i + 1) * kNested; ++link) {
        AddBelow(links[link], Add(links[link], dependencies));
      }
    }
  }
  std::vector<Node> nodes;

 private:
  static std::vector<XmlNode> Elements(XmlNode parent) {
    std::vector<XmlNode> elements;
    for (XmlNode child = parent.FirstChild(); child; child = child.NextSibling()) {
      if (child.Type() == XmlNodeType::kElement) elements.push_back(child);
    }
    return elements;
  }
  int Add(XmlNode element, int parent) {
    const XmlNode child = element.FirstChild();
    const bool hasValue = child && child.Type() == XmlNodeType::kCData;
    nodes.push_back({element.Name(), hasValue ? child.Text() : std::string(), element.Attributes(), parent});
    return static_cast<int>(nodes.size()) - 1;
  }
  void AddBelow(XmlNode element, int position) {
    for (const XmlNode& child : Elements(element))
      AddBelow(child, Add(child, position));
  }
};

void WorkThroughModules(const std::vector<Node>& nodes, test::StructureWorld& world,
                        const std::string& path) {
  const XmlDocumentPtr document = XML::InitXMLDoc();
  XML::InstructGerman(*document, "", "iso-8859-1");
  std::vector<XmlNode> made(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const Node& node = nodes[i];
    const XmlNode parent = node.parent < 0 ? document->Root() : made[static_cast<std::size_t>(node.parent)];
    const bool identified = !node.attributes.empty() && node.attributes.front().first == "Identifier";
    made[i] = identified ? DX_XML::CreateDXNodeElement(*document, node.name, node.value, parent,
                                                       node.attributes.front().second)
                         : XML::CreateElement(*document, node.name, "", parent);
    for (std::size_t k = identified ? 2 : 0; k < node.attributes.size(); ++k) {
      XML::CreateAttribute(*document, node.attributes[k].first, made[i], node.attributes[k].second);
    }
  }
  int replaced = 0;
  document->Save(world.platform.files, world.platform.encodings, path, replaced);
}

void WorkWithBarePugixml(const std::vector<Node>& nodes, const std::string& path) {
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "iso-8859-1";
  std::vector<pugi::xml_node> made(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const Node& node = nodes[i];
    pugi::xml_node parent = node.parent < 0 ? document : made[static_cast<std::size_t>(node.parent)];
    made[i] = parent.append_child(node.name.c_str());
    if (!node.attributes.empty() && node.attributes.front().first == "Identifier") {
      made[i].append_child(pugi::node_cdata).set_value(node.value.c_str());
    }
    for (const auto& [name, value] : node.attributes) {
      made[i].append_attribute(name.c_str()).set_value(value.c_str());
    }
  }
  if (!document.save_file(path.c_str(), "", pugi::format_raw, pugi::encoding_latin1)) std::abort();
}

struct Result {
  double bare = 0;
  double work = 0;
  double build = 0;
  double host = 0;
  double bytesPerNode = 0;
};

Result Measure(int documents, const std::string& folder) {
  Result result;
  const std::size_t before = UsedMemory();
  Build build(documents);
  result.build = Microseconds([&] { build.Run(); });
  result.bytesPerNode = static_cast<double>(UsedMemory() - before) / (documents * kContentNodes);
  result.host = build.HostReads();
  const std::vector<Node> nodes = Recording(build.World().state).nodes;
  // The best of several runs by turns: both see the same machine.
  const int turns = documents >= 100000 ? 3 : documents >= 10000 ? 7 : 30;
  result.bare = result.work = 1e18;
  for (int turn = 0; turn < turns; ++turn) {
    result.bare =
        std::min(result.bare, Microseconds([&] { WorkWithBarePugixml(nodes, folder + "/bare.xml"); }));
    result.work = std::min(
        result.work, Microseconds([&] { WorkThroughModules(nodes, build.World(), folder + "/work.xml"); }));
  }
  for (double* time : {&result.bare, &result.work, &result.build, &result.host})
    *time /= documents;
  return result;
}

}  // namespace
}  // namespace tessel

int main(int argc, char** argv) {
  bool check = false;
  std::vector<int> sizes;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--check") == 0) {
      check = true;
    } else {
      sizes.push_back(std::max(1, std::atoi(argv[i])));
    }
  }
  if (sizes.empty()) sizes = {1000, 10000, 100000};

  const auto folder =
      std::filesystem::temp_directory_path() / ("bench-structure-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  std::printf("%10s %10s %10s %8s %10s %10s %14s\n", "documents", "bare us", "work us", "ratio", "build us",
              "host us", "bytes/node");
  std::vector<tessel::Result> results;
  bool good = true;
  for (const int size : sizes) {
    const tessel::Result result = tessel::Measure(size, folder.string());
    std::printf("%10d %10.2f %10.2f %8.2f %10.2f %10.2f %14.0f\n", size, result.bare, result.work,
                result.work / result.bare, result.build, result.host, result.bytesPerNode);
    good = good && result.work <= 1.5 * result.bare && result.bytesPerNode < 4096;
    results.push_back(result);
  }
  const double growth = results.back().work / results.front().work;
  const double buildGrowth =
      (results.back().build - results.back().host) / (results.front().build - results.front().host);
  std::printf("growth a document from %d to %d: work %.2f, build without host %.2f\n", sizes.front(),
              sizes.back(), growth, buildGrowth);
  good = good && growth <= 1.3;
  std::filesystem::remove_all(folder);
  return check && !good ? 1 : 0;
}
