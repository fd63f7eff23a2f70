// Calls to automation objects by the names of their members.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/com/variant.h"

namespace tessel::automation {

// The ids of members, asked for once a class of objects. An object that can change its members (a script's)
// is asked each time.
class MemberIds {
 public:
  // Error 438 when the object has no such member.
  [[nodiscard]] DISPID Of(IDispatch& object, const std::string& kind, const std::string& member);

 private:
  // By implementing class, kind and member: two classes may play one kind.
  std::map<std::pair<const void*, std::string>, std::map<std::string, DISPID>> ids_;
};

// One object and the kind that it is spoken to as, which errors name. Errors of all calls: HostError with the
// number and text of the automation error; 91 for nothing, 438 for a missing member, 462 for a client that is
// gone.
class LateBound {
 public:
  LateBound() = default;
  LateBound(DispatchPtr object, std::string kind, std::shared_ptr<MemberIds> ids)
      : object_(std::move(object)), kind_(std::move(kind)), ids_(std::move(ids)) {}

  explicit operator bool() const { return static_cast<bool>(object_); }
  [[nodiscard]] const DispatchPtr& Object() const { return object_; }
  [[nodiscard]] const std::shared_ptr<MemberIds>& Ids() const { return ids_; }

  // A property or a method with a result: whichever the object has.
  template <class... Arguments>
  Variant Get(const char* member, const Arguments&... arguments) const {
    return Invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {Variant(arguments)...});
  }
  template <class... Arguments>
  void Call(const char* member, const Arguments&... arguments) const {
    (void)Invoke(member, DISPATCH_METHOD, {Variant(arguments)...});
  }
  // The value is the last argument.
  template <class... Arguments>
  void Put(const char* member, const Arguments&... arguments) const {
    (void)Invoke(member, DISPATCH_PROPERTYPUT, {Variant(arguments)...});
  }
  [[nodiscard]] bool Has(const char* member) const;

 private:
  Variant Invoke(const char* member, WORD flags, std::vector<Variant> arguments) const;

  DispatchPtr object_;
  std::string kind_;
  std::shared_ptr<MemberIds> ids_;
};

// Error 438 when an object has no such member. Asks the object itself, whatever is known of others of its
// class.
void RequireMember(const DispatchPtr& object, const std::string& kind, const std::string& member);

// The system's text of a failed call, and the classic number of it.
[[nodiscard]] int ClassicNumber(HRESULT result);
[[nodiscard]] std::string ResultText(HRESULT result);

}  // namespace tessel::automation
