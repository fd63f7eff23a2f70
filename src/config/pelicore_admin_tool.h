// PelicoreAdminTool: finds admin setting objects, reads and writes their text, and looks keys up in INI text.
//
// INI text: lines end with CR LF. A section begins with a line that begins with "[section]" and ends before
// the next line that begins with "[". An entry is a line with exactly one "="; what stands before and after
// it counts as it stands, blanks and letter case included. Of two sections of one name the first counts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/object.h"
#include "host/record_list.h"
#include "host/session.h"
#include "messages/trace.h"

namespace tessel {

class PelicoreAdminTool {
 public:
  explicit PelicoreAdminTool(Trace& trace) : trace_(trace) {}

  // The admin setting object that is linked to the base object (nothing: the current user's own object) and
  // whose "VRKX_VALUE_1" is the name; when none has the name, the last one linked; nothing without any. Never
  // raises.
  [[nodiscard]] PcObjectPtr adm_GetLinkedAdmObj(const PcSessionPtr& session, const std::string& name,
                                                PcObjectPtr baseObject);
  // The admin setting object whose "VRKX_ID" is the identifier. False, and nothing, unless there is exactly
  // one. A query takes no behaviour, so that argument goes unused. Errors as the host raises them.
  [[nodiscard]] bool getAdminObject(PcSession& session, const PcBehaviorPtr& behavior,
                                    const std::string& identifier, PcObjectPtr& object) const;
  // Null gives the empty text. Errors: 91 no object; otherwise as the host raises them.
  [[nodiscard]] std::string getValueFromAdminObj(const PcObjectPtr& object,
                                                 const std::string& attribute) const;

  // The value of a section's first entry with the key, which may be empty; the default when there is none.
  [[nodiscard]] static std::string IniValue_Retrieve(const std::string& text, const std::string& section,
                                                     const std::string& key, const std::string& defaultText);
  // Number of a section's lines that are neither empty nor begin with "#"; 0 without the section. Error 6
  // when it exceeds 16 bits.
  [[nodiscard]] static std::int16_t IniValue_Count(const std::string& text, const std::string& section);
  // Those lines, as they stand.
  [[nodiscard]] static std::vector<std::string> IniSectionLines(const std::string& text,
                                                                const std::string& section);

  // The object's "VRKX_VALUE_LONG"; empty after an error.
  [[nodiscard]] std::string ReadXMLStringFromAdminobj(const PcObjectPtr& object) const;
  // Sets "VRKX_VALUE_LONG" of AdminObject and updates it with DefaultBehavior. False when the update failed.
  bool WriteXMLStringToAdminObj(const std::string& text);

  // First link class, in the order of the metadata, that ties the first class or object to the second, or
  // else the second to the first; 0 when there is none. Errors: 91 no object or class.
  [[nodiscard]] ClassId GetGenLinkCLassID_byObject(const PcObjectPtr& object, const PcObjectPtr& other) const;
  [[nodiscard]] ClassId GetGenLinkCLassID_ByClass(PcSession& session, ClassId first, ClassId second) const;

  // Objects of a class tied to an object by links of a link class, one row an object, in the order of the
  // links. Errors as the host raises them.
  [[nodiscard]] PcRecordListPtr GetLinkedObjs(const PcObjectPtr& object, ClassId relatedClass,
                                              ClassId linkClass) const;
  // The same over every link class between the two classes.
  [[nodiscard]] PcRecordListPtr GetAllGenLinkedObjs(const PcObjectPtr& object, ClassId relatedClass) const;

  // Whether the object's class supports the mechanism; false when the database does not know the mechanism.
  [[nodiscard]] bool MechanismManaged(PcSession& session, const PcObjectPtr& object,
                                      const std::string& mechanism) const;

  // Sessions of the program's own are not made here.
  template <class A, class B, class C, class D, class E>
  [[nodiscard]] bool CreateIndependentSession(const A&, const B&, const C&, const D&, const E&) const {
    return false;
  }

  // Set at every start-up: the settings object that was found for the program, and the behaviour of writes
  // and retrievals. Without one, a retrieval takes a new behaviour of the session.
  PcObjectPtr AdminObject;
  PcBehaviorPtr DefaultBehavior;

 private:
  [[nodiscard]] PcRecordListPtr Retrieve(const PcObject& object, ClassId relatedClass,
                                         const std::vector<ClassId>& linkClasses) const;
  PcObjectPtr FindByName(PcSession& session, const PcRecordList& linked, const std::string& name);

  Trace& trace_;
};

}  // namespace tessel
