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
    if (m_exact != Exact::None && value.kind() != Kind::Real && AddExact(value)) {
        return;
    }
    double number = 0;
    if (m_value.IsError() || !ToDouble(value, *m_culture, number)) {
        m_value = m_value.IsError() ? m_value : Value::Error("A value that is no number cannot be added up");
        return;
    }
    if (m_exact == Exact::Decimals) {
        m_sum = m_decimalSum.ToDouble();
        m_lost = 0;
    }
    m_exact = Exact::None;
    AddReal(number);
}

bool Accumulator::AddExact(const Value& value) {
    if (m_exact == Exact::Integers && value.kind() == Kind::Integer) {
        std::int64_t sum = 0;
        if (__builtin_add_overflow(m_integerSum, value.AsInteger(), &sum)) {
            return false;
        }
        m_integerSum = sum;
        AddReal(static_cast<double>(value.AsInteger()));
        return true;
    }
    const bool isExact = value.kind() == Kind::Decimal || value.kind() == Kind::Integer;
    return isExact && !IsVariance() && AddDecimal(value.AsDecimal());
}

bool Accumulator::AddDecimal(const Decimal& number) {
    if (m_exact == Exact::Integers) {
        m_decimalSum = Decimal::OfInteger(m_integerSum);
        m_exact = Exact::Decimals;
    }
    const auto sum = rdl::Add(m_decimalSum, number);
    if (!sum) {
        m_value = Value::Error("A sum is too large");
        return false;
    }
    m_decimalSum = *sum;
    return true;
}

bool Accumulator::IsVariance() const {
    return m_kind != AggregateKind::Sum && m_kind != AggregateKind::Avg;
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

Value Accumulator::Average() const {
    if (m_exact != Exact::Decimals) {
        return Value::Real((m_sum + m_lost) / static_cast<double>(m_count));
    }
    // A quotient that is not larger than its dividend fits.
    return Value::Decimal(rdl::Divide(m_decimalSum, Decimal::OfInteger(m_count)).value_or(Decimal()));
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
            return m_exact == Exact::Integers   ? Value::Integer(m_integerSum)
                   : m_exact == Exact::Decimals ? Value::Decimal(m_decimalSum)
                                                : Value::Real(sum);
        case AggregateKind::Avg:
            return m_count == 0 ? Value() : Average();
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
