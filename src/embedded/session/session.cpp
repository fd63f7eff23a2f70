#include "embedded/session/session.h"

#include <array>

#include "embedded/session/client_work.h"
#include "embedded/session/unit_of_work.h"
#include "embedded/store/commit_marks.h"
#include "embedded/store/schema.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

class Behavior final : public PcBehavior {
 public:
  void Set(int number, int value) override { values_[Index(number)] = value; }
  [[nodiscard]] int Get(int number) const override { return values_[Index(number)]; }

 private:
  [[nodiscard]] std::size_t Index(int number) const {
    if (number < 1 || number > static_cast<int>(values_.size())) {
      throw RuntimeError(error_number::kSubscriptOutOfRange,
                         "Subscript out of range: behaviour setting " + std::to_string(number));
    }
    return static_cast<std::size_t>(number - 1);
  }
  std::array<int, 4> values_{};
};

class User final : public PcUser {
 public:
  User(EmbeddedSessionPtr session, Account account)
      : session_(std::move(session)), account_(std::move(account)) {}
  [[nodiscard]] int Id() const override { return account_.id; }
  [[nodiscard]] std::string LoginName() const override { return account_.loginName; }
  [[nodiscard]] PcObjectPtr UserObject() const override {
    return session_->ObjectStore()->Object(account_.object);
  }
  [[nodiscard]] std::vector<std::string> Roles() const override { return account_.roles; }
  [[nodiscard]] bool IsAdministrator() const override { return account_.administrator; }

 private:
  EmbeddedSessionPtr session_;
  Account account_;
};

class Sequence final : public PcSequence {
 public:
  explicit Sequence(std::string attribute) : attribute_(std::move(attribute)) {}
  [[nodiscard]] std::string AttributeName() const override { return attribute_; }

 private:
  std::string attribute_;
};

// Six digits at least; zeros when the database can only be read.
std::string SessionNumber(Database& database) {
  std::string number = "0";
  try {
    number = std::to_string(DrawNumber(database, kSessionNumber));
  } catch (const DatabaseError& error) {
    if ((error.Number() & 0xff) != kCodeReadOnly) throw;
  }
  if (number.size() < 6) number.insert(0, 6 - number.size(), '0');
  return number;
}

}  // namespace

EmbeddedSession::EmbeddedSession(std::shared_ptr<HostCore> core, std::weak_ptr<SessionEngine> engine)
    : core_(std::move(core)), engine_(std::move(engine)), language_(core_->metadata->language) {}

void EmbeddedSession::Connect() {
  if (database_) return;
  database_ = core_->Connect();
  identifier_ = DatabaseAlias() + "-" + SessionNumber(*database_);
}

bool EmbeddedSession::Login(const std::string& loginName, const std::string& password,
                            const std::string& language) {
  std::optional<Account> account = FindAccount(Sql(), loginName);
  if (!account || account->password != password) return false;
  for (const std::string& candidate : {language, core_->options.language, account->language}) {
    if (candidate.empty()) continue;
    language_ = candidate;
    break;
  }
  account_ = std::move(account);
  return true;
}

Database& EmbeddedSession::Sql() const {
  if (!database_) throw HostError("The session is not connected to the database");
  return *database_;
}

EmbeddedSessionPtr EmbeddedSession::Self() const {
  return std::const_pointer_cast<EmbeddedSession>(
      std::static_pointer_cast<const EmbeddedSession>(shared_from_this()));
}

PcUserPtr EmbeddedSession::CurrentUser() const {
  if (!account_) return nullptr;
  return std::make_shared<User>(Self(), *account_);
}

std::vector<PcUserPtr> EmbeddedSession::Users() const {
  std::vector<PcUserPtr> users;
  for (Account& account : ReadAccounts(Sql()))
    users.push_back(std::make_shared<User>(Self(), std::move(account)));
  return users;
}

std::string EmbeddedSession::ConfigurationValue(const std::string& key) const {
  if (account_) {
    if (auto value = ReadSetting(Sql(), account_->id, key)) return *value;
  }
  const auto& configured = core_->options.configuration;
  if (const auto found = configured.find(key); found != configured.end()) return found->second;
  return ReadSetting(Sql(), 0, key).value_or("");
}

void EmbeddedSession::SetConfigurationValue(const std::string& key, const std::string& value) {
  if (!account_) throw HostError("Nobody is logged in whose setting could be changed");
  WriteSetting(Sql(), account_->id, key, value);
}

PcBehaviorPtr EmbeddedSession::NewBehavior() {
  return std::make_shared<Behavior>();
}

PcObjectStorePtr EmbeddedSession::ObjectStore() {
  return core_->client->NewObjectStore(Self());
}

PcSequencePtr EmbeddedSession::RelatedObject(const PcAttribute& attribute) const {
  if (!attribute.IsIdentifying(attribute.Name())) return nullptr;
  return std::make_shared<Sequence>(attribute.Name());
}

std::shared_ptr<PcService> EmbeddedSession::CreateService(std::string_view progId) {
  return core_->client->NewService(Self(), progId);
}

PcUnitOfWorkPtr EmbeddedSession::BeginUnitOfWork(const std::string& mark) {
  static_cast<void>(Sql());
  return BeginWork(database_, mark);
}

bool EmbeddedSession::WasCommitted(const std::string& mark) {
  return HasMark(Sql(), mark);
}

void EmbeddedSession::ForgetMark(const std::string& mark) {
  RemoveMark(Sql(), mark);
}

PcReadingPtr EmbeddedSession::BeginReading() {
  static_cast<void>(Sql());
  return BeginRead(database_);
}

std::string EmbeddedSession::ErrorText(int code) const {
  if (code != 0 && refusal_.first == code) return refusal_.second;
  if (code == kCodeObjectGone) return "The object was deleted meanwhile, or never added";
  if (code == kCodeAlreadyAdded) return "The object is in the database already";
  return DatabaseErrorText(code);
}

void EmbeddedSession::Close() {
  const EmbeddedSessionPtr self = Self();  // the engine's reference may be the last one
  database_.reset();
  account_.reset();
  globalData_ = {};
  copies_ = {};
  if (const auto engine = engine_.lock()) engine->Forget(*self);
}

}  // namespace tessel::embedded
