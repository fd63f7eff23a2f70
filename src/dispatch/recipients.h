// The recipient list: a host record list with one row a recipient.
#pragma once

#include <string>

#include "host/application.h"
#include "host/object_key.h"
#include "host/record_list.h"

namespace tessel {

namespace recipient_column {
inline constexpr const char* kCustomerObject = "CUSTOM_OBJ_ID";
inline constexpr const char* kCustomerClass = "CUSTOM_CLASS_ID";
inline constexpr const char* kContactObject = "CONTACT_OBJ_ID";
inline constexpr const char* kContactClass = "CONTACT_CLASS_ID";
inline constexpr const char* kDirectory = "New_Exchange_Dir";
}  // namespace recipient_column

struct Recipient {
  ObjectKey customer;  // ids 0 when there is none
  ObjectKey contact;   // likewise
  std::string directory;
};

// An empty list with the five columns.
[[nodiscard]] PcRecordListPtr NewRecipientList(HostRuntime& runtime);
void AppendRecipient(PcRecordList& list, const Recipient& recipient);
// Errors as the list raises them.
[[nodiscard]] Recipient RecipientOfRow(const PcRecordList& list, int row);

// Directory of recipient `row`: the exchange directory for row 0; for later ones its path without the last
// character, followed by the character with code 96 + row ("a" for the second recipient).
[[nodiscard]] std::string RecipientDirectory(const std::string& exchangeDirectory, int row);

// Its final name: every "@@" of the path becomes the prefix, and "_New" follows.
[[nodiscard]] std::string FinalDirectory(const std::string& directory, const std::string& prefix);

}  // namespace tessel
