#include "dispatch/server_monitor.h"

#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel {
namespace {

constexpr int kMaximalWaits = 50;
constexpr int kWaitsOfGoodStart = 45;
constexpr std::chrono::milliseconds kWait{100};

}  // namespace

bool StartServerMon(Services& services, const std::string& directory, PcSession& session, ObjectId objectId,
                    ClassId classId, const std::string& idValue) {
  const auto start = [&] {
    Trace& trace = services.trace;
    const std::string sessionId = session.Identifier();
    trace.Write("start Kestrix Server monitor with parameter:");
    trace.Write("... Session ID: " + sessionId);
    trace.Write("... DataExClassID: " + std::to_string(classId));
    trace.Write("... DataExObjID: " + std::to_string(objectId));
    trace.Write("... DataExID: " + idValue);
    const std::string argument =
        sessionId + "@" + std::to_string(classId) + "@" + std::to_string(objectId) + "@" + idValue;
    std::int32_t processId = 0;
    PassingOver(trace.problems, "Starting the server monitor", [&] {
      processId =
          services.platform.processes.Start(paths::Join(directory, kServerMonitorProgram), {argument});
    });
    // The process id is not asked for again: a failed start is told after the full time.
    int waits = 0;
    while (waits < kMaximalWaits && processId <= 0) {
      services.platform.pauser.Sleep(kWait);
      ++waits;
    }
    const bool started = waits <= kWaitsOfGoodStart;
    trace.Write(started ? " ==> Server Monitor started" : " ==> Server Monitor NOT started!!");
    return started;
  };
  return Guarded(services.trace, "Error while starting the server monitor (StartServerMon/StartApplication)",
                 false, start);
}

}  // namespace tessel
