// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/evaluator.h"

#include "rdl/expr/globals.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

constexpr int MaxDepth = 24;  // items that ask for items that ask for items
const Table EmptyTable;

struct Deeper {
    explicit Deeper(int& depth) : m_depth(depth) { ++m_depth; }
    ~Deeper() { --m_depth; }
    int& m_depth;
};

}  // namespace

Evaluator::Evaluator(const ReportInput& input, const Programs& programs)
    : m_input(input), m_programs(programs), m_culture(&FindCulture("en-US")), m_reportCulture(m_culture) {
    Enter({});
    const Definition& definition = *input.definition;
    const Property language(definition.languageExpr, programs);
    std::string name = definition.language;
    if (language.isSet) {
        const Value value = language.Get(*this);
        name = value.IsText() ? std::string(value.AsText()) : std::string();
    }
    if (!name.empty() && name.front() != '=') {
        m_culture = m_reportCulture = &FindCulture(name);
    }
}

const Table& Evaluator::TableOf(const std::string& dataSet) const {
    const auto found = m_input.tables.find(dataSet);
    return found == m_input.tables.end() ? EmptyTable : found->second;
}

void Evaluator::Enter(const Scope& scope) {
    m_place.scope = scope;
    if (scope.region) {
        std::uint32_t row = 0;
        m_place.table = scope.region->table;
        m_place.hasRow = scope.region->FirstRow(scope, row);
        m_place.row = row;
        return;
    }
    m_place.table = &TableOf(m_programs.OnlyDataSet());
    m_place.row = 0;
    m_place.hasRow = m_place.table->RowCount() > 0;
}

void Evaluator::EnterRow(const Region& region, std::uint32_t tableRow) {
    m_place.scope = Scope{&region};
    m_place.table = region.table;
    m_place.row = tableRow;
    m_place.hasRow = true;
}

void Evaluator::EnterFirstRow(const std::string& dataSet) {
    m_isBeside = true;
    const Table& table = TableOf(dataSet.empty() ? m_programs.OnlyDataSet() : dataSet);
    m_place = {Scope{}, &table, 0, table.RowCount() > 0};
}

bool Evaluator::FieldMissing(int slot) {
    const Table* table = m_place.table;
    return !table || At(slot) >= table->fieldNames.size() ||
           (At(slot) < table->missing.size() && table->missing[At(slot)]);
}

Value Evaluator::Parameter(int index) {
    return At(index) < m_input.parameters.size() ? m_input.parameters[At(index)].value : Value();
}

Value Evaluator::ParameterLabel(int index) {
    return At(index) < m_input.parameters.size() ? m_input.parameters[At(index)].label : Value();
}

Value Evaluator::Global(expr::GlobalName name) {
    m_hasAsked = true;
    using expr::GlobalName;
    const auto pageNumber = [this](int known, const char* mark) {
        return m_page && known > 0 ? Value::Integer(known) : Value::Text(mark);
    };
    static const SectionInstance::PageFacts NoPage;
    const SectionInstance::PageFacts& page = m_page ? *m_page : NoPage;
    switch (name) {
        case GlobalName::PageNumber:
            return pageNumber(page.number, PageNumberMark);
        case GlobalName::TotalPages:
            return pageNumber(page.total, TotalPagesMark);
        case GlobalName::OverallPageNumber:
            return pageNumber(page.overallNumber, OverallPageNumberMark);
        case GlobalName::OverallTotalPages:
            return pageNumber(page.overallTotal, OverallTotalPagesMark);
        case GlobalName::PageName:
            return Value::Text(page.name);
        default:
            return expr::GlobalOf({m_input.nowTicks, m_input.reportName, m_input.reportFolder,
                                   m_input.userName, m_input.renderFormat, m_reportCulture->name},
                                  name);
    }
}

void Evaluator::Announce(const ItemPlan& item) {
    m_items.emplace(LowerAscii(item.definition->name), &item);
}

const ItemPlan* Evaluator::FindItem(const std::string& name) const {
    const auto found = m_items.find(LowerAscii(name));
    return found == m_items.end() ? nullptr : found->second;
}

Value Evaluator::ReportItem(const std::string& name) {
    m_hasAsked = true;
    const ItemPlan* const found = FindItem(name);
    if (!found) {
        return Value::Error("There is no report item " + name);
    }
    if (m_page) {
        std::size_t skipped = 0;
        for (const auto& [known, value] : m_page->reportItems) {
            if (known == found->definition->name && skipped++ == m_nthItem) {
                m_nthItemFound = true;
                return value;
            }
        }
        if (m_nthItem > 0) {
            return {};
        }
    }
    if (found->paragraphs.empty() || found->paragraphs.front().runs.empty()) {
        return {};
    }
    const Deeper deeper(m_depth);
    if (m_depth > MaxDepth) {
        return Value::Error("Items refer to each other in a circle");
    }
    const ItemPlan& item = *found;
    Scope scope = m_place.scope;
    while (scope.region && &scope.region->plan != item.region) {
        scope = scope.region->outer;
    }
    if (!scope.region && item.region) {
        return {};
    }
    const auto widen = [&scope](TableAxis axis, int wanted, int& group, std::uint32_t& instance) {
        if (scope.region && group >= 0 && (wanted < 0 || scope.region->IsAround(axis, wanted, group))) {
            instance = wanted < 0 ? 0 : scope.region->Ancestor(axis, group, instance, wanted);
            group = wanted;
        }
    };
    widen(TableAxis::Rows, item.rowGroup, scope.rowGroup, scope.row);
    widen(TableAxis::Columns, item.columnGroup, scope.columnGroup, scope.column);
    const Stay stay(*this);
    Enter(scope);
    return item.paragraphs.front().runs.front().value.Get(*this);
}

Value Evaluator::GroupVariable(const std::string& name, bool& found) {
    for (Scope scope = m_place.scope; scope.region; scope = scope.region->outer) {
        for (const TableAxis axis : {TableAxis::Rows, TableAxis::Columns}) {
            const auto& groups = scope.region->Plan(axis).groups;
            int group = scope.Group(axis);
            std::uint32_t instance = scope.Instance(axis);
            while (group >= 0) {
                const GroupPlan& plan = groups[At(group)];
                const auto& variables = plan.definition->variables;
                for (std::size_t i = 0; i < variables.size(); ++i) {
                    if (!EqualNoCase(variables[i].name, name)) {
                        continue;
                    }
                    found = true;
                    GroupVariableValue& kept = m_groupVariables[&plan.variables[i]];
                    if (kept.region != scope.region->id || kept.instance != instance) {
                        const Stay stay(*this);
                        Enter(Scope::Of(scope.region, axis, group, instance));
                        kept = {scope.region->id, instance, plan.variables[i].Get(*this)};
                    }
                    return kept.value;
                }
                instance = scope.region->Groups(axis)[At(group)].instances[instance].parent;
                group = plan.parent;
            }
        }
    }
    return {};
}

Value Evaluator::Variable(const std::string& name) {
    m_hasAsked = true;
    const Deeper deeper(m_depth);
    if (m_depth > MaxDepth) {
        return Value::Error("Variables refer to each other in a circle");
    }
    bool found = false;
    Value value = GroupVariable(name, found);
    if (found) {
        return value;
    }
    const auto known = m_variables.find(name);
    if (known != m_variables.end()) {
        return known->second;
    }
    for (const auto& variable : m_input.definition->variables) {
        if (EqualNoCase(variable.name, name)) {
            const Stay stay(*this);
            Enter({});
            value = Property(variable.value, m_programs).Get(*this);
            m_variables[name] = value;
            return value;
        }
    }
    return Value::Error(m_isBeside ? "The variable " + name + " is known in its group only"
                                   : "There is no variable " + name);
}

Value Evaluator::Lookup(const expr::LookupCall& call) {
    m_hasAsked = true;
    const Table& table = TableOf(call.dataSet);
    Value source = call.source->Evaluate(*this);
    if (source.IsError()) {
        return source;
    }
    const Stay stay(*this);
    const auto enter = [&](std::size_t row) { m_place = {Scope{}, &table, row, true}; };
    const auto rowsFor = [&](const Value& key) -> const std::vector<std::uint32_t>& {
        return m_lookups.Find(call.id, table.RowCount(), key, [&](std::size_t row) {
            enter(row);
            return call.destination->Evaluate(*this);
        });
    };
    const auto first = [&](const Value& key) {
        const auto& rows = rowsFor(key);
        if (rows.empty()) {
            return Value();
        }
        enter(rows.front());
        return call.result->Evaluate(*this);
    };
    ValueList results;
    switch (call.form) {
        case expr::LookupCall::Form::First:
            return first(source);
        case expr::LookupCall::Form::Set:
            for (const std::uint32_t row : rowsFor(source)) {
                enter(row);
                results.push_back(call.result->Evaluate(*this));
            }
            break;
        case expr::LookupCall::Form::Multi:
            if (source.kind() != Kind::List) {
                return first(source);
            }
            for (const Value& key : source.AsList()) {
                results.push_back(first(key));
            }
            break;
    }
    return Value::List(std::move(results));
}

bool Evaluator::InScope(const std::string& scope) {
    m_hasAsked = true;
    Target target;
    return Resolve(scope, target);
}

int Evaluator::Level(const std::string& name) {
    m_hasAsked = true;
    Scope scope = m_place.scope;
    if (!name.empty()) {
        Target target;
        if (!Resolve(name, target)) {
            return 0;
        }
        scope = target.scope;
    }
    const auto levelOf = [](const GroupRows& group, std::uint32_t instance) {
        return group.level.empty() ? 0 : static_cast<int>(group.level[instance]);
    };
    if (!scope.region) {
        return 0;
    }
    // Without a name: the innermost recursive group around.
    const auto& plans = scope.region->plan.rows.groups;
    std::uint32_t instance = scope.row;
    for (int group = scope.rowGroup; group >= 0; group = plans[At(group)].parent) {
        const GroupRows& rows = scope.region->rowGroups[At(group)];
        if (!name.empty() || !rows.level.empty()) {
            return levelOf(rows, instance);
        }
        instance = rows.instances[instance].parent;
    }
    return 0;
}

std::int64_t Evaluator::DataSetRowCount(const std::string& dataSet) {
    return static_cast<std::int64_t>(TableOf(dataSet).RowCount());
}

}  // namespace rdl::layout
