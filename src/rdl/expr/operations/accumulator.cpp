// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/accumulator.h"

#include "rdl/expr/operations/convert.h"

#include <cmath>

namespace rdl::expr {

void Accumulator::Add(const Value& value) {
    if (m_value.IsError()) {
        return;
    }
    if (value.IsError()) {
        m_value = value;
        return;
    }
    switch (m_kind) {
        case AggregateKind::First:
        case AggregateKind::Aggregate:
            if (m_count++ == 0) {
                m_value = value;
            }
            return;
        case AggregateKind::Last:
            m_value = value;
            return;
        case AggregateKind::CountRows:
            ++m_count;
            return;
        default:
            break;
    }
    if (value.IsNull()) {
        return;
    }
    ++m_count;
    switch (m_kind) {
        case AggregateKind::Count:
            break;
        case AggregateKind::CountDistinct:
            m_distinct.insert(value);
            break;
        case AggregateKind::Min:
        case AggregateKind::Max: {
            const int order = m_count == 1 ? 0 : Compare(value, m_value);
            if (m_count == 1 || (m_kind == AggregateKind::Min ? order < 0 : order > 0)) {
                m_value = value;
            }
            break;
        }
        default:
            AddNumber(value);
            break;
    }
}

void Accumulator::AddNumber(const Value& value) {
    if (m_integers && value.kind() == Kind::Integer) {
        std::int64_t sum = 0;
        if (!__builtin_add_overflow(m_integerSum, value.AsInteger(), &sum)) {
            m_integerSum = sum;
            AddReal(static_cast<double>(value.AsInteger()));
            return;
        }
    }
    double number = 0;
    if (!ToDouble(value, *m_culture, number)) {
        m_value = Value::Error("A value that is no number cannot be added up");
        return;
    }
    m_integers = false;
    AddReal(number);
}

void Accumulator::AddReal(double number) {
    const double sum = m_sum + number;
    m_lost += std::abs(m_sum) >= std::abs(number) ? (m_sum - sum) + number : (number - sum) + m_sum;
    m_sum = sum;
    const double distance = number - m_mean;
    m_mean += distance / static_cast<double>(m_count);
    m_squares += distance * (number - m_mean);
}

double Accumulator::Variance(bool population) const {
    return m_squares / static_cast<double>(population ? m_count : m_count - 1);
}

Value Accumulator::Result() const {
    if (m_value.IsError()) {
        return m_value;
    }
    const double sum = m_sum + m_lost;
    switch (m_kind) {
        case AggregateKind::Count:
        case AggregateKind::CountRows:
        case AggregateKind::RowNumber:
            return Value::Integer(m_count);
        case AggregateKind::CountDistinct:
            return Value::Integer(static_cast<std::int64_t>(m_distinct.size()));
        case AggregateKind::Sum:
            if (m_count == 0) {
                return {};
            }
            return m_integers ? Value::Integer(m_integerSum) : Value::Real(sum);
        case AggregateKind::Avg:
            return m_count == 0 ? Value() : Value::Real(sum / static_cast<double>(m_count));
        case AggregateKind::Var:
            return m_count < 2 ? Value() : Value::Real(Variance(false));
        case AggregateKind::StDev:
            return m_count < 2 ? Value() : Value::Real(std::sqrt(Variance(false)));
        case AggregateKind::VarP:
            return m_count == 0 ? Value() : Value::Real(Variance(true));
        case AggregateKind::StDevP:
            return m_count == 0 ? Value() : Value::Real(std::sqrt(Variance(true)));
        default:
            return m_value;
    }
}

}  // namespace rdl::expr
