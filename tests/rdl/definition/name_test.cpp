// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/definition/identifier.h"
#include "rdl/definition/rdl_text.h"

namespace rdl::test {
namespace {

const std::string Rule = "this is not a name: a letter or _ must come first, then letters, digits and _";
// What an insert of this name into a table of parameters would read.
const std::string Evil = "x',(select Password from ReportScheduler where Password&lt;&gt;''))--";
const std::string EvilShown = "x\",(select Password from ReportScheduler where Password<>\"\")...";

std::string Refused(const std::string& kind) {
    return "sales.rpt, line 2: " + kind + " \"" + EvilShown + "\": " + Rule;
}

std::string Named(const std::string& element, const std::string& inner = "") {
    return "<" + element + " Name=\"" + Evil + "\">" + inner + "</" + element + ">";
}

std::string DataSetWith(const std::string& inner) {
    return Report("<DataSets><DataSet Name=\"D\">" + inner + "</DataSet></DataSets><Body/>");
}

TEST(ReportNames, ParameterThatIsNoIdentifierIsRefused) {
    EXPECT_EQ(ErrorOf(Report("<ReportParameters>" + Named("ReportParameter") + "</ReportParameters><Body/>")),
              Refused("ReportParameter"));
}

TEST(ReportNames, DataNamesThatAreNoIdentifiersAreRefused) {
    EXPECT_EQ(ErrorOf(Report("<DataSets>" + Named("DataSet") + "</DataSets><Body/>")), Refused("DataSet"));
    EXPECT_EQ(
        ErrorOf(Report("<DataSources>" + Named("DataSource", "<DataSourceReference>r</DataSourceReference>") +
                       "</DataSources><Body/>")),
        Refused("DataSource"));
    EXPECT_EQ(ErrorOf(DataSetWith("<Fields>" + Named("Field", "<DataField>a</DataField>") + "</Fields>")),
              Refused("Field"));
}

TEST(ReportNames, ItemsGroupsVariablesAndImagesThatAreNoIdentifiersAreRefused) {
    EXPECT_EQ(ErrorOf(WithItems(Named("Textbox", "<Value>x</Value>"))), Refused("Textbox"));
    EXPECT_EQ(ErrorOf(WithItems("<List Name=\"L\">" + Named("Grouping") + "</List>")), Refused("Grouping"));
    EXPECT_EQ(ErrorOf(Report("<Variables>" + Named("Variable", "<Value>1</Value>") + "</Variables><Body/>")),
              Refused("Variable"));
    EXPECT_EQ(ErrorOf(Report("<EmbeddedImages>" + Named("EmbeddedImage") + "</EmbeddedImages><Body/>")),
              Refused("EmbeddedImage"));
}

TEST(ReportNames, NamesThatDifferInCaseOnlyAreRefused) {
    const auto two = [](const std::string& kind) {
        return "sales.rpt, line 2: " + kind + " YEAR: there is \"Year\" as well, and names are compared " +
               "without regard to case";
    };
    EXPECT_EQ(
        ErrorOf(Report("<ReportParameters><ReportParameter Name=\"Year\"/><ReportParameter Name=\"YEAR\"/>"
                       "</ReportParameters><Body/>")),
        two("ReportParameter"));
    EXPECT_EQ(ErrorOf(DataSetWith("<Fields><Field Name=\"Year\"><DataField>a</DataField></Field>"
                                  "<Field Name=\"YEAR\"><DataField>b</DataField></Field></Fields>")),
              two("Field"));
    EXPECT_EQ(ErrorOf(Report("<DataSets><DataSet Name=\"Year\"/><DataSet Name=\"YEAR\"/></DataSets><Body/>")),
              two("DataSet"));
}

TEST(ReportNames, NameThatStandsTwiceIsRefused) {
    EXPECT_EQ(ErrorOf(Report("<ReportParameters><ReportParameter Name=\"a\"/><ReportParameter Name=\"a\"/>"
                             "</ReportParameters><Body/>")),
              "sales.rpt, line 2: ReportParameter a: there are two of this name");
    EXPECT_EQ(ErrorOf(DataSetWith("<Fields><Field Name=\"a\"/><Field Name=\"a\"/></Fields>")),
              "sales.rpt, line 2: Field a: there are two of this name");
    EXPECT_EQ(ErrorOf(Report("<DataSets><DataSet Name=\"A\"><Fields><Field Name=\"a\"/></Fields></DataSet>"
                             "<DataSet Name=\"B\"><Fields><Field Name=\"a\"/></Fields></DataSet></DataSets>"
                             "<Body/>")),
              "");
}

TEST(ReportNames, NamesOfColumnsAndQueryParametersAreFree) {
    EXPECT_EQ(
        ErrorOf(DataSetWith("<Fields><Field Name=\"First_Name\"><DataField>First Name's</DataField></Field>"
                            "</Fields><Query><DataSourceName>S</DataSourceName><CommandText>x</CommandText>"
                            "<QueryParameters><QueryParameter Name=\"@Year 2\"><Value>1</Value>"
                            "</QueryParameter></QueryParameters></Query>")),
        "");
}

TEST(ReportNames, LettersOfEveryScriptMakeAName) {
    for (const char* name :
         {"a", "_", "Sales2024", "Größe", "Łódź", "売上", "имя_2", "e\xCC\x81t\xC3\xA9", "\xF0\x9D\x90\x80",
          "a\xE2\x80\xBF"
          "b"}) {
        EXPECT_TRUE(IsIdentifier(name)) << name;
    }
}

TEST(ReportNames, WhatIsNoLetterMakesNone) {
    for (const char* name : {"", "1a", "a b", "a-b", "a.b", "a'b", "a\"b", "a;b", "a\\b", "a/b", "@a",
                             "\xCC\x81"
                             "a",
                             " a",
                             "a\xC2\xA0"
                             "b",
                             "a\xE2\x80\x8B"
                             "b",
                             "a\xFF", "\xE2\x82\xAC"}) {
        EXPECT_FALSE(IsIdentifier(name)) << name;
    }
}

}  // namespace
}  // namespace rdl::test
