#include "automation/standin/wrap_host.h"

namespace tessel::automation {
namespace {

Variant Done() {
  return {};
}

Variant WrapSessionUtil(Module& module, const std::shared_ptr<PcSessionUtil>& part) {
  return Variant(NewScriptedObject(
      module, PcSessionUtil::kProgId, part,
      {{"RunOperation", [part](const Arguments& a) {
          const auto object = Required(a.Object<PcObject>(0), "object");
          const auto operation = Required(a.Object<const PcLifeCycleOperation>(1), "operation");
          part->RunOperation(*object, *operation, a.Flag(2), a.Object<PcRecordList>(3),
                             a.Object<PcRecordList>(4));
          return Done();
        }}}));
}

Variant WrapView(Module& module, const std::shared_ptr<PcLifeCycleView>& part) {
  return Variant(NewScriptedObject(
      module, "PcLifeCycleView", part,
      {{"SetObjects",
        [part](const Arguments& a) { return part->SetObjects(a.Object<PcObjectList>(0)), Done(); }},
       {"SetOperation",
        [part](const Arguments& a) {
          return part->SetOperation(a.Object<const PcLifeCycleOperation>(0)), Done();
        }},
       {"SetFlag", [part](const Arguments& a) { return part->SetFlag(a.Flag(0)), Done(); }},
       {"SetComment", [part](const Arguments& a) { return part->SetComment(a.Text(0)), Done(); }},
       {"Show", [part](const Arguments&) { return part->Show(), Done(); }},
       {"Result", [part](const Arguments&) { return Variant(part->Result()); }}}));
}

Variant WrapLogin(Module& module, const std::shared_ptr<PcLoginDialog>& part) {
  return Variant(NewScriptedObject(module, "PcLoginDialog", part, {{"ShowModal", [part](const Arguments&) {
                                                                      return Variant(part->ShowModal());
                                                                    }}}));
}

Variant WrapCommonGUI(Module& module, const std::shared_ptr<PcCommonGUI>& part) {
  return Variant(NewScriptedObject(
      module, PcCommonGUI::kProgId, part,
      {{"NewLifeCycleView",
        [&module, part](const Arguments&) { return WrapView(module, part->NewLifeCycleView()); }},
       {"NewLoginDialog",
        [&module, part](const Arguments&) { return WrapLogin(module, part->NewLoginDialog()); }},
       {"SelectObjects",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->SelectObjects({a.Text(0), a.Short(1), a.Text(2), a.Flag(3), a.Flag(4)}));
        }},
       {"SelectFromQuery",
        [&module, part](const Arguments&) { return Wrap(module, part->SelectFromQuery()); }}}));
}

Variant WrapDialog(Module& module, const std::shared_ptr<PcObjectDialog>& part) {
  return Variant(NewScriptedObject(
      module, "PcObjectDialog", part,
      {{"SetObject", [part](const Arguments& a) { return part->SetObject(a.Object<PcObject>(0)), Done(); }},
       {"SetObjects",
        [part](const Arguments& a) { return part->SetObjects(a.Object<PcObjectList>(0)), Done(); }},
       {"SetModeValue", [part](const Arguments& a) { return part->SetModeValue(a.Number(0)), Done(); }},
       {"SetTitle", [part](const Arguments& a) { return part->SetTitle(a.Text(0)), Done(); }},
       {"PageCount", [part](const Arguments&) { return Variant(std::int32_t{part->PageCount()}); }},
       {"SelectPage", [part](const Arguments& a) { return part->SelectPage(a.Number(0)), Done(); }},
       {"ShowModeless", [part](const Arguments&) { return part->ShowModeless(), Done(); }},
       {"ShowModal", [part](const Arguments&) { return Variant(part->ShowModal()); }},
       {"Object", [&module, part](const Arguments&) { return Wrap(module, part->Object()); }}}));
}

Variant WrapWindow(Module& module, const std::shared_ptr<PcActiveWindow>& part) {
  if (!part) return Variant(DispatchPtr());
  return Variant(NewScriptedObject(module, "PcActiveWindow", part,
                                   {{"RefreshObject", [part](const Arguments& a) {
                                       part->RefreshObject({a.Short(0), a.Number(1)}, a.Number(2));
                                       return Done();
                                     }}}));
}

Variant WrapGUIServices(Module& module, const std::shared_ptr<PcGUIServices>& part) {
  return Variant(NewScriptedObject(
      module, PcGUIServices::kProgId, part,
      {{"NewObjectDialog",
        [&module, part](const Arguments& a) {
          return WrapDialog(module, part->NewObjectDialog(a.Number(0)));
        }},
       {"ActiveWindow",
        [&module, part](const Arguments&) { return WrapWindow(module, part->ActiveWindow()); }},
       {"ShowSystemMessage", [part](const Arguments& a) {
          part->ShowSystemMessage(a.Number(0), a.Number(1), ToTexts(a.At(2)));
          return Done();
        }}}));
}

Variant WrapMessage(Module& module, const std::shared_ptr<PcMessage>& part) {
  return Variant(NewScriptedObject(
      module, "PcMessage", part,
      {{"SetAddress",
        [part](const Arguments& a) { return part->SetAddress(a.Text(0), a.Number(1)), Done(); }},
       {"Subject", nullptr, [part](const Arguments& a) { part->SetSubject(a.Text(0)); }},
       {"Text", nullptr, [part](const Arguments& a) { part->SetText(a.Text(0)); }},
       {"Submit", [part](const Arguments& a) { return part->Submit(a.Number(0)), Done(); }}}));
}

Variant WrapMessageStore(Module& module, const std::shared_ptr<PcMessageStore>& part) {
  return Variant(NewScriptedObject(module, PcMessageStore::kProgId, part,
                                   {{"NewMessage", [&module, part](const Arguments&) {
                                       return WrapMessage(module, part->NewMessage());
                                     }}}));
}

}  // namespace

Variant Wrap(Module& module, const std::shared_ptr<PcService>& service) {
  if (const auto util = std::dynamic_pointer_cast<PcSessionUtil>(service))
    return WrapSessionUtil(module, util);
  if (const auto common = std::dynamic_pointer_cast<PcCommonGUI>(service))
    return WrapCommonGUI(module, common);
  if (const auto gui = std::dynamic_pointer_cast<PcGUIServices>(service)) return WrapGUIServices(module, gui);
  if (const auto store = std::dynamic_pointer_cast<PcMessageStore>(service))
    return WrapMessageStore(module, store);
  return Variant(DispatchPtr());
}

}  // namespace tessel::automation
