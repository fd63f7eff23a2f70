// An object or a link: a row of its class's table.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "embedded/session/session.h"
#include "host/object.h"

namespace tessel::embedded {

class EmbeddedObject final : public PcObject {
 public:
  // A new object with the defaults of its class.
  EmbeddedObject(EmbeddedSessionPtr session, ClassDefinitionPtr definition);

  // Fills the object from its row. False when there is none.
  [[nodiscard]] bool Load(ObjectId id);
  [[nodiscard]] const ClassDefinition& Definition() const { return *definition_; }
  // The value as people read it: the description behind a lookup, the login or description behind a
  // reference.
  [[nodiscard]] std::string DisplayText(std::string_view attribute) const;

  [[nodiscard]] ClassId GetClassId() const override { return definition_->id; }
  [[nodiscard]] ObjectId GetObjectId() const override { return state_->id; }
  [[nodiscard]] PcClassPtr Class() const override { return definition_; }
  [[nodiscard]] std::shared_ptr<PcSession> Session() const override { return session_; }
  // Values set and not yet written are lost. Costs nothing when the object has just been read in the same
  // snapshot or transaction.
  void ReadData() override;
  [[nodiscard]] bool HasAttribute(std::string_view name) const override { return definition_->Has(name); }
  [[nodiscard]] Value GetValue(std::string_view name) const override;
  // OBJECT_ID and CLASS_ID cannot be set, nor the ends of a link that exists.
  void SetValue(std::string_view name, const Value& value) override;
  // Errors: HostError for an object that is in the database.
  void ClearData() override;
  void SetDefaults() override;
  [[nodiscard]] int Add(const PcBehavior& behavior) override;
  // Writes the attributes that were set since the object was read, added or updated.
  [[nodiscard]] int Update(const PcBehavior& behavior) override;
  // Links that end at the object go with it.
  [[nodiscard]] int Delete(const PcBehavior& behavior) override;
  [[nodiscard]] Value NextSequenceValue(std::string_view attribute) override;
  // Nothing, too, when one of the ends is gone or the class does not tie the two classes. Error: HostError
  // for a class that is no link class.
  [[nodiscard]] PcObjectPtr AddLink(PcObject& second, ClassId linkClass, const PcBehavior& behavior) override;
  [[nodiscard]] PcRecordListPtr Children(const PcAttributeList& attributes,
                                         const PcBehavior& behavior) const override;
  [[nodiscard]] PcRecordListPtr Parents(const PcAttributeList& attributes,
                                        const PcBehavior& behavior) const override;
  [[nodiscard]] PcRecordListPtr Relations(const PcAttributeList& attributes,
                                          const PcBehavior& behavior) const override;
  // UTF-8: the title, then one line an attribute. Missing folders of the path are made.
  void WriteToFile(const std::string& title, const std::string& path) const override;

 private:
  [[nodiscard]] std::size_t RequiredPosition(std::string_view name) const;
  void Assign(std::string_view name, const Value& value);
  [[nodiscard]] int Insert();
  void TakeIdentity(ObjectId id);
  void RequireUnsaved() const;
  [[nodiscard]] bool Exists(const PcObject& object) const;
  // Whether the values are surely those of the row as it is now.
  [[nodiscard]] bool ShowsDatabase() const;
  [[nodiscard]] FailurePlan& Failures() const { return session_->Core().failures; }

  // What a transaction that is undone takes back.
  struct State {
    ObjectId id = 0;
    std::uint64_t keptIn = 0;  // the transaction whose undoing brings this state back
    std::uint64_t readIn = 0;  // the state of the database that the values show, 0 when they may not
    std::vector<Value> values;
    std::vector<bool> changed;
  };
  void Put(std::string_view name, const Value& value);
  // To be called before the state of an object that somebody else holds changes.
  void KeepForUndo();
  template <class Write>
  [[nodiscard]] int CodeOf(Write write);

  EmbeddedSessionPtr session_;
  ClassDefinitionPtr definition_;
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

// As PcObjectStore::Object; counts as a read for planned failures.
[[nodiscard]] std::shared_ptr<EmbeddedObject> FindObject(const EmbeddedSessionPtr& session,
                                                         const ObjectKey& key);

}  // namespace tessel::embedded
