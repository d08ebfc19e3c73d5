// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/row_environment.h"

#include "rdl/expr/globals.h"
#include "rdl/expr/operations/accumulator.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

// Fields that build on fields that build on fields.
constexpr int DeepestCalculation = 50;

}  // namespace

DataContext::DataContext(const Definition& definition, const std::string& dataSetName, const Table* table)
    : m_definition(definition), m_table(table) {
    dataSet = dataSetName;
    assemblies = definition.assemblies;
    if (!definition.code.empty()) {
        m_library = std::make_unique<expr::CodeLibrary>(definition.code, *this);
        code = m_library.get();
    }
}

std::optional<int> DataContext::FieldSlot(const std::string& set, std::string_view field) const {
    if (m_table && set == dataSet) {
        for (std::size_t slot = 0; slot < m_table->fieldNames.size(); ++slot) {
            if (EqualNoCase(m_table->fieldNames[slot], field)) {
                return static_cast<int>(slot);
            }
        }
    }
    return std::nullopt;
}

std::optional<int> DataContext::ParameterIndex(std::string_view name) const {
    for (std::size_t i = 0; i < m_definition.parameters.size(); ++i) {
        if (EqualNoCase(m_definition.parameters[i].name, name)) {
            return static_cast<int>(i);
        }
    }
    return std::nullopt;
}

std::optional<std::string> DataContext::DataSetOfScope(const std::string& scope) const {
    return m_definition.FindDataSet(scope) || scope == dataSet ? std::optional<std::string>(scope)
                                                               : std::nullopt;
}

std::vector<std::string> DataContext::FieldNames(const std::string& set) const {
    return m_table && set == dataSet ? m_table->fieldNames : std::vector<std::string>();
}

RowEnvironment::RowEnvironment(const LoadRequest& request, Table* table)
    : m_request(request), m_culture(FindCulture(request.definition->language)), m_table(table) {}

void RowEnvironment::SetRow(std::size_t row) {
    m_row = row;
    for (const auto& calculation : m_calculations) {
        m_states[calculation.first] = State::Open;
    }
}

void RowEnvironment::SetCalculation(std::size_t slot, std::shared_ptr<expr::Program> program) {
    m_states.resize(m_table->fieldNames.size(), State::Stored);
    m_calculations[slot] = std::move(program);
}

void RowEnvironment::CalculateRow() {
    for (const auto& calculation : m_calculations) {
        Field(static_cast<int>(calculation.first));
    }
}

Value& RowEnvironment::Cell(std::size_t slot) {
    return m_table->cells[m_row * m_table->fieldNames.size() + slot];
}

Value RowEnvironment::Field(int slot) {
    const auto at = static_cast<std::size_t>(slot);
    if (!m_table || at >= m_table->fieldNames.size()) {
        return Value::Error("there is no field here");
    }
    if (m_row >= m_table->RowCount()) {
        return {};
    }
    if (at >= m_states.size() || m_states[at] == State::Stored) {
        return Cell(at);
    }
    if (m_states[at] == State::Busy || m_depth >= DeepestCalculation) {
        return Value::Error("the field " + m_table->fieldNames[at] + " is calculated from itself");
    }
    m_states[at] = State::Busy;
    ++m_depth;
    Value value = m_calculations[at]->Evaluate(*this);
    --m_depth;
    m_states[at] = State::Stored;
    Cell(at) = value;
    return value;
}

bool RowEnvironment::FieldMissing(int slot) {
    const auto at = static_cast<std::size_t>(slot);
    return !m_table || at >= m_table->missing.size() || m_table->missing[at];
}

// Parameters get their values one after the other, and what they need is read on the way.
Value RowEnvironment::NotYetKnown(std::size_t parameter) const {
    return Value::Error("the parameter " + m_request.definition->parameters[parameter].name +
                        " is used before it has a value: it must stand before the parameter that needs it");
}

Value RowEnvironment::Parameter(int index) {
    const auto at = static_cast<std::size_t>(index);
    return at < m_request.parameters.size() ? m_request.parameters[at].value : NotYetKnown(at);
}

Value RowEnvironment::ParameterLabel(int index) {
    const auto at = static_cast<std::size_t>(index);
    return at < m_request.parameters.size() ? m_request.parameters[at].label : NotYetKnown(at);
}

Value RowEnvironment::Global(expr::GlobalName name) {
    const Value value = expr::GlobalOf({m_request.nowTicks, m_request.reportName, m_request.folder,
                                        m_request.userName, m_request.renderFormat, m_culture.name},
                                       name);
    return value.IsNull() ? Value::Error("there are no pages in a data set") : value;
}

Value RowEnvironment::ReportItem(const std::string& name) {
    return Value::Error("the report item " + name + " cannot be used in a data set");
}

Value RowEnvironment::Variable(const std::string& name) {
    return Value::Error("the variable " + name + " cannot be used in a data set");
}

Value RowEnvironment::Aggregate(const expr::AggregateCall& call) {
    if (!m_table || m_aggregating || m_depth > 0) {
        return Value::Error("an aggregate cannot be used here");
    }
    const auto known = m_aggregates.find(call.id);
    if (known != m_aggregates.end()) {
        return known->second;
    }
    using expr::AggregateKind;
    if (call.kind == AggregateKind::RunningValue || call.kind == AggregateKind::RowNumber ||
        call.kind == AggregateKind::Previous) {
        return Value::Error("this aggregate cannot be used in a data set");
    }
    expr::Accumulator sum(call.kind, m_culture);
    const std::size_t row = m_row;
    m_aggregating = true;
    for (m_row = 0; m_row < m_table->RowCount(); ++m_row) {
        if (call.argument) {
            sum.Add(call.argument->Evaluate(*this));
        } else {
            sum.AddRow();
        }
    }
    m_aggregating = false;
    m_row = row;
    return m_aggregates[call.id] = sum.Result();
}

Value RowEnvironment::Lookup(const expr::LookupCall&) {
    return Value::Error("other data sets cannot be looked up while a data set is read");
}

bool RowEnvironment::InScope(const std::string&) {
    return false;
}

int RowEnvironment::Level(const std::string&) {
    return 0;
}

std::int64_t RowEnvironment::DataSetRowCount(const std::string&) {
    return 0;
}

Value EvaluateAlone(const LoadRequest& request, const Expr& source) {
    if (!source.IsExpression()) {
        return source.IsSet() ? Value::Text(source.source) : Value();
    }
    DataContext context(*request.definition, "", nullptr);
    RowEnvironment environment(request, nullptr);
    return expr::Compile(source.source, source.where, context)->Evaluate(environment);
}

}  // namespace rdl::data
