// SPDX-License-Identifier: GPL-3.0-or-later
// Decimal numbers in expressions: sums of money are exact.
#include "rdl/expr/fixture.h"
#include "rdl/expr/operations/accumulator.h"
#include "rdl/expr/operations/filter_operator.h"

namespace rdl::expr {
namespace {

Value D(std::string_view text) {
    return Value::Decimal(Decimal::OfText(text).value());
}

std::string TypeOf(const std::string& expression) {
    return Show("=TypeName(" + expression + ")");
}

TEST(DecimalExpressions, LettersMakeDecimals) {
    Expect({{"=1.50D", "1.50"},
            {"=1.50@", "1.50"},
            {"=5D", "5"},
            {"=1e-3D", "0.001"},
            {"=79228162514264337593543950335D", "79228162514264337593543950335"},
            {"=-0.0D", "0.0"}});
    EXPECT_EQ(TypeOf("1D"), "Decimal");
    EXPECT_NE(Refusal("=79228162514264337593543950336D").find("a number is too large"), std::string::npos);
}

TEST(DecimalExpressions, ArithmeticIsExact) {
    Expect({{"=0.1D + 0.2D", "0.3"},
            {"=0.1D + 0.2D = 0.3D", "True"},
            {"=0.1 + 0.2 = 0.3", "False"},
            {"=1.10D + 1.20D", "2.30"},
            {"=1.10D - 1.1D", "0.00"},
            {"=1.10D * 3", "3.30"},
            {"=1D / 3", "0.3333333333333333333333333333"},
            {"=7.5D Mod 2", "1.5"},
            {"=7.5D \\ 2", "4"},
            {"=-(1.50D)", "-1.50"},
            {"=1.5D + Nothing", "1.5"},
            {"=1.5D + True", "0.5"},
            {"=2.5D + \"1\"", "3.5"},
            {"=2D ^ 3", "8"},
            {"=1D & \"x\"", "1x"}});
}

TEST(DecimalExpressions, DecimalWithIntegerIsDecimalAndWithDoubleIsDouble) {
    EXPECT_EQ(TypeOf("1D + 1"), "Decimal");
    EXPECT_EQ(TypeOf("3 / 2D"), "Decimal");
    EXPECT_EQ(TypeOf("5D Mod 3"), "Decimal");
    EXPECT_EQ(TypeOf("1D + 1.0"), "Double");
    EXPECT_EQ(TypeOf("1D / 1.0"), "Double");
    EXPECT_EQ(TypeOf("5D Mod 3.0"), "Double");
    EXPECT_EQ(TypeOf("1D ^ 2"), "Double");
    EXPECT_EQ(TypeOf("7D \\ 2"), "Integer");
    EXPECT_EQ(TypeOf("-(1D)"), "Decimal");
    EXPECT_EQ(TypeOf("1D + \"1\""), "Double");
}

TEST(DecimalExpressions, OverflowAndZeroDivisorsAreErrors) {
    Expect({{"=Decimal.MaxValue + 1", "#Error"},
            {"=Decimal.MinValue - 1", "#Error"},
            {"=Decimal.MaxValue * 2", "#Error"},
            {"=Decimal.MaxValue / 0.1D", "#Error"},
            {"=1D / 0", "#Error"},
            {"=1 / 0D", "#Error"},
            {"=1D Mod 0D", "#Error"},
            {"=1D \\ 0", "#Error"},
            {"=CDec(1e30)", "#Error"},
            {"=CDec(\"1e30\")", "#Error"},
            {"=CInt(3000000000D)", "#Error"},
            {"=CLng(Decimal.MaxValue)", "#Error"},
            {"=Decimal.MaxValue", "79228162514264337593543950335"}});
}

TEST(DecimalExpressions, ComparisonIgnoresTheScale) {
    Expect({{"=1D = 1.00D", "True"},
            {"=1D = 1", "True"},
            {"=0.1D = 0.1", "True"},
            {"=1.5D > 1", "True"},
            {"=9223372036854775807D = 9223372036854775806", "False"},
            {"=0.5D < \"0.75\"", "True"},
            {"=0D = Nothing", "True"},
            {"=1D = True", "False"},
            {"=-1D = True", "True"},
            {"=1.0D Is Nothing", "False"},
            {"=IIf(0.0D, 1, 2)", "2"}});
}

TEST(DecimalExpressions, ConversionsKnowDecimals) {
    Expect({{"=CDec(0.1 + 0.2)", "0.3"},
            {"=CDec(\"1.10\")", "1.10"},
            {"=CDec(\"0.1234567890123456789012345678\")", "0.1234567890123456789012345678"},
            {"=CDec(Nothing)", "0"},
            {"=CDec(True)", "-1"},
            {"=CDec(\"abc\")", "#Error"},
            {"=Convert.ToDecimal(True)", "1"},
            {"=Convert.ToDecimal(\"2.50\")", "2.50"},
            {"=Decimal.Parse(\"1,234.50\")", "1234.50"},
            {"=Decimal.Parse(\"1e30\")", "#Error"},
            {"=New Decimal(0.5)", "0.5"},
            {"=CType(\"3.20\", Decimal)", "3.20"},
            {"=CStr(2.30D)", "2.30"},
            {"=CInt(2.5D) & CInt(3.5D) & CInt(-2.5D)", "24-2"},
            {"=CLng(9223372036854775807D)", "9223372036854775807"},
            {"=CBool(0.1D)", "True"},
            {"=Val(\"1.5\")", "1.5"},
            {"=Str(1.50D)", " 1.50"},
            {"=Hex(255D)", "FF"},
            {"=IsNumeric(1D)", "True"},
            {"=VarType(1D)", "14"},
            {"=VarType(1D) = VariantType.Decimal", "True"},
            {"=TypeOf 1D Is Decimal", "True"},
            {"=TypeOf 1D Is Double", "False"},
            {"=TypeOf 1.0 Is Decimal", "False"},
            {"=(1D).GetType().FullName", "System.Decimal"}});
    EXPECT_EQ(TypeOf("CDbl(1.5D)"), "Double");
    EXPECT_EQ(TypeOf("CDec(1)"), "Decimal");
    EXPECT_EQ(Show("=CDec(\"1.234,50\")", "de-DE"), "1234,50");
    EXPECT_EQ(Show("=Decimal.Parse(\"12,5 €\")", "de-DE"), "12,5");
}

TEST(DecimalExpressions, MathematicsStaysDecimal) {
    Expect({{"=Math.Round(2.345D, 2)", "2.34"},
            {"=Round(2.345D, 2, MidpointRounding.AwayFromZero)", "2.35"},
            {"=Round(0.1234567890123456789012345678D, 27)", "0.123456789012345678901234568"},
            {"=Math.Floor(-2.5D)", "-3"},
            {"=Math.Ceiling(2.1D)", "3"},
            {"=Math.Truncate(-2.9D)", "-2"},
            {"=Int(-2.5D) & Fix(-2.5D)", "-3-2"},
            {"=Math.Abs(-1.50D)", "1.50"},
            {"=Math.Sign(-0.01D)", "-1"},
            {"=Math.Min(1.5D, 2)", "1.5"},
            {"=Math.Max(79228162514264337593543950335D, 1)", "79228162514264337593543950335"},
            {"=Math.Sqrt(4D)", "2"},
            {"=Decimal.Divide(1, 3)", "0.3333333333333333333333333333"},
            {"=Decimal.Add(0.1, 0.2)", "0.3"},
            {"=Decimal.Round(2.675, 2)", "2.68"},
            {"=Decimal.Add(\"x\", 1)", "#Error"},
            {"=Decimal.Negate(1.50D)", "-1.50"},
            {"=Decimal.Compare(1.0D, 1)", "0"},
            {"=Decimal.ToInt64(9223372036854775807.9D)", "9223372036854775807"}});
    EXPECT_EQ(TypeOf("Math.Round(2.5D)"), "Decimal");
    EXPECT_EQ(TypeOf("Math.Max(3, 2.5D)"), "Decimal");
    EXPECT_EQ(TypeOf("Math.Max(3.5D, 2.5)"), "Double");
    EXPECT_EQ(TypeOf("Math.Floor(2.5D)"), "Decimal");
    EXPECT_EQ(TypeOf("Decimal.Floor(2.5)"), "Decimal");
    EXPECT_EQ(TypeOf("Math.Sqrt(4D)"), "Double");
}

TEST(DecimalExpressions, FormatsDoNotPassThroughADouble) {
    Expect({{"=Format(79228162514264337593543950335D, \"N0\")", "79,228,162,514,264,337,593,543,950,335"},
            {"=FormatNumber(1234.5D, 2)", "1,234.50"},
            {"=FormatCurrency(-12345678901234567.89D)", "($12,345,678,901,234,567.89)"},
            {"=FormatNumber(-0.1234567890123456789D, 19, TriState.False, TriState.True)",
             "(.1234567890123456789)"},
            {"=FormatPercent(0.125D, 1)", "12.5 %"}});
}

Value Aggregated(AggregateKind kind, std::initializer_list<Value> values) {
    Accumulator accumulator(kind, FindCulture(""));
    for (const Value& value : values) {
        accumulator.Add(value);
    }
    return accumulator.Result();
}

std::string AggregatedText(AggregateKind kind, std::initializer_list<Value> values) {
    const Value result = Aggregated(kind, values);
    return result.IsError() ? "error: " + std::string(result.AsText()) : ToText(result, FindCulture(""));
}

TEST(DecimalAggregates, SumsAndAveragesAreExact) {
    EXPECT_EQ(AggregatedText(AggregateKind::Sum, {D("0.10"), Value(), D("0.20")}), "0.30");
    EXPECT_EQ(AggregatedText(AggregateKind::Avg, {D("1"), D("0"), Value(), D("0")}),
              "0.3333333333333333333333333333");
    EXPECT_EQ(AggregatedText(AggregateKind::Sum, {Value::Integer(1), D("0.5"), Value::Integer(2)}), "3.5");
    EXPECT_EQ(Aggregated(AggregateKind::Sum, {D("0.5"), Value::Integer(2)}).kind(), Kind::Decimal);
    EXPECT_EQ(AggregatedText(AggregateKind::Min, {D("2.50"), D("-1.10"), Value()}), "-1.10");
    EXPECT_EQ(AggregatedText(AggregateKind::Max, {D("2.50"), Value::Integer(2), Value::Real(2.25)}), "2.50");
    EXPECT_EQ(AggregatedText(AggregateKind::First, {D("2.50"), D("1")}), "2.50");
    EXPECT_EQ(AggregatedText(AggregateKind::Last, {D("1"), D("2.50")}), "2.50");
    EXPECT_EQ(
        AggregatedText(AggregateKind::CountDistinct, {D("1"), D("1.00"), Value::Integer(1), Value::Real(1)}),
        "1");
    EXPECT_TRUE(Aggregated(AggregateKind::Sum, {Value()}).IsNull());
}

TEST(DecimalAggregates, DoubleAmongThemMakesADouble) {
    const Value sum =
        Aggregated(AggregateKind::Sum, {Value::Integer(1), D("0.5"), Value::Real(0.25), D("1")});
    EXPECT_EQ(sum.kind(), Kind::Real);
    EXPECT_EQ(sum.AsDouble(), 2.75);
    EXPECT_EQ(Aggregated(AggregateKind::Sum, {Value::Real(0.25), D("0.5")}).AsReal(), 0.75);
    EXPECT_EQ(Aggregated(AggregateKind::Avg, {D("1"), Value::Real(2)}).AsReal(), 1.5);
    EXPECT_EQ(Aggregated(AggregateKind::Sum, {D("1"), Value::Text("0.5")}).AsReal(), 1.5);
    EXPECT_EQ(Aggregated(AggregateKind::VarP, {D("1"), D("3")}).AsReal(), 1);
    EXPECT_EQ(Aggregated(AggregateKind::StDev, {D("1"), D("3"), Value::Integer(2)}).AsReal(), 1);
}

TEST(DecimalAggregates, SumThatIsTooLargeIsAnError) {
    const Value most = D("79228162514264337593543950335");
    EXPECT_EQ(AggregatedText(AggregateKind::Sum, {most, D("1")}), "error: A sum is too large");
    EXPECT_EQ(AggregatedText(AggregateKind::Avg, {most, most, Value::Real(1)}), "error: A sum is too large");
    EXPECT_EQ(AggregatedText(AggregateKind::Sum, {D("1"), Value::Text("x")}),
              "error: A value that is no number cannot be added up");
}

TEST(DecimalAggregates, ManyCentsAreExact) {
    Accumulator sum(AggregateKind::Sum, FindCulture("")), average(AggregateKind::Avg, FindCulture(""));
    const Value cent = D("0.01"), dime = D("0.10");
    for (int i = 0; i < 200'000; ++i) {
        for (const Value& value : {cent, dime}) {
            sum.Add(value);
            average.Add(value);
        }
    }
    EXPECT_EQ(ToText(sum.Result(), FindCulture("")), "22000.00");
    EXPECT_EQ(ToText(average.Result(), FindCulture("")), "0.055");
}

TEST(DecimalFilters, ConstantsAreReadAsDecimals) {
    const FilterRules rules{&FindCulture("de-DE")};
    EXPECT_EQ(rules.Order(D("0.1234567890123456789"), Value::Text("0.1234567890123456789")), 0);
    EXPECT_NE(rules.Order(D("0.1234567890123456789"), Value::Text("0.1234567890123456788")), 0);
    EXPECT_EQ(rules.Order(D("0.10"), Value::Real(0.1)), 0);
    EXPECT_EQ(rules.Order(D("1.5"), Value::Text("1,5")), 0);
    EXPECT_GT(rules.Order(D("2"), Value::Integer(1)), 0);
    const Value list = Value::List({Value::Real(0.5), Value::Integer(2)});
    EXPECT_TRUE(PassesFilter(FilterOperator::In, rules, D("2.00"), 1, [&](std::size_t) { return list; }));
}

}  // namespace
}  // namespace rdl::expr
