// A session of the embedded host: one SQL connection and, after the login, its user.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "embedded/session/copy_ledger.h"
#include "embedded/session/global_data.h"
#include "embedded/session/host_core.h"
#include "embedded/store/accounts.h"
#include "host/application.h"
#include "host/session.h"

namespace tessel::embedded {

class EmbeddedSession;
using EmbeddedSessionPtr = std::shared_ptr<EmbeddedSession>;

// The engine, as its sessions see it.
class SessionEngine : public PcEngine {
 public:
  // Takes a closed session out of the engine's list.
  virtual void Forget(const EmbeddedSession& session) = 0;
};

class EmbeddedSession final : public PcSession {
 public:
  EmbeddedSession(std::shared_ptr<HostCore> core, std::weak_ptr<SessionEngine> engine);

  // Connects to the database; a second call changes nothing.
  void Connect();
  // False when the login name is unknown or the password is wrong. An empty language: see HostOptions.
  [[nodiscard]] bool Login(const std::string& loginName, const std::string& password,
                           const std::string& language);
  // Nothing before the login.
  [[nodiscard]] const std::optional<Account>& UserAccount() const { return account_; }

  [[nodiscard]] HostCore& Core() const { return *core_; }
  // Error: HostError when the session is not connected or closed.
  [[nodiscard]] Database& Sql() const;
  [[nodiscard]] EmbeddedSessionPtr Self() const;

  // Files that this session copied, by directory and file name.
  [[nodiscard]] CopyLedger& Copies() { return copies_; }

  [[nodiscard]] PcUserPtr CurrentUser() const override;
  [[nodiscard]] std::vector<PcUserPtr> Users() const override;
  [[nodiscard]] std::string DatabaseAlias() const override { return core_->metadata->alias; }
  [[nodiscard]] std::string Identifier() const override { return identifier_; }
  [[nodiscard]] std::string Language() const override { return language_; }
  [[nodiscard]] std::string ConfigurationValue(const std::string& key) const override;
  // Kept in the database for the user. Error: HostError before the login.
  void SetConfigurationValue(const std::string& key, const std::string& value) override;
  [[nodiscard]] PcBehaviorPtr NewBehavior() override;
  [[nodiscard]] PcGlobalData& GlobalData() override { return globalData_; }
  [[nodiscard]] PcMetaDataPtr MetaData() const override { return core_->metadata; }
  [[nodiscard]] PcObjectStorePtr ObjectStore() override;
  [[nodiscard]] PcSequencePtr RelatedObject(const PcAttribute& attribute) const override;
  [[nodiscard]] std::shared_ptr<PcService> CreateService(std::string_view progId) override;
  [[nodiscard]] std::shared_ptr<PcEngine> Engine() const override { return engine_.lock(); }
  void Close() override;
  [[nodiscard]] PcUnitOfWorkPtr BeginUnitOfWork(const std::string& mark) override;
  [[nodiscard]] bool WasCommitted(const std::string& mark) override;
  void ForgetMark(const std::string& mark) override;
  [[nodiscard]] PcReadingPtr BeginReading() override;
  // The database's reason for the newest refused write when it had this code, else what the code means.
  [[nodiscard]] std::string ErrorText(int code) const override;

  // Keeps why a write was refused.
  void NoteRefusal(int code, const std::string& reason) { refusal_ = {code, reason}; }

 private:
  std::shared_ptr<HostCore> core_;
  std::weak_ptr<SessionEngine> engine_;
  std::shared_ptr<Database> database_;
  std::optional<Account> account_;
  std::string language_;
  std::string identifier_;
  embedded::GlobalData globalData_;
  CopyLedger copies_;
  std::pair<int, std::string> refusal_;
};

}  // namespace tessel::embedded
