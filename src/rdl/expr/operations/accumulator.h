// SPDX-License-Identifier: GPL-3.0-or-later
// Computes one aggregate function over a stream of values.
#pragma once

#include <cstdint>
#include <unordered_set>

#include "rdl/expr/operations/compare.h"
#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

enum class AggregateKind : std::uint8_t {
    Sum,
    Avg,
    Count,
    CountDistinct,
    CountRows,
    Min,
    Max,
    First,
    Last,
    StDev,
    StDevP,
    Var,
    VarP,
    RunningValue,
    RowNumber,
    Previous,
    Aggregate,
};

class Accumulator {
 public:
    Accumulator(AggregateKind kind, const Culture& culture) : m_kind(kind), m_culture(&culture) {}
    void Add(const Value& value);
    void AddRow() { ++m_count; }  // for CountRows, which takes no value
    // Returns the result so far. Without values a sum is Null and a count is 0.
    Value Result() const;

 private:
    void AddNumber(const Value& value);
    // Returns false if the value is not an exact number or the sum so far is not.
    bool AddExact(const Value& value);
    bool AddDecimal(const Decimal& number);
    void AddReal(double number);
    bool IsVariance() const;
    Value Average() const;
    double Variance(bool population) const;

    struct HashValue {
        std::size_t operator()(const Value& value) const { return Hash(value); }
    };
    struct SameValue {
        bool operator()(const Value& left, const Value& right) const { return Compare(left, right) == 0; }
    };
    AggregateKind m_kind;
    const Culture* m_culture;
    std::int64_t m_count = 0;
    enum class Exact : std::uint8_t { Integers, Decimals, None };  // which sum below holds all values so far
    Exact m_exact = Exact::Integers;
    std::int64_t m_integerSum = 0;
    Decimal m_decimalSum;
    double m_sum = 0, m_lost = 0;  // compensated summation: many small amounts add up exactly
    double m_mean = 0, m_squares = 0;
    Value m_value;  // Min, Max, First or Last, or the first error
    std::unordered_set<Value, HashValue, SameValue> m_distinct;
};

}  // namespace rdl::expr
