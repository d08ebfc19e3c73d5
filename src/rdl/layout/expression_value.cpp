// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/expression_value.h"

#include <algorithm>
#include <set>

#include "rdl/layout/region/evaluator.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

bool HasNestedAggregates(const expr::Program& program) {
    const auto& all = program.Aggregates();
    return std::any_of(all.begin(), all.end(), [](const expr::AggregateCall* call) {
        return call->argument && !call->argument->Aggregates().empty();
    });
}

// What an expression reads: its own text, and those of the variables and the code that it may name.
std::string TextsOf(const Definition& definition, const std::string& source) {
    std::string texts = LowerAscii(source);
    if (texts.find("variables") != std::string::npos) {
        for (const Variable& variable : definition.variables) {
            texts += "\n" + LowerAscii(variable.value.source);
        }
    }
    if (texts.find("code") != std::string::npos) {
        texts += "\n" + LowerAscii(definition.code);
    }
    return texts;
}

// Whether the expressions name the data set, as Lookup, DataSets! and the aggregates of a variable do.
bool Names(const std::string& lowerTexts, const DataSet& set) {
    const std::string name = LowerAscii(set.name);
    return lowerTexts.find("\"" + name + "\"") != std::string::npos ||
           lowerTexts.find("datasets!" + name) != std::string::npos;
}

}  // namespace

ExpressionNeeds NeedsOf(const Definition& definition, const std::string& source, const std::string& where,
                        const std::string& dataSet) {
    const Programs programs(definition, nullptr);
    const std::shared_ptr<expr::Program> program = programs.Compile(source, where, dataSet);
    ExpressionNeeds needs;
    if (program->Constant()) {
        return needs;
    }
    const std::string texts = TextsOf(definition, source);
    needs.run = program->UsesPageGlobals() || program->UsesReportItems() || HasNestedAggregates(*program);
    needs.rows =
        !dataSet.empty() && (texts.find("fields") != std::string::npos || !program->Aggregates().empty());
    std::set<std::string> scopes;
    for (const expr::AggregateCall* call : program->Aggregates()) {
        scopes.insert(programs.DataSetOfScope(call->scope));
    }
    for (const DataSet& set : definition.dataSets) {
        if ((set.name == dataSet && needs.rows) || scopes.contains(set.name) || Names(texts, set)) {
            needs.dataSets.push_back(set.name);
        }
    }
    needs.parameters = !needs.dataSets.empty() || texts.find("parameters") != std::string::npos;
    return needs;
}

Value ValueOf(const ReportInput& input, const std::string& source, const std::string& where,
              const std::string& dataSet) {
    const Programs programs(*input.definition, &input.tables);
    const std::shared_ptr<expr::Program> program = programs.Compile(source, where, dataSet);
    Evaluator evaluator(input, programs);
    evaluator.EnterFirstRow(dataSet);
    return program->Evaluate(evaluator);
}

}  // namespace rdl::layout
