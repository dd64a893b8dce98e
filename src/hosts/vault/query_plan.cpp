#include "hosts/vault/query_plan.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/failure.h"

namespace quintara::vault {
namespace {

/// One query as SQL, as it grows.
struct Statement {
  std::string columns;
  std::string types;
  std::string sources;
  std::string conditions;
  std::string order;
  std::vector<SqlValue> joinValues;
  std::vector<SqlValue> values;

  void AddCondition(const std::string& condition) {
    conditions += (conditions.empty() ? " WHERE " : " AND ") + condition;
  }
  std::string Sql() const { return "SELECT " + columns + sources + conditions + order; }
  std::vector<SqlValue> AllValues() const {
    auto all = joinValues;
    all.insert(all.end(), values.begin(), values.end());
    return all;
  }
};

/// Which column of the result holds what.
struct Place {
  std::size_t source;
  std::size_t attribute;
};

using Sources = std::vector<std::pair<std::string, const ClassInfo*>>;

// "F", "L", "S", in this order, or one alone.
Sources SourcesOf(const Schema& schema, const QueryPlan& plan) {
  std::map<std::string, const ClassInfo*> classes;
  for (const auto& source : plan.from) {
    const auto& info = schema.ClassById(source.classId);
    if (!classes.emplace(source.alias, &info).second) {
      throw Failure(failure::kInvalidCall, "The query names the alias \"" + source.alias + "\" twice");
    }
  }
  const bool single = classes.size() == 1 && !classes.begin()->second->IsLink();
  const bool joined = classes.size() == 3 && classes.contains("F") && classes.contains("L") && classes.contains("S") &&
                      classes["L"]->IsLink() && !classes["F"]->IsLink() && !classes["S"]->IsLink();
  if (!single && !joined) {
    throw Failure(failure::kInvalidCall, "A query is of one class, or of F and S joined by a class of links L");
  }
  return {classes.begin(), classes.end()};
}

const std::pair<std::string, const ClassInfo*>& SourceOf(const Sources& sources, const std::string& alias) {
  for (const auto& source : sources) {
    if (source.first == alias) return source;
  }
  throw Failure(failure::kInvalidCall, "The query has no alias \"" + alias + "\"");
}

std::string Column(const std::string& alias, const std::string& attribute) {
  return Quoted(alias) + "." + Quoted(attribute);
}

void AddSources(Statement& statement, const Sources& sources) {
  const auto table = [](const auto& source) { return Quoted(source.second->table) + " AS " + Quoted(source.first); };
  statement.sources = " FROM " + table(sources[0]);
  if (sources.size() == 1) return;
  statement.sources += " JOIN " + table(sources[1]) +
                       " ON \"L\".from_object = \"F\".\"OBJECT_ID\" AND \"L\".\"CLASS_ID\" = ? JOIN " +
                       table(sources[2]) + " ON \"S\".\"OBJECT_ID\" = \"L\".to_object";
  statement.joinValues.emplace_back(std::int64_t{sources[1].second->id});
}

// In a text value only "*" is special; the databases have other characters of their own.
std::string Pattern(const Database& database, const std::string& value) {
  std::string pattern;
  for (const char character : value) {
    if (character == '*') {
      pattern += database.IsPostgres() ? '%' : '*';
    } else if (database.IsPostgres() && (character == '%' || character == '_' || character == '\\')) {
      pattern += std::string("\\") + character;
    } else if (!database.IsPostgres() && (character == '?' || character == '[')) {
      pattern += std::string("[") + character + "]";
    } else {
      pattern += character;
    }
  }
  return pattern;
}

void AddTextCondition(Statement& statement, const Database& database, const std::string& column, bool isInteger,
                      const std::string& value) {
  if (value.find('*') != value.npos) {
    const auto text = isInteger ? "CAST(" + column + " AS TEXT)" : column;
    // Case counts in both.
    statement.AddCondition("COALESCE(" + text + ", '')" + (database.IsPostgres() ? " LIKE ?" : " GLOB ?"));
    statement.values.emplace_back(Pattern(database, value));
  } else if (value.empty()) {
    statement.AddCondition(column + " IS NULL");
  } else {
    statement.AddCondition(column + " = ?");
    statement.values.emplace_back(value);
  }
}

void AddCondition(Statement& statement, const Database& database, const Sources& sources,
                  const QueryPlan::Condition& condition) {
  const auto& [alias, info] = SourceOf(sources, condition.alias);
  const auto& attribute = info->attributes[info->PlaceOf(condition.attribute)];
  const auto column = Column(alias, attribute.name);
  const bool pattern = condition.value.IsText() && condition.value.ToText().find('*') != std::string::npos;
  if (!attribute.isInteger || pattern) {
    AddTextCondition(statement, database, column, attribute.isInteger, condition.value.ToText());
    return;
  }
  const bool empty = condition.value.IsText() && condition.value.ToText().empty();
  const std::int64_t number = empty ? 0 : condition.value.ToInteger32();
  // What was never set reads as 0.
  statement.AddCondition((number == 0 ? "COALESCE(" + column + ", 0)" : column) + " = ?");
  statement.values.emplace_back(number);
}

std::vector<Place> AddColumns(Statement& statement, const Sources& sources, const QueryPlan& plan) {
  std::vector<Place> places;
  const auto add = [&](std::size_t source, std::size_t attribute) {
    for (const auto& place : places) {
      if (place.source == source && place.attribute == attribute) return;
    }
    const auto& [alias, info] = sources[source];
    places.push_back({source, attribute});
    statement.columns += (statement.columns.empty() ? "" : ", ") + Column(alias, info->attributes[attribute].name);
    statement.types += info->attributes[attribute].isInteger ? 'i' : 't';
  };
  for (std::size_t source = 0; source < sources.size(); ++source) {
    add(source, sources[source].second->PlaceOf(attribute::kObjectId));
    add(source, sources[source].second->PlaceOf(attribute::kClassId));
  }
  for (const auto& selection : plan.select) {
    const auto& source = SourceOf(sources, selection.alias);
    add(static_cast<std::size_t>(&source - sources.data()), source.second->PlaceOf(selection.attribute));
  }
  return places;
}

std::string Order(const Sources& sources) {
  if (sources.size() == 1) return " ORDER BY " + Column(sources[0].first, attribute::kObjectId);
  return " ORDER BY \"S\".\"OBJECT_ID\", \"F\".\"OBJECT_ID\"";
}

std::pair<Statement, std::vector<Place>> Composed(const Database& database, const Sources& sources,
                                                  const QueryPlan& plan) {
  Statement statement;
  AddSources(statement, sources);
  auto places = AddColumns(statement, sources, plan);
  for (const auto& condition : plan.where) AddCondition(statement, database, sources, condition);
  statement.order = Order(sources);
  return {std::move(statement), std::move(places)};
}

std::shared_ptr<TableRow> RowOf(const std::shared_ptr<Core>& core, const Sources& sources,
                                const std::vector<Place>& places, SqlRow& values) {
  auto row = std::make_shared<TableRow>();
  for (std::size_t source = 0; source < sources.size(); ++source) {
    const auto& [alias, info] = sources[source];
    // Ids stand first in the list of columns, two for each source.
    const auto id = static_cast<std::int32_t>(IntegerOf(values[2 * source]));
    row->objects.emplace_back(alias, std::make_shared<ObjectData>(core, *info, id));
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto& attribute = sources[places[i].source].second->attributes[places[i].attribute];
    row->cells.push_back(AsVariant(attribute, values[i]));
    row->objects[places[i].source].second->Know(places[i].attribute, std::move(values[i]));
  }
  return row;
}

}  // namespace

std::int16_t QueryPlan::ClassOf(const std::string& alias) const {
  for (const auto& source : from) {
    if (source.alias == alias) return source.classId;
  }
  return 0;
}

void RequireSelectable(const Schema& schema, const QueryPlan& plan) {
  for (const auto& selection : plan.select) {
    const auto source = std::ranges::find(plan.from, selection.alias, &QueryPlan::Source::alias);
    if (source == plan.from.end()) {
      throw Failure(failure::kInvalidCall, "The query has no alias \"" + selection.alias + "\"");
    }
    if (source->classId != 0) schema.ClassById(source->classId).PlaceOf(selection.attribute);
  }
}

std::shared_ptr<Table> RunQuery(const std::shared_ptr<Core>& core, const QueryPlan& plan) {
  const auto sources = SourcesOf(core->TheSchema(), plan);
  const auto [statement, places] = Composed(core->Data(), sources, plan);

  auto table = std::make_shared<Table>();
  table->sought = sources.back().first;
  table->aliases.clear();
  for (const auto& source : sources) table->aliases.push_back(source.first);
  for (const auto& place : places) {
    const auto& [alias, info] = sources[place.source];
    const auto& attribute = info->attributes[place.attribute];
    table->columns.push_back({alias + "." + attribute.name,
                              attribute.isInteger ? veldora::column_type::kInteger : veldora::column_type::kText,
                              attribute.size});
  }
  for (auto& row : core->Data().Query(statement.types, statement.Sql(), statement.AllValues()))
    table->rows.push_back(RowOf(core, sources, places, row));
  return table;
}

std::vector<std::string> ExplainQuery(Core& core, const QueryPlan& plan) {
  const auto statement = Composed(core.Data(), SourcesOf(core.TheSchema(), plan), plan).first;
  const bool postgres = core.Data().IsPostgres();
  const auto rows =
      core.Data().Query(postgres ? "t" : "iiit", (postgres ? "EXPLAIN " : "EXPLAIN QUERY PLAN ") + statement.Sql(),
                        statement.AllValues());
  std::vector<std::string> steps;
  for (const auto& row : rows) steps.push_back(TextOf(row.back()));
  return steps;
}

}  // namespace quintara::vault
