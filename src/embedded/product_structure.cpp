#include "embedded/product_structure.h"

#include <unordered_set>

#include "host/error.h"

namespace tessel::embedded {
namespace {

StructureObject ReadObject(EmbeddedSession& session, const ClassDefinition& definition,
                           const ObjectKey& key) {
  const QueryResult found = session.Sql().Query(definition.readStatement, {Value(key.objectId)});
  if (found.rows.empty()) throw HostError("The database has no object " + ObjectKeyText(key, '_'));
  const auto text = [&](const std::string& attribute) {
    const int position = definition.Position(attribute);
    return position < 0 ? std::string() : found.rows[0][static_cast<std::size_t>(position)].AsText();
  };
  StructureObject object{key, text(definition.DescriptionAttribute()), text("FILE_NAME"),
                         text("CAD_REF_FILE_NAME")};
  if (object.fileName.empty()) object.fileName = object.vaultName;
  return object;
}

std::vector<ObjectKey> Below(EmbeddedSession& session, const ClassDefinition& definition,
                             const ObjectKey& key) {
  std::vector<ObjectKey> keys;
  const ClassDefinitionPtr link = session.Core().catalog->Find(definition.hierarchicalLink);
  if (!link) return keys;
  const QueryResult found = session.Sql().Query("SELECT CLASS_ID2, OBJECT_ID2 FROM " + link->table +
                                                    " WHERE OBJECT_ID1 = :object AND CLASS_ID1 = :class"
                                                    " ORDER BY OBJECT_ID",
                                                {Value(key.objectId), Value(key.classId)});
  for (const auto& row : found.rows)
    keys.push_back({row[0].AsInt16(), row[1].AsInt32()});
  return keys;
}

}  // namespace

std::vector<StructureObject> ReadStructure(EmbeddedSession& session, const std::vector<ObjectKey>& roots) {
  std::vector<StructureObject> objects;
  std::unordered_set<ObjectKey> seen;
  // Without recursion, so that a deep structure costs no stack; the last entry is next.
  std::vector<ObjectKey> open(roots.rbegin(), roots.rend());
  while (!open.empty()) {
    const ObjectKey key = open.back();
    open.pop_back();
    if (!seen.insert(key).second) continue;
    const ClassDefinition& definition = session.Core().catalog->Required(key.classId);
    objects.push_back(ReadObject(session, definition, key));
    const std::vector<ObjectKey> below = Below(session, definition, key);
    open.insert(open.end(), below.rbegin(), below.rend());
  }
  return objects;
}

}  // namespace tessel::embedded
