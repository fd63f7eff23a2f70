#include "automation/host/remote_parts.h"
namespace tessel::automation {
namespace {

class RemoteRecordList : public PcRecordList, public Remote {
 public:
  using PcRecordList::GetValue;
  using PcRecordList::SetValue;
  using Remote::Remote;
  void AddColumn(const std::string& name, int length, int typeCode) override {
    self.Call("AddColumn", name, length, typeCode);
  }
  [[nodiscard]] int ColumnCount() const override { return NumberOf("ColumnCount"); }
  [[nodiscard]] int RowCount() const override { return NumberOf("RowCount"); }
  [[nodiscard]] std::string ColumnName(int column) const override { return TextOf("ColumnName", column); }
  [[nodiscard]] int ColumnLength(int column) const override { return NumberOf("ColumnLength", column); }
  [[nodiscard]] int ColumnTypeCode(int column) const override { return NumberOf("ColumnTypeCode", column); }
  [[nodiscard]] int FindColumn(std::string_view name) const override {
    return NumberOf("FindColumn", std::string(name));
  }
  [[nodiscard]] Value GetValue(int column, int row) const override { return ValueOf("Value", column, row); }
  void SetValue(int column, int row, const Value& value) override { self.Put("Value", column, row, value); }
  void WriteToFile(const std::string& title, const std::string& path) const override {
    self.Call("WriteToFile", title, path);
  }
};

}  // namespace

PcRecordListPtr WrapRecordList(const LateBound& object) {
  return Wrapped<RemoteRecordList>(object);
}

}  // namespace tessel::automation
