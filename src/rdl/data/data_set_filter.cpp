// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/data_set_filter.h"

#include <algorithm>

#include "rdl/data/common/message.h"
#include "rdl/data/row_environment.h"
#include "rdl/expr/operations/filter_operator.h"

namespace rdl::data {
namespace {

class FilterRun {
 public:
    FilterRun(const LoadRequest& request, const DataSet& dataSet, const Filter& filter, Table& table)
        : m_dataSet(dataSet),
          m_table(table),
          m_context(*request.definition, dataSet.name, &table),
          m_environment(request, &table),
          m_expression(Compile(filter.expression)),
          m_op(expr::CheckedFilterOperator(CleanText(filter.op), filter.values.size())) {
        for (const Expr& value : filter.values) {
            m_values.push_back(Compile(value));
        }
    }

    std::vector<bool> Run() {
        const std::size_t rows = m_table.RowCount();
        const expr::FilterRules rules{&m_environment.CurrentCulture(), m_dataSet.caseSensitive};
        if (rows > 0 && expr::Ranks(m_op)) {
            return RankRows(rules);
        }
        std::vector<bool> keep(rows);
        const auto operand = [this](std::size_t index) { return Evaluate(m_values[index]); };
        for (std::size_t row = 0; row < rows; ++row) {
            m_environment.SetRow(row);
            keep[row] = expr::PassesFilter(m_op, rules, Evaluate(m_expression), m_values.size(), operand);
        }
        return keep;
    }

 private:
    struct Source {
        std::shared_ptr<expr::Program> program;
        Value constant;
        const Expr* expression;
    };

    Source Compile(const Expr& expression) {
        if (!expression.IsExpression()) {
            return {nullptr, Value::Text(expression.source), &expression};
        }
        return {expr::Compile(expression.source, expression.where, m_context), {}, &expression};
    }

    Value Evaluate(const Source& source) {
        Value value = source.program ? source.program->Evaluate(m_environment) : source.constant;
        if (value.IsError()) {
            throw Error("the filter expression \"" + CleanText(source.expression->source) +
                        "\" fails: " + CleanText(value.AsText()));
        }
        return value;
    }

    std::vector<bool> RankRows(const expr::FilterRules& rules) {
        std::vector<Value> values(m_table.RowCount());
        for (std::size_t row = 0; row < values.size(); ++row) {
            m_environment.SetRow(row);
            values[row] = Evaluate(m_expression);
        }
        m_environment.SetRow(0);
        return expr::RankFilter(m_op, rules, values, Evaluate(m_values.front()));
    }

    const DataSet& m_dataSet;
    Table& m_table;
    DataContext m_context;
    RowEnvironment m_environment;
    Source m_expression;
    FilterOperator m_op;
    std::vector<Source> m_values;
};

}  // namespace

void KeepRows(Table& table, const std::vector<bool>& keep) {
    const std::size_t width = table.fieldNames.size();
    std::size_t to = 0;
    for (std::size_t row = 0; row < keep.size(); ++row) {
        if (!keep[row]) {
            continue;
        }
        if (to != row) {
            std::move(table.cells.begin() + static_cast<std::ptrdiff_t>(row * width),
                      table.cells.begin() + static_cast<std::ptrdiff_t>((row + 1) * width),
                      table.cells.begin() + static_cast<std::ptrdiff_t>(to * width));
        }
        ++to;
    }
    table.cells.resize(to * width);
}

void ApplyFilters(const LoadRequest& request, const DataSet& dataSet, Table& table) {
    for (const Filter& filter : dataSet.filters) {
        KeepRows(table, FilterRun(request, dataSet, filter, table).Run());
    }
}

}  // namespace rdl::data
