// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/report_parameter.h"

#include <gtest/gtest.h>

#include "rdl/api/failure.h"

namespace rdl::engine {
namespace {

ReportParameter Definition(ParameterType type, bool takesSeveral = false) {
    ReportParameter definition;
    definition.multiValue = takesSeveral;
    definition.name = "a";
    definition.type = type;
    return definition;
}

std::string RefusalOf(Parameter& parameter, const std::string& text) {
    try {
        parameter.Add(Value::Text(text));
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.stage(), Stage::Parameter);
        return failure.what();
    }
    return "taken";
}

TEST(ReportParameterState, WholeNumbersAreExact) {
    const ReportParameter definition = Definition(ParameterType::Integer);
    ReportParameterState parameter(definition);
    parameter.Add(Value::Text("9007199254740993"));
    EXPECT_EQ(parameter.Current()[0].AsInteger(), 9007199254740993);
    parameter.Add(Value::Integer(-9223372036854775807));
    EXPECT_EQ(parameter.Current()[0].AsInteger(), -9223372036854775807);
    EXPECT_EQ(RefusalOf(parameter, "9223372036854775808"),
              "Parameter \"a\": \"9223372036854775808\" is not a whole number");
}

TEST(ReportParameterState, CommaThatPartsNoThousandsIsAnErrorInsteadOfAnotherNumber) {
    const ReportParameter definition = Definition(ParameterType::Float);
    ReportParameterState parameter(definition);
    for (const std::string text : {"1,5", "1,50", "1234,567", "1,2345", "1.234,567", "1,234,5"}) {
        EXPECT_EQ(RefusalOf(parameter, text), "Parameter \"a\": \"" + text + "\" is not a number");
    }
    parameter.Add(Value::Text("-1,234,567.5"));
    EXPECT_DOUBLE_EQ(parameter.Current()[0].AsDouble(), -1234567.5);
}

TEST(ReportParameterState, SeveralValuesOnlyWhereThereMayBe) {
    const ReportParameter several = Definition(ParameterType::Integer, true);
    const ReportParameter single = Definition(ParameterType::Integer);
    ReportParameterState many(several), one(single);
    for (const double value : {1.0, 2.0}) {
        many.Add(Value::Real(value));
        one.Add(Value::Real(value));
    }
    EXPECT_EQ(many.Current().size(), 2u);
    ASSERT_EQ(one.Current().size(), 1u);
    EXPECT_EQ(one.Current()[0].AsInteger(), 2);
}

TEST(ReportParameterState, StoredTextMayHoldSeveralValues) {
    const ReportParameter integers = Definition(ParameterType::Integer, true);
    const ReportParameter strings = Definition(ParameterType::String, true);
    ReportParameterState numbers(integers), texts(strings);
    numbers.Add(Value::Text("1, 2;30"));
    ASSERT_EQ(numbers.Current().size(), 3u);
    EXPECT_EQ(numbers.Current()[2].AsInteger(), 30);
    texts.Add(Value::Text("Lima, Peru; Oslo"));
    ASSERT_EQ(texts.Current().size(), 2u);
    EXPECT_EQ(texts.Current()[0].AsText(), "Lima, Peru");
}

}  // namespace
}  // namespace rdl::engine
