#include "common/hosted_program.h"

#include "host/error.h"

namespace tessel {
namespace {

struct ColumnShape {
  int length;
  ColumnType type;
};

constexpr ColumnShape kText{255, ColumnType::kText};
constexpr ColumnShape kInteger{2, ColumnType::kInteger};
constexpr ColumnShape kLong{4, ColumnType::kLong};
constexpr ColumnShape kDouble{8, ColumnType::kDouble};
constexpr ColumnShape kBoolean{2, ColumnType::kBoolean};

ColumnShape ShapeOf(const std::string& name, const Value& value) {
  if (name.starts_with("CLASS_ID") || name == "STATE" || name == "OPERATION_ID") return kInteger;
  if (value.IsText()) return kText;
  if (value.IsBoolean()) return kBoolean;
  if (value.IsDouble()) return kDouble;
  return kLong;
}

ColumnShape ShapeOf(const PcAttribute& attribute) {
  switch (attribute.Type()) {
    case AttributeType::kInteger:
      return kInteger;
    case AttributeType::kLong:
    case AttributeType::kReference:
    case AttributeType::kLookup:
      return kLong;
    case AttributeType::kDouble:
      return kDouble;
    case AttributeType::kBoolean:
      return kBoolean;
    default:
      return kText;
  }
}

void SetShapedCell(PcRecordList& list, int row, const std::string& column, const Value& value,
                   const ColumnShape& shape) {
  if (!list.HasColumn(column)) list.AddColumn(column, shape.length, static_cast<int>(shape.type));
  list.SetValue(std::string_view(column), row, value);
}

embedded::HostOptions OptionsOf(const Platform& platform, embedded::HostDialogs& dialogs) {
  embedded::HostOptions options;
  options.files = &platform.files;
  options.dialogs = &dialogs;
  return options;
}

// Hands lines on, and keeps the newest error line.
class ErrorKeepingWriter : public TraceWriter {
 public:
  ErrorKeepingWriter(std::shared_ptr<TraceWriter> next, std::string& lastError)
      : next_(std::move(next)), lastError_(lastError) {}
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    if (number != 0) lastError_ = text + ": " + description;
    next_->WriteEntry(text, number, description, directory, name, on);
  }
  void Flush() noexcept override { next_->Flush(); }

 private:
  std::shared_ptr<TraceWriter> next_;
  std::string& lastError_;
};

}  // namespace

HostedProgram::HostedProgram(const HostedLogin& login, const Platform& platform, Toolkit& toolkit,
                             embedded::HostDialogs& dialogs)
    : platform_(platform),
      traceFile_(platform_.files, platform_.encodings.Open(platform_.ansiCodePage)),
      host_(login.database, OptionsOf(platform_, dialogs)),
      program_(
          platform_, toolkit, host_,
          [this] { return std::make_shared<ErrorKeepingWriter>(traceFile_.Factory()(), lastError_); },
          MakeTracingAdditionalValues),
      entry_(program_),
      session_(host_.OpenSession(login.user, login.password, login.language)) {
  host_.SetLfcStage2([this](const PcSessionPtr& session, const std::string& operation,
                            const PcRecordListPtr& first, const PcRecordListPtr& second,
                            const PcRecordListPtr& third) {
    PcRecordListPtr thirdRecords = third;
    entry_.LFCStage2(session, operation, first, second, thirdRecords);
  });
}

PcRecordListPtr HostedProgram::ObjectRows(const std::vector<ObjectKey>& keys) {
  PcRecordListPtr list = NewRecordList();
  int row = 0;
  for (const ObjectKey& key : keys) {
    const PcObjectPtr object = session_->ObjectStore()->Object(key);
    if (!object) throw HostError("there is no object " + ObjectKeyText(key, ':'));
    object->ReadData();
    SetCell(*list, row, "CLASS_ID", key.classId);
    SetCell(*list, row, "OBJECT_ID", key.objectId);
    const PcClassPtr objectClass = object->Class();
    for (int index = 0; index < objectClass->AttributeCount(); ++index) {
      const PcAttributePtr attribute = objectClass->Attribute(index);
      const std::string name = attribute->Name();
      if (name == "CLASS_ID" || name == "OBJECT_ID") continue;
      SetShapedCell(*list, row, name, object->GetValue(name), ShapeOf(*attribute));
    }
    ++row;
  }
  return list;
}

void SetCell(PcRecordList& list, int row, const std::string& column, const Value& value) {
  SetShapedCell(list, row, column, value, ShapeOf(column, value));
}

Platform WithServices(const Platform& platform, Pauser& pauser, ProcessLauncher& launcher) {
  return {platform.files,  platform.encodings, platform.clock,       pauser, launcher, platform.profiles,
          platform.system, platform.program,   platform.ansiCodePage};
}

}  // namespace tessel
