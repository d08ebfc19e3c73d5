#include "platform/rdl/data/aggregate.h"

#include <cmath>
#include <unordered_set>

#include "platform/rdl/expr/operators.h"

namespace rdl::data {
namespace {

using expr::AggregateKind;

struct HashOf {
    std::size_t operator()(const Value& value) const { return expr::Hash(value); }
};
struct SameAs {
    bool operator()(const Value& left, const Value& right) const { return expr::Compare(left, right) == 0; }
};

// Welford's way: no loss where the values are large and near each other.
struct Spread {
    double mean = 0, squares = 0;
    std::int64_t count = 0;
    void Add(double number) {
        ++count;
        const double before = number - mean;
        mean += before / static_cast<double>(count);
        squares += before * (number - mean);
    }
    Value Variance(bool population) const {
        const std::int64_t divisor = population ? count : count - 1;
        return divisor < 1 ? Value() : Value::Real(squares / static_cast<double>(divisor));
    }
};

struct Totals {
    Value sum, least, greatest, first, last;
    std::int64_t count = 0;
    Spread spread;
    std::unordered_set<Value, HashOf, SameAs> distinct;

    void Add(AggregateKind kind, const Value& value, const Culture& culture) {
        ++count;
        double number = 0;
        if (expr::ToDouble(value, culture, number)) {
            spread.Add(number);
        }
        if (kind == AggregateKind::Sum || kind == AggregateKind::Avg) {
            sum = sum.IsNull() ? value : expr::Add(sum, value, culture);
        }
        if (kind == AggregateKind::CountDistinct) {
            distinct.insert(value);
        }
        if (least.IsNull() || expr::Compare(value, least) < 0) {
            least = value;
        }
        if (greatest.IsNull() || expr::Compare(value, greatest) > 0) {
            greatest = value;
        }
    }

    Value Result(AggregateKind kind, const Culture& culture) const {
        Value variance = spread.Variance(kind == AggregateKind::VarP || kind == AggregateKind::StDevP);
        switch (kind) {
            case AggregateKind::Sum:
                return sum;
            case AggregateKind::Avg:
                return count == 0 ? Value() : expr::Divide(sum, Value::Integer(count), culture);
            case AggregateKind::Count:
                return Value::Integer(count);
            case AggregateKind::CountDistinct:
                return Value::Integer(static_cast<std::int64_t>(distinct.size()));
            case AggregateKind::Min:
                return least;
            case AggregateKind::Max:
                return greatest;
            case AggregateKind::First:
                return first;
            case AggregateKind::Last:
                return last;
            case AggregateKind::Var:
            case AggregateKind::VarP:
                return variance;
            case AggregateKind::StDev:
            case AggregateKind::StDevP:
                return variance.IsNull() ? variance : Value::Real(std::sqrt(variance.AsReal()));
            default:
                return Value::Error("this aggregate cannot be used in a data set");
        }
    }
};

}  // namespace

Value Aggregate(AggregateKind kind, std::size_t rows, const std::function<Value(std::size_t)>& argument,
                const Culture& culture) {
    if (kind == AggregateKind::CountRows) {
        return Value::Integer(static_cast<std::int64_t>(rows));
    }
    Totals totals;
    for (std::size_t row = 0; row < rows; ++row) {
        Value value = argument(row);
        if (value.IsError()) {
            return value;
        }
        if (row == 0) {
            totals.first = value;
        }
        totals.last = value;
        if (!value.IsNull()) {
            totals.Add(kind, value, culture);
        }
    }
    return totals.Result(kind, culture);
}

}  // namespace rdl::data
