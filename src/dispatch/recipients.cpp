#include "dispatch/recipients.h"

#include "exchange/exchange.h"
#include "host/column_shape.h"
#include "platform/text_encoding.h"

namespace tessel {

PcRecordListPtr NewRecipientList(HostRuntime& runtime) {
  auto list = Required(CommonXFunctions::NewRecList(runtime), "record list");
  AddColumn(*list, recipient_column::kCustomerObject, column_shape::kLong);
  AddColumn(*list, recipient_column::kCustomerClass, column_shape::kInteger);
  AddColumn(*list, recipient_column::kContactObject, column_shape::kLong);
  AddColumn(*list, recipient_column::kContactClass, column_shape::kInteger);
  AddColumn(*list, recipient_column::kDirectory, ColumnShape{254, ColumnType::kText});
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

std::string FinalDirectory(const std::string& directory, const std::string& prefix) {
  std::string path;
  std::size_t begin = 0;
  for (auto found = directory.find("@@"); found != std::string::npos; found = directory.find("@@", begin)) {
    path.append(directory, begin, found - begin).append(prefix);
    begin = found + 2;
  }
  return path.append(directory, begin) + "_New";
}

}  // namespace tessel
