// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for expressions, by mouse and keys.
#include "designer/expressions/expression_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <algorithm>

#include "support/form_driver.h"

namespace designer {
namespace {

std::string Report(const std::string& other = {}) {
    return R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <DataSources>
    <DataSource Name="Sales">
      <ConnectionProperties>
        <DataProvider>CSV</DataProvider>
        <ConnectString>Data Source=sales.csv</ConnectString>
      </ConnectionProperties>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Orders">
      <Query>
        <DataSourceName>Sales</DataSourceName>
        <CommandText/>
      </Query>
      <Fields>
        <Field Name="Amount">
          <DataField>Amount</DataField>
        </Field>
      </Fields>
    </DataSet>
  </DataSets>
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Textbox Name="Total">
            <Paragraphs><Paragraph><TextRuns><TextRun><Value>=1</Value></TextRun></TextRuns></Paragraph></Paragraphs>
          </Textbox>
)" + other +
           R"(        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
      <Page/>
    </ReportSection>
  </ReportSections>
</Report>
)";
}

class ExpressionDialogTest : public testing::Test, protected fakes::FormDriver {
 protected:
    explicit ExpressionDialogTest(const std::string& report = Report()) : m_model(Document(report)) {
        Open();
    }

    void Open() {
        const auto& items = m_model.Items().items;
        const ElementId box = std::find_if(items.begin(), items.end(), [](const ReportItem& item) {
                                  return item.name == "Total";
                              })->id;
        const std::vector<PropertyRow> rows = PropertyRowsOf(m_model, box);
        const auto value = std::find_if(rows.begin(), rows.end(),
                                        [](const PropertyRow& row) { return row.property->name == "Value"; });
        m_dialog = std::make_unique<ExpressionDialog>(m_model, std::vector{box}, *value);
        m_dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    QWidget* Form() const override { return m_dialog.get(); }
    void Ok() {
        QTest::mouseClick(m_dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
    }
    std::string Text() const { return The<QPlainTextEdit>("expression").toPlainText().toStdString(); }
    std::string Note() const { return The<QLabel>("expressionNote").text().toStdString(); }
    // What is marked as wrong.
    std::string Marked() const {
        const auto marks = The<QPlainTextEdit>("expression").extraSelections();
        return marks.isEmpty() ? "" : marks.front().cursor.selectedText().toStdString();
    }
    void WaitForNote() const {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Note().empty(); }));
    }
    std::string Written() const {
        const std::string& text = m_model.Source().Text();
        const std::size_t begin = text.find("<TextRun><Value>") + 16;
        return text.substr(begin, text.find("</Value>", begin) - begin);
    }
    void Find(const char* text) {
        Type("filter", text);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "filter");
    }

    DesignModel m_model;
    std::unique_ptr<ExpressionDialog> m_dialog;
};

class ExpressionInAFaultyReport : public ExpressionDialogTest {
 protected:
    ExpressionInAFaultyReport()
        : ExpressionDialogTest(
              Report("          <Textbox Name=\"Bad\"><Paragraphs><Paragraph><TextRuns><TextRun>"
                     "<Value>=Foo(</Value></TextRun></TextRuns></Paragraph></Paragraphs>"
                     "</Textbox>\n")) {}
};

TEST_F(ExpressionDialogTest, WhatIsTypedIsCheckedAndItsFaultIsMarked) {
    EXPECT_EQ(Text(), "=1");
    Type("expression", "=1 + Amuont");
    WaitForNote();
    EXPECT_EQ(Note(), "Textbox Total, Value: the name \"Amuont\" is not known, at character 6");
    EXPECT_EQ(Marked(), "A");
    QGuiApplication::clipboard()->setText(QString::fromUtf8("=\"\u00FC\u4E2D\" + Bmuont"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Note().ends_with(" 9"); }));
    EXPECT_EQ(Note(), "Textbox Total, Value: the name \"Bmuont\" is not known, at character 9");
    EXPECT_EQ(Marked(), "B");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "expression");
    Ok();
    EXPECT_TRUE(m_dialog->isVisible());
    Type("expression", "=1 + 2");
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Written(), "=1 + 2");
    EXPECT_EQ(m_model.Source().UndoName(), "Change Value of Total");
}

TEST_F(ExpressionDialogTest, ANameIsFoundAndInsertedByKeys) {
    Type("expression", "");
    Find("sum(value");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Text(), "=Sum()");
    Find("amount");
    EXPECT_EQ(The<QTreeWidget>("names").currentItem()->text(0), "Fields!Amount.Value");
    EXPECT_EQ(The<QLabel>("help").text(), "Fields!Amount.Value\nA field of Orders");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Text(), "=Sum(Fields!Amount.Value)");
    Ok();
    EXPECT_EQ(Written(), "=Sum(Fields!Amount.Value)");
}

TEST_F(ExpressionDialogTest, TheFilterAlsoFindsTheHelp) {
    Find("reverse order");
    EXPECT_EQ(The<QTreeWidget>("names").currentItem()->text(0), "StrReverse(text)");
    Find("no such name");
    int shown = 0;
    for (QTreeWidgetItemIterator entry(&The<QTreeWidget>("names"), QTreeWidgetItemIterator::NotHidden);
         *entry; ++entry) {
        ++shown;
    }
    EXPECT_EQ(shown, 0);
}

TEST_F(ExpressionDialogTest, AFieldThatIsNotThereIsNamed) {
    Type("expression", "=Fields!Amuont.Value");
    Ok();
    EXPECT_EQ(Note(),
              "Textbox Total, Value: there is no field \"Amuont\" in data set \"Orders\", at character 9");
    EXPECT_EQ(Written(), "=1");
}

TEST_F(ExpressionDialogTest, WhatStaysAsItIsChangesNothing) {
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(m_model.Source().Text(), Report());
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(ExpressionInAFaultyReport, NothingIsCheckedAndThatIsTold) {
    Type("expression", "=1 +");
    WaitForNote();
    EXPECT_EQ(Note(),
              "Not checked, as the report has another fault: Textbox Bad, Value: the name \"Foo\" is not "
              "known, at character 2");
    Ok();
    EXPECT_EQ(Written(), "=1 +");
}

}  // namespace
}  // namespace designer
