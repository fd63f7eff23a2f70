#include "embedded/client/selection_dialog.h"

#include "embedded/client/object.h"
#include "embedded/client/product_structure.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

void AddObjectsOf(EmbeddedSession& session, const ClassDefinition& definition,
                  std::vector<DialogObject>& objects) {
  const std::string attribute = definition.DescriptionAttribute();
  const QueryResult found =
      session.Sql().Query("SELECT OBJECT_ID, " + (attribute.empty() ? attribute::kObjectId : attribute) +
                          " AS DESCRIPTION FROM " + definition.table + " ORDER BY OBJECT_ID");
  for (const auto& row : found.rows)
    objects.push_back({{definition.id, row[0].AsInt32()}, row[1].AsText()});
}

// The candidates that were picked; positions that are none are left out.
std::vector<DialogObject> Picked(EmbeddedSession& session, SelectionDialogRequest request) {
  std::vector<DialogObject> picked;
  for (const std::size_t position : session.Core().Dialogs().SelectObjects(request)) {
    if (position < request.candidates.size()) picked.push_back(request.candidates[position]);
    if (!request.multiple && !picked.empty()) break;
  }
  return picked;
}

}  // namespace

PcRecordListPtr PickObjects(EmbeddedSession& session, const SelectionRequest& request) {
  SelectionDialogRequest dialog{request.title, request.multiple, {}};
  AddObjectsOf(session, session.Core().metadata->Required(request.classId), dialog.candidates);
  if (request.composite) {
    std::vector<ObjectKey> roots;
    for (const DialogObject& object : dialog.candidates)
      roots.push_back(object.key);
    dialog.candidates.clear();
    for (const StructureObject& object : ReadStructure(session, roots)) {
      dialog.candidates.push_back({object.key, object.description});
    }
  }
  const std::vector<DialogObject> picked = Picked(session, std::move(dialog));
  if (picked.empty()) return nullptr;
  const auto list = session.Core().NewRecordList();
  list->AddColumn(attribute::kObjectId, ColumnType::kLong);
  list->AddColumn(attribute::kClassId, ColumnType::kInteger);
  for (const DialogObject& object : picked)
    list->AppendRow({Value(object.key.objectId), Value(object.key.classId)});
  return list;
}

PcObjectPtr PickFromAll(const EmbeddedSessionPtr& session) {
  SelectionDialogRequest dialog;
  for (const auto& definition : session->Core().metadata->Classes()) {
    if (!definition->linkClass) AddObjectsOf(*session, *definition, dialog.candidates);
  }
  const std::vector<DialogObject> picked = Picked(*session, std::move(dialog));
  return picked.empty() ? nullptr : FindObject(session, picked.front().key);
}

}  // namespace tessel::embedded
