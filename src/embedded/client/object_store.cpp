#include "embedded/client/object_store.h"

#include "embedded/client/attribute_list.h"
#include "embedded/client/object.h"
#include "embedded/client/query.h"
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
    ClassDefinitionPtr definition = session_->Core().metadata->Find(classId);
    if (!definition) throw HostError("The database has no class " + std::to_string(classId));
    return std::make_shared<EmbeddedObject>(session_, std::move(definition));
  }
  [[nodiscard]] PcObjectListPtr NewObjectList() override { return std::make_shared<ObjectList>(); }
  [[nodiscard]] PcAttributeListPtr NewAttributeList() override {
    return std::make_shared<AttributeList>(session_->Core().metadata);
  }
  [[nodiscard]] PcQueryPtr NewQuery() override { return embedded::NewQuery(session_); }

 private:
  EmbeddedSessionPtr session_;
};

}  // namespace

PcObjectStorePtr NewObjectStore(EmbeddedSessionPtr session) {
  return std::make_shared<ObjectStore>(std::move(session));
}

}  // namespace tessel::embedded
