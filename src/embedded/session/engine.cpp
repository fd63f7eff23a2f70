#include "embedded/session/engine.h"

#include <algorithm>

#include "host/error.h"

namespace tessel::embedded {
namespace {

EmbeddedSession& OwnSession(PcSession& session) {
  auto* own = dynamic_cast<EmbeddedSession*>(&session);
  if (!own) throw HostError("The session is not one of this engine");
  return *own;
}

}  // namespace

DatabaseEntry EmbeddedEngine::Database(const std::string& name) const {
  if (name != core_->metadata->alias) throw HostError("The engine knows no database \"" + name + "\"");
  return {name, core_->databasePath, ""};
}

PcSessionPtr EmbeddedEngine::NewSession(const std::string& databaseName) {
  static_cast<void>(Database(databaseName));
  auto session = std::make_shared<EmbeddedSession>(core_, weak_from_this());
  sessions_.push_back(session);
  return session;
}

void EmbeddedEngine::OpenConnection(PcSession& session, const std::string& connectionText, const std::string&,
                                    int) {
  if (connectionText != core_->databasePath) {
    throw HostError("The engine cannot connect to \"" + connectionText + "\"");
  }
  OwnSession(session).Connect();
}

bool EmbeddedEngine::Login(PcSession& session, const std::string& loginName, const std::string& password) {
  return OwnSession(session).Login(loginName, password, "");
}

std::pair<std::string, std::string> EmbeddedEngine::FirstSessionLogin() const {
  if (sessions_.empty() || !sessions_.front()->UserAccount()) return {};
  return {sessions_.front()->UserAccount()->loginName, sessions_.front()->UserAccount()->password};
}

PcSessionPtr EmbeddedEngine::Session(int index) const {
  if (index < 0 || index >= SessionCount()) {
    throw RuntimeError(error_number::kSubscriptOutOfRange,
                       "Subscript out of range: session " + std::to_string(index));
  }
  return sessions_[static_cast<std::size_t>(index)];
}

void EmbeddedEngine::Shutdown() {
  while (!sessions_.empty())
    sessions_.back()->Close();
}

void EmbeddedEngine::Forget(const EmbeddedSession& session) {
  std::erase_if(sessions_, [&](const EmbeddedSessionPtr& each) { return each.get() == &session; });
}

}  // namespace tessel::embedded
