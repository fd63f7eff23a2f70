#include "embedded/client/object.h"

#include <optional>

#include "embedded/client/retrieval.h"
#include "embedded/store/schema.h"
#include "embedded/store/transaction.h"
#include "host/error.h"
#include "host/names.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

std::string KeyText(const ObjectKey& key) {
  return ObjectKeyText(key, '_');
}

}  // namespace

EmbeddedObject::EmbeddedObject(EmbeddedSessionPtr session, ClassDefinitionPtr definition)
    : session_(std::move(session)), definition_(std::move(definition)) {
  state_->values.reserve(definition_->Attributes().size());
  for (const auto& attribute : definition_->Attributes())
    state_->values.push_back(attribute->defaultValue);
  state_->changed.resize(state_->values.size());
  Put(attribute::kClassId, Value(definition_->id));
}

void EmbeddedObject::KeepForUndo() {
  const std::uint64_t transaction = session_->Sql().Transaction();
  if (transaction == state_->keptIn) return;
  session_->Sql().OnUndo(state_, [state = std::weak_ptr<State>(state_), earlier = *state_]() mutable {
    if (const auto kept = state.lock()) *kept = std::move(earlier);
  });
  state_->keptIn = transaction;
}

// The code of a refused write, 0 when it went through.
template <class Write>
int EmbeddedObject::CodeOf(Write write) {
  try {
    return write();
  } catch (const DatabaseError& error) {
    session_->NoteRefusal(error.Number(), error.what());
    return error.Number();
  }
}

bool EmbeddedObject::Load(ObjectId id) {
  QueryResult found = session_->Sql().Query(definition_->readStatement, {Value(id)});
  if (found.rows.empty()) return false;
  // An object that is only coming into being is held by nobody.
  if (state_->id != 0) KeepForUndo();
  for (std::size_t i = 0; i < state_->values.size(); ++i) {
    state_->values[i] = ConvertedTo(definition_->Attributes()[i]->type, found.rows[0][i]);
  }
  state_->changed.assign(state_->values.size(), false);
  state_->id = id;
  state_->readIn = session_->Sql().StateNumber();
  return true;
}

std::shared_ptr<EmbeddedObject> FindObject(const EmbeddedSessionPtr& session, const ObjectKey& key) {
  session->Core().failures.Check(HostCall::kRead, key.classId);
  ClassDefinitionPtr definition = session->Core().metadata->Find(key.classId);
  if (!definition) return nullptr;
  auto object = std::make_shared<EmbeddedObject>(session, std::move(definition));
  return object->Load(key.objectId) ? object : nullptr;
}

std::string EmbeddedObject::DisplayText(std::string_view attribute) const {
  const Value value = GetValue(attribute);
  const PcAttributePtr definition = definition_->FindAttribute(attribute);
  if (value.IsNull() || definition->TargetClassId() == 0) return value.AsText();
  const PcObjectPtr target = FindObject(session_, {definition->TargetClassId(), value.AsInt32()});
  if (!target) return value.AsText();
  for (const char* name : {"LOGIN", "DESCRIPTION", attribute::kDescription}) {
    if (target->HasAttribute(name)) return target->GetText(name);
  }
  return value.AsText();
}

void EmbeddedObject::ReadData() {
  Failures().Check(HostCall::kRead, definition_->id);
  if (ShowsDatabase()) return;
  if (!Load(state_->id)) throw HostError("The database has no object " + KeyText(Key()), kCodeObjectGone);
}

std::size_t EmbeddedObject::RequiredPosition(std::string_view name) const {
  const int position = definition_->Position(name);
  if (position < 0) {
    throw HostError("Class \"" + definition_->name + "\" has no attribute \"" + std::string(name) + "\"");
  }
  return static_cast<std::size_t>(position);
}

Value EmbeddedObject::GetValue(std::string_view name) const {
  return state_->values[RequiredPosition(name)];
}

void EmbeddedObject::SetValue(std::string_view name, const Value& value) {
  const bool linkEnd = definition_->linkClass && state_->id != 0 &&
                       (name == attribute::kObjectId1 || name == attribute::kClassId1 ||
                        name == attribute::kObjectId2 || name == attribute::kClassId2);
  if (name == attribute::kObjectId || name == attribute::kClassId || linkEnd) {
    throw HostError("The attribute \"" + std::string(name) + "\" cannot be set");
  }
  Assign(name, value);
}

void EmbeddedObject::Assign(std::string_view name, const Value& value) {
  KeepForUndo();
  Put(name, value);
}

void EmbeddedObject::Put(std::string_view name, const Value& value) {
  const std::size_t position = RequiredPosition(name);
  state_->values[position] = ConvertedTo(definition_->Attributes()[position]->type, value);
  state_->changed[position] = true;
  state_->readIn = 0;
}

void EmbeddedObject::RequireUnsaved() const {
  if (state_->id != 0) throw HostError("The object " + KeyText(Key()) + " is in the database");
}

void EmbeddedObject::ClearData() {
  RequireUnsaved();
  KeepForUndo();
  state_->values.assign(state_->values.size(), Value());
  Assign(attribute::kClassId, Value(definition_->id));
}

void EmbeddedObject::SetDefaults() {
  RequireUnsaved();
  KeepForUndo();
  for (std::size_t i = 0; i < state_->values.size(); ++i) {
    if (state_->values[i].IsNull()) state_->values[i] = definition_->Attributes()[i]->defaultValue;
  }
}

int EmbeddedObject::Add(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kInsert, definition_->id)) return code;
  return Insert();
}

// A unit of work around it is its transaction, too: a link each would otherwise cost a savepoint each.
int EmbeddedObject::Insert() {
  if (state_->id != 0) return kCodeAlreadyAdded;
  return CodeOf([&] {
    Database& sql = session_->Sql();
    std::optional<WriteTransaction> alone;
    if (!sql.Writing()) alone.emplace(sql);
    const ObjectId id = DrawNumber(sql, kObjectNumber);
    std::vector<Value> values = state_->values;
    values[RequiredPosition(attribute::kObjectId)] = Value(id);
    sql.Execute(definition_->insertStatement, values);
    TakeIdentity(id);
    if (alone) alone->Commit();
    return 0;
  });
}

// An undone transaction takes the identity back.
void EmbeddedObject::TakeIdentity(ObjectId id) {
  const std::size_t position = RequiredPosition(attribute::kObjectId);
  session_->Sql().OnUndo(state_, [state = std::weak_ptr<State>(state_), position] {
    const auto kept = state.lock();
    if (!kept) return;
    kept->id = 0;
    kept->values[position] = Value();
  });
  state_->id = id;
  state_->values[position] = Value(id);
  state_->changed.assign(state_->values.size(), false);
}

int EmbeddedObject::Update(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kUpdate, definition_->id)) return code;
  if (state_->id == 0) return kCodeObjectGone;
  std::string assignments = "OBJECT_ID = OBJECT_ID";
  std::vector<Value> values;
  for (std::size_t i = 0; i < state_->values.size(); ++i) {
    if (!state_->changed[i]) continue;
    const std::string& name = definition_->Attributes()[i]->name;
    assignments += ", " + name + " = :" + name;
    values.push_back(state_->values[i]);
  }
  values.emplace_back(state_->id);
  return CodeOf([&] {
    const long long rows = session_->Sql().Execute(
        "UPDATE " + definition_->table + " SET " + assignments + " WHERE OBJECT_ID = :key", values);
    if (rows == 0) return kCodeObjectGone;
    KeepForUndo();
    state_->changed.assign(state_->values.size(), false);
    return 0;
  });
}

int EmbeddedObject::Delete(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kDelete, definition_->id)) return code;
  return CodeOf([&] {
    Database& sql = session_->Sql();
    WriteTransaction transaction(sql);
    const long long rows =
        sql.Execute("DELETE FROM " + definition_->table + " WHERE OBJECT_ID = :key", {Value(state_->id)});
    if (rows == 0) return kCodeObjectGone;
    for (const auto& link : session_->Core().metadata->Classes()) {
      if (!link->linkClass) continue;
      for (const char* end : {"1", "2"}) {
        sql.Execute("DELETE FROM " + link->table + " WHERE OBJECT_ID" + end + " = :object AND CLASS_ID" +
                        end + " = :class",
                    {Value(state_->id), Value(definition_->id)});
      }
    }
    transaction.Commit();
    return 0;
  });
}

Value EmbeddedObject::NextSequenceValue(std::string_view attribute) {
  const std::string& name = definition_->Attributes()[RequiredPosition(attribute)]->sequence;
  if (name.empty()) throw HostError("The attribute \"" + std::string(attribute) + "\" has no sequence");
  const SequenceDefinition& sequence = session_->Core().metadata->sequences.at(name);
  return Value(sequence.Format(DrawNumber(session_->Sql(), SequenceNumberName(name))));
}

// An object that has just been read in the same snapshot or transaction needs no second look.
bool EmbeddedObject::Exists(const PcObject& object) const {
  const auto* own = dynamic_cast<const EmbeddedObject*>(&object);
  if (own && own->session_ == session_ && own->ShowsDatabase()) return true;
  const ClassDefinition& definition = session_->Core().metadata->Required(object.GetClassId());
  return !session_->Sql()
              .Query("SELECT OBJECT_ID FROM " + definition.table + " WHERE OBJECT_ID = :key",
                     {Value(object.GetObjectId())})
              .rows.empty();
}

bool EmbeddedObject::ShowsDatabase() const {
  return state_->readIn != 0 && state_->readIn == session_->Sql().StateNumber();
}

PcObjectPtr EmbeddedObject::AddLink(PcObject& second, ClassId linkClass, const PcBehavior&) {
  const ClassDefinitionPtr definition = session_->Core().metadata->Find(linkClass);
  if (!definition || !definition->linkClass) {
    throw HostError("There is no link class " + std::to_string(linkClass));
  }
  if (Failures().Code(HostCall::kLink, linkClass) != 0) return nullptr;
  if (!definition->MayTie(GetClassId(), second.GetClassId())) return nullptr;
  if (!Exists(*this) || !Exists(second)) return nullptr;
  auto link = std::make_shared<EmbeddedObject>(session_, definition);
  link->Put(attribute::kObjectId1, Value(state_->id));
  link->Put(attribute::kClassId1, Value(GetClassId()));
  link->Put(attribute::kObjectId2, Value(second.GetObjectId()));
  link->Put(attribute::kClassId2, Value(second.GetClassId()));
  if (link->Insert() != 0) return nullptr;
  return link;
}

PcRecordListPtr EmbeddedObject::Children(const PcAttributeList& attributes, const PcBehavior&) const {
  return RetrieveLinked(*session_, Key(), attributes, LinkSide::kBelow);
}

PcRecordListPtr EmbeddedObject::Parents(const PcAttributeList& attributes, const PcBehavior&) const {
  return RetrieveLinked(*session_, Key(), attributes, LinkSide::kAbove);
}

PcRecordListPtr EmbeddedObject::Relations(const PcAttributeList& attributes, const PcBehavior&) const {
  return RetrieveLinked(*session_, Key(), attributes, LinkSide::kBoth);
}

void EmbeddedObject::WriteToFile(const std::string& title, const std::string& path) const {
  FileSystem& files = session_->Core().Files();
  if (const std::string folder = paths::Parent(path); !folder.empty()) files.CreateFolders(folder);
  std::string text = title + "\r\n";
  for (std::size_t i = 0; i < state_->values.size(); ++i) {
    text += definition_->Attributes()[i]->name + ":   " + state_->values[i].AsText() + "\r\n";
  }
  files.WriteBytes(path, text);
}

}  // namespace tessel::embedded
