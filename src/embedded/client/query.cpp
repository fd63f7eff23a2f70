#include "embedded/client/query.h"

#include <algorithm>
#include <optional>

#include "embedded/client/single_select.h"
#include "host/ascii.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

constexpr std::string_view kOperators[] = {"=", "<>", "<", "<=", ">", ">=", "LIKE"};

class Query final : public PcQuery {
 public:
  explicit Query(EmbeddedSessionPtr session) : session_(std::move(session)) {}

  void SetSql(const std::string& text) override {
    bound_ = BoundForm(text);
    if (bound_ && !IsReadable(bound_->table)) bound_.reset();
    if (!bound_) CheckSingleSelect(text);
    sql_ = text;
    definition_ = nullptr;
  }

  void SetClass(ClassId classId) override {
    definition_ = session_->Core().metadata->Find(classId);
    if (!definition_) throw HostError("The database has no class " + std::to_string(classId));
    select_.clear();
    conditions_.clear();
    values_.clear();
  }

  void AddSelect(const std::string& attribute) override {
    if (attribute == "*") {
      for (const auto& each : RequiredClass().Attributes())
        Select(*each);
    } else {
      Select(RequiredAttribute(attribute));
    }
  }

  void AddCondition(const std::string& attribute, const std::string& op, const Value& value) override {
    const AttributeDefinition& definition = RequiredAttribute(attribute);
    const std::string sqlOperator = UpperCase(op);
    if (std::find(std::begin(kOperators), std::end(kOperators), sqlOperator) == std::end(kOperators)) {
      throw HostError("Unknown operator \"" + op + "\" in a query");
    }
    const bool boolean = definition.type == AttributeType::kBoolean;
    const std::string operand = boolean ? "COALESCE(" + definition.name + ", 0)" : definition.name;
    if (value.IsNull() && !boolean) {
      AddNullCondition(operand, sqlOperator);
      return;
    }
    const Value bound = value.IsNull()          ? Value(false)
                        : sqlOperator == "LIKE" ? Value(value.AsText())
                                                : ConvertedTo(definition.type, value);
    const SqlDialect& dialect = session_->Sql().Dialect();
    const std::string placeholder = ":v" + std::to_string(values_.size());
    conditions_ += (conditions_.empty() ? " WHERE " : " AND ");
    conditions_ += sqlOperator == "LIKE"
                       ? dialect.likeBefore + operand + dialect.likeBetween + placeholder + dialect.likeAfter
                       : operand + " " + sqlOperator + " " + placeholder;
    values_.push_back(bound);
  }

  [[nodiscard]] PcRecordListPtr Run() override {
    session_->Core().failures.Check(HostCall::kQuery, definition_ ? definition_->id : ClassId{0});
    if (definition_) return RunClassQuery();
    if (sql_.empty()) throw HostError("The query has neither a text nor a class");
    return RunFreeQuery();
  }

 private:
  [[nodiscard]] const ClassDefinition& RequiredClass() const {
    if (!definition_) throw HostError("The query has no class");
    return *definition_;
  }

  [[nodiscard]] const AttributeDefinition& RequiredAttribute(const std::string& name) const {
    const int position = RequiredClass().Position(name);
    if (position < 0)
      throw HostError("Class \"" + definition_->name + "\" has no attribute \"" + name + "\"");
    return *definition_->Attributes()[static_cast<std::size_t>(position)];
  }

  // An attribute that is asked for twice makes one column.
  void Select(const AttributeDefinition& attribute) {
    if (std::find(select_.begin(), select_.end(), &attribute) == select_.end()) select_.push_back(&attribute);
  }

  void AddNullCondition(const std::string& operand, const std::string& sqlOperator) {
    if (sqlOperator != "=" && sqlOperator != "<>") throw HostError("Null can only be compared with = and <>");
    conditions_ += (conditions_.empty() ? " WHERE " : " AND ") + operand +
                   (sqlOperator == "=" ? " IS NULL" : " IS NOT NULL");
  }

  [[nodiscard]] PcRecordListPtr RunClassQuery() {
    std::vector<const AttributeDefinition*> columns = select_;
    if (columns.empty()) {
      for (const auto& each : definition_->Attributes())
        columns.push_back(each.get());
    }
    const auto list = session_->Core().NewRecordList();
    std::string names;
    for (const AttributeDefinition* column : columns) {
      names += (names.empty() ? "" : ", ") + column->name;
      list->AddColumn(column->name, ColumnTypeOf(column->type));
    }
    const QueryResult result = session_->Sql().Query(
        "SELECT " + names + " FROM " + definition_->table + conditions_ + " ORDER BY OBJECT_ID", values_);
    for (const auto& row : result.rows)
      list->AppendRow(row);
    return list;
  }

  [[nodiscard]] bool IsReadable(std::string_view table) const {
    const std::string upper = UpperCase(table);
    return upper == "MESSAGE_STORE" || session_->Core().metadata->HasTable(upper);
  }

  [[nodiscard]] QueryResult FreeResult() const {
    if (bound_) {
      const bool sorts =
          !session_->Sql().Dialect().rowsInOrder && UpperCase(bound_->table) != "MESSAGE_STORE";
      if (!sorts) return session_->Sql().Query(bound_->sql, bound_->values);
      return session_->Sql().Query(bound_->sql + " ORDER BY OBJECT_ID", bound_->values);
    }
    try {
      return session_->Sql().QueryTables(sql_, [this](std::string_view table) { return IsReadable(table); });
    } catch (const DatabaseError& error) {
      if (error.Number() != kCodeNotAllowed) throw;
      throw HostError("Query refused: only the tables of classes and of sent messages can be read");
    }
  }

  [[nodiscard]] PcRecordListPtr RunFreeQuery() {
    const QueryResult result = FreeResult();
    const auto list = session_->Core().NewRecordList();
    for (const ResultColumn& column : *result.columns) {
      list->AddColumn(column.name, column.type == CellType::kInteger  ? ColumnType::kLong
                                   : column.type == CellType::kDouble ? ColumnType::kDouble
                                                                      : ColumnType::kText);
    }
    for (const auto& row : result.rows)
      list->AppendRow(row);
    return list;
  }

  EmbeddedSessionPtr session_;
  std::string sql_;
  std::optional<BoundSelect> bound_;  // of the text, when it has that form
  ClassDefinitionPtr definition_;
  std::vector<const AttributeDefinition*> select_;
  std::string conditions_;
  std::vector<Value> values_;
};

}  // namespace

PcQueryPtr NewQuery(EmbeddedSessionPtr session) {
  return std::make_shared<Query>(std::move(session));
}

ColumnType ColumnTypeOf(AttributeType type) {
  switch (type) {
    case AttributeType::kInteger:
      return ColumnType::kInteger;
    case AttributeType::kLong:
    case AttributeType::kReference:
    case AttributeType::kLookup:
      return ColumnType::kLong;
    case AttributeType::kDouble:
      return ColumnType::kDouble;
    case AttributeType::kBoolean:
      return ColumnType::kBoolean;
    default:
      return ColumnType::kText;
  }
}

}  // namespace tessel::embedded
