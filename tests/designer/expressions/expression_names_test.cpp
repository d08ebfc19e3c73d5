// SPDX-License-Identifier: GPL-3.0-or-later
// The names that the dialog for expressions offers.
#include "designer/expressions/expression_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace designer {
namespace {

using testing::ElementsAre;

std::vector<std::string> Titles(const std::vector<ExpressionGroup>& groups) {
    std::vector<std::string> titles;
    for (const ExpressionGroup& group : groups) {
        titles.push_back(group.title.toStdString());
    }
    return titles;
}

std::vector<std::string> Shown(const std::vector<ExpressionName>& names) {
    std::vector<std::string> shown;
    for (const ExpressionName& name : names) {
        shown.push_back(name.shown.toStdString() + ": " + name.help.toStdString());
    }
    return shown;
}

std::string Typed(const ExpressionName& name) {
    return QString(name.text).insert(name.cursor, '#').toStdString();
}

TEST(ExpressionNames, AreReadFromTheTablesOfAGuide) {
    const auto tables = TablesOfGuide(
        u"| `No(x)` | not in the list |\n<!-- some -->\n| texts | result |\n| --- | --- |\n"
        u"| `Asc(text)` `Now` | a `number`, by a [format](#formats) |\n"
        u"| `Or(a \\| b)` | either |\n\ntext\n\n| dates | result |\n| --- | --- |\n"
        u"| `New Date()` | a date |\n<!-- end of some -->\n| `After(x)` | not |\n",
        "some");
    ASSERT_THAT(Titles(tables), ElementsAre("Texts", "Dates"));
    EXPECT_THAT(Shown(tables[0].names), ElementsAre("Asc(text): a number, by a format",
                                                    "Now: a number, by a format", "Or(a | b): either"));
    EXPECT_EQ(Typed(tables[0].names[0]), "Asc(#)");
    EXPECT_EQ(tables[0].names[1].row, "Asc(text), Now");
    EXPECT_EQ(Typed(tables[0].names[1]), "Now#");
    EXPECT_EQ(Typed(tables[1].names[0]), "New Date()#");
}

TEST(ExpressionNames, OfTheGuideAreAllThere) {
    const auto groups = NamesOfGuide();
    ASSERT_THAT(Titles(groups), ElementsAre("Globals", "Totals", "Choice and lookup", "Functions"));
    EXPECT_EQ(Typed(groups[0].names[0]), "Globals!PageNumber#");
    EXPECT_EQ(Shown(groups[1].names)[0],
              "Sum(value[, scope]): the sum and the mean of the values that are not Nothing; Nothing if "
              "there is none");
    EXPECT_EQ(Typed(groups[1].names[0]), "Sum(#)");
    const auto texts = groups[3].groups.front();
    EXPECT_EQ(texts.title, "Texts");
    EXPECT_EQ(Shown(texts.names)[0],
              "Asc(text): the Unicode number of the first character; an empty text is an error");
    std::size_t count = 0;
    for (const ExpressionGroup& group : groups[3].groups) {
        EXPECT_FALSE(group.names.empty()) << group.title.toStdString();
        count += group.names.size();
    }
    EXPECT_GT(count, 300U);
}

Document TwoSets() {
    return Document(
        R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
<DataSets>
<DataSet Name="Orders"><Fields><Field Name="ID"><DataField>id</DataField></Field>
<Field Name="Twice"><Value>=1</Value></Field></Fields></DataSet>
<DataSet Name="Rates"><Fields><Field Name="Rate"><DataField>r</DataField></Field>
<Field Name="ID"><DataField>id</DataField></Field></Fields></DataSet>
</DataSets>
<ReportParameters><ReportParameter Name="Year"><Prompt>The year</Prompt></ReportParameter></ReportParameters>
<Code>Public Function Half(value  As Double)
  ' Function Not(x)
  Return value / 2
End Function
 function Now2()
End Function</Code>
<ReportSections><ReportSection><Body><ReportItems><Textbox Name="Title"/><Line Name="Rule"/></ReportItems>
<Height>1in</Height></Body><Width>5in</Width><Page/></ReportSection></ReportSections>
</Report>)");
}

TEST(ExpressionNames, OfAReportAreItsFieldsParametersAndTextBoxes) {
    const Document document = TwoSets();
    const auto groups = NamesOfReport(document);
    ASSERT_THAT(Titles(groups), ElementsAre("Fields", "Parameters", "Text boxes", "Functions of the report"));
    ASSERT_THAT(Titles(groups[0].groups), ElementsAre("Orders", "Rates"));
    EXPECT_THAT(Shown(groups[0].groups[0].names),
                ElementsAre("Fields!ID.Value: A field of Orders",
                            "Fields!Twice.Value: A field of Orders that is computed"));
    EXPECT_THAT(Shown(groups[1].names), ElementsAre("Parameters!Year.Value: The year"));
    EXPECT_THAT(Shown(groups[2].names), ElementsAre("ReportItems!Title.Value: What the text box shows"));
    EXPECT_THAT(Shown(groups[3].names), ElementsAre("Code.Half(value As Double): A function of the report",
                                                    "Code.Now2(): A function of the report"));
    EXPECT_EQ(Typed(groups[3].names[0]), "Code.Half(#)");
    EXPECT_EQ(Typed(groups[3].names[1]), "Code.Now2()#");
}

TEST(ExpressionNames, ToTypeBeginWithThoseOfTheDataSet) {
    const std::vector<ExpressionName> names = NamesToType(TwoSets(), "Rates");
    std::vector<std::string> texts;
    for (const ExpressionName& name : names) {
        texts.push_back(name.text.toStdString());
    }
    EXPECT_EQ(texts[0], "Fields!Rate.Value");
    EXPECT_EQ(texts[1], "Fields!ID.Value");
    EXPECT_THAT(texts, testing::IsSupersetOf({"Fields!Twice.IsMissing", "Parameters!Year.Label",
                                              "ReportItems!Title.Value", "Code.Half()", "User!UserID",
                                              "Globals!PageNumber", "Sum()", "Mid()"}));
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "Fields!ID.Value"), 1);  // both sets have it
}

}  // namespace
}  // namespace designer
