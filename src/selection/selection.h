// CommonXFunctions: collecting and validating the selection that lives in the session's global data.
#pragma once

#include <string>
#include <vector>

#include "config/services.h"
#include "host/object.h"
#include "host/record_list.h"
#include "toolkit/tree_list.h"

namespace tessel {

// Names of the values that the program keeps in the session's global data.
namespace global_data {
inline constexpr const char* kCount = "ExportObjCount";
inline constexpr const char* kObjectPrefix = "ExportObject";
inline constexpr const char* kCopyRunning = "isKestrix";
inline constexpr const char* kExchangeDirectory = "ExDir";
// "ExportObject" followed by the number.
[[nodiscard]] std::string ObjectName(int number);
}  // namespace global_data

// Why a document cannot be collected.
enum class CollectRefusal { kNone, kSelectedAlready, kNotForExchange, kNotFileBased, kNoFile, kWrongState };

namespace CommonXFunctions {

// What PutSelection2PcGlobalData would find of each row, without collecting or telling anything; for a client
// that wants to tell it in one go. Errors: HostError.
[[nodiscard]] std::vector<CollectRefusal> RefusalsOf(Services& services, const PcSessionPtr& session,
                                                     const PcRecordListPtr& first);

// Checks each object of the first list and appends those that pass to the selection; refusals are told in
// message boxes. Always 0. The fourth argument of the hook is not used.
int PutSelection2PcGlobalData(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                              const PcRecordListPtr& second);

// Removes "ExportObject" 1 to count that are present, then the count; nothing when there is no count.
void RemoveSelection(PcGlobalData& globalData);
// Removes a value when it is present.
void RemoveIfPresent(PcGlobalData& globalData, const std::string& name);

// Display text of an object: the first attribute's value, then " ; " and the second's when it is not Null.
// Empty for nothing.
[[nodiscard]] std::string RetrieveDisplayVal(const std::string& firstAttribute,
                                             const std::string& secondAttribute, const PcObjectPtr& object);

// The object that a global-data value names, its data read; nothing when the value is Null or cannot be read.
[[nodiscard]] PcObjectPtr RetrieveObjFromGlobalData(Services& services, const std::string& key);

// The object of a row's "CLASS_ID" and "OBJECT_ID"; nothing after an error, which is traced.
[[nodiscard]] PcObjectPtr RetrieveObj2SelListItem(Services& services, const PcRecordList& list, int row);

// Makes sure that the list holds the icon of the object's class, under "Class" and the class id.
void GetIcon(Services& services, const PcObject& object, ImageList& images);

// Writes both lists to the trace. An empty second title takes the first; errors are ignored.
void DumpRecordLists(Trace& trace, const PcRecordListPtr& first, const PcRecordListPtr& second,
                     const std::string& firstTitle, const std::string& secondTitle);

}  // namespace CommonXFunctions
}  // namespace tessel
