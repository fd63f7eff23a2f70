// New objects, links and the display of what changed.
#include "host/error.h"
#include "hostlib/active_window.h"
#include "hostlib/qel_function_pool.h"

namespace tessel {
namespace {

constexpr const char* kRevisionAttribute = "REVISION";
// Refresh mode after a link.
constexpr int kRefreshLinked = 1;

PcSessionPtr SessionOf(const PcObject& object) {
  return Required(object.Session(), "session of the object");
}

// The first link class that may tie the two in this order; 0 when there is none.
ClassId LinkClassBetween(const PcObject& first, const PcObject& second) {
  const auto classes =
      SessionOf(first)->MetaData()->LinkClassesBetween(first.GetClassId(), second.GetClassId());
  return classes.empty() ? ClassId{0} : classes.front()->Id();
}

// The hierarchical link class of the parent's class; 0 when it may not tie the two.
ClassId HierarchicalLinkClass(const PcObject& parent, const PcObject& child) {
  const ClassId hierarchical =
      Required(parent.Class(), "class of the parent")->DefaultHierarchicalLinkClassId();
  const auto classes =
      SessionOf(parent)->MetaData()->LinkClassesBetween(parent.GetClassId(), child.GetClassId());
  for (const PcClassPtr& linkClass : classes) {
    if (linkClass->Id() == hierarchical) return hierarchical;
  }
  return 0;
}

PcBehaviorPtr LinkBehavior(const PcObject& object, int number) {
  PcBehaviorPtr behavior = Required(SessionOf(object)->NewBehavior(), "behaviour");
  behavior->Set(1, number);
  return behavior;
}

void RefreshAfterLink(const QelFunctionPool& pool, const PcObject& link, const PcObject& object,
                      bool refreshActive, bool refreshAll) {
  for (const PcObject* shown : {&link, &object}) {
    if (refreshAll) {
      pool.RefreshAllPelicoreWindows(*shown, kRefreshLinked);
    } else if (refreshActive) {
      pool.RefreshActivePelicoreWindow(*shown, kRefreshLinked);
    }
  }
}

}  // namespace

PcObjectPtr QelFunctionPool::NewObject(PcSession& session, const ClassArgument& classArgument, int number,
                                       PcObjectPtr& object) const {
  object = nullptr;
  const ClassId classId = classArgument.Resolve(session);
  if (classId == 0) return object;
  object = Required(session.ObjectStore()->NewObject(classId), "new object");
  object->ClearData();
  object->SetDefaults();
  IncrementSequences(*object, number);
  return object;
}

void QelFunctionPool::IncrementSequences(PcObject& object, int) const {
  const PcClassPtr classData = Required(object.Class(), "class of the object");
  for (int i = 0; i < classData->AttributeCount(); ++i) {
    const PcAttributePtr attribute = classData->Attribute(i);
    const std::string name = attribute->Name();
    if (attribute->HasSequence() && name != kRevisionAttribute) {
      object.SetValue(name, object.NextSequenceValue(name));
    }
  }
}

bool QelFunctionPool::LinkObjectToDesktop(const PcObjectPtr& object, const PcObjectPtr& target, int number,
                                          bool refreshActive, bool refreshAll) const {
  PcObject& linked = *Required(object.get(), "object");
  PcObject& desktop = *Required(target.get(), "target object");
  if (!Required(linked.Class(), "class of the object")->AllowsDesktopLink()) return false;
  const ClassId linkClass = LinkClassBetween(linked, desktop);
  if (linkClass == 0) return false;
  const PcObjectPtr link = linked.AddLink(desktop, linkClass, *LinkBehavior(linked, number));
  if (!link) return false;
  RefreshAfterLink(*this, *link, linked, refreshActive, refreshAll);
  return true;
}

bool QelFunctionPool::LinkObjectToParent(const PcObjectPtr& object, const PcObjectPtr& parent, int number,
                                         bool refreshActive, bool refreshAll) const {
  PcObject& linked = *Required(object.get(), "object");
  PcObject& above = *Required(parent.get(), "parent object");
  const ClassId linkClass = HierarchicalLinkClass(above, linked);
  if (linkClass == 0) return false;
  // The first end of a hierarchical link is the parent.
  const PcObjectPtr link = above.AddLink(linked, linkClass, *LinkBehavior(linked, number));
  if (!link) return false;
  RefreshAfterLink(*this, *link, linked, refreshActive, refreshAll);
  return true;
}

PcObjectPtr QelFunctionPool::LinkObjectToObject(PcObject& object, PcObject& other,
                                                const ClassArgument& linkClass) const {
  const PcSessionPtr session = SessionOf(object);
  const ClassId linkClassId = linkClass.Resolve(*session);
  if (linkClassId == 0) return nullptr;
  return object.AddLink(other, linkClassId, *Required(session->NewBehavior(), "behaviour"));
}

void QelFunctionPool::RefreshActivePelicoreWindow(const PcObject& object, int mode) const {
  RefreshActiveWindow(*SessionOf(object), object.Key(), mode);
}

void QelFunctionPool::RefreshAllPelicoreWindows(const PcObject& object, int mode) const {
  const PcSessionPtr session = SessionOf(object);
  const PcEnginePtr engine = session->Engine();
  if (!engine) {
    RefreshActiveWindow(*session, object.Key(), mode);
    return;
  }
  const int count = engine->SessionCount();
  for (int i = 0; i < count; ++i)
    RefreshActiveWindow(*engine->Session(i), object.Key(), mode);
}

}  // namespace tessel
