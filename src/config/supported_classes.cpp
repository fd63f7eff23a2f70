#include "config/supported_classes.h"

#include "host/error.h"
#include "host/names.h"

namespace tessel {
namespace {

// A mechanism whose first supported class is used, with the words that the trace has for it.
struct Behavior {
  const char* mechanism;
  const char* checked;  // in "supported class for the ... behavior"
  const char* missing;  // in "no supported class(es) for '... behavior'"
  const char* used;     // in "Use this one for ..."
  ClassId StartupValues::*classId;
};

constexpr Behavior kTransmittal = {class_mechanism::kTransmittal, "tranmittal", "transmittals",
                                   "transmittals", &StartupValues::TransmittalClassID};
constexpr Behavior kCompany = {class_mechanism::kCompany, "company", "company", "company",
                               &StartupValues::CompanyClassID};
constexpr Behavior kContactPerson = {class_mechanism::kContactPerson, "contact person", "contact person",
                                     "contact person", &StartupValues::ContactPersonClassID};
constexpr Behavior kFolderStructure = {class_mechanism::kFolderStructure, "Folder Structure",
                                       "Folder Structure", "Folder Structure",
                                       &StartupValues::FolderStructureClassID};

enum class Classes { kNoMechanism, kNone, kSome };

// Announces the check and tells how many classes there are.
Classes CountClasses(const Behavior& behavior, const PcClassMechanism* mechanism, Trace& trace) {
  const int count = mechanism == nullptr ? 0 : mechanism->SupportedClassCount();
  const std::string use = std::string(" for ") + behavior.used;
  if (count == 0) {
    trace.Write(std::string("... no supported class(es) for '") + behavior.missing +
                " behavior' has been found");
    return mechanism == nullptr ? Classes::kNoMechanism : Classes::kNone;
  }
  trace.Write(count == 1 ? " ... there is one supported class. Use this one" + use
                         : " ... there are '" + std::to_string(count) +
                               "' supported classes. Use the first one" + use);
  return Classes::kSome;
}

// Fixes one class. An empty list counts as an error of its first class, unless the caller takes it.
Classes FixClass(const Behavior& behavior, const PcMetaData& metaData, StartupValues& startup, Trace& trace,
                 bool mayBeEmpty) {
  trace.Write(std::string("Check there is at least one supported class for the ") + behavior.checked +
              " behavior");
  const PcClassMechanismPtr mechanism = metaData.ClassMechanism(behavior.mechanism);
  const Classes classes = CountClasses(behavior, mechanism.get(), trace);
  if (classes == Classes::kSome || (classes == Classes::kNone && !mayBeEmpty)) {
    startup.*behavior.classId = Required(mechanism->SupportedClass(0), behavior.mechanism)->Id();
  }
  return classes;
}

bool HasExchangeDocuments(const PcMetaData& metaData, Trace& trace) {
  trace.Write("Check whether the supplier exchange documents CLB has one or more supported classes");
  const PcClassMechanismPtr mechanism = metaData.ClassMechanism(class_mechanism::kExchangeDocument);
  const int count = mechanism ? mechanism->SupportedClassCount() : 0;
  trace.Write(count == 0
                  ? "... no supported classes for the 'Supplier exchange document behavior' has been found"
                  : " ... there are '" + std::to_string(count) + "' supported classes");
  return count != 0;
}

}  // namespace

bool FixSupportedClasses(const PcMetaData& metaData, StartupValues& startup, Trace& trace) {
  if (!HasExchangeDocuments(metaData, trace)) return false;
  if (FixClass(kTransmittal, metaData, startup, trace, false) == Classes::kNoMechanism) return false;
  FixClass(kCompany, metaData, startup, trace, false);
  FixClass(kContactPerson, metaData, startup, trace, false);
  return !startup.FolderStructureMode ||
         FixClass(kFolderStructure, metaData, startup, trace, true) != Classes::kNone;
}

}  // namespace tessel
