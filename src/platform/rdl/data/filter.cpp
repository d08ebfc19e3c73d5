#include "platform/rdl/data/filter.h"

#include <algorithm>
#include <cmath>

#include "platform/rdl/data/field_type.h"
#include "platform/rdl/data/message.h"
#include "platform/rdl/data/row_environment.h"
#include "platform/rdl/expr/characters.h"
#include "platform/rdl/expr/filter.h"
#include "platform/rdl/expr/operators.h"

namespace rdl::data {
namespace {

using expr::FilterOperator;

constexpr std::size_t Many = 100'000;

FilterOperator OperatorOf(const Filter& filter) {
    const auto op = expr::FindFilterOperator(filter.op);
    if (!op) {
        throw Error("a filter has the unknown operator \"" + CleanText(filter.op) + "\"");
    }
    const std::size_t least = op == FilterOperator::Between ? 2 : 1;
    const std::size_t most = op == FilterOperator::In ? Many : least;
    if (filter.values.size() < least || filter.values.size() > most) {
        throw Error("a filter with " + filter.op + " has " + std::to_string(filter.values.size()) +
                    " values");
    }
    return *op;
}

// A constant has no type of its own: it is read as the kind of what it is compared with.
Value Fitted(const Value& value, const Value& model) {
    switch (model.kind()) {
        case Kind::Boolean:
            return ConvertValue(value, FieldType::Boolean);
        case Kind::Integer:
            return ConvertValue(value, FieldType::Integer);
        case Kind::Real:
            return ConvertValue(value, FieldType::Real);
        case Kind::DateTime:
            return ConvertValue(value, FieldType::DateTime);
        default:
            return value;
    }
}

class FilterRun final : public expr::FilterTest {
 public:
    FilterRun(const LoadRequest& request, const DataSet& dataSet, const Filter& filter, Table& table)
        : m_filter(filter),
          m_dataSet(dataSet),
          m_table(table),
          m_context(*request.definition, dataSet.name, &table),
          m_environment(request, &table),
          m_expression(Compile(filter.expression)),
          m_op(OperatorOf(filter)) {
        for (const Expr& value : filter.values) {
            m_values.push_back(Compile(value));
        }
    }

    std::vector<bool> Run() {
        if (expr::Ranks(m_op)) {
            return RankRows();
        }
        std::vector<bool> keep(m_table.RowCount());
        for (std::size_t row = 0; row < keep.size(); ++row) {
            m_environment.SetRow(row);
            keep[row] = Passes(m_op, Evaluate(m_expression), m_values.size());
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

    Value Operand(std::size_t index) override { return Evaluate(m_values[index]); }

    int Order(const Value& left, const Value& right) override {
        if (m_dataSet.caseSensitive && left.IsText() && right.IsText()) {
            return left.AsText().compare(right.AsText());
        }
        return expr::Compare(left, Fitted(right, left));
    }

    bool IsLike(const Value& left, const Value& right) override {
        const Culture& culture = m_environment.CurrentCulture();
        bool valid = true;
        const bool matches = expr::MatchesPattern(LikeText(left, culture), LikeText(right, culture), valid);
        if (!valid) {
            throw Error("the pattern \"" + CleanText(ToText(right, culture)) +
                        "\" of a filter lacks a closing bracket");
        }
        return matches && !left.IsNull();
    }

    std::string LikeText(const Value& value, const Culture& culture) const {
        const std::string text = ToText(value, culture);
        return m_dataSet.caseSensitive ? text : expr::Lower(text);
    }

    std::size_t RankedCount(std::size_t rows) {
        m_environment.SetRow(0);
        const Value value = ConvertValue(Evaluate(m_values.front()), FieldType::Real);
        double number = 0;
        if (!expr::ToDouble(value, m_environment.CurrentCulture(), number) || !(number >= 0)) {
            throw Error("the filter " + m_filter.op + " needs a number that is not negative");
        }
        number = expr::RanksByPercent(m_op) ? std::ceil(static_cast<double>(rows) * number / 100)
                                            : std::floor(number);
        return number >= static_cast<double>(rows) ? rows : static_cast<std::size_t>(number);
    }

    std::vector<bool> RankRows() {
        const std::size_t rows = m_table.RowCount();
        std::vector<Value> values(rows);
        for (std::size_t row = 0; row < rows; ++row) {
            m_environment.SetRow(row);
            values[row] = Evaluate(m_expression);
        }
        const std::size_t count = rows == 0 ? 0 : RankedCount(rows);
        return expr::MarkExtremes(
            values, count, expr::RanksFromTop(m_op),
            [this](const Value& left, const Value& right) { return Order(left, right); });
    }

    const Filter& m_filter;
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
