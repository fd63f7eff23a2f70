#include "hook_caller.h"

#include "host/services.h"

namespace tessel::client {
std::vector<RefusedDocument> HookCaller::Collect(const Keys& documents) {
  const std::vector<CollectRefusal> refusals = CommonXFunctions::RefusalsOf(
      hosted_.LoadedProgram().services, hosted_.Session(), hosted_.ObjectRows(documents));
  Keys accepted;
  std::vector<RefusedDocument> refused;
  for (std::size_t row = 0; row < refusals.size(); ++row) {
    if (refusals[row] == CollectRefusal::kNone) {
      accepted.push_back(documents[row]);
    } else {
      refused.push_back({documents[row], refusals[row]});
    }
  }
  PcRecordListPtr none;
  if (!accepted.empty())
    hosted_.Entry().CollectSelObjs(hosted_.Session(), "", hosted_.ObjectRows(accepted), nullptr, none);
  return refused;
}

void HookCaller::KeepCollected(const Keys& documents) {
  PcGlobalData& data = hosted_.Session()->GlobalData();
  CommonXFunctions::RemoveSelection(data);
  if (documents.empty()) return;
  int number = 0;
  for (const ObjectKey& key : documents)
    data.Set(global_data::ObjectName(++number), Value(ObjectKeyText(key, ':')));
  data.Set(global_data::kCount, Value(std::to_string(number)));
}

const ExportOutcome& HookCaller::Export(bool intoFolderStructure) {
  PcRecordListPtr none;
  hosted_.Entry().StartExport(hosted_.Session(), intoFolderStructure ? "StructureMode" : "", nullptr, nullptr,
                              none);
  return hosted_.LoadedProgram().exportOutcome;
}

const LockOutcome& HookCaller::Lock(const Keys& documents) {
  PcRecordListPtr none;
  hosted_.Entry().LockObject(hosted_.Session(), "", hosted_.ObjectRows(documents), nullptr, none);
  return hosted_.LoadedProgram().lockOutcome;
}

const LockOutcome& HookCaller::Unlock(const Keys& documents) {
  PcRecordListPtr none;
  hosted_.Entry().UnlockObject(hosted_.Session(), "", hosted_.ObjectRows(documents), nullptr, none);
  return hosted_.LoadedProgram().lockOutcome;
}

const ContinueOutcome& HookCaller::Continue(const ObjectKey& exchange) {
  PcRecordListPtr none;
  hosted_.Entry().ContinueBatchMode(hosted_.Session(), "", hosted_.ObjectRows({exchange}), nullptr, none);
  return hosted_.LoadedProgram().continueOutcome;
}

void HookCaller::ShowLatest(const ObjectKey& document) {
  hosted_.Entry().GetLatestDataExObj(hosted_.Session(), "", hosted_.ObjectRows({document}));
}

void HookCaller::ShowObject(const ObjectKey& key) {
  const PcObjectPtr object = hosted_.Session()->ObjectStore()->Object(key);
  if (!object) return;
  object->ReadData();
  const auto dialog = CreateService<PcGUIServices>(*hosted_.Session())->NewObjectDialog(1);
  dialog->SetObject(object);
  static_cast<void>(dialog->ShowModal());
}

}  // namespace tessel::client
