// Dialogs of the client: objects, selection, life cycle, system messages.
#include <algorithm>
#include <array>

#include "host/column_shape.h"
#include "host/error.h"
#include "host/services.h"
#include "hostlib/qel_function_pool.h"

namespace tessel {
namespace {

constexpr int kDefaultDisplayMode = 1;
constexpr int kModeWithValue = 2;
constexpr int kLastDisplayMode = 10;
constexpr int kUnknownDisplayMode = 7;
constexpr const char* kStartCode = "F";
constexpr const char* kCheckIn = "CHECKIN";
constexpr const char* kRelease = "RELEASE";
constexpr std::array<const char*, 6> kInteractiveOperations = {kCheckIn,   kRelease,     "APPROVE",
                                                               "CHECKOUT", "NEWRELEASE", "COPYFILE"};

int KnownDisplayMode(int mode) {
  const bool known = mode >= 0 && mode <= kLastDisplayMode && mode != kUnknownDisplayMode;
  return known ? mode : kDefaultDisplayMode;
}

// The dialogs of the modes 0, 9 and 10 bring their own object.
bool TakesObject(int mode) {
  return mode >= 1 && mode <= 8;
}

// Shows a dialog that is built; what the user chose in it.
PcObjectPtr ShowDialog(PcObjectDialog& dialog, int mode, const std::string& title,
                       const DialogOptions& options) {
  if (mode == kModeWithValue) dialog.SetModeValue(options.modeValue);
  dialog.SetTitle(title);
  if (dialog.PageCount() >= 1) dialog.SelectPage(options.page);
  if (options.modal == 0) {
    dialog.ShowModeless();
    return nullptr;
  }
  if (dialog.ShowModal() != 1) return nullptr;
  PcObjectPtr chosen = dialog.Object();
  if (chosen) chosen->ReadData();
  return chosen;
}

PcRecordListPtr Select(PcSession& session, const ClassArgument& classArgument, const std::string& title,
                       bool multiple, bool composite) {
  const ClassId classId = classArgument.Resolve(session);
  if (classId == 0) return nullptr;
  return CreateService<PcCommonGUI>(session)->SelectObjects(
      {.code = kStartCode, .classId = classId, .title = title, .multiple = multiple, .composite = composite});
}

// The object of the first row, its data read.
PcObjectPtr FirstObject(PcSession& session, const PcRecordListPtr& picked) {
  if (!picked || picked->RowCount() == 0) return nullptr;
  PcObjectPtr object = session.ObjectStore()->Object(picked->KeyOfRow(0));
  if (object) object->ReadData();
  return object;
}

enum class MissingObjects { kLeftOut, kAnError };

PcObjectListPtr ObjectsOf(PcSession& session, const PcRecordList& records, MissingObjects missing) {
  const PcObjectStorePtr store = session.ObjectStore();
  PcObjectListPtr objects = Required(store->NewObjectList(), "object list");
  for (int row = 0; row < records.RowCount(); ++row) {
    PcObjectPtr object = store->Object(records.KeyOfRow(row));
    if (!object && missing == MissingObjects::kLeftOut) continue;
    Required(object.get(), "object of the list")->ReadData();
    objects->Add(std::move(object));
  }
  return objects;
}

PcLifeCycleOperationPtr OperationOf(const PcObject& object, const std::string& name) {
  return Required(Required(object.Class(), "class of the object")->LifeCycleOperations()->Item(name),
                  "life-cycle operation");
}

bool RunInWindow(PcSession& session, const PcObjectListPtr& objects, const std::string& operation,
                 const std::string& comment, int option) {
  const bool known = std::find(kInteractiveOperations.begin(), kInteractiveOperations.end(), operation) !=
                     kInteractiveOperations.end();
  const auto view = Required(CreateService<PcCommonGUI>(session)->NewLifeCycleView(), "life-cycle view");
  view->SetObjects(objects);
  view->SetOperation(OperationOf(*objects->Item(0), known ? operation : kCheckIn));
  view->SetComment(comment);
  view->SetFlag(option != 0);
  view->Show();
  return view->Result() == static_cast<std::int16_t>(LifeCycleViewResult::kDone);
}

bool RunSilently(PcSession& session, HostRuntime& runtime, const PcObjectListPtr& objects,
                 const std::string& operation, const std::string& comment) {
  if (operation != kCheckIn && operation != kRelease) return false;
  const auto util = CreateService<PcSessionUtil>(session);
  for (int i = 0; i < objects->Count(); ++i) {
    const PcObjectPtr object = objects->Item(i);
    const PcRecordListPtr parameters = Required(runtime.CreateRecordList(), "record list");
    AddColumn(*parameters, "COMMENT", column_shape::kText);
    parameters->SetValue("COMMENT", 0, comment);
    util->RunOperation(*object, *OperationOf(*object, operation), true, nullptr, parameters);
  }
  return true;
}

bool RunLifeCycle(PcSession& session, HostRuntime& runtime, const PcObjectListPtr& objects,
                  const std::string& operation, const std::string& comment, bool interactive, int option) {
  if (objects->Count() == 0) return false;
  return interactive ? RunInWindow(session, objects, operation, comment, option)
                     : RunSilently(session, runtime, objects, operation, comment);
}

}  // namespace

PcObjectPtr QelFunctionPool::DisplayObject(const PcObjectPtr& object, int modeValue, int displayMode,
                                           const std::string& title, int page, int modal) const {
  Required(object.get(), "object");
  const int mode = KnownDisplayMode(displayMode);
  const PcSessionPtr session = Required(object->Session(), "session of the object");
  const auto dialog =
      Required(CreateService<PcGUIServices>(*session)->NewObjectDialog(mode), "object dialog");
  if (TakesObject(mode)) dialog->SetObject(object);
  return ShowDialog(*dialog, mode, title, {.modeValue = modeValue, .page = page, .modal = modal});
}

PcObjectPtr QelFunctionPool::DisplayObjects(PcSession& session, const PcObjectListPtr& objects,
                                            int displayMode, const std::string& title,
                                            const DialogOptions& options) const {
  const int mode = KnownDisplayMode(displayMode);
  const auto dialog = Required(CreateService<PcGUIServices>(session)->NewObjectDialog(mode), "object dialog");
  if (TakesObject(mode)) dialog->SetObjects(Required(objects, "objects"));
  return ShowDialog(*dialog, mode, title, options);
}

PcObjectPtr QelFunctionPool::DisplayObjs(PcSession& session, const PcRecordList& records, int displayMode,
                                         const std::string& title, const DialogOptions& options) const {
  return DisplayObjects(session, ObjectsOf(session, records, MissingObjects::kLeftOut), displayMode, title,
                        options);
}

PcObjectPtr QelFunctionPool::SelectObject(PcSession& session, const ClassArgument& classArgument,
                                          const std::string& title) const {
  return FirstObject(session, Select(session, classArgument, title, false, false));
}

PcRecordListPtr QelFunctionPool::SelectObjects(PcSession& session, const ClassArgument& classArgument,
                                               const std::string& title) const {
  return Select(session, classArgument, title, true, false);
}

PcObjectPtr QelFunctionPool::SelectCompositeObject(PcSession& session, const ClassArgument& classArgument,
                                                   const std::string& title) const {
  return FirstObject(session, Select(session, classArgument, title, false, true));
}

PcRecordListPtr QelFunctionPool::SelectCompositeObjects(PcSession& session,
                                                        const ClassArgument& classArgument,
                                                        const std::string& title) const {
  return Select(session, classArgument, title, true, true);
}

PcObjectPtr QelFunctionPool::SelectSingleObjectFromQuery(PcSession& session, PcObjectPtr& object) const {
  object = CreateService<PcCommonGUI>(session)->SelectFromQuery();
  return object;
}

bool QelFunctionPool::LifeCycleOperation(PcSession& session, const PcObjectPtr& object,
                                         const std::string& operation, const std::string& comment,
                                         bool interactive, int option) const {
  PcObjectListPtr objects = Required(session.ObjectStore()->NewObjectList(), "object list");
  objects->Add(Required(object, "object"));
  return RunLifeCycle(session, runtime_, objects, operation, comment, interactive, option);
}

bool QelFunctionPool::LifeCycleOperation1(PcSession& session, const PcRecordList& objects,
                                          const std::string& operation, const std::string& comment,
                                          bool interactive, int option) const {
  return RunLifeCycle(session, runtime_, ObjectsOf(session, objects, MissingObjects::kAnError), operation,
                      comment, interactive, option);
}

void QelFunctionPool::DisplaySystemMessage(PcSession& session, int first, int second,
                                           const std::string& text1, const std::string& text2,
                                           const std::string& text3, const std::string& text4) const {
  CreateService<PcGUIServices>(session)->ShowSystemMessage(first, second, {text1, text2, text3, text4});
}

}  // namespace tessel
