#include "embedded/client/product_structure.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "embedded/client/keyed_rows.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

struct Node {
  std::optional<StructureObject> object;  // nothing: the database has none, or no such class
  std::vector<ObjectKey> below;           // in the order of their links
};

// Everything at and below some objects, read level by level, so that a level costs few statements.
class StructureReader {
 public:
  explicit StructureReader(EmbeddedSession& session) : session_(session) {}

  [[nodiscard]] std::unordered_map<ObjectKey, Node> Read(const std::vector<ObjectKey>& roots) {
    std::vector<ObjectKey> level = Unknown(roots);
    while (!level.empty()) {
      std::map<ClassId, std::vector<ObjectId>> classes;
      for (const ObjectKey& key : level)
        classes[key.classId].push_back(key.objectId);
      for (const auto& [classId, ids] : classes)
        ReadClass(classId, ids);
      std::vector<ObjectKey> below;
      for (const ObjectKey& key : level) {
        const std::vector<ObjectKey>& keys = nodes_[key].below;
        below.insert(below.end(), keys.begin(), keys.end());
      }
      level = Unknown(below);
    }
    return std::move(nodes_);
  }

 private:
  // Each of them once, and a node for it.
  std::vector<ObjectKey> Unknown(const std::vector<ObjectKey>& keys) {
    std::vector<ObjectKey> unknown;
    for (const ObjectKey& key : keys) {
      if (nodes_.try_emplace(key).second) unknown.push_back(key);
    }
    return unknown;
  }

  void ReadClass(ClassId classId, const std::vector<ObjectId>& ids) {
    const ClassDefinitionPtr definition = session_.Core().metadata->Find(classId);
    if (!definition) return;
    ReadObjects(*definition, ids);
    const ClassDefinitionPtr link = session_.Core().metadata->Find(definition->hierarchicalLink);
    if (!link) return;
    ReadKeyedRows(
        session_.Sql(),
        "SELECT OBJECT_ID1, CLASS_ID1, CLASS_ID2, OBJECT_ID2 FROM " + link->table + " WHERE OBJECT_ID1",
        " ORDER BY OBJECT_ID", ids, [&](const std::vector<Value>& row) {
          if (row[1].AsInt16() != classId) return;
          nodes_[{classId, row[0].AsInt32()}].below.push_back({row[2].AsInt16(), row[3].AsInt32()});
        });
  }

  void ReadObjects(const ClassDefinition& definition, const std::vector<ObjectId>& ids) {
    std::string names;
    for (const std::string& name : {definition.DescriptionAttribute(), std::string(attribute::kFileName),
                                    std::string(attribute::kCadFileName)}) {
      names += ", " + (definition.Has(name) ? name : std::string("NULL"));
    }
    ReadKeyedRows(session_.Sql(),
                  "SELECT OBJECT_ID" + names + " FROM " + definition.table + " WHERE OBJECT_ID", "", ids,
                  [&](const std::vector<Value>& row) {
                    const ObjectKey key{definition.id, row[0].AsInt32()};
                    StructureObject object{key, row[1].AsText(), row[2].AsText(), row[3].AsText()};
                    if (object.fileName.empty()) object.fileName = object.vaultName;
                    nodes_[key].object = std::move(object);
                  });
  }

  EmbeddedSession& session_;
  std::unordered_map<ObjectKey, Node> nodes_;
};

}  // namespace

std::vector<StructureObject> ReadStructure(EmbeddedSession& session, const std::vector<ObjectKey>& roots) {
  std::unordered_map<ObjectKey, Node> nodes = StructureReader(session).Read(roots);
  std::vector<StructureObject> objects;
  objects.reserve(nodes.size());
  // Without recursion, so that a deep structure costs no stack; the last entry is next.
  std::vector<ObjectKey> open(roots.rbegin(), roots.rend());
  std::unordered_set<ObjectKey> seen;
  while (!open.empty()) {
    const ObjectKey key = open.back();
    open.pop_back();
    if (!seen.insert(key).second) continue;
    static_cast<void>(session.Core().metadata->Required(key.classId));
    Node& node = nodes[key];
    if (!node.object) throw HostError("The database has no object " + ObjectKeyText(key, '_'));
    objects.push_back(std::move(*node.object));
    open.insert(open.end(), node.below.rbegin(), node.below.rend());
  }
  return objects;
}

}  // namespace tessel::embedded
