// The life-cycle copy of one selected object into the exchange directory.
#include "exchange/exchange.h"
#include "host/column_shape.h"
#include "host/names.h"
#include "host/services.h"
#include "messages/guard.h"
#include "platform/paths.h"
#include "selection/selection.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr const char* kCopyError =
    "Fehler beim Kopieren der Dokumente in das temp. Austauschverzeichnisses "
    "(copyFile2ExDir/CommonXFunctions)";

// How the copy itself ended.
struct CopyOutcome {
  bool objectMissing = false;  // the flag in the global data then stays set
  bool failed = false;
  int viewResult = 0;
};

PcLifeCycleOperationsPtr OperationsOf(const PcObject& object) {
  const auto objectClass = Required(object.Class(), "class of the object");
  return Required(objectClass->LifeCycleOperations(), "life-cycle operations");
}

PcRecordListPtr CopyParameters(HostRuntime& runtime, const std::string& directory, std::int16_t operationId) {
  auto list = Required(NewRecList(runtime), "record list");
  AddColumn(*list, "DIRECTORY", column_shape::kText);
  AddColumn(*list, attribute::kOperationId, column_shape::kInteger);
  AddColumn(*list, attribute::kFileOverwrite, column_shape::kInteger);
  list->SetValue("DIRECTORY", 0, Value(directory));
  list->SetValue(attribute::kOperationId, 0, Value(operationId));
  list->SetValue(attribute::kFileOverwrite, 0, Value(std::int16_t{1}));
  return list;
}

CopyOutcome CopySilently(Services& services, const ExchangeState& state, const PcObjectPtr& object) {
  const auto utility = CreateService<PcSessionUtil>(services.Session());
  if (!object) {
    services.trace.Write("Could not retrieve selected object");
    TraceError(services.trace, kCopyError,
               {error_number::kObjectNotSet, "Object variable not set: selected object"});
    return {.objectMissing = true};
  }
  const auto operation = Required(OperationsOf(*object)->Item("CopyFile"), "operation CopyFile");
  const auto parameters = CopyParameters(services.runtime, state.directoryPath, operation->Id());
  utility->RunOperation(*object, *operation, true, nullptr, parameters);
  return {.viewResult = 1};
}

CopyOutcome CopyThroughView(Services& services, SendDataView& page, const PcObjectListPtr& objects,
                            const PcObjectPtr& selected) {
  Trace& trace = services.trace;
  const auto object = Required(selected, "selected object");
  trace.Write("LFObject (copyFile2ExDir/CommonXFunctions): " + std::to_string(object->GetObjectId()) + " ; " +
              std::to_string(object->GetClassId()));
  objects->Add(object);
  page.HideForHostWindow();
  const auto operations = OperationsOf(*object);
  trace.Write("Operations gesetzt(copyFile2ExDir/CommonXFunctions)");
  const auto commonGui = CreateService<PcCommonGUI>(services.Session());
  trace.Write("PcGUISrv.PcCommonGUI gesetzt(copyFile2ExDir/CommonXFunctions)");
  const auto view = Required(commonGui->NewLifeCycleView(), "life-cycle view");
  trace.Write("NewLifeCycleView gesetzt(copyFile2ExDir/CommonXFunctions)");
  view->SetObjects(objects);
  view->SetOperation(operations->Item("COPYFILE"));
  view->SetFlag(false);
  view->Show();
  const int result = view->Result();
  trace.Write(
      "LFC Fenster zum Kopieren der Objekte wieder geschlossen mit "
      "Result(copyFile2ExDir/CommonXFunctions): " +
      std::to_string(result));
  return {.viewResult = result};
}

CopyOutcome RunCopy(Services& services, const ExchangeState& state, SendDataView& page,
                    const std::string& nodeTag) {
  PcSession& session = services.Session();
  const auto store = Required(session.ObjectStore(), "object store");
  const auto objects = Required(store->NewObjectList(), "object list");
  session.GlobalData().Set(global_data::kCopyRunning, Value("True"));
  services.trace.Write("globale Variable 'isKestrix' auf 'true' gesetzt (copyFile2ExDir/CommonXFunctions) ");
  const bool silent = page.CopyAll();
  const auto object = store->Object(ParseObjectKey(nodeTag, '_'));
  return silent ? CopySilently(services, state, object) : CopyThroughView(services, page, objects, object);
}

void ClearCopyFlag(Services& services) {
  PassingOver(services.trace.problems, "Clearing the copy flag", [&] {
    PcGlobalData& globalData = services.Session().GlobalData();
    const int position = globalData.Position(global_data::kCopyRunning);
    services.trace.Write("IndexOf: " + std::to_string(position));
    if (position >= 1) globalData.Remove(global_data::kCopyRunning);
  });
}

// The dispatch would replace such a file, and the recipient would get something else under its name.
void RefuseReservedName(const std::string& name) {
  throw RuntimeError(error_number::kFileAlreadyExists,
                     "\"" + name + "\" is the name of a file that the export itself writes");
}

// The directory tells the exact names for any host; the rows of this copy those that only the recipient's
// machine takes for the same. (Listing the directory after each object would cost the square of their
// number.)
void CheckReservedNames(const Services& services, const ExchangeState& state) {
  const Configuration& settings = services.Settings();
  const PcRecordListPtr& rows = state.copied.Files();
  const bool named = rows && rows->HasColumn(attribute::kFileName);
  const int column = named ? rows->FindColumn(attribute::kFileName) : -1;
  for (const std::string& reserved : {settings.StructureFileName, settings.DataFileName}) {
    if (!paths::IsPlainFileName(reserved)) continue;
    if (services.platform.files.FileExists(paths::Join(state.directoryPath, reserved))) {
      RefuseReservedName(reserved);
    }
    for (int row = 0; named && row < rows->RowCount(); ++row) {
      const std::string name = rows->GetValue(column, row).AsText();
      if (paths::IsSameFileName(name, reserved)) RefuseReservedName(name);
    }
  }
}

CopyResult ResultOf(const CopyOutcome& outcome) {
  if (outcome.viewResult == 1) return CopyResult::kCopied;
  return outcome.viewResult == 2 || outcome.viewResult == 7 ? CopyResult::kCancelled : CopyResult::kFailed;
}

}  // namespace

CopyResult copyFile2ExDir(Services& services, ExchangeState& state, SendDataView& view,
                          const std::string& nodeTag) {
  const CopyOutcome outcome = Guarded(services.trace, kCopyError, CopyOutcome{.failed = true},
                                      [&] { return RunCopy(services, state, view, nodeTag); });
  if (outcome.objectMissing) return CopyResult::kFailed;
  ClearCopyFlag(services);
  if (outcome.failed) return CopyResult::kFailed;
  return Guarded(services.trace, kCopyError, CopyResult::kFailed, [&] {
    if (services.platform.files.FolderExists(state.directoryPath)) {
      CheckReservedNames(services, state);
      return ResultOf(outcome);
    }
    services.toolkit.ShowMessage({services.errors.ErrorHandle("e0195"), "Kestrix", MessageIcon::kCritical});
    return CopyResult::kFailed;
  });
}

}  // namespace tessel::CommonXFunctions
