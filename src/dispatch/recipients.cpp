#include "dispatch/recipients.h"

#include "exchange/exchange.h"
#include "platform/text_encoding.h"

namespace tessel {

PcRecordListPtr NewRecipientList(HostRuntime& runtime) {
  auto list = Required(CommonXFunctions::NewRecList(runtime), "record list");
  list->AddColumn(recipient_column::kCustomerObject, 4, 3);
  list->AddColumn(recipient_column::kCustomerClass, 2, 2);
  list->AddColumn(recipient_column::kContactObject, 4, 3);
  list->AddColumn(recipient_column::kContactClass, 2, 2);
  list->AddColumn(recipient_column::kDirectory, 254, 1);
  return list;
}

void AppendRecipient(PcRecordList& list, const Recipient& recipient) {
  const int row = list.RowCount();
  list.SetValue(recipient_column::kCustomerObject, row, Value(recipient.customer.objectId));
  list.SetValue(recipient_column::kCustomerClass, row, Value(recipient.customer.classId));
  list.SetValue(recipient_column::kContactObject, row, Value(recipient.contact.objectId));
  list.SetValue(recipient_column::kContactClass, row, Value(recipient.contact.classId));
  list.SetValue(recipient_column::kDirectory, row, Value(recipient.directory));
}

Recipient RecipientOfRow(const PcRecordList& list, int row) {
  return {{list.GetValue(recipient_column::kCustomerClass, row).AsInt16(),
           list.GetValue(recipient_column::kCustomerObject, row).AsInt32()},
          {list.GetValue(recipient_column::kContactClass, row).AsInt16(),
           list.GetValue(recipient_column::kContactObject, row).AsInt32()},
          list.GetValue(recipient_column::kDirectory, row).AsText()};
}

std::string RecipientDirectory(const std::string& exchangeDirectory, int row) {
  std::string path = exchangeDirectory;
  if (row < 1) return path;
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (!path.empty() && continues(path.back()))
    path.pop_back();
  if (!path.empty()) path.pop_back();
  AppendUtf8(static_cast<char32_t>(96 + row), path);
  return path;
}

}  // namespace tessel
