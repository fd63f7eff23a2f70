#include "embedded/object_store.h"

#include "embedded/query.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

class ObjectList final : public PcObjectList {
 public:
  void Add(PcObjectPtr object) override { objects_.push_back(std::move(object)); }
  [[nodiscard]] int Count() const override { return static_cast<int>(objects_.size()); }
  [[nodiscard]] PcObjectPtr Item(int index) const override {
    if (index < 0 || index >= Count()) {
      throw RuntimeError(error_number::kSubscriptOutOfRange, "Subscript out of range in an object list");
    }
    return objects_[static_cast<std::size_t>(index)];
  }

 private:
  std::vector<PcObjectPtr> objects_;
};

class ObjectStore final : public PcObjectStore {
 public:
  explicit ObjectStore(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  [[nodiscard]] PcObjectPtr Object(const ObjectKey& key) override { return FindObject(session_, key); }
  [[nodiscard]] PcObjectPtr NewObject(ClassId classId) override {
    ClassDefinitionPtr definition = session_->Core().catalog->Find(classId);
    if (!definition) throw HostError("The database has no class " + std::to_string(classId));
    return std::make_shared<EmbeddedObject>(session_, std::move(definition));
  }
  [[nodiscard]] PcObjectListPtr NewObjectList() override { return std::make_shared<ObjectList>(); }
  [[nodiscard]] PcAttributeListPtr NewAttributeList() override {
    return std::make_shared<AttributeList>(session_->Core().catalog);
  }
  [[nodiscard]] PcQueryPtr NewQuery() override { return embedded::NewQuery(session_); }

 private:
  EmbeddedSessionPtr session_;
};

}  // namespace

PcObjectStorePtr NewObjectStore(EmbeddedSessionPtr session) {
  return std::make_shared<ObjectStore>(std::move(session));
}

std::shared_ptr<EmbeddedObject> FindObject(const EmbeddedSessionPtr& session, const ObjectKey& key) {
  session->Core().failures.Check(HostCall::kRead, key.classId);
  ClassDefinitionPtr definition = session->Core().catalog->Find(key.classId);
  if (!definition) return nullptr;
  auto object = std::make_shared<EmbeddedObject>(session, std::move(definition));
  return object->Load(key.objectId) ? object : nullptr;
}

void AttributeList::Add(ClassId classId, const std::string& attribute, const std::string& code) {
  const ClassDefinition& definition = catalog_->Required(classId);
  if (code != "S" && code != "L" && code != "F")
    throw HostError("Unknown attribute list code \"" + code + "\"");
  if (code == "L" && !definition.linkClass) throw HostError("\"" + definition.name + "\" is no link class");
  if (attribute != "*" && !definition.Has(attribute)) {
    throw HostError("Class \"" + definition.name + "\" has no attribute \"" + attribute + "\"");
  }
  entries_.push_back({classId, attribute, code[0]});
}

}  // namespace tessel::embedded
