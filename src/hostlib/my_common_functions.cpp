#include "hostlib/my_common_functions.h"

#include "host/error.h"
#include "host/names.h"
#include "host/object_store.h"

namespace tessel::myCommonFunctions {
namespace {

PcClassPtr ClassOf(const PcObject& object, ClassId classId) {
  const auto session = Required(object.Session(), "session of the object");
  const auto metaData = Required(session->MetaData(), "metadata of the session");
  return Required(metaData->ClassById(classId), "link class");
}

PcRecordListPtr RunSql(const PcObject& object, const std::string& text) {
  const auto session = Required(object.Session(), "session of the object");
  const auto store = Required(session->ObjectStore(), "object store of the session");
  const auto query = Required(store->NewQuery(), "query");
  query->SetSql(text);
  return Required(query->Run(), "result of the query");
}

// Rows of a link table in which the object stands at one end; "1" the first, "2" the second.
PcRecordListPtr RowsAtEnd(const PcObject& object, const std::string& table, const std::string& end) {
  return RunSql(object, "select * from " + table + " where OBJECT_ID" + end + "='" +
                            std::to_string(object.GetObjectId()) + "' AND " + attribute::kClassId + end +
                            " = '" + std::to_string(object.GetClassId()) + "'");
}

std::string LinkTable(const PcObject& object, ClassId linkClass) {
  return ClassOf(object, linkClass)->TableName();
}

}  // namespace

bool CheckDBMechanismExists(Trace& trace, PcSession& session, const std::string& mechanism) {
  trace.Write("Check availability of DB mechanism: " + mechanism);
  const auto metaData = Required(session.MetaData(), "metadata of the session");
  const bool exists = metaData->DatabaseMechanism(mechanism) != nullptr;
  trace.Write(std::string("  ... Existance of DB mechanism: ") + BooleanText(exists));
  return exists;
}

bool FindIDAtt(PcObject& object, PcAttributePtr& attribute, PcSequencePtr& related) {
  const auto session = Required(object.Session(), "session of the object");
  const auto objectClass = Required(object.Class(), "class of the object");
  related = nullptr;
  for (int i = 0; i < objectClass->AttributeCount(); ++i) {
    attribute = Required(objectClass->Attribute(i), "attribute definition");
    const std::string name = attribute->Name();
    if (name == attribute::kSiteId || name == "REVISION" || !attribute->IsIdentifying(name)) continue;
    related = session->RelatedObject(*attribute);
    if (related) return true;
  }
  return false;
}

bool isObjLinked2Obj(const PcObject& first, const PcObject& second, ClassId linkClass, PcObjectPtr& link) {
  const auto rows = RunSql(first, "select * from " + LinkTable(first, linkClass) + " where OBJECT_ID1='" +
                                      std::to_string(first.GetObjectId()) + "' AND " + "CLASS_ID1='" +
                                      std::to_string(first.GetClassId()) + "' AND " + "OBJECT_ID2='" +
                                      std::to_string(second.GetObjectId()) + "' AND " + "CLASS_ID2='" +
                                      std::to_string(second.GetClassId()) + "'");
  const int count = rows->RowCount();
  if (count == 1) {
    const auto store = Required(first.Session()->ObjectStore(), "object store of the session");
    link = store->Object(rows->KeyOfRow(0));
  }
  return count > 0;
}

PcRecordListPtr RetrieveParents2(const PcObject& object) {
  const auto objectClass = Required(object.Class(), "class of the object");
  return RowsAtEnd(object, LinkTable(object, objectClass->DefaultHierarchicalLinkClassId()), "2");
}

PcRecordListPtr RetrieveRelations2(const PcObject& object, ClassId linkClass, int /*unused*/) {
  const std::string table = LinkTable(object, linkClass);
  auto rows = RowsAtEnd(object, table, "2");
  return rows->RowCount() > 0 ? rows : RowsAtEnd(object, table, "1");
}

}  // namespace tessel::myCommonFunctions
