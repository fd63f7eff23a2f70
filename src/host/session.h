// PcSession: a logged-in connection of a user, handed to every hook. What it returns may be nothing on a
// client that is closing: callers that cannot go on without it say so through Required (host/error.h).
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/metadata.h"
#include "host/object.h"
#include "host/object_store.h"
#include "host/unit_of_work.h"
#include "host/value.h"

namespace tessel {

class PcEngine;

// Named values that live as long as the session.
class PcGlobalData {
 public:
  virtual ~PcGlobalData() = default;
  // Null when the value was never set.
  [[nodiscard]] virtual Value Get(std::string_view name) const = 0;
  virtual void Set(const std::string& name, const Value& value) = 0;
  // Position from 1, 0 when absent.
  [[nodiscard]] virtual int Position(std::string_view name) const = 0;
  // Nothing happens when the value is absent.
  virtual void Remove(std::string_view name) = 0;
};

class PcUser {
 public:
  virtual ~PcUser() = default;
  [[nodiscard]] virtual int Id() const = 0;
  [[nodiscard]] virtual std::string LoginName() const = 0;
  // The user's own object in the database.
  [[nodiscard]] virtual PcObjectPtr UserObject() const = 0;
  [[nodiscard]] virtual std::vector<std::string> Roles() const = 0;
  // Set for users who may administer everybody's data; the unlock right looks at it.
  [[nodiscard]] virtual bool IsAdministrator() const = 0;
};
using PcUserPtr = std::shared_ptr<const PcUser>;

// The number sequence behind an identifying attribute.
class PcSequence {
 public:
  virtual ~PcSequence() = default;
  [[nodiscard]] virtual std::string AttributeName() const = 0;
};
using PcSequencePtr = std::shared_ptr<PcSequence>;

// Base of what PcSession::CreateService returns; callers ask for the interface they know.
class PcService {
 public:
  virtual ~PcService() = default;
};

class PcSession : public std::enable_shared_from_this<PcSession> {
 public:
  virtual ~PcSession() = default;

  // Nothing before a login.
  [[nodiscard]] virtual PcUserPtr CurrentUser() const = 0;
  // All users of the database.
  [[nodiscard]] virtual std::vector<PcUserPtr> Users() const = 0;
  [[nodiscard]] virtual std::string DatabaseAlias() const = 0;
  // Tells this session from every other one of the database.
  [[nodiscard]] virtual std::string Identifier() const = 0;
  // Suffix of the catalogue files, for example "GER".
  [[nodiscard]] virtual std::string Language() const = 0;
  // Configuration of the client, for example "$Local\Directory Structure\ICONS_DIR"; empty when unknown.
  [[nodiscard]] virtual std::string ConfigurationValue(const std::string& key) const = 0;
  // For this session alone.
  virtual void SetConfigurationValue(const std::string& key, const std::string& value) = 0;

  // With the host's own settings.
  [[nodiscard]] virtual PcBehaviorPtr NewBehavior() = 0;
  [[nodiscard]] virtual PcGlobalData& GlobalData() = 0;
  [[nodiscard]] virtual PcMetaDataPtr MetaData() const = 0;
  [[nodiscard]] virtual PcObjectStorePtr ObjectStore() = 0;
  // The sequence that an attribute definition belongs to; nothing for an attribute that identifies nothing.
  [[nodiscard]] virtual PcSequencePtr RelatedObject(const PcAttribute& attribute) const = 0;
  // A service object by its ProgID. Error 429 when there is none of that name.
  [[nodiscard]] virtual std::shared_ptr<PcService> CreateService(std::string_view progId) = 0;
  // Nothing for a session that no engine manages.
  [[nodiscard]] virtual std::shared_ptr<PcEngine> Engine() const = 0;
  // Ends the connection. The session's objects are not used again.
  virtual void Close() = 0;

  // Begins a unit of work; units do not nest. A mark that is not empty is kept with the work, so that
  // somebody else can tell later whether it was committed. Nothing for a host without units of work, whose
  // writes stand one by one. Errors: HostError, as when another session does not let go of the database.
  [[nodiscard]] virtual PcUnitOfWorkPtr BeginUnitOfWork(const std::string& /*mark*/) { return nullptr; }
  // Whether a unit of work of that mark was committed, by any session. False for a host without units.
  [[nodiscard]] virtual bool WasCommitted(const std::string& /*mark*/) { return false; }
  // Nobody will ask for that mark again.
  virtual void ForgetMark(const std::string& /*mark*/) {}

  // While it lives, all that the session reads is of one moment, and many small reads cost little. A write of
  // the session's own ends the moment; what is read behind it is of another one. Readings may nest, and stand
  // around a unit of work. Nothing for a host without them.
  [[nodiscard]] virtual PcReadingPtr BeginReading() { return nullptr; }

  // What the host says about the code of a refused write, for people; empty when it says nothing.
  [[nodiscard]] virtual std::string ErrorText(int /*code*/) const { return {}; }
};
using PcSessionPtr = std::shared_ptr<PcSession>;

}  // namespace tessel
