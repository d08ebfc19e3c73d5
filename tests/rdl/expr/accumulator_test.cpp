// SPDX-License-Identifier: GPL-3.0-or-later
// Every aggregate over no, one, two and several values, over nulls and over numbers of very different size.
#include <gtest/gtest.h>

#include "rdl/expr/operations/accumulator.h"
#include "rdl/format/format.h"

namespace rdl::expr {
namespace {

Value R(double number) {
    return Value::Real(number);
}

std::string Shown(AggregateKind kind, const ValueList& values) {
    const Culture& culture = FindCulture("");
    Accumulator accumulator(kind, culture);
    for (const Value& value : values) {
        accumulator.Add(value);
    }
    const Value result = accumulator.Result();
    return result.IsNull() ? "null" : result.IsError() ? "error" : FormatValue(result, "0.######", culture);
}

struct Row {
    AggregateKind kind;
    const char *none, *null, *one, *two, *many, *withNull;
};

TEST(Aggregates, OfNoOneTwoAndSeveralValues) {
    const ValueList many = {R(2), R(4), R(4), R(4), R(5), R(5), R(7), R(9)};
    const ValueList withNull = {Value(), R(2), R(4), Value(), R(4), R(4), R(5), R(5), R(7), R(9), Value()};
    const Row rows[] = {
        {AggregateKind::Sum, "null", "null", "3", "8", "40", "40"},
        {AggregateKind::Avg, "null", "null", "3", "4", "5", "5"},
        {AggregateKind::Min, "null", "null", "3", "3", "2", "2"},
        {AggregateKind::Max, "null", "null", "3", "5", "9", "9"},
        {AggregateKind::Count, "0", "0", "1", "2", "8", "8"},
        {AggregateKind::CountDistinct, "0", "0", "1", "2", "5", "5"},
        {AggregateKind::CountRows, "0", "1", "1", "2", "8", "11"},
        {AggregateKind::First, "null", "null", "3", "3", "2", "null"},
        {AggregateKind::Last, "null", "null", "3", "5", "9", "null"},
        {AggregateKind::Aggregate, "null", "null", "3", "3", "2", "null"},
        {AggregateKind::Var, "null", "null", "null", "2", "4.571429", "4.571429"},
        {AggregateKind::StDev, "null", "null", "null", "1.414214", "2.13809", "2.13809"},
        {AggregateKind::VarP, "null", "null", "0", "1", "4", "4"},
        {AggregateKind::StDevP, "null", "null", "0", "1", "2", "2"},
    };
    for (const Row& row : rows) {
        const auto number = static_cast<int>(row.kind);
        EXPECT_EQ(Shown(row.kind, {}), row.none) << number;
        EXPECT_EQ(Shown(row.kind, {Value()}), row.null) << number;
        EXPECT_EQ(Shown(row.kind, {R(3)}), row.one) << number;
        EXPECT_EQ(Shown(row.kind, {R(3), R(5)}), row.two) << number;
        EXPECT_EQ(Shown(row.kind, many), row.many) << number;
        EXPECT_EQ(Shown(row.kind, withNull), row.withNull) << number;
    }
}

TEST(Aggregates, OfWholeAndDecimalNumbers) {
    const auto whole = [](std::int64_t number) { return Value::Integer(number); };
    const Value half = Value::Decimal(*Decimal::OfText("0.5"));
    EXPECT_EQ(Shown(AggregateKind::Var, {whole(3), whole(5)}), "2");
    EXPECT_EQ(Shown(AggregateKind::VarP, {whole(3), half}), "1.5625");
    EXPECT_EQ(Shown(AggregateKind::Sum, {whole(1), whole(2), half}), "3.5");
    EXPECT_EQ(Shown(AggregateKind::Avg, {whole(1), whole(2), whole(3), half, half}), "1.4");
    EXPECT_EQ(Shown(AggregateKind::Sum, {half, R(0.25)}), "0.75");
}

TEST(Aggregates, KeepSmallNumbersBesideLargeOnes) {
    EXPECT_EQ(Shown(AggregateKind::Sum, {R(1E16), R(1), R(-1E16)}), "1");
    EXPECT_EQ(Shown(AggregateKind::Avg, {R(1E16), R(1), R(-1E16), R(3)}), "1");
    EXPECT_EQ(Shown(AggregateKind::VarP, {R(1E9 + 1), R(1E9 + 2), R(1E9 + 3)}), "0.666667");
}

TEST(Aggregates, OfTextThatIsNoNumber) {
    EXPECT_EQ(Shown(AggregateKind::Sum, {R(1), Value::Text("x"), R(2)}), "error");
    EXPECT_EQ(Shown(AggregateKind::StDev, {R(1), Value::Text("x")}), "error");
    EXPECT_EQ(Shown(AggregateKind::Max, {Value::Text("b"), Value(), Value::Text("C")}), "C");
    EXPECT_EQ(Shown(AggregateKind::CountDistinct, {Value::Text("a"), Value::Text("A"), Value()}), "1");
}

}  // namespace
}  // namespace rdl::expr
