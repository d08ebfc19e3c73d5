// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/expr/operations/filter_operator.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl::expr {
namespace {

// What data sets, regions and groups have in common.
class FilterRule : public testing::Test {
 protected:
    static FilterRules Rules(const std::string& language = "en-US", bool caseSensitive = false) {
        return {&FindCulture(language), caseSensitive};
    }
    static bool Passes(const std::string& op, const Value& value, const std::vector<Value>& operands,
                       const FilterRules& rules = Rules()) {
        return PassesFilter(CheckedFilterOperator(op, operands.size()), rules, value, operands.size(),
                            [&](std::size_t index) { return operands[index]; });
    }
    static std::string Ranked(const std::string& op, const std::vector<Value>& values, const Value& wanted) {
        std::string marks;
        for (const bool mark : RankFilter(CheckedFilterOperator(op, 1), Rules(), values, wanted)) {
            marks += mark ? 'x' : '.';
        }
        return marks;
    }
    static Value Text(const std::string& text) { return Value::Text(text); }
};

TEST_F(FilterRule, ConstantIsReadAsWhatItIsComparedWith) {
    EXPECT_TRUE(Passes("Equal", Value::Integer(10), {Text("10")}));
    EXPECT_TRUE(Passes("GreaterThan", Value::Integer(10), {Text("9")}));
    EXPECT_TRUE(Passes("Equal", Value::Boolean(true), {Text("true")}));
    EXPECT_TRUE(Passes("LessThan", Value::DateTime(MakeTicks(2024, 1, 31)), {Text("2024-02-01")}));
}

TEST_F(FilterRule, ConstantIsWrittenAsTheSchemaDoesInEveryLanguage) {
    EXPECT_TRUE(Passes("Equal", Value::Real(1.5), {Text("1.5")}, Rules("de-DE")));
    EXPECT_TRUE(Passes("Equal", Value::Real(1.5), {Text("1,5")}, Rules("de-DE")));
    EXPECT_TRUE(
        Passes("Equal", Value::DateTime(MakeTicks(2024, 12, 31)), {Text("31.12.2024")}, Rules("de-DE")));
}

TEST_F(FilterRule, WhatCannotBeComparedIsAnError) {
    const auto failure = [](const std::string& op, const Value& value, const std::vector<Value>& operands) {
        return ErrorRaisedBy([&] { Passes(op, value, operands); });
    };
    EXPECT_EQ(failure("GreaterThan", Value::Integer(10), {Text("many")}),
              "a filter cannot compare 10 with \"many\"");
    EXPECT_EQ(failure("Between", Text("n/a"), {Value::Integer(1), Value::Integer(5)}),
              "a filter cannot compare \"n/a\" with 1");
    EXPECT_FALSE(Passes("Equal", Value::Integer(10), {Text("many")}));
    EXPECT_FALSE(Passes("GreaterThan", Value(), {Text("5")})) << "what is missing is the least";
}

TEST_F(FilterRule, TextsAreTextsEvenIfTheyAreFigures) {
    EXPECT_TRUE(Passes("LessThan", Text("10"), {Text("9")}));
    EXPECT_FALSE(Passes("Equal", Text("1.0"), {Text("1")}));
    EXPECT_TRUE(Passes("Equal", Text("Ann"), {Text("ANN")}));
    EXPECT_FALSE(Passes("Equal", Text("Ann"), {Text("ANN")}, Rules("en-US", true)));
}

TEST_F(FilterRule, LikeHasTheSignsOfTheReportLanguage) {
    EXPECT_TRUE(Passes("Like", Text("Ann-Lee"), {Text("a*lee")}));
    EXPECT_TRUE(Passes("Like", Text("A1"), {Text("[A-C]#")}));
    EXPECT_FALSE(Passes("Like", Text("A1"), {Text("[!A-C]#")}));
    EXPECT_TRUE(Passes("Like", Text("what?"), {Text("what[?]")}));
    EXPECT_TRUE(Passes("Like", Text(""), {Text("*")}));
    EXPECT_TRUE(Passes("Like", Value::Integer(2024), {Text("20*")}));
    EXPECT_FALSE(Passes("Like", Value(), {Text("*")}));
    EXPECT_THROW(Passes("Like", Text("a"), {Text("[a")}), Error);
}

TEST_F(FilterRule, InLooksIntoListsAndBetweenHasBothEnds) {
    const Value list = Value::List({Value::Integer(1), Value::Integer(2)});
    EXPECT_TRUE(Passes("In", Value::Integer(2), {list}));
    EXPECT_TRUE(Passes("In", Value::Integer(7), {list, Text("7")}));
    EXPECT_FALSE(Passes("In", Value::Integer(3), {list}));
    EXPECT_TRUE(Passes("Between", Value::Integer(3), {Text("3"), Value::Integer(4)}));
    EXPECT_TRUE(Passes("Between", Value::Integer(4), {Text("3"), Value::Integer(4)}));
    EXPECT_FALSE(Passes("Between", Value::Integer(5), {Text("3"), Value::Integer(4)}));
}

TEST_F(FilterRule, RanksCountRowsAndKeepTies) {
    const std::vector<Value> values{Value::Integer(5), Value::Integer(9), Value::Integer(5),
                                    Value::Integer(1)};
    EXPECT_EQ(Ranked("TopN", values, Value::Integer(2)), "xxx.");
    EXPECT_EQ(Ranked("BottomN", values, Text("1")), "...x");
    EXPECT_EQ(Ranked("TopPercent", values, Value::Integer(26)), "xxx.");
    EXPECT_EQ(Ranked("BottomPercent", values, Value::Integer(0)), "....");
    EXPECT_EQ(Ranked("TopN", values, Value::Real(1e30)), "xxxx");
    EXPECT_EQ(Ranked("TopPercent", std::vector<Value>(100, Value::Integer(1)), Value::Integer(7)),
              std::string(100, 'x'));
    std::vector<Value> hundred;
    for (int i = 0; i < 100; ++i) {
        hundred.push_back(Value::Integer(i));
    }
    EXPECT_EQ(Ranked("TopPercent", hundred, Value::Integer(7)), std::string(93, '.') + std::string(7, 'x'));
    EXPECT_THROW(Ranked("TopN", values, Value::Integer(-1)), Error);
    EXPECT_THROW(Ranked("TopN", values, Text("some")), Error);
}

TEST_F(FilterRule, OperatorAndNumberOfValuesAreChecked) {
    EXPECT_THROW(CheckedFilterOperator("Resembles", 1), Error);
    EXPECT_THROW(CheckedFilterOperator("Between", 1), Error);
    EXPECT_THROW(CheckedFilterOperator("Equal", 2), Error);
    EXPECT_EQ(CheckedFilterOperator("topn", 1), FilterOperator::Top);
}

}  // namespace
}  // namespace rdl::expr
