#include "locking/continuation_recovery.h"

#include "config/supported_classes.h"
#include "host/error.h"
#include "host/names.h"
#include "locking/stopped_exchange.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

// True when the exchange got its status, or would.
bool Finish(FileSystem& files, PcSession& session, const ObjectKey& key, bool dryRun) {
  const PcUnitOfWorkPtr unit = dryRun ? nullptr : session.BeginUnitOfWork("");
  const PcObjectPtr exchange = Required(session.ObjectStore(), "object store")->Object(key);
  if (!exchange) return false;
  const Value phase = exchange->GetValue(attribute::kProcessPhase);
  const auto folders = FoldersOf(exchange->GetText(attribute::kRootDirectory));
  if (phase.IsNull() || phase.AsInt32() != kPhaseStopped || !folders || !WasRenamed(files, *folders))
    return false;
  if (dryRun) return true;
  exchange->SetValue(attribute::kProcessPhase, kPhaseContinued);
  const int code = exchange->Update(*Required(session.NewBehavior(), "behaviour"));
  if (code != 0) throw HostError("Writing the status: " + session.ErrorText(code), code);
  if (unit) unit->Commit();
  return true;
}

}  // namespace

std::vector<std::string> RecoverContinuations(Trace& trace, FileSystem& files, PcSession& session,
                                              bool dryRun) {
  constexpr const char* kStep =
      "Finishing continuations that were cut off (RecoverContinuations/CommonXFunctions)";
  std::vector<std::string> finished;
  GuardedRun(trace, kStep, [&] {
    StartupValues classes;
    if (!FixSupportedClasses(*Required(session.MetaData(), "metadata"), classes, trace)) return;
    const PcQueryPtr query = Required(session.ObjectStore(), "object store")->NewQuery();
    query->SetClass(classes.TransmittalClassID);
    query->AddSelect(attribute::kClassId);
    query->AddSelect(attribute::kObjectId);
    query->AddCondition(attribute::kProcessPhase, "=", kPhaseStopped);
    const PcRecordListPtr rows = query->Run();
    for (int row = 0; row < rows->RowCount(); ++row) {
      const ObjectKey key = rows->KeyOfRow(row);
      const ProblemSubject subject(trace.problems, "exchange " + ObjectKeyText(key, ':'));
      GuardedRun(trace, kStep, [&] {
        if (Finish(files, session, key, dryRun)) finished.push_back(ObjectKeyText(key, ':'));
      });
    }
  });
  return finished;
}

}  // namespace tessel::CommonXFunctions
