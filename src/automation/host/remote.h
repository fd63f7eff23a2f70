// What every part of the host port over automation objects has: the client's object behind it.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "automation/com/late_bound.h"
#include "host/error.h"

namespace tessel::automation {

class Remote {
 public:
  explicit Remote(LateBound object) : self(std::move(object)) {}
  virtual ~Remote() = default;

 protected:
  // The object in a result, spoken to as a kind; false in a condition when it is nothing.
  [[nodiscard]] LateBound Under(const Variant& result, const char* kind) const {
    return {ToObject(result.Raw()), kind, self.Ids()};
  }
  template <class... Arguments>
  [[nodiscard]] Value ValueOf(const char* member, const Arguments&... arguments) const {
    return ToValue(self.Get(member, arguments...).Raw());
  }
  template <class... Arguments>
  [[nodiscard]] std::string TextOf(const char* member, const Arguments&... arguments) const {
    return ValueOf(member, arguments...).AsText();
  }
  template <class... Arguments>
  [[nodiscard]] int NumberOf(const char* member, const Arguments&... arguments) const {
    return ValueOf(member, arguments...).AsInt32();
  }
  template <class... Arguments>
  [[nodiscard]] bool FlagOf(const char* member, const Arguments&... arguments) const {
    return ValueOf(member, arguments...).AsBoolean();
  }

 public:
  const LateBound self;
};

// The part of type Wrapper behind an object; nothing behind nothing.
template <class Wrapper>
std::shared_ptr<Wrapper> Wrapped(const LateBound& object) {
  return object ? std::make_shared<Wrapper>(object) : nullptr;
}

// The client's object behind a part of the port, to hand it back to the client. Error 13 for a part of
// another host.
template <class Part>
DispatchPtr ObjectOf(const Part& part) {
  const auto* remote = dynamic_cast<const Remote*>(&part);
  if (remote == nullptr) throw HostError("The object is not the client's", error_number::kTypeMismatch);
  return remote->self.Object();
}
template <class Part>
DispatchPtr ObjectOf(const std::shared_ptr<Part>& part) {
  return part ? ObjectOf(*part) : DispatchPtr();
}

}  // namespace tessel::automation
