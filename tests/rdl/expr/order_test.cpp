// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <limits>

#include "rdl/expr/fixture.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

std::vector<Value> Ascending() {
    return {Value(),
            Value::Boolean(false),
            Value::Boolean(true),
            Value::Real(std::nan("")),
            Value::Real(-std::numeric_limits<double>::infinity()),
            Value::Integer(std::numeric_limits<std::int64_t>::min()),
            Value::Real(-1.5),
            Value::Integer(-1),
            Value::Integer(0),
            Value::Decimal({1, 28, false}),
            Value::Real(0.1),
            Value::Decimal(*Decimal::OfText("0.1000000000000000000000000001")),
            Value::Real(0.5),
            Value::Integer(9007199254740992),
            Value::Decimal({90071992547409925, 1, false}),
            Value::Integer(9007199254740993),
            Value::Integer(std::numeric_limits<std::int64_t>::max()),
            Value::Real(9223372036854775808.0),
            Value::Decimal({UInt128{1} << 64, 0, false}),
            Value::Decimal({Decimal::MostCoefficient, 0, false}),
            Value::Real(1e29),
            Value::DateTime(5),
            Value::DateTime(6),
            Value::TimeSpan(1),
            Value::Text(""),
            Value::Text("a"),
            Value::Text("B"),
            Value::Text("b2"),
            Value::Bytes("x"),
            Value::List({Value::Integer(1)}),
            Value::Error("e")};
}

TEST(ValueOrder, IsTotalOverEveryKind) {
    const std::vector<Value> values = Ascending();
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j) {
            const int order = Compare(values[i], values[j]);
            EXPECT_EQ(order < 0 ? -1 : order > 0 ? 1 : 0, i < j ? -1 : i > j ? 1 : 0) << i << " and " << j;
        }
    }
}

TEST(ValueOrder, EqualValuesHaveEqualHashes) {
    const std::pair<Value, Value> equals[] = {
        {Value::Integer(5), Value::Real(5)},
        {Value::Real(0.0), Value::Real(-0.0)},
        {Value::Decimal({1, 0, false}), Value::Decimal({100, 2, false})},
        {Value::Decimal({100, 2, false}), Value::Integer(1)},
        {Value::Decimal({100, 2, false}), Value::Real(1)},
        {Value::Decimal({10, 2, false}), Value::Real(0.1)},
        {Value::Decimal({9007199254740993, 0, false}), Value::Integer(9007199254740993)},
        {Value::Decimal({UInt128{1} << 64, 0, false}), Value::Real(18446744073709551616.0)},
        {Value::Decimal({5, 1, false}), Value::Decimal({5000000000000000000, 19, false})},
        {Value::Text("ABC"), Value::Text("abc")},
        {Value::Text("ÉCOLE"), Value::Text("école")},
        {Value::Text("\xE2\x84\xAA"), Value::Text("k")},
        {Value::List({Value::Text("A")}), Value::List({Value::Text("a")})},
    };
    for (const auto& [left, right] : equals) {
        EXPECT_EQ(Compare(left, right), 0);
        EXPECT_EQ(Hash(left), Hash(right));
    }
    EXPECT_NE(Hash(Value::Integer(1)), Hash(Value::Integer(2)));
}

TEST(ValueOrder, TruthOfAnyKind) {
    bool truth = false;
    EXPECT_TRUE(ToBoolean(Value::Text("TRUE"), truth));
    EXPECT_TRUE(truth);
    EXPECT_TRUE(ToBoolean(Value::Integer(0), truth));
    EXPECT_FALSE(truth);
    EXPECT_TRUE(ToBoolean(Value(), truth));
    EXPECT_FALSE(truth);
    EXPECT_FALSE(ToBoolean(Value::Text("maybe"), truth));
    EXPECT_FALSE(ToBoolean(Value::Error("e"), truth));
}

}  // namespace
}  // namespace rdl::expr
