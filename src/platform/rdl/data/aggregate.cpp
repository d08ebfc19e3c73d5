#include "platform/rdl/data/aggregate.h"

#include "platform/rdl/expr/accumulator.h"
#include "platform/rdl/expr/operators.h"

namespace rdl::data {
namespace {

using expr::AggregateKind;

// Sums are made with the + of the report language: dates and time spans add up too.
class Aggregator {
 public:
    Aggregator(AggregateKind kind, const Culture& culture)
        : m_kind(kind), m_culture(culture), m_accumulator(kind, culture) {}

    void Add(const Value& value) {
        double number = 0;
        switch (m_kind) {
            case AggregateKind::Sum:
            case AggregateKind::Avg:
                if (!value.IsNull()) {
                    m_sum = m_sum.IsNull() ? value : expr::Add(m_sum, value, m_culture);
                    ++m_count;
                }
                break;
            case AggregateKind::Var:
            case AggregateKind::VarP:
            case AggregateKind::StDev:
            case AggregateKind::StDevP:
                if (expr::ToDouble(value, m_culture, number)) {  // what is no number does not count
                    m_accumulator.Add(value);
                }
                break;
            default:
                m_accumulator.Add(value);
                break;
        }
    }

    Value Result() const {
        switch (m_kind) {
            case AggregateKind::Sum:
                return m_sum;
            case AggregateKind::Avg:
                return m_count == 0 ? Value() : expr::Divide(m_sum, Value::Integer(m_count), m_culture);
            case AggregateKind::RunningValue:
            case AggregateKind::RowNumber:
            case AggregateKind::Previous:
            case AggregateKind::Aggregate:
                return Value::Error("this aggregate cannot be used in a data set");
            default:
                return m_accumulator.Result();
        }
    }

 private:
    AggregateKind m_kind;
    const Culture& m_culture;
    expr::Accumulator m_accumulator;  // all but sums
    Value m_sum;
    std::int64_t m_count = 0;
};

}  // namespace

Value Aggregate(AggregateKind kind, std::size_t rows, const std::function<Value(std::size_t)>& argument,
                const Culture& culture) {
    if (kind == AggregateKind::CountRows) {
        return Value::Integer(static_cast<std::int64_t>(rows));
    }
    Aggregator aggregator(kind, culture);
    for (std::size_t row = 0; row < rows; ++row) {
        Value value = argument(row);
        if (value.IsError()) {
            return value;
        }
        aggregator.Add(value);
    }
    return aggregator.Result();
}

}  // namespace rdl::data
