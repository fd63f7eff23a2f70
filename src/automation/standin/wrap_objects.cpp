#include "automation/standin/wrap_host.h"
#include "host/type_codes.h"

namespace tessel::automation {
namespace {

// A column by number or by name.
int ColumnOf(const PcRecordList& list, const Value& column) {
  if (!column.IsText()) return column.AsInt32();
  const int found = list.FindColumn(column.AsText());
  if (found < 0) throw HostError("The record list has no column \"" + column.AsText() + "\"");
  return found;
}

Variant Done() {
  return {};
}

// A number of a 16-bit column or attribute as such; the store keeps all integers alike.
Variant Sized(const Value& value, bool is16Bit) {
  if (!is16Bit || value.IsNull() || value.IsText()) return Variant(value);
  return Variant(value.AsInt16());
}

bool Is16Bit(const PcObject& object, const std::string& attribute) {
  const PcClassPtr objectClass = object.Class();
  const PcAttributePtr found = objectClass ? objectClass->FindAttribute(attribute) : nullptr;
  return found && found->Type() == AttributeType::kInteger;
}

Variant WrapList(Module& module, const PcObjectListPtr& part) {
  return Variant(NewScriptedObject(
      module, "PcObjectList", part,
      {{"Add", [part](const Arguments& a) { return part->Add(a.Object<PcObject>(0)), Done(); }},
       {"Count", [part](const Arguments&) { return Variant(std::int32_t{part->Count()}); }},
       {"Item", [&module, part](const Arguments& a) { return Wrap(module, part->Item(a.Number(0))); }}}));
}

Variant WrapAttributes(Module& module, const PcAttributeListPtr& part) {
  return Variant(NewScriptedObject(
      module, "PcAttributeList", part,
      {{"Add", [part](const Arguments& a) { return part->Add(a.Short(0), a.Text(1), a.Text(2)), Done(); }}}));
}

Variant WrapQuery(Module& module, const PcQueryPtr& part) {
  return Variant(NewScriptedObject(
      module, "PcQuery", part,
      {{"Sql", nullptr, [part](const Arguments& a) { part->SetSql(a.Text(0)); }},
       {"SetClass", [part](const Arguments& a) { return part->SetClass(a.Short(0)), Done(); }},
       {"AddSelect", [part](const Arguments& a) { return part->AddSelect(a.Text(0)), Done(); }},
       {"AddCondition",
        [part](const Arguments& a) {
          return part->AddCondition(a.Text(0), a.Text(1), a.ValueAt(2)), Done();
        }},
       {"Run", [&module, part](const Arguments&) { return Wrap(module, part->Run()); }}}));
}

const PcBehavior& BehaviorAt(const Arguments& a, std::size_t index) {
  return *Required(a.Object<PcBehavior>(index).get(), "behaviour");
}

const PcAttributeList& AttributesAt(const Arguments& a, std::size_t index) {
  return *Required(a.Object<PcAttributeList>(index).get(), "attribute list");
}

}  // namespace

Variant Wrap(Module& module, const PcRecordListPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcRecordList", part,
      {{"AddColumn",
        [part](const Arguments& a) { return part->AddColumn(a.Text(0), a.Number(1), a.Number(2)), Done(); }},
       {"ColumnCount", [part](const Arguments&) { return Variant(std::int32_t{part->ColumnCount()}); }},
       {"RowCount", [part](const Arguments&) { return Variant(std::int32_t{part->RowCount()}); }},
       {"ColumnName", [part](const Arguments& a) { return Variant(part->ColumnName(a.Number(0))); }},
       {"ColumnLength",
        [part](const Arguments& a) { return Variant(std::int32_t{part->ColumnLength(a.Number(0))}); }},
       {"ColumnTypeCode",
        [part](const Arguments& a) { return Variant(std::int32_t{part->ColumnTypeCode(a.Number(0))}); }},
       {"FindColumn",
        [part](const Arguments& a) { return Variant(std::int32_t{part->FindColumn(a.Text(0))}); }},
       {"Value",
        [part](const Arguments& a) {
          const int column = ColumnOf(*part, a.ValueAt(0));
          const bool is16Bit = part->ColumnTypeCode(column) == static_cast<int>(ColumnType::kInteger);
          return Sized(part->GetValue(column, a.Number(1)), is16Bit);
        },
        [part](const Arguments& a) {
          part->SetValue(ColumnOf(*part, a.ValueAt(0)), a.Number(1), a.ValueAt(2));
        }},
       {"WriteToFile",
        [part](const Arguments& a) { return part->WriteToFile(a.Text(0), a.Text(1)), Done(); }}}));
}

Variant Wrap(Module& module, const PcBehaviorPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcBehavior", part,
      {{"Setting", [part](const Arguments& a) { return Variant(std::int32_t{part->Get(a.Number(0))}); },
        [part](const Arguments& a) { part->Set(a.Number(0), a.Number(1)); }}}));
}

Variant Wrap(Module& module, const PcObjectPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcObject", part,
      {{"ClassId", [part](const Arguments&) { return Variant(part->GetClassId()); }},
       {"ObjectId", [part](const Arguments&) { return Variant(part->GetObjectId()); }},
       {"Class", [&module, part](const Arguments&) { return Wrap(module, part->Class()); }},
       {"Session", [&module, part](const Arguments&) { return Wrap(module, part->Session()); }},
       {"ReadData", [part](const Arguments&) { return part->ReadData(), Done(); }},
       {"HasAttribute", [part](const Arguments& a) { return Variant(part->HasAttribute(a.Text(0))); }},
       {"Value",
        [part](const Arguments& a) { return Sized(part->GetValue(a.Text(0)), Is16Bit(*part, a.Text(0))); },
        [part](const Arguments& a) { part->SetValue(a.Text(0), a.ValueAt(1)); }},
       {"Add", [part](const Arguments& a) { return Variant(std::int32_t{part->Add(BehaviorAt(a, 0))}); }},
       {"Update",
        [part](const Arguments& a) { return Variant(std::int32_t{part->Update(BehaviorAt(a, 0))}); }},
       {"Delete",
        [part](const Arguments& a) { return Variant(std::int32_t{part->Delete(BehaviorAt(a, 0))}); }},
       {"NextSequenceValue",
        [part](const Arguments& a) { return Variant(part->NextSequenceValue(a.Text(0))); }},
       {"AddLink",
        [&module, part](const Arguments& a) {
          const auto second = Required(a.Object<PcObject>(0), "second object");
          return Wrap(module, part->AddLink(*second, a.Short(1), BehaviorAt(a, 2)));
        }},
       {"Children",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->Children(AttributesAt(a, 0), BehaviorAt(a, 1)));
        }},
       {"Parents",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->Parents(AttributesAt(a, 0), BehaviorAt(a, 1)));
        }},
       {"Relations",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->Relations(AttributesAt(a, 0), BehaviorAt(a, 1)));
        }},
       {"WriteToFile",
        [part](const Arguments& a) { return part->WriteToFile(a.Text(0), a.Text(1)), Done(); }}}));
}

Variant Wrap(Module& module, const PcObjectStorePtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcObjectStore", part,
      {{"Object",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->Object({a.Short(0), a.Number(1)}));
        }},
       {"NewObject",
        [&module, part](const Arguments& a) { return Wrap(module, part->NewObject(a.Short(0))); }},
       {"NewObjectList",
        [&module, part](const Arguments&) { return WrapList(module, part->NewObjectList()); }},
       {"NewAttributeList",
        [&module, part](const Arguments&) { return WrapAttributes(module, part->NewAttributeList()); }},
       {"NewQuery", [&module, part](const Arguments&) { return WrapQuery(module, part->NewQuery()); }}}));
}

}  // namespace tessel::automation
