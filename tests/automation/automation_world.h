// The sample company opened through the stand-in client's automation objects, in this process, with the
// add-on beside it. Both libraries have to be registered.
#pragma once

#include <optional>
#include <string>

#include "automation/host/remote_runtime.h"
#include "automation/page_hand.h"
#include "walks/sample_company.h"
#include "win32/hand.h"

namespace tessel::test {

using automation::DispatchPtr;
using automation::LateBound;
using automation::Variant;

// The automation runtime of this thread, in an apartment of its own.
struct Apartment {
  Apartment() { (void)::CoInitialize(nullptr); }
  ~Apartment() { ::CoUninitialize(); }
};

class AutomationWorld {
 public:
  AutomationWorld();
  ~AutomationWorld();

  [[nodiscard]] LateBound Make(const char* progId) const {
    return {automation::CreateByProgId(progId), progId, runtime.Ids()};
  }
  [[nodiscard]] Variant Rows(const std::string& objects) const {
    return client.Get("ObjectRows", session, objects);
  }
  // The global data of the session.
  [[nodiscard]] Value Global(const std::string& name) const;
  // Calls a hook with five arguments, or three.
  short Call(const char* hook, const Variant& first, const std::string& operation = {}) const;

  // Works the pages and boxes that the next hooks show.
  void WorkPages(std::deque<std::wstring> steps);
  // Whether all steps have had their effect.
  [[nodiscard]] bool PagesAreWorked();

  SampleCompany company;
  automation::RemoteRuntime runtime;
  LateBound client;
  Variant session;
  LateBound addOn;

 private:
  std::optional<PageHand> hand_;
  std::optional<Ticks> ticks_;
};

// Lets go what nobody uses, and tells whether a library is still loaded.
[[nodiscard]] bool IsLoaded(const wchar_t* library);

}  // namespace tessel::test
