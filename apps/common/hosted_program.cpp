#include "common/hosted_program.h"

#ifdef TESSEL_WITH_RECEIVED
#include "common/checksum_recorder.h"
#endif
#include "embedded/client/object_rows.h"

namespace tessel {
namespace {

embedded::HostOptions OptionsOf(const Platform& platform, embedded::HostDialogs& dialogs) {
  embedded::HostOptions options;
  options.files = &platform.files;
  options.dialogs = &dialogs;
  return options;
}

AdditionalValuesFactory AdditionalValuesOf([[maybe_unused]] const FileSystem& files) {
#ifdef TESSEL_WITH_RECEIVED
  return RecordingChecksums(files, MakeTracingAdditionalValues);
#else
  return MakeTracingAdditionalValues;
#endif
}

}  // namespace

HostedProgram::HostedProgram(const HostedLogin& login, const Platform& platform, Toolkit& toolkit,
                             embedded::HostDialogs& dialogs)
    : platform_(platform),
      traceFile_(platform_.files, platform_.encodings.Open(platform_.ansiCodePage)),
      host_(login.database, OptionsOf(platform_, dialogs)),
      program_(platform_, toolkit, host_, traceFile_.Factory(), AdditionalValuesOf(platform_.files)),
      entry_(program_),
      session_(host_.OpenSession(login.user, login.password, login.language)) {
  host_.SetCopyWatch([this, &toolkit](const embedded::CopyStep& step) { return CopyGoesOn(toolkit, step); });
  host_.SetLfcStage2([this](const PcSessionPtr& session, const std::string& operation,
                            const PcRecordListPtr& first, const PcRecordListPtr& second,
                            const PcRecordListPtr& third) {
    PcRecordListPtr thirdRecords = third;
    entry_.LFCStage2(session, operation, first, second, thirdRecords);
  });
}

bool HostedProgram::CopyGoesOn(Toolkit& toolkit, const embedded::CopyStep& step) {
  const WizardState& state = program_.wizard.state;
  if (step.filesDone == 0 && step.bytesDone == 0) {
    cancelledBefore_ = state.ExportCancelled;
  } else if (step.filesDone != step.files) {
    toolkit.PumpEvents();  // the page does so itself behind the last file
  }
  const bool goesOn = !copyWatch_ || copyWatch_(step);
  return goesOn && state.ExportCancelled == cancelledBefore_;
}

PcRecordListPtr HostedProgram::ObjectRows(const std::vector<ObjectKey>& keys) {
  PcRecordListPtr list = NewRecordList();
  embedded::FillObjectRows(*session_, keys, *list);
  return list;
}

Platform WithServices(const Platform& platform, Pauser& pauser, ProcessLauncher& launcher) {
  return {platform.files,  platform.encodings, platform.clock,       pauser, launcher, platform.profiles,
          platform.system, platform.program,   platform.ansiCodePage};
}

}  // namespace tessel
