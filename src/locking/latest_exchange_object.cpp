#include "locking/latest_exchange_object.h"

#include "config/pelicore_admin_tool.h"
#include "host/error.h"
#include "host/names.h"
#include "hostlib/qel_function_pool.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr int kRetrievalMode = 2;
constexpr int kNoModeValue = 0;
constexpr int kDisplayMode = 1;
constexpr int kFirstPage = 1;
constexpr int kModal = 1;

// The row with the highest object id is the newest object; -1 when no id is above 0.
int NewestRow(const PcRecordList& rows) {
  int newest = -1;
  ObjectId highest = 0;
  for (int row = 0; row < rows.RowCount(); ++row) {
    const ObjectId id = rows.GetValue(attribute::kObjectId, row).AsInt32();
    if (id <= highest) continue;
    highest = id;
    newest = row;
  }
  return newest;
}

void ShowNewest(Services& services, PcSession& session, const PcObject& document, ClassId linkClass) {
  const QelFunctionPool pool(services.platform, services.runtime);
  PcRecordListPtr related;
  pool.RetrieveRelations(document, {.id = services.declarations.startup.TransmittalClassID},
                         {.id = linkClass}, kRetrievalMode, related);
  const int newest = related ? NewestRow(*related) : -1;
  if (newest < 0) {
    services.toolkit.ShowMessage({.text = "no linked data exchange object to selected document!",
                                  .title = {},
                                  .icon = MessageIcon::kExclamation});
    return;
  }
  const PcObjectPtr exchange =
      Required(session.ObjectStore()->Object(related->KeyOfRow(newest)), "data exchange object");
  exchange->ReadData();
  pool.DisplayObject(exchange, kNoModeValue, kDisplayMode, "DataExchange Object to selected document",
                     kFirstPage, kModal);
}

}  // namespace

int GetLatestDataExObj(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first) {
  GuardedRun(services.trace, "Fehlerabbruch im Modul (GetLatestDataExObj/CommonXFunctions)", [&] {
    const PcRecordList& rows = *Required(first.get(), "first record list");
    PcSession& current = *Required(session.get(), "PcSession");
    const PcObjectPtr document =
        Required(current.ObjectStore()->Object(rows.KeyOfRow(0)), "selected document");
    document->ReadData();
    // Before the start-up, which makes the program's own admin tool.
    const ClassId linkClass =
        PelicoreAdminTool(services.trace).GetGenLinkCLassID_byObject(document, document);
    if (!Init(services, session)) return;
    ShowNewest(services, current, *document, linkClass);
  });
  return 0;
}

}  // namespace tessel::CommonXFunctions
