#include "rdl/engine/report_parameter.h"

#include <gtest/gtest.h>

#include "rdl/api/failure.h"

namespace rdl::engine {
namespace {

ReportParameter Definition(ParameterType type) {
    ReportParameter definition;
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

}  // namespace
}  // namespace rdl::engine
