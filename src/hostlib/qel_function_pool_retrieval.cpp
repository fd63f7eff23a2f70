// Retrieval of related objects.
#include <algorithm>
#include <set>
#include <vector>

#include "host/error.h"
#include "hostlib/qel_function_pool.h"

namespace tessel {
namespace {

constexpr const char* kAllAttributes = "*";
constexpr const char* kRelatedCode = "S";
constexpr const char* kLinkCode = "L";
constexpr const char* kStartCode = "F";

using Retrieve = PcRecordListPtr (PcObject::*)(const PcAttributeList&, const PcBehavior&) const;

// Hierarchical link class of a class that may tie it, as the upper end, to the other; 0 when there is none.
ClassId HierarchicalLink(PcSession& session, ClassId upper, ClassId lower) {
  const PcMetaDataPtr metaData = session.MetaData();
  const PcClassPtr upperClass = metaData->ClassById(upper);
  if (!upperClass) return 0;
  const ClassId hierarchical = upperClass->DefaultHierarchicalLinkClassId();
  if (hierarchical == 0) return 0;
  for (const PcClassPtr& linkClass : metaData->LinkClassesBetween(upper, lower)) {
    if (linkClass->Id() == hierarchical) return hierarchical;
  }
  return 0;
}

// The steps that all forms share. Without link classes the choice of links is the host's.
PcRecordListPtr RetrieveBy(Retrieve retrieve, const PcObject& object, ClassId related,
                           const std::vector<ClassId>& linkClasses, int mode) {
  const PcSessionPtr session = Required(object.Session(), "session of the object");
  const PcAttributeListPtr attributes =
      Required(session->ObjectStore()->NewAttributeList(), "attribute list");
  attributes->Add(related, kAllAttributes, kRelatedCode);
  for (const ClassId linkClass : linkClasses)
    attributes->Add(linkClass, kAllAttributes, kLinkCode);
  const PcBehaviorPtr behavior = Required(session->NewBehavior(), "behaviour");
  behavior->Set(1, mode);
  return (object.*retrieve)(*attributes, *behavior);
}

ClassId Resolve(const PcObject& object, const ClassArgument& argument) {
  return argument.Resolve(*Required(object.Session(), "session of the object"));
}

std::vector<ClassId> NoLinkClasses(ClassId) {
  return {};
}

// Adds the link classes that may tie two classes in this order.
void AddLinkClasses(const PcObject& object, ClassId first, ClassId second,
                    std::vector<ClassId>& linkClasses) {
  for (const PcClassPtr& linkClass : object.Session()->MetaData()->LinkClassesBetween(first, second)) {
    const ClassId id = linkClass->Id();
    if (std::find(linkClasses.begin(), linkClasses.end(), id) == linkClasses.end()) linkClasses.push_back(id);
  }
}

// The link class that a caller named; empty when it named none.
std::vector<ClassId> NamedLinkClass(const PcObject& object, const ClassArgument& linkClass) {
  const ClassId id = Resolve(object, linkClass);
  return id >= 1 ? std::vector<ClassId>{id} : std::vector<ClassId>{};
}

// A whole retrieval into `records`, which it gives back too. `linkClassesTo` names the link classes for the
// related class; it is asked only when that class is known.
template <class LinkClassesTo>
PcRecordListPtr RetrieveInto(PcRecordListPtr& records, Retrieve retrieve, const PcObject& object,
                             const ClassArgument& relatedClass, int mode, LinkClassesTo linkClassesTo) {
  records = nullptr;
  const ClassId related = Resolve(object, relatedClass);
  if (related != 0) records = RetrieveBy(retrieve, object, related, linkClassesTo(related), mode);
  return records;
}

// The first object right above another by a hierarchical link; nothing at the top.
PcObjectPtr FirstParent(const PcObject& object) {
  const PcSessionPtr session = Required(object.Session(), "session of the object");
  const PcMetaDataPtr metaData = session->MetaData();
  for (int i = 0; i < metaData->ClassCount(); ++i) {
    const ClassId parentClass = metaData->ClassAt(i)->Id();
    const ClassId linkClass = HierarchicalLink(*session, parentClass, object.GetClassId());
    if (linkClass == 0) continue;
    const PcAttributeListPtr attributes =
        Required(session->ObjectStore()->NewAttributeList(), "attribute list");
    attributes->Add(object.GetClassId(), kAllAttributes, kStartCode);
    attributes->Add(parentClass, kAllAttributes, kRelatedCode);
    attributes->Add(linkClass, kAllAttributes, kLinkCode);
    const PcRecordListPtr parents =
        object.Parents(*attributes, *Required(session->NewBehavior(), "behaviour"));
    if (parents && parents->RowCount() > 0) return session->ObjectStore()->Object(parents->KeyOfRow(0));
  }
  return nullptr;
}

}  // namespace

PcRecordListPtr QelFunctionPool::RetrieveChildren(const PcObject& object, const ClassArgument& childClass,
                                                  int mode, PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Children, object, childClass, mode, NoLinkClasses);
}

PcRecordListPtr QelFunctionPool::RetrieveChildrenAndLinks(const PcObject& object,
                                                          const ClassArgument& childClass, int mode,
                                                          PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Children, object, childClass, mode, [&object](ClassId child) {
    std::vector<ClassId> links;
    AddLinkClasses(object, object.GetClassId(), child, links);
    return links;
  });
}

PcRecordListPtr QelFunctionPool::RetrieveParents(const PcObject& object, const ClassArgument& parentClass,
                                                 int mode, PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Parents, object, parentClass, mode, NoLinkClasses);
}

PcRecordListPtr QelFunctionPool::RetrieveParentsAndLinks(const PcObject& object,
                                                         const ClassArgument& parentClass, int mode,
                                                         PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Parents, object, parentClass, mode, [&object](ClassId parent) {
    std::vector<ClassId> links;
    AddLinkClasses(object, parent, object.GetClassId(), links);
    return links;
  });
}

PcRecordListPtr QelFunctionPool::RetrieveRelations(const PcObject& object, const ClassArgument& relatedClass,
                                                   const ClassArgument& linkClass, int mode,
                                                   PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Relations, object, relatedClass, mode,
                      [&](ClassId) { return NamedLinkClass(object, linkClass); });
}

PcRecordListPtr QelFunctionPool::RetrieveRelationsAndLinks(const PcObject& object,
                                                           const ClassArgument& relatedClass,
                                                           const ClassArgument& linkClass, int mode,
                                                           PcRecordListPtr& records) const {
  return RetrieveInto(records, &PcObject::Relations, object, relatedClass, mode, [&](ClassId related) {
    std::vector<ClassId> links = NamedLinkClass(object, linkClass);
    if (links.empty()) {
      AddLinkClasses(object, object.GetClassId(), related, links);
      AddLinkClasses(object, related, object.GetClassId(), links);
    }
    return links;
  });
}

PcObjectPtr QelFunctionPool::RetrieveMainObject(const PcObjectPtr& object, std::int16_t steps) const {
  PcObjectPtr main = Required(object, "object");
  std::set<ObjectKey> onTheWay = {main->Key()};
  for (int step = 0; steps < 1 || step < steps; ++step) {
    const PcObjectPtr parent = FirstParent(*main);
    if (!parent || !onTheWay.insert(parent->Key()).second) break;
    main = parent;
  }
  if (main != object) main->ReadData();
  return main;
}

PcRecordListPtr QelFunctionPool::SelectObjectsSQL(PcSession&, PcQuery& query,
                                                  PcRecordListPtr& records) const {
  records = query.Run();
  return records;
}

}  // namespace tessel
