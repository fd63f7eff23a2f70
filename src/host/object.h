// PcObject: one object of the host's database, and the behaviour that its writes take.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "host/metadata.h"
#include "host/object_key.h"
#include "host/record_list.h"
#include "host/value.h"

namespace tessel {

class PcSession;

// Four settings, numbered 1 to 4, that every add, update, delete and retrieval takes. What they mean is the
// host's business.
class PcBehavior {
 public:
  virtual ~PcBehavior() = default;
  // Error 9 for another number.
  virtual void Set(int number, int value) = 0;
  [[nodiscard]] virtual int Get(int number) const = 0;
};
using PcBehaviorPtr = std::shared_ptr<PcBehavior>;

// What a retrieval returns of which class: "S" the related class, "L" the link class, "F" the class that a
// search starts from. "*" stands for all attributes.
class PcAttributeList {
 public:
  virtual ~PcAttributeList() = default;
  virtual void Add(ClassId classId, const std::string& attribute, const std::string& code) = 0;
};
using PcAttributeListPtr = std::shared_ptr<PcAttributeList>;

class PcObject;
using PcObjectPtr = std::shared_ptr<PcObject>;

class PcObject {
 public:
  virtual ~PcObject() = default;

  [[nodiscard]] virtual ClassId GetClassId() const = 0;
  // 0 until the object has been added to the database.
  [[nodiscard]] virtual ObjectId GetObjectId() const = 0;
  [[nodiscard]] virtual PcClassPtr Class() const = 0;
  [[nodiscard]] virtual std::shared_ptr<PcSession> Session() const = 0;

  // Reads the attribute values anew from the database. Error: HostError when the object is gone.
  virtual void ReadData() = 0;

  [[nodiscard]] virtual bool HasAttribute(std::string_view name) const = 0;
  // Error: HostError when the class has no such attribute.
  [[nodiscard]] virtual Value GetValue(std::string_view name) const = 0;
  // Converted to the attribute's type and kept until Add or Update. Errors: HostError no such attribute, 6
  // and 13 as in Value.
  virtual void SetValue(std::string_view name, const Value& value) = 0;

  // Prepare an unsaved object: its data without any value, then the defaults of its class. A host whose store
  // hands out new objects ready for use leaves both as they are.
  virtual void ClearData() {}
  virtual void SetDefaults() {}

  // Database writes: 0 on success, else the host's error code.
  [[nodiscard]] virtual int Add(const PcBehavior& behavior) = 0;
  [[nodiscard]] virtual int Update(const PcBehavior& behavior) = 0;
  [[nodiscard]] virtual int Delete(const PcBehavior& behavior) = 0;

  // Draws the next value of the attribute's sequence as its formatted text. Error: HostError when the
  // attribute has no sequence.
  [[nodiscard]] virtual Value NextSequenceValue(std::string_view attribute) = 0;

  // Ties this object (first end) to another (second end) by a link of the class: the link, or nothing when
  // the database refused it, without a code. Error: HostError for a class that is no link class.
  [[nodiscard]] virtual PcObjectPtr AddLink(PcObject& second, ClassId linkClass,
                                            const PcBehavior& behavior) = 0;

  // Objects linked below, above, or on either side of this one, one row an object with "OBJECT_ID",
  // "CLASS_ID" and the attributes that the list names; in the order of the links. The attribute list's "S"
  // entry names the related class; an "L" entry limits the retrieval to that link class and appends its
  // columns. An empty list when nothing is linked. Error: HostError when the database cannot be read.
  [[nodiscard]] virtual PcRecordListPtr Children(const PcAttributeList& attributes,
                                                 const PcBehavior& behavior) const = 0;
  [[nodiscard]] virtual PcRecordListPtr Parents(const PcAttributeList& attributes,
                                                const PcBehavior& behavior) const = 0;
  [[nodiscard]] virtual PcRecordListPtr Relations(const PcAttributeList& attributes,
                                                  const PcBehavior& behavior) const = 0;

  // Writes the attribute set to a text file under a title. Error: RuntimeError with the file system's number.
  virtual void WriteToFile(const std::string& title, const std::string& path) const = 0;

  [[nodiscard]] ObjectKey Key() const { return {GetClassId(), GetObjectId()}; }
  // Null reads as the empty text.
  [[nodiscard]] std::string GetText(std::string_view name) const { return GetValue(name).AsText(); }
};

}  // namespace tessel
