#include "entry/start_application.h"

#include "dispatch/server_monitor.h"
#include "entry/export_run.h"
#include "entry/hook_trace.h"
#include "entry/program.h"
#include "locking/batch_continuation.h"
#include "locking/latest_exchange_object.h"
#include "locking/object_locking.h"
#include "messages/guard.h"
#include "selection/selection.h"

namespace tessel {
namespace {

constexpr std::int16_t kDone = 0;

// The last line of defence of a hook whose own routine traps its errors.
template <class Work>
void RunTrapped(Program& program, const char* hook, Work&& work) noexcept {
  IgnoringErrors([&] {
    GuardedRun(program.trace, std::string("Fehlerabbruch im Modul (") + hook + "/StartApplication)",
               std::forward<Work>(work));
  });
}

// The same for a hook that is no part of another one; its trace is complete when it returns.
template <class Work>
void RunHook(Program& program, const char* hook, Work&& work) noexcept {
  program.trace.problems.Clear();
  RunTrapped(program, hook, std::forward<Work>(work));
  program.trace.Flush();
}

}  // namespace

std::int16_t StartApplication::StartExport(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                           const PcRecordListPtr&, const PcRecordListPtr&,
                                           PcRecordListPtr&) noexcept {
  std::int16_t status = 1;
  try {
    status = RunExport(program_, PcSession, activeOperation);
  } catch (...) {
    TraceError(program_.trace, "Fehlerabbruch im Modul (StartExport/StartApplication)", CurrentError());
    IgnoringErrors([&] { ShowExportFailure(program_); });
  }
  KeepExportOutcome(program_);
  program_.trace.Flush();
  return status;
}

std::int16_t StartApplication::CollectSelObjs(const PcSessionPtr& PcSession, const std::string&,
                                              const PcRecordListPtr& FirstRec,
                                              const PcRecordListPtr& SecondRec, PcRecordListPtr&) noexcept {
  int status = kDone;
  RunHook(program_, "CollectSelObjs", [&] {
    StartHookTrace(program_, "_Client_SelectObjects");
    status = CommonXFunctions::PutSelection2PcGlobalData(program_.services, PcSession, FirstRec, SecondRec);
    RecoverCutOffExports(program_, PcSession);
  });
  return static_cast<std::int16_t>(status);
}

std::int16_t StartApplication::LFCStage2(const PcSessionPtr&, const std::string&,
                                         const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                         PcRecordListPtr&) noexcept {
  RunTrapped(program_, "LFCStage2", [&] {
    program_.trace.Write("Hook 'LFCStage2' has been called");
    CommonXFunctions::AllCopiedFiles(program_.services, program_.exchange, FirstRec, SecondRec);
  });
  return kDone;
}

std::int16_t StartApplication::LockObject(const PcSessionPtr& PcSession, const std::string&,
                                          const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                          PcRecordListPtr& thirdRec) noexcept {
  RunHook(program_, "LockObject", [&] {
    StartHookTrace(program_, "_Client_LockObjects");
    program_.lockOutcome = {};
    program_.lockOutcome =
        CommonXFunctions::LockObject(program_.services, PcSession, FirstRec, SecondRec, thirdRec);
    RecoverCutOffExports(program_, PcSession);
  });
  return kDone;
}

std::int16_t StartApplication::UnlockObject(const PcSessionPtr& PcSession, const std::string&,
                                            const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                            PcRecordListPtr& thirdRec) noexcept {
  RunHook(program_, "UnlockObject", [&] {
    StartHookTrace(program_, "_Client_UnlockObjects");
    program_.lockOutcome = {};
    program_.lockOutcome =
        CommonXFunctions::UnlockObject(program_.services, PcSession, FirstRec, SecondRec, thirdRec);
    RecoverCutOffExports(program_, PcSession);
  });
  return kDone;
}

std::int16_t StartApplication::GetLatestDataExObj(const PcSessionPtr& PcSession, const std::string&,
                                                  const PcRecordListPtr& FirstRec) noexcept {
  RunHook(program_, "GetLatestDataExObj", [&] {
    CommonXFunctions::GetLatestDataExObj(program_.services, PcSession, FirstRec);
    RecoverCutOffExports(program_, PcSession);
  });
  return kDone;
}

std::int16_t StartApplication::ContinueBatchMode(const PcSessionPtr& PcSession, const std::string&,
                                                 const PcRecordListPtr& FirstRec, const PcRecordListPtr&,
                                                 PcRecordListPtr&) noexcept {
  RunHook(program_, "ContinueBatchMode", [&] {
    StartHookTrace(program_, "_Client_Continue_Batch_Process");
    program_.continueOutcome = {};
    program_.continueOutcome = CommonXFunctions::ContinueBatchMode(program_.services, PcSession, FirstRec);
    RecoverCutOffExports(program_, PcSession);
  });
  return kDone;
}

bool StartApplication::StartServerMon(const std::string& directory, const PcSessionPtr& PcSession,
                                      ObjectId objectId, ClassId classId,
                                      const std::string& idValue) noexcept {
  bool started = false;
  RunHook(program_, "StartServerMon", [&] {
    started = tessel::StartServerMon(program_.services, directory, *Required(PcSession.get(), "PcSession"),
                                     objectId, classId, idValue);
  });
  return started;
}

}  // namespace tessel
