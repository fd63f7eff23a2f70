// The work on one exchange directory whose lock is held.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "sender/journal.h"
#include "sender/status_texts.h"
#include "sender/transfer.h"
#include "sender/work.h"

namespace tessel::sender {

class ExchangeWork {
 public:
  ExchangeWork(const WorkParts& parts, const Databases& databases, ExchangeDirectory directory,
               DirectoryLock& lock)
      : parts_(parts), databases_(databases), directory_(std::move(directory)), lock_(lock) {}

  // Errors: HostError and RuntimeError when database or file system do not let us; nothing is lost then.
  WorkAnswer Run();

 private:
  std::optional<WorkAnswer> ReadAll();
  std::optional<WorkAnswer> FindRecord();
  std::optional<WorkAnswer> CheckIdentity();
  WorkAnswer GoOn();
  WorkAnswer Attempt();
  void Requeue();
  void CheckAccount();
  void CheckPackageName(const std::vector<std::string>& taken) const;
  void TakeDocuments();
  void Claim();
  void ClearWorkFolder();
  void Pack();
  Outcome Transfer();
  Outcome AfterCrash();
  WorkAnswer Conclude(const Outcome& outcome);
  WorkAnswer TryLater(const Outcome& outcome);
  WorkAnswer Wait(const Outcome& outcome);
  WorkAnswer Stop(const std::string& reason);
  WorkAnswer StopUnusable(const Reason& why);
  [[nodiscard]] bool FindRecordOtherwise();
  [[nodiscard]] bool TakeRecord(ExchangeDatabase& database, const ObjectKey& key);
  [[nodiscard]] bool IsNamedElsewhere(const ObjectKey& key) const;
  [[nodiscard]] std::string WithHistory(const std::string& reason) const;
  WorkAnswer FinishStop();
  [[nodiscard]] bool WasContinued();
  WorkAnswer FinishSent();

  void Say(const char* step, const std::string& text, StepKind kind = StepKind::kInfo);
  void Protocol(const std::string& line);
  void Save() { WriteJournal(parts_.files, directory_, journal_); }
  // For steps that go on without the journal: a full disk must not keep an exchange from its end.
  void SaveIfPossible();
  void Report(std::optional<Phase> phase, const std::string& status, const std::string& rootDirectory = {});
  void MoveTo(Place place);
  [[nodiscard]] std::string PackagePath() const;
  [[nodiscard]] std::string PackageName() const;
  [[nodiscard]] TransferJob Job();
  [[nodiscard]] std::string Language() const;
  [[nodiscard]] std::string Words(StatusText text, const std::vector<std::string>& values = {}) const;

  const WorkParts& parts_;
  const Databases& databases_;
  ExchangeDirectory directory_;
  DirectoryLock& lock_;
  DataFile data_;
  std::string dataBytes_;
  Journal journal_;
  std::optional<Reason> journalProblem_;
  ExchangeDatabase* database_ = nullptr;
  std::unique_ptr<DirectoryLock> objectLock_;
  std::unique_ptr<ExchangeRecord> record_;
};

}  // namespace tessel::sender
