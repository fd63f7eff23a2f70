#include "embedded/client/retrieval.h"

#include <algorithm>
#include <unordered_set>

#include "embedded/client/attribute_list.h"
#include "embedded/client/query.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

// The attributes wanted of one class, and the record list column of each.
struct Wanted {
  const ClassDefinition* definition;
  std::vector<const AttributeDefinition*> attributes;
  std::vector<int> columns;

  // Names for a select list, each behind ", " and the table's alias.
  [[nodiscard]] std::string SelectText(const char* alias) const {
    std::string text;
    for (const AttributeDefinition* attribute : attributes)
      text += std::string(", ") + alias + attribute->name;
    return text;
  }
};

struct FoundRow {
  std::int32_t linkId;
  ObjectKey key;
  std::vector<Value> cells;  // of the object, then of the link
  const Wanted* related;
};

class Retrieval {
 public:
  Retrieval(EmbeddedSession& session, const ObjectKey& object, const AttributeList& attributes)
      : session_(session), object_(object), list_(session.Core().NewRecordList()) {
    list_->AddColumn(attribute::kObjectId, ColumnType::kLong);
    list_->AddColumn(attribute::kClassId, ColumnType::kInteger);
    for (const AttributeListEntry& entry : attributes.Entries()) {
      if (entry.code == 'S') Want(related_, entry);
      if (entry.code == 'L') Want(links_, entry);
    }
    for (Wanted& wanted : related_)
      AddColumns(wanted, false);
    for (Wanted& wanted : links_)
      AddColumns(wanted, true);
  }

  PcRecordListPtr Run(LinkSide side) {
    std::vector<Wanted> links = links_;
    if (links.empty()) {
      for (const auto& definition : session_.Core().metadata->Classes()) {
        if (definition->linkClass) links.push_back({definition.get(), {}, {}});
      }
    }
    for (const Wanted& link : links) {
      std::vector<FoundRow> rows;
      if (side != LinkSide::kAbove) Collect(link, "1", "2", rows);
      if (side != LinkSide::kBelow) Collect(link, "2", "1", rows);
      std::stable_sort(rows.begin(), rows.end(),
                       [](const FoundRow& a, const FoundRow& b) { return a.linkId < b.linkId; });
      for (const FoundRow& row : rows)
        Append(row, link);
    }
    return list_;
  }

 private:
  void Want(std::vector<Wanted>& wanted, const AttributeListEntry& entry) {
    auto found = std::find_if(wanted.begin(), wanted.end(),
                              [&](const Wanted& each) { return each.definition->id == entry.classId; });
    if (found == wanted.end()) {
      found = wanted.insert(found, {&session_.Core().metadata->Required(entry.classId), {}, {}});
    }
    for (const auto& attribute : found->definition->Attributes()) {
      const bool asked = entry.attribute == "*" || entry.attribute == attribute->name;
      const auto known = std::find(found->attributes.begin(), found->attributes.end(), attribute.get());
      if (asked && known == found->attributes.end()) found->attributes.push_back(attribute.get());
    }
  }

  // Related classes share a column of one name; link columns never mix with them.
  void AddColumns(Wanted& wanted, bool link) {
    for (const AttributeDefinition* attribute : wanted.attributes) {
      std::string name = attribute->name;
      if (link && list_->HasColumn(name) && !linkColumns_.contains(name)) name = "LINK_" + name;
      int column = list_->FindColumn(name);
      if (column < 0) {
        column = list_->ColumnCount();
        list_->AddColumn(name, ColumnTypeOf(attribute->type));
        if (link) linkColumns_.insert(name);
      }
      wanted.columns.push_back(column);
    }
  }

  void Collect(const Wanted& link, const std::string& own, const std::string& other,
               std::vector<FoundRow>& rows) {
    const std::string head = "SELECT L.OBJECT_ID AS LINK_ID, L.OBJECT_ID" + other +
                             " AS OTHER_OBJECT, L.CLASS_ID" + other + " AS OTHER_CLASS";
    const std::string where = " WHERE L.OBJECT_ID" + own + " = :object AND L.CLASS_ID" + own + " = :class";
    const std::string from = " FROM " + link.definition->table + " L";
    if (related_.empty()) {
      Read(head + link.SelectText("L.") + from + where, {}, nullptr, rows);
      return;
    }
    for (const Wanted& related : related_) {
      if (!MayTie(*link.definition, related.definition->id, own == "1")) continue;
      Read(head + related.SelectText("T.") + link.SelectText("L.") + from + " JOIN " +
               related.definition->table + " T ON T.OBJECT_ID = L.OBJECT_ID" + other + where +
               " AND L.CLASS_ID" + other + " = :related",
           {Value(related.definition->id)}, &related, rows);
    }
  }

  [[nodiscard]] bool MayTie(const ClassDefinition& link, ClassId relatedClass, bool objectFirst) const {
    return objectFirst ? link.MayTie(object_.classId, relatedClass)
                       : link.MayTie(relatedClass, object_.classId);
  }

  void Read(const std::string& sql, const std::vector<Value>& more, const Wanted* related,
            std::vector<FoundRow>& rows) {
    std::vector<Value> values = {Value(object_.objectId), Value(object_.classId)};
    values.insert(values.end(), more.begin(), more.end());
    for (auto& cells : session_.Sql().Query(sql, values).rows) {
      FoundRow row{cells[0].AsInt32(), {cells[2].AsInt16(), cells[1].AsInt32()}, {}, related};
      row.cells.assign(std::make_move_iterator(cells.begin() + 3), std::make_move_iterator(cells.end()));
      rows.push_back(std::move(row));
    }
  }

  void Append(const FoundRow& found, const Wanted& link) {
    if (!seen_.insert(found.key).second) return;
    const int row = list_->RowCount();
    list_->SetValue(0, row, Value(found.key.objectId));
    list_->SetValue(1, row, Value(found.key.classId));
    std::size_t cell = 0;
    for (const Wanted* part : {found.related, &link}) {
      if (!part) continue;
      for (const int column : part->columns)
        list_->SetValue(column, row, found.cells[cell++]);
    }
  }

  EmbeddedSession& session_;
  ObjectKey object_;
  std::shared_ptr<MemoryRecordList> list_;
  std::vector<Wanted> related_;
  std::vector<Wanted> links_;
  std::unordered_set<std::string> linkColumns_;
  std::unordered_set<ObjectKey> seen_;
};

}  // namespace

PcRecordListPtr RetrieveLinked(EmbeddedSession& session, const ObjectKey& object,
                               const PcAttributeList& attributes, LinkSide side) {
  session.Core().failures.Check(HostCall::kRetrieve, object.classId);
  const auto* list = dynamic_cast<const AttributeList*>(&attributes);
  if (!list) throw HostError("The attribute list is not one of this session");
  return Retrieval(session, object, *list).Run(side);
}

}  // namespace tessel::embedded
