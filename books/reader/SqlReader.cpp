#include "books/reader/SqlReader.h"

#include <algorithm>

#include "books/reader/Grammar.h"
#include "books/reader/Tokens.h"
#include "platform/value/Convert.h"

// Writes the tree out. A scope is the tables of one select; names are looked for in the innermost scope
// first, as the dialect does. Each column is written with its alias, so that a name is never taken for a
// text.
namespace books::reader {
namespace {

using platform::FieldType;
using Kind = Expression::Kind;

struct NamedTable {
  std::string alias;
  const Table* table;
  bool bare;
};

struct Scope {
  std::vector<NamedTable> tables;
  const Scope* outer = nullptr;
};

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

class Writer {
 public:
  explicit Writer(std::string_view text) : text_(text) {}

  SqlStatement Statement(const Batch& batch) {
    batch_ = &batch;
    SqlStatement statement;
    statement.fields = WriteSelect(batch.result, nullptr);
    static_cast<SqlText&>(statement) = std::move(out_);
    return statement;
  }

  SqlText Condition(const Expression& condition, const Scope& scope) {
    WriteGroup(condition, scope);
    return std::move(out_);
  }

 private:
  [[noreturn]] void RefuseAt(std::size_t position, const std::string& reason) const {
    Refuse(text_, position, reason);
  }
  void Put(std::string_view sql) { out_.sql += sql; }
  void Bind(platform::Variant value) {
    Put("?");
    out_.parameters.push_back(std::move(value));
  }

  std::vector<platform::Field> WriteSelect(const Select& select, const Scope* outer) {
    std::vector<platform::Field> fields = WriteSelectCore(select, outer);
    for (const Select& other : select.unions) {
      Put(" UNION ");
      if (WriteSelectCore(other, outer).size() != fields.size()) {
        RefuseAt(other.position, "the selects of a UNION must have equally many columns");
      }
    }
    return fields;
  }

  std::vector<platform::Field> WriteSelectCore(const Select& select, const Scope* outer) {
    const Scope scope = ScopeOf(select, outer);
    Put(select.distinct ? "SELECT DISTINCT " : "SELECT ");
    std::vector<platform::Field> fields;
    for (const Output& output : select.outputs) {
      if (!fields.empty()) Put(", ");
      platform::Field field{.name = FieldName(output, scope, fields.size())};
      field.type = WriteValue(output.value, scope);
      Put(" AS " + Quoted(field.name));
      const auto sameName = [&](const platform::Field& each) {
        return platform::EqualsIgnoreCase(each.name, field.name);
      };
      if (std::ranges::any_of(fields, sameName)) {
        RefuseAt(output.value.position, "there is a column " + field.name + " already");
      }
      fields.push_back(std::move(field));
    }
    WriteSources(select, scope);
    if (select.hasWhere) {
      Put(" WHERE ");
      WriteCondition(select.where, scope);
    }
    for (const OrderKey& key : select.orderBy) {
      Put(&key == select.orderBy.data() ? " ORDER BY " : ", ");
      WriteValue(key.column, scope);
      if (key.descending) Put(" DESC");
    }
    return fields;
  }

  Scope ScopeOf(const Select& select, const Scope* outer) const {
    Scope scope{.tables = {}, .outer = outer};
    for (const Source& source : select.sources) {
      const Table* table = FindTable(source.table);
      if (table == nullptr) RefuseAt(source.position, "unknown table " + source.table);
      const std::string alias = source.alias.empty() ? std::string(table->name) : source.alias;
      const auto sameAlias = [&](const NamedTable& each) {
        return platform::EqualsIgnoreCase(each.alias, alias);
      };
      if (std::ranges::any_of(scope.tables, sameAlias)) RefuseAt(source.position, "alias used twice");
      scope.tables.push_back({alias, table, true});
    }
    return scope;
  }

  // As the table spells it, so that readers find a field however the text writes its column.
  std::string FieldName(const Output& output, const Scope& scope, std::size_t position) const {
    if (!output.alias.empty()) return output.alias;
    if (output.value.kind == Kind::kColumn) return std::string(Resolve(output.value, scope).second->name);
    return "Column" + std::to_string(position + 1);
  }

  void WriteSources(const Select& select, const Scope& scope) {
    for (std::size_t i = 0; i < select.sources.size(); ++i) {
      const Source& source = select.sources[i];
      Put(i == 0 ? " FROM " : source.joined ? " INNER JOIN " : ", ");
      Put(Quoted(scope.tables[i].table->name) + " AS " + Quoted(scope.tables[i].alias));
      if (source.joined) {
        Put(" ON ");
        WriteCondition(source.on, scope);
      }
    }
  }

  void WriteGroup(const Expression& condition, const Scope& scope) {
    Put("(");
    WriteCondition(condition, scope);
    Put(")");
  }

  void WriteCondition(const Expression& condition, const Scope& scope) {
    switch (condition.kind) {
      case Kind::kAll:
      case Kind::kAny:
        for (const Expression& part : condition.operands) {
          if (&part != condition.operands.data()) Put(condition.kind == Kind::kAll ? " AND " : " OR ");
          const bool group = part.kind == Kind::kAll || part.kind == Kind::kAny;
          group ? WriteGroup(part, scope) : WriteCondition(part, scope);
        }
        break;
      case Kind::kIn:
        WriteIn(condition, scope);
        break;
      case Kind::kLike:
        WriteValue(condition.operands[0], scope);
        Put(condition.negated ? " NOT LIKE " : " LIKE ");
        WriteValue(condition.operands[1], scope);
        break;
      default:
        WriteValue(condition.operands[0], scope);
        Put(" " + condition.name + " ");
        WriteValue(condition.operands[1], scope);
        break;
    }
  }

  void WriteIn(const Expression& condition, const Scope& scope) {
    WriteValue(condition.operands[0], scope);
    Put(condition.negated ? " NOT IN (" : " IN (");
    if (condition.select) WriteSingleValue(*condition.select, scope);
    for (std::size_t i = 1; i < condition.operands.size(); ++i) {
      if (i > 1) Put(", ");
      WriteValue(condition.operands[i], scope);
    }
    Put(")");
  }

  FieldType WriteSingleValue(const Select& select, const Scope& scope) {
    const std::vector<platform::Field> fields = WriteSelect(select, &scope);
    if (fields.size() != 1) RefuseAt(select.position, "this select must have one column");
    return fields.front().type;
  }

  FieldType WriteValue(const Expression& value, const Scope& scope) {
    switch (value.kind) {
      case Kind::kInteger:
        Bind(value.number);
        return FieldType::kInt32;
      case Kind::kText:
        Bind(value.name);
        return FieldType::kText;
      case Kind::kColumn: {
        const auto [table, column] = Resolve(value, scope);
        Put(Quoted(table->alias) + "." + Quoted(column->name));
        return column->type;
      }
      case Kind::kVariable:
        return WriteVariable(value);
      case Kind::kCall:
        return WriteCall(value, scope);
      case Kind::kSelect: {
        Put("(");
        const FieldType type = WriteSingleValue(*value.select, scope);
        Put(")");
        return type;
      }
      default: {
        Put("(");
        const FieldType type = WriteSum(value, scope);
        Put(")");
        return type;
      }
    }
  }

  // Without parentheses on the left, where they change nothing: a long sum would nest them too deeply.
  FieldType WriteSum(const Expression& sum, const Scope& scope) {
    const Expression& first = sum.operands[0];
    const FieldType left =
        first.kind == Kind::kArithmetic ? WriteSum(first, scope) : WriteValue(first, scope);
    Put(" " + sum.name + " ");
    const FieldType right = WriteValue(sum.operands[1], scope);
    if (platform::IsTextType(left) || platform::IsTextType(right)) {
      RefuseAt(sum.position, "only numbers can be added");
    }
    return left == FieldType::kDouble || right == FieldType::kDouble ? FieldType::kDouble : left;
  }

  // A variable is the select that gave it its value; one that got none is null.
  FieldType WriteVariable(const Expression& variable) {
    const auto assignment = std::ranges::find_if(
        batch_->assignments.rbegin(), batch_->assignments.rend(),
        [&](const Select& each) { return platform::EqualsIgnoreCase(each.assigns, variable.name); });
    if (assignment == batch_->assignments.rend() || assignment->position > variable.position) {
      Put("NULL");
    } else {
      Put("(");
      WriteSelect(*assignment, nullptr);
      Put(")");
    }
    return FieldType::kInt32;
  }

  FieldType WriteCall(const Expression& call, const Scope& scope) {
    if (call.name == "COUNT") {
      Put("count(*)");
      return FieldType::kInt32;
    }
    if (call.name == "CHARINDEX") {
      WriteCharIndex(call, scope);
      return FieldType::kInt32;
    }
    FieldType type = FieldType::kInt32;
    if (call.name == "MAX") {
      Put("max(");
      type = WriteValue(call.operands[0], scope);
      Put(")");
    } else if (call.name == "ISNULL") {
      Put("coalesce(");
      type = WriteValue(call.operands[0], scope);
      Put(", ");
      WriteValue(call.operands[1], scope);
      Put(")");
    } else if (call.qualifier == "INT") {
      Put("CAST(");
      WriteValue(call.operands[0], scope);
      Put(" AS INTEGER)");
    } else {  // to a date: dates are kept in the form that a date field reads
      WriteValue(call.operands[0], scope);
      type = FieldType::kDate;
    }
    return type;
  }

  // The database searches with its arguments the other way round, and finds an empty text at place 1 where
  // the dialect finds it nowhere: an empty user id or right list must not open a row to everybody.
  void WriteCharIndex(const Expression& call, const Scope& scope) {
    const Expression& sought = call.operands[0];
    const bool literal = sought.kind == Kind::kText;
    if (literal && sought.name.empty()) {
      Put("0");
      return;
    }
    if (!literal) {
      Put("(CASE WHEN ");
      WriteValue(sought, scope);
      Put(" = '' THEN 0 ELSE ");
    }
    Put("instr(");
    WriteValue(call.operands[1], scope);
    Put(", ");
    WriteValue(sought, scope);
    Put(literal ? ")" : ") END)");
  }

  std::pair<const NamedTable*, const Column*> Resolve(const Expression& name, const Scope& scope) const {
    for (const Scope* each = &scope; each != nullptr; each = each->outer) {
      std::pair<const NamedTable*, const Column*> found{};
      for (const NamedTable& table : each->tables) {
        const bool named = platform::EqualsIgnoreCase(table.alias, name.qualifier);
        const Column* column =
            named || (name.qualifier.empty() && table.bare) ? table.table->Find(name.name) : nullptr;
        if (named && column == nullptr) {
          RefuseAt(name.position, name.qualifier + " has no column " + name.name);
        }
        if (column != nullptr && found.second != nullptr) {
          RefuseAt(name.position, name.name + " stands in more than one table, an alias is needed");
        }
        if (column != nullptr) found = {&table, column};
      }
      if (found.second != nullptr) return found;
    }
    RefuseAt(name.position, name.qualifier.empty() ? "unknown column " + name.name
                                                   : "unknown table or alias " + name.qualifier);
  }

  std::string_view text_;
  const Batch* batch_ = nullptr;
  SqlText out_;
};

}  // namespace

SqlStatement ReadStatement(std::string_view text) { return Writer(text).Statement(ReadBatch(text)); }

SqlText ReadConditionText(std::string_view text, std::span<const ConditionAlias> aliases) {
  const bool blank = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
  if (blank) return {};
  Scope scope;
  for (const ConditionAlias& each : aliases) {
    scope.tables.push_back({std::string(each.alias), &each.table, each.bare});
  }
  return Writer(text).Condition(ReadCondition(text), scope);
}

}  // namespace books::reader
