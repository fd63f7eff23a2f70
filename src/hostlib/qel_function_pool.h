// QelFunctionPool: a general library over the host's automation interface. Every operation takes the host
// objects that it works on; the library keeps nothing of them. But for PutTrace no operation traps errors: a
// failing host call goes to the caller, and what was done before it stays done.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/application.h"
#include "host/metadata.h"
#include "host/object.h"
#include "host/object_store.h"
#include "host/record_list.h"
#include "host/session.h"
#include "messages/library_trace.h"
#include "platform/operating_system.h"
#include "platform/text_encoding.h"

namespace tessel {

// A class in one of three forms: the object counts when it is set, else the id when it is 1 or more, else the
// name when it is not empty.
struct ClassArgument {
  PcClassPtr object = {};
  ClassId id = 0;
  std::string name = {};

  // The class id; 0 when nothing is named or the metadata has no class of the name. The session is asked only
  // for a name.
  [[nodiscard]] ClassId Resolve(PcSession& session) const;
  // The class itself, or nothing.
  [[nodiscard]] PcClassPtr ResolveClass(PcSession& session) const;
};

// How an object dialog is shown.
struct DialogOptions {
  int modeValue = 0;  // passed to dialogs of display mode 2
  int page = 1;       // page on top, where the dialog has pages
  int modal = 1;      // 0 modeless, 1 modal
};

// How LookupObject finds its row.
enum class LookupSearch : std::int16_t { kDescription = 0, kValueOrder = 1, kObjectId = 2 };

class QelFunctionPool {
 public:
  // Both references outlive the object. Error 5 when the ANSI code page of the trace file is unknown.
  QelFunctionPool(const Platform& platform, HostRuntime& runtime);

  // --- engine and session ---

  // Attaches to the running client or starts an engine, opens a session on the default database and logs in:
  // with the given user, else (flag not 0) as the user of the engine's first session, else through the login
  // dialog. False, and the engine stopped again, when nobody logged in.
  bool StartPelicore(PcEnginePtr& engine, PcSessionPtr& session, const std::string& userName,
                     const std::string& password, std::int16_t useCurrentLogin);
  // Closes the session when it is set, then shuts the engine down when it has no session left.
  void StopPelicore(const PcEnginePtr& engine, const PcSessionPtr& session);
  // A behaviour object with its four settings in order.
  [[nodiscard]] PcBehaviorPtr Behavior(PcSession& session, int first, int second, int third,
                                       int fourth) const;
  // 0 when there is no such class.
  [[nodiscard]] ClassId GetClassId(PcSession& session, const std::string& className) const;
  // The user's directories for viewing and for work.
  [[nodiscard]] std::string GetViewDir(PcSession& session) const;
  [[nodiscard]] std::string GetWorkDir(PcSession& session) const;
  void SetViewDir(PcSession& session, const std::string& path) const;
  void SetWorkDir(PcSession& session, const std::string& path) const;
  // Sends a message through the host's message store: first address the recipient, second the sender.
  void SendExternalMessage(PcSession& session, const std::string& firstAddress,
                           const std::string& secondAddress, const std::string& subject,
                           const std::string& text, int sendOption) const;

  // --- objects and links ---

  // An unsaved object of the class with the defaults of the class and the next values of its sequences; the
  // number goes to IncrementSequences. Nothing when no class is named.
  PcObjectPtr NewObject(PcSession& session, const ClassArgument& classArgument, int number,
                        PcObjectPtr& object) const;
  // Gives every attribute with a sequence, but for "REVISION", the sequence's next value. The host's
  // sequences count in steps of their own and have no use for the number.
  void IncrementSequences(PcObject& object, int number) const;
  // Links the object to the target with a link behaviour whose first setting is the number, when the object's
  // class may be put on a desktop. Then the windows that the switches name show link and object anew. False
  // when the class does not allow it or the host refused the link.
  bool LinkObjectToDesktop(const PcObjectPtr& object, const PcObjectPtr& target, int number,
                           bool refreshActive, bool refreshAll) const;
  // The same below a parent, through the hierarchical link class of the parent's class.
  bool LinkObjectToParent(const PcObjectPtr& object, const PcObjectPtr& parent, int number,
                          bool refreshActive, bool refreshAll) const;
  // A link of the class from one object to the other; nothing when no class is named or the host refused it.
  [[nodiscard]] PcObjectPtr LinkObjectToObject(PcObject& object, PcObject& other,
                                               const ClassArgument& linkClass) const;

  // --- retrieval: one row an object with "OBJECT_ID", "CLASS_ID" and all attributes of the class ---
  // The mode is the first setting of the retrieval's behaviour. The result is also put into the last
  // argument; both are nothing when no class is named. The forms with links return the same objects and
  // append the attributes of the links: of the link class given, else of all that may tie the two classes.

  PcRecordListPtr RetrieveChildren(const PcObject& object, const ClassArgument& childClass, int mode,
                                   PcRecordListPtr& records) const;
  PcRecordListPtr RetrieveChildrenAndLinks(const PcObject& object, const ClassArgument& childClass, int mode,
                                           PcRecordListPtr& records) const;
  PcRecordListPtr RetrieveParents(const PcObject& object, const ClassArgument& parentClass, int mode,
                                  PcRecordListPtr& records) const;
  PcRecordListPtr RetrieveParentsAndLinks(const PcObject& object, const ClassArgument& parentClass, int mode,
                                          PcRecordListPtr& records) const;
  // A link class that is given limits the retrieval to its links.
  PcRecordListPtr RetrieveRelations(const PcObject& object, const ClassArgument& relatedClass,
                                    const ClassArgument& linkClass, int mode, PcRecordListPtr& records) const;
  PcRecordListPtr RetrieveRelationsAndLinks(const PcObject& object, const ClassArgument& relatedClass,
                                            const ClassArgument& linkClass, int mode,
                                            PcRecordListPtr& records) const;
  // The object at the top of the structure that the object belongs to (itself when nothing is above it): the
  // first parent of the first parent and so on, at most `steps` of them when it is 1 or more.
  [[nodiscard]] PcObjectPtr RetrieveMainObject(const PcObjectPtr& object, std::int16_t steps) const;
  // Rows of the query, with "CLASS_ID" and "OBJECT_ID" of each object.
  PcRecordListPtr SelectObjectsSQL(PcSession& session, PcQuery& query, PcRecordListPtr& records) const;

  // --- attributes ---

  // Object id of a value of a lookup class, 0 when there is none: the first one, in value order, whose
  // "DESCRIPTION" is the description or, in the other searches, whose "VALUE_ORDER" or "OBJECT_ID" is the
  // search text. With `prefix` not 0 a value that begins with the text will do.
  [[nodiscard]] ObjectId LookupObject(PcSession& session, const ClassArgument& lookupClass,
                                      const std::string& description, const std::string& searchText,
                                      LookupSearch search, std::int16_t prefix) const;
  // The object that a reference attribute points to, its data read unless `option` is 1; nothing when the
  // attribute is empty or no reference. Error: HostError when the class has no such attribute.
  [[nodiscard]] PcObjectPtr ReferencedObject(const PcObject& object, const std::string& attribute,
                                             std::int16_t option) const;
  // The attribute as display text: empty times are empty, references show the login, state or lookup value
  // that they point to. "REF.NAME" is the attribute NAME of the object that REF points to.
  [[nodiscard]] std::string AttributeValue(const PcObject& object, const std::string& attribute) const;
  // Whether a mandatory attribute has a value. "FILE_TYPE" has one only together with "FILE_NAME".
  [[nodiscard]] bool MandatoryAttributeHasValue(const PcAttribute& attribute, const PcObject& object) const;
  // `missing` receives the names of those without, joined by ", ".
  [[nodiscard]] bool MandatoryAttributesHaveValues(const PcObject& object, const PcClass& classData,
                                                   std::string& missing) const;

  // --- dialogs and windows ---

  // The host's object dialog for a display mode 0 to 10. The object now held by a modal dialog that was left
  // with OK, its data read; else nothing.
  PcObjectPtr DisplayObject(const PcObjectPtr& object, int modeValue, int displayMode,
                            const std::string& title, int page, int modal) const;
  PcObjectPtr DisplayObjects(PcSession& session, const PcObjectListPtr& objects, int displayMode,
                             const std::string& title, const DialogOptions& options) const;
  // For the objects of the rows; rows without an object in the database are left out.
  PcObjectPtr DisplayObjs(PcSession& session, const PcRecordList& records, int displayMode,
                          const std::string& title, const DialogOptions& options) const;
  // The client's selection dialogs. Nothing when no class is named or the user picked nothing. "Composite"
  // offers the class and what hangs below it.
  [[nodiscard]] PcObjectPtr SelectObject(PcSession& session, const ClassArgument& classArgument,
                                         const std::string& title) const;
  [[nodiscard]] PcRecordListPtr SelectObjects(PcSession& session, const ClassArgument& classArgument,
                                              const std::string& title) const;
  [[nodiscard]] PcObjectPtr SelectCompositeObject(PcSession& session, const ClassArgument& classArgument,
                                                  const std::string& title) const;
  [[nodiscard]] PcRecordListPtr SelectCompositeObjects(PcSession& session, const ClassArgument& classArgument,
                                                       const std::string& title) const;
  PcObjectPtr SelectSingleObjectFromQuery(PcSession& session, PcObjectPtr& object) const;
  // Runs a life-cycle operation on one object or on all objects of a list. Interactive: in the client's
  // window, True when the user went through with it; a name that the window does not know counts as
  // "CHECKIN". Else silently, "CHECKIN" and "RELEASE" alone; any other name gives False. `option` not 0 sets
  // the window's flag.
  bool LifeCycleOperation(PcSession& session, const PcObjectPtr& object, const std::string& operation,
                          const std::string& comment, bool interactive, int option) const;
  bool LifeCycleOperation1(PcSession& session, const PcRecordList& objects, const std::string& operation,
                           const std::string& comment, bool interactive, int option) const;
  // Shows the object anew in the active window of its session, or of every session of its engine.
  void RefreshActivePelicoreWindow(const PcObject& object, int mode) const;
  void RefreshAllPelicoreWindows(const PcObject& object, int mode) const;
  void DisplaySystemMessage(PcSession& session, int first, int second, const std::string& text1,
                            const std::string& text2, const std::string& text3,
                            const std::string& text4) const;

  // --- settings in an INI file ---

  void IniFile(const std::string& path) { iniFile_ = path; }
  // At most 255 characters; the default when there is no such entry.
  [[nodiscard]] std::string ReadSetting(const std::string& section, const std::string& key,
                                        const std::string& defaultText) const;
  void WriteSetting(const std::string& section, const std::string& key, const std::string& value) const;

  // --- library trace, written while its file exists ---

  void TraceFile(const std::string& path) { trace_.SetTraceFile(path); }
  // One to ten pairs of text and value; never fails.
  template <class... Pairs>
  void PutTrace(const TracePair& first, const Pairs&... others) const {
    trace_.PutTrace(first, others...);
  }
  void PutTraceObject(const PcObjectPtr& object, const std::string& title) const;
  void PutTraceRecList(const PcRecordListPtr& records, const std::string& title) const;

 private:
  HostRuntime& runtime_;
  ProfileStrings& profiles_;
  std::shared_ptr<const TextEncoding> ansi_;
  LibraryTrace trace_;
  std::string iniFile_;
};

}  // namespace tessel
