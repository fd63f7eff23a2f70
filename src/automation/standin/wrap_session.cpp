#include "automation/standin/wrap_host.h"

namespace tessel::automation {
namespace {

Variant Done() {
  return {};
}

// What a unit of work needs: it ends with a commit or when it is let go.
struct OpenUnit {
  PcUnitOfWorkPtr unit;
};

Variant WrapUnit(Module& module, PcUnitOfWorkPtr unit) {
  if (!unit) return Variant(DispatchPtr());
  const auto part = std::make_shared<OpenUnit>(OpenUnit{std::move(unit)});
  return Variant(
      NewScriptedObject(module, "PcUnitOfWork", part,
                        {{"Commit",
                          [part](const Arguments&) {
                            Required(part->unit.get(), "unit of work")->Commit();
                            part->unit.reset();
                            return Done();
                          }},
                         {"RollBack", [part](const Arguments&) { return part->unit.reset(), Done(); }}}));
}

Variant WrapGlobalData(Module& module, const PcSessionPtr& part) {
  return Variant(NewScriptedObject(
      module, "PcGlobalData", part,
      {{"Value", [part](const Arguments& a) { return Variant(part->GlobalData().Get(a.Text(0))); },
        [part](const Arguments& a) { part->GlobalData().Set(a.Text(0), a.ValueAt(1)); }},
       {"Position",
        [part](const Arguments& a) { return Variant(std::int32_t{part->GlobalData().Position(a.Text(0))}); }},
       {"Remove", [part](const Arguments& a) { return part->GlobalData().Remove(a.Text(0)), Done(); }}}));
}

Variant WrapUser(Module& module, const PcUserPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcUser", std::const_pointer_cast<PcUser>(part),
      {{"Id", [part](const Arguments&) { return Variant(std::int32_t{part->Id()}); }},
       {"LoginName", [part](const Arguments&) { return Variant(part->LoginName()); }},
       {"UserObject", [&module, part](const Arguments&) { return Wrap(module, part->UserObject()); }},
       {"RoleCount",
        [part](const Arguments&) { return Variant(static_cast<std::int32_t>(part->Roles().size())); }},
       {"Role",
        [part](const Arguments& a) {
          return Variant(part->Roles().at(static_cast<std::size_t>(a.Number(0))));
        }},
       {"IsAdministrator", [part](const Arguments&) { return Variant(part->IsAdministrator()); }}}));
}

Variant WrapSequence(Module& module, const PcSequencePtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(module, "PcSequence", part, {{"AttributeName", [part](const Arguments&) {
                                                                   return Variant(part->AttributeName());
                                                                 }}}));
}

Variant WrapDatabase(Module& module, const DatabaseEntry& entry) {
  return Variant(NewScriptedObject(
      module, "PcDatabase", nullptr,
      {{"Name", [entry](const Arguments&) { return Variant(entry.name); }},
       {"ConnectionText", [entry](const Arguments&) { return Variant(entry.connectionText); }},
       {"Password", [entry](const Arguments&) { return Variant(entry.password); }}}));
}

}  // namespace

Variant Wrap(Module& module, const PcSessionPtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcSession", part,
      {{"CurrentUser", [&module, part](const Arguments&) { return WrapUser(module, part->CurrentUser()); }},
       {"UserCount",
        [part](const Arguments&) { return Variant(static_cast<std::int32_t>(part->Users().size())); }},
       {"User",
        [&module, part](const Arguments& a) {
          return WrapUser(module, part->Users().at(static_cast<std::size_t>(a.Number(0))));
        }},
       {"DatabaseAlias", [part](const Arguments&) { return Variant(part->DatabaseAlias()); }},
       {"Identifier", [part](const Arguments&) { return Variant(part->Identifier()); }},
       {"Language", [part](const Arguments&) { return Variant(part->Language()); }},
       {"ConfigurationValue",
        [part](const Arguments& a) { return Variant(part->ConfigurationValue(a.Text(0))); },
        [part](const Arguments& a) { part->SetConfigurationValue(a.Text(0), a.Text(1)); }},
       {"NewBehavior", [&module, part](const Arguments&) { return Wrap(module, part->NewBehavior()); }},
       {"GlobalData", [&module, part](const Arguments&) { return WrapGlobalData(module, part); }},
       {"MetaData", [&module, part](const Arguments&) { return Wrap(module, part->MetaData()); }},
       {"ObjectStore", [&module, part](const Arguments&) { return Wrap(module, part->ObjectStore()); }},
       {"RelatedObject",
        [&module, part](const Arguments& a) {
          return WrapSequence(module,
                              part->RelatedObject(*Required(a.Object<const PcAttribute>(0), "attribute")));
        }},
       {"CreateService",
        [&module, part](const Arguments& a) { return Wrap(module, part->CreateService(a.Text(0))); }},
       {"Engine", [&module, part](const Arguments&) { return Wrap(module, part->Engine()); }},
       {"Close", [part](const Arguments&) { return part->Close(), Done(); }},
       {"BeginUnitOfWork",
        [&module, part](const Arguments& a) {
          return WrapUnit(module, part->BeginUnitOfWork(a.OptionalText(0)));
        }},
       {"WasCommitted", [part](const Arguments& a) { return Variant(part->WasCommitted(a.Text(0))); }},
       {"ForgetMark", [part](const Arguments& a) { return part->ForgetMark(a.Text(0)), Done(); }},
       {"ErrorText", [part](const Arguments& a) { return Variant(part->ErrorText(a.Number(0))); }}}));
}

Variant Wrap(Module& module, const PcEnginePtr& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(
      module, "PcEngine", part,
      {{"Initialize", [part](const Arguments& a) { return part->Initialize(a.Text(0)), Done(); }},
       {"Option", nullptr, [part](const Arguments& a) { part->SetOption(a.Number(0)); }},
       {"DefaultDatabaseName", [part](const Arguments&) { return Variant(part->DefaultDatabaseName()); }},
       {"Database",
        [&module, part](const Arguments& a) { return WrapDatabase(module, part->Database(a.Text(0))); }},
       {"NewSession",
        [&module, part](const Arguments& a) { return Wrap(module, part->NewSession(a.Text(0))); }},
       {"OpenConnection",
        [part](const Arguments& a) {
          const auto session = Required(a.Object<PcSession>(0), "session");
          return part->OpenConnection(*session, a.Text(1), a.Text(2), a.Number(3)), Done();
        }},
       {"Login",
        [part](const Arguments& a) {
          const auto session = Required(a.Object<PcSession>(0), "session");
          return Variant(part->Login(*session, a.Text(1), a.Text(2)));
        }},
       {"FirstSessionLoginName",
        [part](const Arguments&) { return Variant(part->FirstSessionLogin().first); }},
       {"FirstSessionPassword",
        [part](const Arguments&) { return Variant(part->FirstSessionLogin().second); }},
       {"SessionCount", [part](const Arguments&) { return Variant(std::int32_t{part->SessionCount()}); }},
       {"Session", [&module, part](const Arguments& a) { return Wrap(module, part->Session(a.Number(0))); }},
       {"Shutdown", [part](const Arguments&) { return part->Shutdown(), Done(); }}}));
}

}  // namespace tessel::automation
