// SPDX-License-Identifier: GPL-3.0-or-later
// The line with the value of an expression: which rows it is for, and what a user sees while they are read.
#include "designer/expressions/value_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>

#include "../report_text.h"
#include "designer/document/editing.h"
#include "support/form_driver.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

const std::string Endless =
    "with recursive n(i) as (select 1 union all select i + 1 from n) select i as Amount from n where i &lt; "
    "0";

const std::string EmptyTable =
    "<Tablix Name=\"Table\"><TablixBody><TablixColumns><TablixColumn><Width>2cm</Width></TablixColumn>"
    "</TablixColumns><TablixRows><TablixRow><Height>1cm</Height><TablixCells><TablixCell/></TablixCells>"
    "</TablixRow></TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers><TablixMember/></"
    "TablixMembers>"
    "</TablixColumnHierarchy><TablixRowHierarchy><TablixMembers><TablixMember/></TablixMembers>"
    "</TablixRowHierarchy><DataSetName>Slow</DataSetName><ToolTip>=1</ToolTip></Tablix>";

std::string Report(const std::string& parameters = {}) {
    return test::ReportText(
        test::SourceText("Sales", "CSV", "Data Source=sales.csv") +
            test::SourceText("Base", "SQLITE", "Data Source=sales.db"),
        test::SetText(
            "Orders", "Sales", test::NoCommand,
            test::FieldText("Amount", "Amount") + test::ComputedText("Twice", "=1"),
            "      <Filters><Filter><FilterExpression>=1</FilterExpression><Operator>Equal</Operator>"
            "<FilterValues><FilterValue>=1</FilterValue></FilterValues></Filter></Filters>\n") +
            test::SetText(
                "Slow", "Base",
                test::CommandText(Endless) +
                    "<QueryParameters><QueryParameter Name=\"@a\"><Value>=1</Value></QueryParameter>"
                    "</QueryParameters>",
                test::FieldText("Amount", "Amount")),
        test::SectionsText("<Rectangle Name=\"Plain\"><ToolTip>=1</ToolTip></Rectangle>" + EmptyTable),
        parameters);
}

class ValueLineTest : public testing::Test, protected fakes::FormDriver {
 protected:
    explicit ValueLineTest(const std::string& report = Report()) : m_model(Document(report)) {
        WriteBytes(m_folder / "sales.csv", "Amount\n20\n22\n");
        WriteBytes(m_folder / "sales.db", "");
        m_model.SetFile(m_folder / "sales.rdl");
    }
    // Writes values to the element at a path below the first element of this name.
    ExpressionCheck::Write At(const std::string& name, const std::string& path) const {
        return [name, path](Document& copy, const std::string& value) {
            SetText(copy, ElementNamed(copy, name), path, value);
        };
    }
    static ElementId ElementNamed(const Document& document, const std::string& name) {
        for (int index = 0;; ++index) {
            if (document.Attribute(document.IdAt(index), "Name") == name) {
                return document.IdAt(index);
            }
        }
    }
    std::string Place(const std::string& name, const std::string& path) const {
        const ValuePlace place = PlaceOf(m_model, At(name, path));
        return place.dataSet + (place.isOfData ? ", of the data" : "");
    }
    void Show(const std::string& name, const std::string& path) {
        m_line = std::make_unique<ValueLine>(m_model, At(name, path));
        m_line->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_line.get()));
    }
    QWidget* Form() const override { return m_line.get(); }
    std::string Text() const { return The<QLabel>("value").text().toStdString(); }
    void WaitFor(const std::string& text) const {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Text() == text; }, 20'000)) << Text();
    }

    const TemporaryFolder m_folder;
    DesignModel m_model;
    std::unique_ptr<ValueLine> m_line;
};

class ValueWithoutAParameter : public ValueLineTest {
 protected:
    ValueWithoutAParameter()
        : ValueLineTest(
              Report("  <ReportParameters><ReportParameter Name=\"Year\"><DataType>Integer</DataType>"
                     "<Prompt>Year</Prompt></ReportParameter></ReportParameters>\n")) {}
};

TEST_F(ValueLineTest, ThePlaceDecidesWhichRowsItIsFor) {
    EXPECT_EQ(Place("Plain", "ToolTip"), "");
    EXPECT_EQ(Place("Table", "ToolTip"), "Slow");
    EXPECT_EQ(Place("Twice", "Value"), "Orders, of the data");
    EXPECT_EQ(Place("Orders", "Filters/Filter/FilterExpression"), "Orders, of the data");
    EXPECT_EQ(Place("@a", "Value"), ", of the data");
    EXPECT_EQ(Place("Base", "ConnectionProperties/ConnectString"), ", of the data");
}

TEST_F(ValueLineTest, AComputedFieldIsThatOfTheFirstRow) {
    Show("Twice", "Value");
    m_line->Compute("=2 * Fields!Amount.Value");
    WaitFor("40 (Whole number); first row of Orders, totals of all its rows (2)");
}

TEST_F(ValueLineTest, AFilterIsComputedForTheRowsThatItLeaves) {
    Show("Orders", "Filters/Filter/FilterExpression");
    m_line->Compute("=IIf(Fields!Amount.Value > 20, 1, 0)");
    WaitFor("1 (Whole number); first row of Orders, totals of all its rows (1)");
}

TEST_F(ValueLineTest, RowsThatTakeLongAreStopped) {
    Show("Table", "ToolTip");
    EXPECT_FALSE(The<QAbstractButton>("compute").isEnabled());
    m_line->Compute("=Fields!Amount.Value");
    WaitFor("The rows are read...");
    EXPECT_EQ(Caption("compute"), "Sto&p");
    Click("compute");
    WaitFor("Stopped");
    EXPECT_EQ(Caption("compute"), "Com&pute");
    m_line->Compute("=Sum(Fields!Amount.Value)");  // is not begun by itself any more
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Caption("compute"), "Com&pute");
    m_line->Compute("=1 + 1");
    Click("compute");
    WaitFor("2 (Whole number)");
}

TEST_F(ValueLineTest, WhatIsTypedMeanwhileComesAfterIt) {
    Show("Table", "ToolTip");
    m_line->Compute("=Fields!Amount.Value");
    WaitFor("The rows are read...");
    m_line->Compute("=1 + 2");
    WaitFor("3 (Whole number)");
}

TEST_F(ValueLineTest, TheWindowMayCloseWhileRowsAreRead) {
    Show("Table", "ToolTip");
    m_line->Compute("=Fields!Amount.Value");
    WaitFor("The rows are read...");
    m_line.reset();
}

TEST_F(ValueWithoutAParameter, TheParameterIsNamed) {
    Show("Plain", "ToolTip");
    m_line->Compute("=Parameters!Year.Value");
    WaitFor("No value: Parameter \"Year\" has no value and no default");
    m_line->Compute("=2 + 2");
    WaitFor("4 (Whole number)");
}

}  // namespace
}  // namespace designer
