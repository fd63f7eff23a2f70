#include "embedded/object.h"

#include "embedded/object_store.h"
#include "embedded/retrieval.h"
#include "embedded/schema.h"
#include "host/error.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

std::string KeyText(const ObjectKey& key) {
  return ObjectKeyText(key, '_');
}

// The code of a refused write, 0 when it went through.
template <class Write>
int CodeOf(Write write) {
  try {
    return write();
  } catch (const DatabaseError& error) {
    return error.Number();
  }
}

}  // namespace

EmbeddedObject::EmbeddedObject(EmbeddedSessionPtr session, ClassDefinitionPtr definition)
    : session_(std::move(session)), definition_(std::move(definition)) {
  values_.reserve(definition_->Attributes().size());
  for (const auto& attribute : definition_->Attributes())
    values_.push_back(attribute->defaultValue);
  changed_.resize(values_.size());
  Assign("CLASS_ID", Value(definition_->id));
}

bool EmbeddedObject::Load(ObjectId id) {
  QueryResult found = session_->Sql().Query(definition_->readStatement, {Value(id)});
  if (found.rows.empty()) return false;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    values_[i] = ConvertedTo(definition_->Attributes()[i]->type, found.rows[0][i]);
  }
  changed_.assign(values_.size(), false);
  id_ = id;
  return true;
}

std::string EmbeddedObject::DisplayText(std::string_view attribute) const {
  const Value value = GetValue(attribute);
  const PcAttributePtr definition = definition_->FindAttribute(attribute);
  if (value.IsNull() || definition->TargetClassId() == 0) return value.AsText();
  const PcObjectPtr target = FindObject(session_, {definition->TargetClassId(), value.AsInt32()});
  if (!target) return value.AsText();
  for (const char* name : {"LOGIN", "DESCRIPTION", "VRK_DESCRIPTION"}) {
    if (target->HasAttribute(name)) return target->GetText(name);
  }
  return value.AsText();
}

void EmbeddedObject::ReadData() {
  Failures().Check(HostCall::kRead, definition_->id);
  if (!Load(id_)) throw HostError("The database has no object " + KeyText(Key()), kCodeObjectGone);
}

std::size_t EmbeddedObject::RequiredPosition(std::string_view name) const {
  const int position = definition_->Position(name);
  if (position < 0) {
    throw HostError("Class \"" + definition_->name + "\" has no attribute \"" + std::string(name) + "\"");
  }
  return static_cast<std::size_t>(position);
}

Value EmbeddedObject::GetValue(std::string_view name) const {
  return values_[RequiredPosition(name)];
}

void EmbeddedObject::SetValue(std::string_view name, const Value& value) {
  const bool linkEnd =
      definition_->linkClass && id_ != 0 &&
      (name == "OBJECT_ID1" || name == "CLASS_ID1" || name == "OBJECT_ID2" || name == "CLASS_ID2");
  if (name == "OBJECT_ID" || name == "CLASS_ID" || linkEnd) {
    throw HostError("The attribute \"" + std::string(name) + "\" cannot be set");
  }
  Assign(name, value);
}

void EmbeddedObject::Assign(std::string_view name, const Value& value) {
  const std::size_t position = RequiredPosition(name);
  values_[position] = ConvertedTo(definition_->Attributes()[position]->type, value);
  changed_[position] = true;
}

void EmbeddedObject::RequireUnsaved() const {
  if (id_ != 0) throw HostError("The object " + KeyText(Key()) + " is in the database");
}

void EmbeddedObject::ClearData() {
  RequireUnsaved();
  values_.assign(values_.size(), Value());
  Assign("CLASS_ID", Value(definition_->id));
}

void EmbeddedObject::SetDefaults() {
  RequireUnsaved();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (values_[i].IsNull()) values_[i] = definition_->Attributes()[i]->defaultValue;
  }
}

int EmbeddedObject::Add(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kInsert, definition_->id)) return code;
  return Insert();
}

int EmbeddedObject::Insert() {
  if (id_ != 0) return kCodeAlreadyAdded;
  const int code = CodeOf([&] {
    WriteTransaction transaction(session_->Sql());
    const ObjectId id = DrawNumber(session_->Sql(), kObjectNumber);
    Assign("OBJECT_ID", Value(id));
    session_->Sql().Execute(definition_->insertStatement, values_);
    transaction.Commit();
    id_ = id;
    return 0;
  });
  if (code == 0) {
    changed_.assign(values_.size(), false);
  } else {
    Assign("OBJECT_ID", {});
  }
  return code;
}

int EmbeddedObject::Update(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kUpdate, definition_->id)) return code;
  if (id_ == 0) return kCodeObjectGone;
  std::string assignments = "OBJECT_ID = OBJECT_ID";
  std::vector<Value> values;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (!changed_[i]) continue;
    const std::string& name = definition_->Attributes()[i]->name;
    assignments += ", " + name + " = :" + name;
    values.push_back(values_[i]);
  }
  values.emplace_back(id_);
  const int code = CodeOf([&] {
    const long long rows = session_->Sql().Execute(
        "UPDATE " + definition_->table + " SET " + assignments + " WHERE OBJECT_ID = :key", values);
    return rows == 0 ? kCodeObjectGone : 0;
  });
  if (code == 0) changed_.assign(values_.size(), false);
  return code;
}

int EmbeddedObject::Delete(const PcBehavior&) {
  if (const int code = Failures().Code(HostCall::kDelete, definition_->id)) return code;
  return CodeOf([&] {
    Database& sql = session_->Sql();
    WriteTransaction transaction(sql);
    const long long rows =
        sql.Execute("DELETE FROM " + definition_->table + " WHERE OBJECT_ID = :key", {Value(id_)});
    if (rows == 0) return kCodeObjectGone;
    for (const auto& link : session_->Core().catalog->Classes()) {
      if (!link->linkClass) continue;
      for (const char* end : {"1", "2"}) {
        sql.Execute("DELETE FROM " + link->table + " WHERE OBJECT_ID" + end + " = :object AND CLASS_ID" +
                        end + " = :class",
                    {Value(id_), Value(definition_->id)});
      }
    }
    transaction.Commit();
    return 0;
  });
}

Value EmbeddedObject::NextSequenceValue(std::string_view attribute) {
  const std::string& name = definition_->Attributes()[RequiredPosition(attribute)]->sequence;
  if (name.empty()) throw HostError("The attribute \"" + std::string(attribute) + "\" has no sequence");
  const SequenceDefinition& sequence = session_->Core().catalog->sequences.at(name);
  return Value(sequence.Format(DrawNumber(session_->Sql(), SequenceNumberName(name))));
}

bool EmbeddedObject::Exists(const ObjectKey& key) const {
  const ClassDefinition& definition = session_->Core().catalog->Required(key.classId);
  return !session_->Sql()
              .Query("SELECT OBJECT_ID FROM " + definition.table + " WHERE OBJECT_ID = :key",
                     {Value(key.objectId)})
              .rows.empty();
}

PcObjectPtr EmbeddedObject::AddLink(PcObject& second, ClassId linkClass, const PcBehavior&) {
  const ClassDefinitionPtr definition = session_->Core().catalog->Find(linkClass);
  if (!definition || !definition->linkClass) {
    throw HostError("There is no link class " + std::to_string(linkClass));
  }
  if (Failures().Code(HostCall::kLink, linkClass) != 0) return nullptr;
  if (!definition->MayTie(GetClassId(), second.GetClassId())) return nullptr;
  if (!Exists(Key()) || !Exists(second.Key())) return nullptr;
  auto link = std::make_shared<EmbeddedObject>(session_, definition);
  link->Assign("OBJECT_ID1", Value(id_));
  link->Assign("CLASS_ID1", Value(GetClassId()));
  link->Assign("OBJECT_ID2", Value(second.GetObjectId()));
  link->Assign("CLASS_ID2", Value(second.GetClassId()));
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
  for (std::size_t i = 0; i < values_.size(); ++i) {
    text += definition_->Attributes()[i]->name + ":   " + values_[i].AsText() + "\r\n";
  }
  files.WriteBytes(path, text);
}

}  // namespace tessel::embedded
