#include "embedded/client/life_cycle.h"

#include "embedded/client/vault_copy.h"
#include "embedded/store/transaction.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

constexpr int kConfirmed = 1;
constexpr int kCancelled = 2;

std::string DescriptionOf(const PcObject& object, const ClassDefinition& definition) {
  const std::string attribute = definition.DescriptionAttribute();
  return attribute.empty() ? std::string() : object.GetText(attribute);
}

std::vector<DialogObject> Described(const EmbeddedSession& session, const std::vector<PcObjectPtr>& objects) {
  std::vector<DialogObject> described;
  for (const PcObjectPtr& object : objects) {
    described.push_back(
        {object->Key(), DescriptionOf(*object, session.Core().metadata->Required(object->GetClassId()))});
  }
  return described;
}

const OperationDefinition& OperationOf(const EmbeddedSession& session, const PcObject& object,
                                       const std::string& name) {
  const ClassDefinition& definition = session.Core().metadata->Required(object.GetClassId());
  const PcLifeCycleOperationPtr operation = definition.operations->Item(name);
  return static_cast<const OperationDefinition&>(*operation);
}

std::vector<DialogObject> Described(const std::vector<StructureObject>& objects) {
  std::vector<DialogObject> described;
  for (const StructureObject& object : objects)
    described.push_back({object.key, object.description});
  return described;
}

int RunCopy(EmbeddedSession& session, const LifeCycleRun& run, const std::string& operation) {
  std::vector<ObjectKey> roots;
  for (const PcObjectPtr& object : run.objects)
    roots.push_back(object->Key());
  VaultCopy copy = [&] {
    const ReadSnapshot snapshot(session.Sql());
    return VaultCopy(session, roots);
  }();
  if (run.confirm) {
    const int answer = session.Core().Dialogs().ConfirmLifeCycle(
        {operation, run.directory, Described(session, run.objects), Described(copy.Objects())});
    if (answer != kConfirmed) return answer;
  }
  if (!copy.Run(run.directory, run.overwrite)) return kCancelled;
  // The hook reads each copied object and its links.
  const ReadSnapshot snapshot(session.Sql());
  const LifeCycleHook hook = session.Core().options.lfcStage2;
  if (hook) hook(session.Self(), operation, copy.CopiedRows(), copy.Links(), nullptr);
  return kConfirmed;
}

void WriteState(EmbeddedSession& session, const PcObject& object, std::int16_t state,
                const std::string& comment) {
  if (const int code = session.Core().failures.Code(HostCall::kUpdate, object.GetClassId())) {
    throw HostError("The database refuses the new state", code);
  }
  const ClassDefinition& definition = session.Core().metadata->Required(object.GetClassId());
  std::string assignments = "STATE = :state";
  std::vector<Value> values = {Value(state)};
  if (!comment.empty() && definition.Has("VRK_COMMENT")) {
    assignments += ", VRK_COMMENT = :comment";
    values.push_back(Value(comment));
  }
  values.emplace_back(object.GetObjectId());
  const long long rows = session.Sql().Execute(
      "UPDATE " + definition.table + " SET " + assignments + " WHERE OBJECT_ID = :key", values);
  if (rows == 0)
    throw HostError("The object " + ObjectKeyText(object.Key(), '_') + " is gone", kCodeObjectGone);
}

int RunStateChange(EmbeddedSession& session, const LifeCycleRun& run, const std::string& name) {
  if (run.confirm) {
    const std::vector<DialogObject> objects = Described(session, run.objects);
    const int answer = session.Core().Dialogs().ConfirmLifeCycle({name, "", objects, objects});
    if (answer != kConfirmed) return answer;
  }
  {
    WriteTransaction transaction(session.Sql());
    for (const PcObjectPtr& object : run.objects) {
      const OperationDefinition& operation = OperationOf(session, *object, run.operation);
      if (operation.state && object->HasAttribute(attribute::kState)) {
        WriteState(session, *object, *operation.state, run.comment);
      }
    }
    transaction.Commit();
  }
  for (const PcObjectPtr& object : run.objects)
    object->ReadData();
  return kConfirmed;
}

}  // namespace

int RunLifeCycle(EmbeddedSession& session, const LifeCycleRun& run) {
  if (run.objects.empty()) throw HostError("The life-cycle operation has no object");
  for (const PcObjectPtr& object : run.objects) {
    Required(object, "life-cycle object");
    session.Core().failures.Check(HostCall::kOperation, object->GetClassId());
    static_cast<void>(OperationOf(session, *object, run.operation));
  }
  const OperationDefinition& first = OperationOf(session, *run.objects.front(), run.operation);
  return first.copiesFiles ? RunCopy(session, run, first.name) : RunStateChange(session, run, first.name);
}

}  // namespace tessel::embedded
