// An automation object made from a table of members, as the stand-in client has them: the object behind it,
// and for each member a function of the call's arguments.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/com/variant.h"
#include "automation/server/module.h"
#include "host/error.h"

namespace tessel::automation {

// Of one call, in their order. Error 450 for one that is missing.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& parameters) : parameters_(parameters) {}
  [[nodiscard]] std::size_t Count() const { return parameters_.cArgs; }
  [[nodiscard]] const VARIANT& At(std::size_t index) const;
  [[nodiscard]] Value ValueAt(std::size_t index) const { return ToValue(At(index)); }
  [[nodiscard]] std::string Text(std::size_t index) const { return ValueAt(index).AsText(); }
  // Empty when the call ends before it.
  [[nodiscard]] std::string OptionalText(std::size_t index) const {
    return index < Count() ? Text(index) : "";
  }
  [[nodiscard]] int Number(std::size_t index) const { return ValueAt(index).AsInt32(); }
  [[nodiscard]] std::int16_t Short(std::size_t index) const { return ValueAt(index).AsInt16(); }
  [[nodiscard]] bool Flag(std::size_t index) const { return ValueAt(index).AsBoolean(); }
  // The object of the stand-in behind an argument; nothing behind nothing. Error 13 for another one.
  template <class Part>
  [[nodiscard]] std::shared_ptr<Part> Object(std::size_t index) const;

 private:
  const DISPPARAMS& parameters_;
};

enum class MemberUse { kRead, kWrite };

struct Member {
  const char* name;
  std::function<Variant(const Arguments&)> read;  // a method or a property's value
  std::function<void(const Arguments&)> write = nullptr;
};

// Ids of the members are their positions from 1.
[[nodiscard]] DispatchPtr NewScriptedObject(Module& module, const char* kind, std::shared_ptr<void> behind,
                                            std::vector<Member> members);

// What NewScriptedObject was given, for an object of that kind; nothing for any other object.
[[nodiscard]] std::shared_ptr<void> Behind(IDispatch& object, const char* kind);

// Name of the automation kind of a part of the host.
template <class Part>
struct KindOf;

template <class Part>
std::shared_ptr<Part> Arguments::Object(std::size_t index) const {
  const DispatchPtr object = ToObject(At(index));
  if (!object) return nullptr;
  auto behind = Behind(*object.Get(), KindOf<Part>::kName);
  if (!behind)
    throw RuntimeError(error_number::kTypeMismatch,
                       std::string("Type mismatch: ") + KindOf<Part>::kName + " expected");
  return std::static_pointer_cast<Part>(behind);
}

}  // namespace tessel::automation
