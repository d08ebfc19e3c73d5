// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "platform/reports/failure.h"
#include "platform/reports/report_folder.h"

namespace reports::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ReportParameterField : public ReportFolder {
 protected:
    std::shared_ptr<RdlReport> Open(const std::string& parameters) const {
        return OpenPeople(Parameters(parameters));
    }
    // Returns the run's error about the parameters; number 0 if it succeeds.
    static RuntimeError RunError(RdlReport& report) {
        return ErrorOf([&] { report.OpenPages(); });
    }
    static std::string Default(const std::string& value) {
        return "<DefaultValue><Values><Value>" + value + "</Value></Values></DefaultValue>";
    }
};

TEST_F(ReportParameterField, TypesHaveTheirCodes) {
    const auto report = Open(Parameter("a", "Integer") + Parameter("b", "Float") + Parameter("c", "Boolean") +
                             Parameter("d", "String") + Parameter("e", "DateTime") +
                             Parameter("f", "String", "<MultiValue>true</MultiValue>"));
    std::vector<int> codes;
    for (int n = 1; n <= report->ParameterFieldCount(); ++n) {
        codes.push_back(report->Parameter(n).ValueType());
    }
    EXPECT_THAT(codes, ElementsAre(7, 7, 9, 12, 16, 22));
}

TEST_F(ReportParameterField, CountsFromOneAndPastTheEndIsSubscript) {
    const auto report = Open(Parameter("only", "String", "<Prompt>Which one?</Prompt>"));
    EXPECT_EQ(report->Parameter(1).Name(), "only");
    EXPECT_EQ(report->Parameter(1).Prompt(), "Which one?");
    EXPECT_EQ(ErrorOf([&] { report->Parameter(0); }).Number(), err::SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { report->Parameter(2); }).Number(), err::SubscriptOutOfRange);
}

TEST_F(ReportParameterField, DefaultsAreTexts) {
    const auto report =
        Open(Parameter("a", "Integer", Default("2025")) + Parameter("b", "Boolean", Default("true")) +
             Parameter("c", "DateTime", Default("2025-03-01")) +
             Parameter("d", "DateTime", Default("2025-03-01T14:30:00")) +
             Parameter("e", "Integer", Default("=Parameters!a.Value + 1")) + Parameter("f", "Float"));
    EXPECT_THAT(report->Parameter(1).DefaultValues(), ElementsAre("2025"));
    EXPECT_THAT(report->Parameter(2).DefaultValues(), ElementsAre("True"));
    EXPECT_THAT(report->Parameter(3).DefaultValues(), ElementsAre("2025-03-01"));
    EXPECT_THAT(report->Parameter(4).DefaultValues(), ElementsAre("2025-03-01 14:30:00"));
    EXPECT_THAT(report->Parameter(5).DefaultValues(), ElementsAre("2026"));
    EXPECT_THAT(report->Parameter(6).DefaultValues(), IsEmpty());
}

TEST_F(ReportParameterField, ValidValuesAreTextsInTheReportsOrder) {
    const auto valid = [](const std::string& values) {
        return "<ValidValues><ParameterValues>" + values + "</ParameterValues></ValidValues>";
    };
    const auto value = [](const std::string& text) {
        return "<ParameterValue><Value>" + text + "</Value><Label>Label of " + text +
               "</Label></ParameterValue>";
    };
    const auto report =
        Open(Parameter("a", "Integer", valid(value("2026") + value("2025"))) +
             Parameter("b", "DateTime", valid(value("2025-03-01"))) +
             Parameter("c", "String", valid(value("=Parameters!d.Value"))) + Parameter("d", "String"));
    EXPECT_THAT(report->Parameter(1).ValidValues(), ElementsAre("2026", "2025"));
    EXPECT_THAT(report->Parameter(2).ValidValues(), ElementsAre("2025-03-01"));
    EXPECT_THAT(report->Parameter(3).ValidValues(), IsEmpty());
    EXPECT_THAT(report->Parameter(4).ValidValues(), IsEmpty());
    EXPECT_THAT(report->Parameter(1).DefaultValues(), IsEmpty());
}

TEST_F(ReportParameterField, DefaultThatBuildsOnAnUnknownValueIsNotShownBeforeTheRun) {
    const std::string query =
        "<DefaultValue><DataSetReference><DataSetName>People</DataSetName><ValueField>Number</ValueField>"
        "</DataSetReference></DefaultValue>";
    const std::string next = Default("=Parameters!a.Value + 1");
    const auto queried = Open(Parameter("a", "Integer", query) + Parameter("b", "Integer", next));
    EXPECT_THAT(queried->Parameter(2).DefaultValues(), IsEmpty());
    EXPECT_EQ(RunError(*queried).Number(), 0);
    const auto asked = Open(Parameter("a", "Integer") + Parameter("b", "Integer", next));
    EXPECT_THAT(asked->Parameter(2).DefaultValues(), IsEmpty());
    const auto null =
        Open(Parameter("a", "Integer", "<Nullable>true</Nullable>") + Parameter("b", "Integer", next));
    EXPECT_THAT(null->Parameter(2).DefaultValues(), ElementsAre("1"));
}

TEST_F(ReportParameterField, DefaultThatNeedsALaterParameterIsAnError) {
    const auto report = Open(Parameter("a", "Integer", Default("=Parameters!b.Value + 1")) +
                             Parameter("b", "Integer", Default("5")));
    EXPECT_THAT(report->Parameter(1).DefaultValues(), IsEmpty());
    EXPECT_THAT(RunError(*report).Description(), HasSubstr("the parameter b is used before it has a value"));
    report->Parameter(1).AddCurrentValue(1.0);
    EXPECT_EQ(RunError(*report).Number(), 0);
}

TEST_F(ReportParameterField, ValueOfAnotherTypeIsATypeMismatchThatNamesIt) {
    const auto report =
        Open(Parameter("Year", "Integer") + Parameter("From", "DateTime") + Parameter("On", "Boolean"));
    const auto error = [&](int n, const report::ParameterValue& value) {
        return ErrorOf([&] { report->Parameter(n).AddCurrentValue(value); });
    };
    EXPECT_EQ(error(1, std::string("abc")).Number(), err::TypeMismatch);
    EXPECT_THAT(error(1, std::string("abc")).Description(), HasSubstr("Parameter \"Year\": \"abc\""));
    EXPECT_EQ(error(1, 2.5).Number(), err::TypeMismatch);
    EXPECT_EQ(error(2, std::string("soon")).Number(), err::TypeMismatch);
    EXPECT_EQ(error(3, std::string("maybe")).Number(), err::TypeMismatch);
    EXPECT_EQ(error(1, 2025.0).Number(), 0);
    EXPECT_EQ(error(1, std::string("2025")).Number(), 0);
    EXPECT_EQ(error(2, DateSerial(2025, 3, 1)).Number(), 0);
    EXPECT_EQ(error(3, true).Number(), 0);
}

TEST_F(ReportParameterField, WithoutValueAndDefaultTheRunNamesIt) {
    const auto report = Open(Parameter("Region", "String"));
    const RuntimeError error = RunError(*report);
    EXPECT_EQ(error.Number(), InvalidParameter);
    EXPECT_THAT(error.Description(), HasSubstr("Parameter \"Region\" has no value and no default"));
    report->Parameter(1).AddCurrentValue(std::string("North"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).ClearCurrentValueAndRange();
    EXPECT_EQ(RunError(*report).Number(), InvalidParameter);
}

TEST_F(ReportParameterField, NullableRunsWithoutValue) {
    const auto report = Open(Parameter("Region", "String", "<Nullable>true</Nullable>"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).AddCurrentValue(Variant());
    EXPECT_EQ(RunError(*report).Number(), 0);
}

TEST_F(ReportParameterField, NullWhereItMustNotBeIsAnError) {
    const auto report = Open(Parameter("Region", "String"));
    report->Parameter(1).AddCurrentValue(Variant());
    EXPECT_EQ(RunError(*report).Number(), InvalidParameter);
}

TEST_F(ReportParameterField, BlankOnlyWhereItIsAllowed) {
    const auto report =
        Open(Parameter("a", "String", "<AllowBlank>true</AllowBlank>") + Parameter("b", "String"));
    report->Parameter(1).AddCurrentValue(std::string());
    report->Parameter(2).AddCurrentValue(std::string("x"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(2).AddCurrentValue(std::string());
    EXPECT_THAT(RunError(*report).Description(), HasSubstr("Parameter \"b\" must not be blank"));
}

TEST_F(ReportParameterField, ValueThatTheReportDoesNotOfferIsAnError) {
    const auto report =
        Open(Parameter("a", "Integer",
                       "<ValidValues><ParameterValues><ParameterValue><Value>1</Value></ParameterValue>"
                       "<ParameterValue><Value>2</Value></ParameterValue></ParameterValues></ValidValues>"));
    report->Parameter(1).AddCurrentValue(2.0);
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).AddCurrentValue(3.0);
    EXPECT_THAT(RunError(*report).Description(), HasSubstr("\"3\""));
}

TEST_F(ReportParameterField, DefaultsAndOffersComeFromAQueryToo) {
    const std::string reference =
        "<DataSetReference><DataSetName>People</DataSetName><ValueField>Name</ValueField></DataSetReference>";
    const auto report = Open(Parameter(
        "who", "String",
        "<DefaultValue>" + reference + "</DefaultValue><ValidValues>" + reference + "</ValidValues>"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).AddCurrentValue(std::string("Zoe"));
    EXPECT_THAT(RunError(*report).Description(), HasSubstr("\"Zoe\""));
}

TEST_F(ReportParameterField, LaterParametersOffersMayDependOnEarlierOnes) {
    const std::string reference =
        "<DataSetReference><DataSetName>People</DataSetName><ValueField>Name</ValueField></DataSetReference>";
    std::string text =
        PeopleReport(Parameters(Parameter("Least", "Integer") +
                                Parameter("who", "String",
                                          "<DefaultValue>" + reference + "</DefaultValue><ValidValues>" +
                                              reference + "</ValidValues>")));
    const std::string filter =
        "<Filters><Filter><FilterExpression>=Fields!Number.Value</FilterExpression>"
        "<Operator>GreaterThan</Operator><FilterValues><FilterValue>=Parameters!Least.Value</FilterValue>"
        "</FilterValues></Filter></Filters></DataSet>";
    text.replace(text.find("</DataSet>"), 10, filter);
    const auto report = OpenRdlReport(Write("people.rpt", text));
    report->Parameter(1).AddCurrentValue(1.0);
    report->Parameter(2).AddCurrentValue(std::string("Bob"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).AddCurrentValue(2.0);
    EXPECT_THAT(RunError(*report).Description(),
                HasSubstr("Parameter \"who\": \"Bob\" is not one of the values that the report allows"));
    const auto unasked = OpenRdlReport(Write("people.rpt", text));
    unasked->Parameter(1).AddCurrentValue(3.0);
    EXPECT_THAT(RunError(*unasked).Description(), HasSubstr("Parameter \"who\" has no value and no default"));
}

TEST_F(ReportParameterField, OfferThatFailsIsAnErrorThatNamesTheParameter) {
    const auto report =
        Open(Parameter("a", "String",
                       Default("x") + "<ValidValues><ParameterValues><ParameterValue><Value>"
                                      "=CInt(\"y\")</Value></ParameterValue></ParameterValues>"
                                      "</ValidValues>"));
    EXPECT_THAT(RunError(*report).Description(), HasSubstr("Parameter \"a\": "));
    EXPECT_EQ(RunError(*report).Number(), InvalidParameter);
}

TEST_F(ReportParameterField, DefaultOutsideOfTheOffersRuns) {
    const auto report =
        Open(Parameter("a", "Integer",
                       Default("9") + "<ValidValues><ParameterValues><ParameterValue><Value>1"
                                      "</Value></ParameterValue></ParameterValues></ValidValues>"));
    EXPECT_EQ(RunError(*report).Number(), 0);
    report->Parameter(1).AddCurrentValue(9.0);
    EXPECT_EQ(RunError(*report).Number(), InvalidParameter);
}

}  // namespace
}  // namespace reports::test
