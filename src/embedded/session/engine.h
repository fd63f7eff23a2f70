// The engine that opens and keeps sessions.
#pragma once

#include <memory>
#include <vector>

#include "embedded/session/session.h"

namespace tessel::embedded {

class EmbeddedEngine final : public SessionEngine, public std::enable_shared_from_this<EmbeddedEngine> {
 public:
  explicit EmbeddedEngine(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

  // The sessions are configured through HostOptions; the file is not read.
  void Initialize(const std::string& iniFileName) override { iniFileName_ = iniFileName; }
  void SetOption(int value) override { option_ = value; }
  [[nodiscard]] std::string DefaultDatabaseName() const override { return core_->metadata->alias; }
  // The connection text is the path of the database.
  [[nodiscard]] DatabaseEntry Database(const std::string& name) const override;
  [[nodiscard]] PcSessionPtr NewSession(const std::string& databaseName) override;
  // Error: HostError for a session of another host or a connection text that is not the database's.
  void OpenConnection(PcSession& session, const std::string& connectionText, const std::string& password,
                      int option) override;
  [[nodiscard]] bool Login(PcSession& session, const std::string& loginName,
                           const std::string& password) override;
  [[nodiscard]] std::pair<std::string, std::string> FirstSessionLogin() const override;
  [[nodiscard]] int SessionCount() const override { return static_cast<int>(sessions_.size()); }
  [[nodiscard]] PcSessionPtr Session(int index) const override;
  // Closes all sessions.
  void Shutdown() override;

  void Forget(const EmbeddedSession& session) override;

 private:
  std::shared_ptr<HostCore> core_;
  std::vector<EmbeddedSessionPtr> sessions_;
  std::string iniFileName_;
  int option_ = 0;
};

}  // namespace tessel::embedded
