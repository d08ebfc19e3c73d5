// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/expression_values.h"

#include <utility>

#include "rdl/engine/in_stage.h"
#include "rdl/engine/run.h"
#include "rdl/layout/expression_value.h"
#include "rdl/values/stop.h"

namespace rdl::engine {
namespace {

constexpr const char* Where = "The expression";  // in errors

}  // namespace

void ExpressionValues::Once(const std::string& what, const std::function<void()>& work) {
    if (const auto known = m_failures.find(what); known != m_failures.end()) {
        throw Failure(known->second);
    }
    try {
        work();
    } catch (const Failure& failure) {
        if (!IsStopped()) {
            m_failures.emplace(what, failure);
        }
        throw;
    }
}

data::LoadRequest ExpressionValues::RequestFor(bool needsParameters, const Request& request) {
    if (needsParameters && !m_parameters) {
        Once("", [&] { m_parameters = request(true).parameters; });
    }
    data::LoadRequest own = request(false);
    if (m_parameters) {
        own.parameters = *m_parameters;
    }
    return own;
}

ExpressionValue ExpressionValues::ValueOf(const Definition& definition, const std::string& expression,
                                          const std::string& dataSet, const Request& request) {
    const layout::ExpressionNeeds needs =
        InStage(Stage::Open, [&] { return layout::NeedsOf(definition, expression, Where, dataSet); });
    ExpressionValue result;
    result.needsRun = needs.run;
    if (needs.run) {
        return result;
    }
    const data::LoadRequest own = RequestFor(needs.parameters, request);
    const RunWatch::Work work(own.watch);
    for (const std::string& name : needs.dataSets) {
        if (!m_tables.contains(name)) {
            Once(name, [&] {
                m_tables[name] = InStage(
                    Stage::Data, [&] { return data::LoadSelectedTable(own, *definition.FindDataSet(name)); });
            });
        }
    }
    layout::ReportInput input = InputOf(own);
    input.tables = std::move(m_tables);
    m_tables.clear();
    result.value = InStage(Stage::Run, [&] { return layout::ValueOf(input, expression, Where, dataSet); });
    m_tables = std::move(input.tables);
    result.isOfRows = needs.rows;
    result.rows = needs.rows ? m_tables.at(dataSet).RowCount() : 0;
    return result;
}

}  // namespace rdl::engine
