// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the parameters of a report, by mouse and keys.
#include "designer/report_dialogs/parameters_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTableWidget>

#include "../report_text.h"
#include "../shown_dialog.h"

namespace designer {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string ReportWith(const std::string& parameters) {
    return test::ReportText(
        test::SourceText("Sales", "CSV", "Data Source=sales.csv"),
        test::SetText("Regions", "Sales", test::NoCommand,
                      test::FieldText("Code", "code") + test::FieldText("Title", "title")),
        test::SectionsText(test::TextboxText("Head", "=Parameters!Year.Value")), parameters);
}
const std::string Parameters = R"(  <ReportParameters>
    <ReportParameter Name="Year">
      <DataType>Integer</DataType>
      <!-- the last whole one -->
      <DefaultValue>
        <Values>
          <Value>2025</Value>
        </Values>
      </DefaultValue>
      <Prompt>Year</Prompt>
      <UsedInQuery>Auto</UsedInQuery>
    </ReportParameter>
    <ReportParameter Name="Region">
      <Nullable>true</Nullable>
      <DefaultValue><Values><Value xsi:nil="true"/></Values></DefaultValue>
      <Prompt>Region</Prompt>
      <ValidValues>
        <ParameterValues>
          <ParameterValue><Value>N</Value><Label>North</Label></ParameterValue>
          <ParameterValue><Value>S</Value></ParameterValue>
        </ParameterValues>
      </ValidValues>
    </ReportParameter>
  </ReportParameters>
)";
const std::string Cells = R"(  <ReportParametersLayout>
    <GridLayoutDefinition>
      <NumberOfColumns>2</NumberOfColumns>
      <NumberOfRows>1</NumberOfRows>
      <CellDefinitions>
        <CellDefinition>
          <ColumnIndex>0</ColumnIndex>
          <RowIndex>0</RowIndex>
          <ParameterName>Year</ParameterName>
        </CellDefinition>
        <CellDefinition>
          <ColumnIndex>1</ColumnIndex>
          <RowIndex>0</RowIndex>
          <ParameterName>Region</ParameterName>
        </CellDefinition>
      </CellDefinitions>
    </GridLayoutDefinition>
  </ReportParametersLayout>
)";
const std::string Both = ReportWith(Parameters + Cells);

class ParametersDialogTest : public test::ShownDialogTest {
 protected:
    ParametersDialogTest() : m_model(Document(Both)) { Open(); }
    void Open() { Show(std::make_unique<ParametersDialog>(m_model)); }
    void Use(const std::string& report) {
        m_model.SetDocument(Document(report));
        Open();
    }
    void Page(int index) const { The<QTabWidget>("parameterTabs").setCurrentIndex(index); }
    void Pick(const char* list, int index) const {
        auto& box = The<QComboBox>(list);
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_Home);
        for (int step = 0; step < index; ++step) {
            QTest::keyClick(&box, Qt::Key_Down);
        }
    }
    void Press(const char* button) const { QTest::mouseClick(&The<QAbstractButton>(button), Qt::LeftButton); }
    QListWidget& List() const { return The<QListWidget>("parameters"); }
    const std::string& Text() const { return m_model.Source().Text(); }

    DesignModel m_model;
};

TEST_F(ParametersDialogTest, OkWithoutAChangeChangesNothing) {
    EXPECT_EQ(List().count(), 2);
    List().setCurrentRow(1);
    EXPECT_EQ(The<QTableWidget>("defaults").item(0, 0)->text(), "=Nothing");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Text(), Both);
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(ParametersDialogTest, AChangeTouchesOneElement) {
    Page(1);
    TypeCell("defaults", 0, 0, "2026");
    Ok();
    std::string expected = Both;
    expected.replace(expected.find("2025"), 4, "2026");
    EXPECT_EQ(Text(), expected);
    EXPECT_EQ(m_model.Source().UndoName(), "Change Parameters");
}

TEST_F(ParametersDialogTest, AValueOfAnotherTypeIsRefused) {
    Click("nullable");
    Page(1);
    TypeCell("defaults", 0, 0, "abc");
    List().setCurrentRow(1);
    Ok();
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(List().currentRow(), 0);
    EXPECT_EQ(The<QTabWidget>("parameterTabs").currentIndex(), 1);
    EXPECT_EQ(Note("defaultOrigin"), "Type mismatch: Parameter \"Year\": \"abc\" is not a whole number");
    EXPECT_TRUE(The<QTableWidget>("defaults").hasFocus());
    EXPECT_EQ(Text(), Both);
    // Several values are each looked at, also the valid ones.
    Page(0);
    Click("multiple");
    Page(1);
    TypeCell("defaults", 0, 0, "2025;2026");
    Ok();
    EXPECT_EQ(Note("defaultOrigin"),
              "Type mismatch: Parameter \"Year\": \"2025;2026\" is not a whole number");
    TypeCell("defaults", 0, 0, "=Year(Now())");
    Page(2);
    Pick("validOrigin", 1);
    for (int row = 0; row < 2; ++row) {
        The<QTableWidget>("valid").setFocus();
        QTest::keyClick(&The<QTableWidget>("valid"), Qt::Key_Insert);
        TypeCell("valid", row, 0, row == 0 ? "2025" : "soon");
    }
    Page(0);
    Ok();
    EXPECT_EQ(The<QTabWidget>("parameterTabs").currentIndex(), 2);
    EXPECT_EQ(Note("validOrigin"), "Type mismatch: Parameter \"Year\": \"soon\" is not a whole number");
    EXPECT_EQ(The<QTableWidget>("valid").currentRow(), 1);
    TypeCell("valid", 1, 0, "2026");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
}

TEST_F(ParametersDialogTest, APromptThatIsTheNameFollowsIt) {
    Press("add");
    Type("name", "City");
    EXPECT_EQ(The<QLineEdit>("prompt").text(), "City");
    Type("prompt", "Which city?");
    Type("name", "Town");
    EXPECT_EQ(The<QLineEdit>("prompt").text(), "Which city?");
    List().setCurrentRow(0);
    EXPECT_EQ(The<QLineEdit>("prompt").text(), "Year");
    Type("name", "Month");
    EXPECT_EQ(The<QLineEdit>("prompt").text(), "Month");
    Type("prompt", "");
    Type("name", "Week");
    EXPECT_EQ(The<QLineEdit>("prompt").text(), "");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<ReportParameter Name=\"Town\">"));
    EXPECT_THAT(Text(), HasSubstr("<Prompt>Which city?</Prompt>"));
    EXPECT_THAT(Text(), Not(HasSubstr("<Prompt>Month</Prompt>")));
}

TEST_F(ParametersDialogTest, TypingReplacesTheNameThatIsProposed) {
    Page(1);
    Press("add");
    QTest::keyClicks(QApplication::focusWidget(), "Cities");
    EXPECT_EQ(The<QLineEdit>("name").text(), "Cities");
}

TEST_F(ParametersDialogTest, AParameterIsAddedWithTypeValuesAndFlags) {
    Press("add");
    EXPECT_EQ(The<QLineEdit>("name").text(), "Parameter1");
    Type("name", "Cities");
    Type("prompt", "Which cities?");
    Pick("type", 0);
    Click("multiple");
    Click("blank");
    Page(1);
    Pick("defaultOrigin", 1);
    Press("defaultsAdd");
    QTest::keyClicks(QApplication::focusWidget(), "Ulm");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Press("defaultsAdd");
    QTest::keyClicks(QApplication::focusWidget(), "=\"Bonn\"");
    Page(2);
    Pick("validOrigin", 2);
    The<QComboBox>("validSet").setCurrentText("Regions");
    The<QComboBox>("validValue").setCurrentText("Code");
    The<QComboBox>("validLabel").setCurrentText("Title");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("parameters");
    EXPECT_THAT(Text(), HasSubstr(R"(
    <ReportParameter Name="Cities">
      <DataType>String</DataType>
      <DefaultValue>
        <Values>
          <Value>Ulm</Value>
          <Value>="Bonn"</Value>
        </Values>
      </DefaultValue>
      <AllowBlank>true</AllowBlank>
      <Prompt>Which cities?</Prompt>
      <ValidValues>
        <DataSetReference>
          <DataSetName>Regions</DataSetName>
          <ValueField>Code</ValueField>
          <LabelField>Title</LabelField>
        </DataSetReference>
      </ValidValues>
      <MultiValue>true</MultiValue>
    </ReportParameter>
  </ReportParameters>)"));
    EXPECT_THAT(Text(), HasSubstr(R"(
        <CellDefinition>
          <ColumnIndex>0</ColumnIndex>
          <RowIndex>1</RowIndex>
          <ParameterName>Cities</ParameterName>
        </CellDefinition>
      </CellDefinitions>)"));
    EXPECT_THAT(Text(), HasSubstr("<NumberOfRows>2</NumberOfRows>"));
    m_model.Undo();
    EXPECT_EQ(Text(), Both);
}

TEST_F(ParametersDialogTest, AReportWithoutALayoutGetsNone) {
    Use(ReportWith(Parameters));
    Press("add");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<ReportParameter Name=\"Parameter1\">"));
    EXPECT_THAT(Text(), Not(HasSubstr("ReportParametersLayout")));
}

TEST_F(ParametersDialogTest, ExpressionsAndTheLayoutFollowANewName) {
    Type("name", "FiscalYear");
    EXPECT_EQ(List().item(0)->text(), "FiscalYear");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<ReportParameter Name=\"FiscalYear\">"));
    EXPECT_THAT(Text(), HasSubstr("<Value>=Parameters!FiscalYear.Value</Value>"));
    EXPECT_THAT(Text(), HasSubstr("<ParameterName>FiscalYear</ParameterName>"));
    m_model.Undo();
    EXPECT_EQ(Text(), Both);
}

TEST_F(ParametersDialogTest, TwoParametersChangeTheirNames) {
    Type("name", "Tmp");
    List().setCurrentRow(1);
    Type("name", "Year");
    List().setCurrentRow(0);
    Type("name", "Region");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_THAT(Text(), HasSubstr("<Value>=Parameters!Region.Value</Value>"));
    const auto parameters = ReportParametersOf(m_model.Source());
    EXPECT_EQ(parameters[0].name + parameters[0].type, "RegionInteger");
    EXPECT_EQ(parameters[1].name + parameters[1].type, "YearString");
}

TEST_F(ParametersDialogTest, AParameterInUseStays) {
    Press("remove");
    EXPECT_EQ(Note("parameters"), "Year is used and stays. Textbox Head: =Parameters!Year.Value");
    List().setCurrentRow(1);
    Press("remove");
    EXPECT_EQ(List().count(), 1);
    Ok();
    EXPECT_THAT(Text(), Not(HasSubstr("Region\"")));
    EXPECT_THAT(Text(), Not(HasSubstr("<ParameterName>Region</ParameterName>")));
    EXPECT_THAT(Text(), HasSubstr("<ParameterName>Year</ParameterName>"));
}

TEST_F(ParametersDialogTest, TheOrderIsChanged) {
    Press("down");
    EXPECT_EQ(List().currentRow(), 1);
    Ok();
    EXPECT_LT(Text().find("Name=\"Region\""), Text().find("Name=\"Year\""));
    EXPECT_THAT(Text(), HasSubstr("<!-- the last whole one -->"));
    m_model.Undo();
    EXPECT_EQ(Text(), Both);
}

TEST_F(ParametersDialogTest, WhatCannotBeIsRefused) {
    Type("name", "2025");
    Ok();
    EXPECT_EQ(Note("name"),
              "\"2025\" is not a valid name: names begin with a letter or _ and continue with letters, "
              "digits and _");
    Type("name", "region");
    Ok();
    EXPECT_EQ(Note("name"), "Another parameter has the name region");
    EXPECT_TRUE(The<QLineEdit>("name").hasFocus());
    Type("name", "Year");
    Page(2);
    Pick("validOrigin", 1);
    Page(0);
    Ok();
    EXPECT_EQ(The<QTabWidget>("parameterTabs").currentIndex(), 2);
    EXPECT_EQ(Note("validOrigin"), "Add a value, or pick \"Any value\"");
    Pick("validOrigin", 2);
    Ok();
    EXPECT_EQ(Note("validOrigin"), "Pick the data set that has the values");
    The<QComboBox>("validSet").setCurrentText("Regions");
    The<QComboBox>("validValue").setCurrentText("Kode");
    Ok();
    EXPECT_EQ(Note("validOrigin"), "The data set Regions has no field Kode");
    EXPECT_EQ(Text(), Both);
}

TEST_F(ParametersDialogTest, AFaultThatTheEngineFindsIsShown) {
    Page(1);
    TypeCell("defaults", 0, 0, "=Today(");
    Ok();
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_THAT(Note("parameters"), HasSubstr("ReportParameter Year"));
    EXPECT_EQ(Text(), Both);
}

TEST_F(ParametersDialogTest, AnOldReportHasNoSeveralValues) {
    Use(R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2003/10/reportdefinition"/>)");
    EXPECT_FALSE(The<QWidget>("multiple").isEnabled());
    EXPECT_FALSE(The<QWidget>("remove").isEnabled());
    Press("add");
    EXPECT_FALSE(The<QWidget>("multiple").isEnabled());
    EXPECT_TRUE(The<QWidget>("nullable").isEnabled());
}

TEST_F(ParametersDialogTest, AHostileFileDoesNoHarm) {
    std::string many =
        "<ReportParameters><ReportParameter/><ReportParameter Name=\"Year\">"
        "<DataType>Colour</DataType><MultiValue>maybe</MultiValue><DefaultValue/>"
        "<ValidValues><DataSetReference/></ValidValues></ReportParameter>";
    for (int number = 0; number < 3000; ++number) {
        many += "<ReportParameter Name=\"P" + std::to_string(number) + "\"/>";
    }
    const std::string report = ReportWith(many + "</ReportParameters>");
    Use(report);
    EXPECT_EQ(List().count(), 3002);
    List().setCurrentRow(1);
    EXPECT_EQ(The<QComboBox>("type").currentText(), "Colour");
    Ok();
    EXPECT_EQ(Text(), report);
}

}  // namespace
}  // namespace designer
