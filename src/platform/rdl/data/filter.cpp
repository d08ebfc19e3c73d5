#include "platform/rdl/data/filter.h"

#include <algorithm>
#include <cmath>

#include "platform/rdl/data/field_type.h"
#include "platform/rdl/data/message.h"
#include "platform/rdl/data/row_environment.h"
#include "platform/rdl/expr/characters.h"
#include "platform/rdl/expr/operators.h"

namespace rdl::data {
namespace {

enum class Operator {
    Equal,
    NotEqual,
    Like,
    GreaterThan,
    GreaterThanOrEqual,
    LessThan,
    LessThanOrEqual,
    In,
    Between,
    TopN,
    BottomN,
    TopPercent,
    BottomPercent,
};

struct OperatorName {
    std::string_view name;
    Operator op;
    std::size_t least, most;  // values
};

constexpr std::size_t Many = 100'000;
constexpr OperatorName Operators[] = {
    {"Equal", Operator::Equal, 1, 1},
    {"NotEqual", Operator::NotEqual, 1, 1},
    {"Like", Operator::Like, 1, 1},
    {"GreaterThan", Operator::GreaterThan, 1, 1},
    {"GreaterThanOrEqual", Operator::GreaterThanOrEqual, 1, 1},
    {"LessThan", Operator::LessThan, 1, 1},
    {"LessThanOrEqual", Operator::LessThanOrEqual, 1, 1},
    {"In", Operator::In, 1, Many},
    {"Between", Operator::Between, 2, 2},
    {"TopN", Operator::TopN, 1, 1},
    {"BottomN", Operator::BottomN, 1, 1},
    {"TopPercent", Operator::TopPercent, 1, 1},
    {"BottomPercent", Operator::BottomPercent, 1, 1},
};

const OperatorName& FindOperator(const Filter& filter) {
    for (const OperatorName& known : Operators) {
        if (EqualNoCase(known.name, filter.op)) {
            if (filter.values.size() < known.least || filter.values.size() > known.most) {
                throw Error("a filter with " + std::string(known.name) + " has " +
                            std::to_string(filter.values.size()) + " values");
            }
            return known;
        }
    }
    throw Error("a filter has the unknown operator \"" + CleanText(filter.op) + "\"");
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

class FilterRun {
 public:
    FilterRun(const LoadRequest& request, const DataSet& dataSet, const Filter& filter, Table& table)
        : m_filter(filter),
          m_dataSet(dataSet),
          m_table(table),
          m_context(*request.definition, dataSet.name, &table),
          m_environment(request, &table),
          m_expression(Compile(filter.expression)),
          m_op(FindOperator(filter).op) {
        for (const Expr& value : filter.values) {
            m_values.push_back(Compile(value));
        }
    }

    std::vector<bool> Run() {
        if (m_op >= Operator::TopN) {
            return RankRows();
        }
        std::vector<bool> keep(m_table.RowCount());
        for (std::size_t row = 0; row < keep.size(); ++row) {
            m_environment.SetRow(row);
            keep[row] = LetsThrough();
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

    int Compare(const Value& left, const Value& right) const {
        if (m_dataSet.caseSensitive && left.IsText() && right.IsText()) {
            return left.AsText().compare(right.AsText());
        }
        return expr::Compare(left, Fitted(right, left));
    }

    bool IsOneOf(const Value& left) {
        for (const Source& source : m_values) {
            const Value right = Evaluate(source);
            if (right.kind() != Kind::List) {
                if (Compare(left, right) == 0) {
                    return true;
                }
                continue;
            }
            for (const Value& one : right.AsList()) {
                if (Compare(left, one) == 0) {
                    return true;
                }
            }
        }
        return false;
    }

    bool IsLike(const Value& left, const Value& right) {
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

    bool LetsThrough() {
        const Value left = Evaluate(m_expression);
        if (m_op == Operator::In) {
            return IsOneOf(left);
        }
        const Value right = Evaluate(m_values.front());
        switch (m_op) {
            case Operator::Equal:
                return Compare(left, right) == 0;
            case Operator::NotEqual:
                return Compare(left, right) != 0;
            case Operator::GreaterThan:
                return Compare(left, right) > 0;
            case Operator::GreaterThanOrEqual:
                return Compare(left, right) >= 0;
            case Operator::LessThan:
                return Compare(left, right) < 0;
            case Operator::LessThanOrEqual:
                return Compare(left, right) <= 0;
            case Operator::Like:
                return IsLike(left, right);
            default:
                return Compare(left, right) >= 0 && Compare(left, Evaluate(m_values.back())) <= 0;
        }
    }

    std::size_t RankedCount(std::size_t rows) {
        m_environment.SetRow(0);
        const Value value = ConvertValue(Evaluate(m_values.front()), FieldType::Real);
        double number = 0;
        if (!expr::ToDouble(value, m_environment.CurrentCulture(), number) || !(number >= 0)) {
            throw Error("the filter " + m_filter.op + " needs a number that is not negative");
        }
        const bool percent = m_op == Operator::TopPercent || m_op == Operator::BottomPercent;
        number = percent ? std::ceil(static_cast<double>(rows) * number / 100) : std::floor(number);
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
        if (count == 0) {
            return std::vector<bool>(rows, false);
        }
        const bool top = m_op == Operator::TopN || m_op == Operator::TopPercent;
        const auto before = [&](const Value& left, const Value& right) {
            return top ? Compare(left, right) > 0 : Compare(left, right) < 0;
        };
        std::vector<Value> ranked = values;
        const auto border = ranked.begin() + static_cast<std::ptrdiff_t>(count - 1);
        std::nth_element(ranked.begin(), border, ranked.end(), before);
        std::vector<bool> keep(rows);
        for (std::size_t row = 0; row < rows; ++row) {
            keep[row] = !before(*border, values[row]);
        }
        return keep;
    }

    const Filter& m_filter;
    const DataSet& m_dataSet;
    Table& m_table;
    DataContext m_context;
    RowEnvironment m_environment;
    Source m_expression;
    Operator m_op;
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
