#include "automation/standin/wrap_host.h"

namespace tessel::automation {
namespace {

Variant WrapAttribute(Module& module, const PcAttributePtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcAttribute", std::const_pointer_cast<PcAttribute>(part),
      {{"Name", [part](const Arguments&) { return Variant(part->Name()); }},
       {"Type", [part](const Arguments&) { return Variant(static_cast<std::int16_t>(part->Type())); }},
       {"IsIdentifying", [part](const Arguments& a) { return Variant(part->IsIdentifying(a.Text(0))); }},
       {"IsMandatory", [part](const Arguments&) { return Variant(part->IsMandatory()); }},
       {"HasSequence", [part](const Arguments&) { return Variant(part->HasSequence()); }},
       {"TargetClassId", [part](const Arguments&) { return Variant(part->TargetClassId()); }}}));
}

Variant WrapOperation(Module& module, const PcLifeCycleOperationPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(module, "PcLifeCycleOperation",
                                   std::const_pointer_cast<PcLifeCycleOperation>(part),
                                   {{"Id", [part](const Arguments&) { return Variant(part->Id()); }},
                                    {"Name", [part](const Arguments&) { return Variant(part->Name()); }}}));
}

Variant WrapOperations(Module& module, const PcLifeCycleOperationsPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcLifeCycleOperations", std::const_pointer_cast<PcLifeCycleOperations>(part),
      {{"Item",
        [&module, part](const Arguments& a) { return WrapOperation(module, part->Item(a.Text(0))); }}}));
}

Variant WrapMechanism(Module& module, const PcClassMechanismPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcClassMechanism", std::const_pointer_cast<PcClassMechanism>(part),
      {{"Id", [part](const Arguments&) { return Variant(std::int32_t{part->Id()}); }},
       {"Name", [part](const Arguments&) { return Variant(part->Name()); }},
       {"SupportedClassCount",
        [part](const Arguments&) { return Variant(std::int32_t{part->SupportedClassCount()}); }},
       {"SupportedClass",
        [&module, part](const Arguments& a) { return Wrap(module, part->SupportedClass(a.Number(0))); }},
       {"Supports", [part](const Arguments& a) { return Variant(part->Supports(a.Short(0))); }}}));
}

Variant WrapDatabaseMechanism(Module& module, const PcDatabaseMechanismPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(module, "PcDatabaseMechanism",
                                   std::const_pointer_cast<PcDatabaseMechanism>(part),
                                   {{"Name", [part](const Arguments&) { return Variant(part->Name()); }}}));
}

Variant WrapClasses(Module& module, std::vector<PcClassPtr> list) {
  const auto part = std::make_shared<std::vector<PcClassPtr>>(std::move(list));
  return Variant(NewScriptedObject(
      module, "PcClasses", part,
      {{"Count", [part](const Arguments&) { return Variant(static_cast<std::int32_t>(part->size())); }},
       {"Item", [&module, part](const Arguments& a) {
          const int index = a.Number(0);
          if (index < 0 || static_cast<std::size_t>(index) >= part->size())
            throw RuntimeError(error_number::kSubscriptOutOfRange, "There is no such class in the list");
          return Wrap(module, (*part)[static_cast<std::size_t>(index)]);
        }}}));
}

}  // namespace

Variant Wrap(Module& module, const PcClassPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcClass", std::const_pointer_cast<PcClass>(part),
      {{"Id", [part](const Arguments&) { return Variant(part->Id()); }},
       {"Name", [part](const Arguments&) { return Variant(part->Name()); }},
       {"IsFileBased", [part](const Arguments&) { return Variant(part->IsFileBased()); }},
       {"IsLinkClass", [part](const Arguments&) { return Variant(part->IsLinkClass()); }},
       {"AllowsDesktopLink", [part](const Arguments&) { return Variant(part->AllowsDesktopLink()); }},
       {"IconFileName", [part](const Arguments&) { return Variant(part->IconFileName()); }},
       {"DefaultHierarchicalLinkClassId",
        [part](const Arguments&) { return Variant(part->DefaultHierarchicalLinkClassId()); }},
       {"TableName", [part](const Arguments&) { return Variant(part->TableName()); }},
       {"AttributeCount", [part](const Arguments&) { return Variant(std::int32_t{part->AttributeCount()}); }},
       {"Attribute",
        [&module, part](const Arguments& a) { return WrapAttribute(module, part->Attribute(a.Number(0))); }},
       {"FindAttribute",
        [&module, part](const Arguments& a) {
          return WrapAttribute(module, part->FindAttribute(a.Text(0)));
        }},
       {"HasMechanism", [part](const Arguments& a) { return Variant(part->HasMechanism(a.Text(0))); }},
       {"LifeCycleOperations",
        [&module, part](const Arguments&) { return WrapOperations(module, part->LifeCycleOperations()); }}}));
}

Variant Wrap(Module& module, const PcMetaDataPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcMetaData", std::const_pointer_cast<PcMetaData>(part),
      {{"ClassIdByName", [part](const Arguments& a) { return Variant(part->ClassIdByName(a.Text(0))); }},
       {"ClassById",
        [&module, part](const Arguments& a) { return Wrap(module, part->ClassById(a.Short(0))); }},
       {"ClassCount", [part](const Arguments&) { return Variant(std::int32_t{part->ClassCount()}); }},
       {"ClassAt", [&module, part](const Arguments& a) { return Wrap(module, part->ClassAt(a.Number(0))); }},
       {"ClassMechanism",
        [&module, part](const Arguments& a) {
          return WrapMechanism(module, part->ClassMechanism(a.Text(0)));
        }},
       {"ClassMechanismCount",
        [part](const Arguments&) { return Variant(std::int32_t{part->ClassMechanismCount()}); }},
       {"ClassMechanismAt",
        [&module, part](const Arguments& a) {
          return WrapMechanism(module, part->ClassMechanismAt(a.Number(0)));
        }},
       {"DatabaseMechanism",
        [&module, part](const Arguments& a) {
          return WrapDatabaseMechanism(module, part->DatabaseMechanism(a.Text(0)));
        }},
       {"LinkClassesBetween", [&module, part](const Arguments& a) {
          return WrapClasses(module, part->LinkClassesBetween(a.Short(0), a.Short(1)));
        }}}));
}

}  // namespace tessel::automation
