#include "hook_caller.h"

#include "host/services.h"
#include "qt/text.h"

namespace tessel::client {

void HookCaller::Collect(const Keys& documents) {
  PcRecordListPtr none;
  hosted_.Entry().CollectSelObjs(hosted_.Session(), "", hosted_.ObjectRows(documents), nullptr, none);
}

std::optional<ExportFailure> HookCaller::Export(bool intoFolderStructure) {
  PcRecordListPtr none;
  hosted_.Entry().StartExport(hosted_.Session(), intoFolderStructure ? "StructureMode" : "", nullptr, nullptr,
                              none);
  const WizardState& state = hosted_.LoadedProgram().wizard.state;
  if (!state.DispatchFailed && state.unrecordedDirectories.empty()) return std::nullopt;
  const auto listed = [](const std::vector<std::string>& directories) {
    QStringList list;
    for (const std::string& directory : directories)
      list.append(qt::ToQt(directory));
    return list;
  };
  return ExportFailure{qt::ToQt(hosted_.LastError()), listed(state.finishedDirectories),
                       listed(state.unrecordedDirectories)};
}

void HookCaller::Lock(const Keys& documents) {
  PcRecordListPtr none;
  hosted_.Entry().LockObject(hosted_.Session(), "", hosted_.ObjectRows(documents), nullptr, none);
}

void HookCaller::Unlock(const Keys& documents) {
  PcRecordListPtr none;
  hosted_.Entry().UnlockObject(hosted_.Session(), "", hosted_.ObjectRows(documents), nullptr, none);
}

void HookCaller::Continue(const ObjectKey& exchange) {
  PcRecordListPtr none;
  hosted_.Entry().ContinueBatchMode(hosted_.Session(), "", hosted_.ObjectRows({exchange}), nullptr, none);
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
