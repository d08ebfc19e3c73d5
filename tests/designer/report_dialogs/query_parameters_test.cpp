// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a query: those that it asks for, and their values for a test.
#include "designer/report_dialogs/query_parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTabBar>

#include "data_dialogs.h"
#include "designer/model/report_data.h"
#include "designer/model/report_parameters.h"
#include "designer/report_dialogs/data_set_dialog.h"

namespace designer {
namespace {

using test::Sales;
using testing::ElementsAre;

class QueryParametersTest : public test::DataDialogsTest {};

TEST_F(QueryParametersTest, AParameterOfTheQueryHasAValueForATest) {
    std::string text = Sales;
    const std::string command = "<CommandText>select id from orders</CommandText>";
    text.replace(text.find(command), command.size(),
                 "<QueryParameters><QueryParameter Name=\"@Day\"><Value>=Parameters!Day.Value</Value>"
                 "</QueryParameter></QueryParameters><CommandText>select id, day from orders where day = @Day"
                 "</CommandText>");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 0; parameters without a test value are Null");
    Page(1);
    TypeCell("queryParameters", 0, 2, "2025-03-02");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Day", "=Parameters!Day.Value"}));
    EXPECT_THAT(SetsOf(Report())[0].fields,
                ElementsAre(ReportField{.name = "Number", .column = "id", .typeName = "System.Int64"},
                            ReportField{.name = "day", .column = "day", .typeName = "System.DateTime"}));
    EXPECT_EQ(Report().Text().find("2025-03-02"), std::string::npos);
}

TEST_F(QueryParametersTest, TheQueryIsRunByKeysOnEveryPage) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least");
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
        const Qt::Key key = modifiers ? Qt::Key_Return : Qt::Key_F5;
        Page(1);
        auto& cells = The<QTableWidget>("queryParameters");
        cells.setFocus();
        cells.setCurrentCell(0, 2);
        QTest::keyClick(&cells, Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), "2");
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);  // what is being typed counts
        EXPECT_TRUE(m_dialog->isVisible());
        EXPECT_EQ(The<QTabWidget>("setTabs").currentIndex(), 0);
        EXPECT_EQ(Note("query"), "Rows: 1");
        Type("query", "select id from orders where id > @Least - 1");
        The<QTabWidget>("setTabs").tabBar()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        EXPECT_EQ(Note("query"), "Rows: 1");
        EXPECT_TRUE(The<QTabWidget>("setTabs").tabBar()->hasFocus());
        Type("query", "select id from orders where id >= @Least");
    }
}

TEST_F(QueryParametersTest, EnterInATableGoesToTheNextCell) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least and id < @Most");
    Page(1);
    auto& cells = The<QTableWidget>("queryParameters");
    TypeCell("queryParameters", 0, 1, "=1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(cells.currentRow() * 10 + cells.currentColumn(), 2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(cells.currentRow() * 10 + cells.currentColumn(), 10);
    for (int press = 0; press < 4; ++press) {  // nothing comes after the last cell
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    EXPECT_EQ(cells.currentRow() * 10 + cells.currentColumn(), 12);
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(QueryParametersTest, AQueryThatIsRunGetsTheParametersThatItNames) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where day = @Day and id > @Least or day = @day -- @no");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 0; parameters without a test value are Null");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Day|=Parameters!Day.Value|, @Least|=Parameters!Least.Value|");
    EXPECT_EQ(Note("queryParameters"),
              "New parameters of the report: Day, Least. They are texts; Report, Parameters gives them "
              "another type.");
    TypeCell("queryParameters", 0, 2, "2025-03-02");
    TypeCell("queryParameters", 1, 2, "1");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Day", "=Parameters!Day.Value"},
                            QueryParameter{1, "@Least", "=Parameters!Least.Value"}));
    const std::vector<ReportParameter> made = ReportParametersOf(Report());
    ASSERT_EQ(made.size(), 2U);
    EXPECT_EQ(made[1].name + " " + made[1].type + " " + made[1].prompt, "Least String Least");
    EXPECT_EQ(Report().UndoCount(), 1U);
    m_model.Undo();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(QueryParametersTest, AQueryGetsItsParametersOnOkToo) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id > ? or id = ?");
    Click("takesFields");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "Parameter1", "=Parameters!Parameter1.Value"},
                            QueryParameter{1, "Parameter2", "=Parameters!Parameter2.Value"}));
    Open<DataSetDialog>();
    Ok();
    EXPECT_EQ(Report().UndoCount(), 1U);
}

TEST_F(QueryParametersTest, AParameterOfTheReportIsUsedWithItsDefault) {
    std::string text = Sales;
    text.insert(text.find("</Report>"),
                "<ReportParameters><ReportParameter Name=\"least\"><DataType>Integer</DataType><DefaultValue>"
                "<Values><Value>2</Value></Values></DefaultValue></ReportParameter></ReportParameters>");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Least|=Parameters!least.Value|2");
    EXPECT_EQ(Note("queryParameters"), "");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_EQ(ReportParametersOf(Report()).size(), 1U);
}

TEST_F(QueryParametersTest, AParameterThatTheUserRemovesDoesNotComeAgain) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least and id < @Most");
    Page(1);
    The<QTableWidget>("queryParameters").setFocus();
    The<QTableWidget>("queryParameters").setCurrentCell(0, 0);
    QTest::keyClick(&The<QTableWidget>("queryParameters"), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(
        Note("queryParameters"),
        "New parameters of the report: Most. They are texts; Report, Parameters gives them another type.");
    Page(0);
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Most|=Parameters!Most.Value|");
    // What the query does not ask for any more goes, and is new when it comes again.
    Page(0);
    Type("query", "select id from orders");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "");
    Page(0);
    Type("query", "select id from orders where id >= @Least");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Least|=Parameters!Least.Value|");
    TypeCell("queryParameters", 0, 1, "=1");
    EXPECT_EQ(Note("queryParameters"), "");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Least", "=1"}));
    EXPECT_TRUE(ReportParametersOf(Report()).empty());
}

TEST_F(QueryParametersTest, ATestValueHasTheTypeOfTheParameter) {
    const Document report(R"(<Report xmlns="urn:a"><ReportParameters>
        <ReportParameter Name="Year"><DataType>Integer</DataType>
          <DefaultValue><Values><Value>2025</Value></Values></DefaultValue></ReportParameter>
        <ReportParameter Name="Day"><DataType>DateTime</DataType></ReportParameter>
        <ReportParameter Name="Zip"/></ReportParameters></Report>)");
    EXPECT_EQ(TestValue(report, "=Parameters!Year.Value", "7"), "=7");
    EXPECT_EQ(TestValue(report, "=Parameters!Year.Value", "seven"), "seven");
    EXPECT_EQ(TestValue(report, "=Parameters!Day.Value", "2025-03-01"), "=CDate(\"2025-03-01\")");
    EXPECT_EQ(TestValue(report, "=parameters!zip.value", "01234"), "01234");
    EXPECT_EQ(TestValue(report, "=1+1", "2"), "=2");
    EXPECT_EQ(TestValue(report, "=1+1", "=3"), "=3");
    EXPECT_EQ(TestValue(report, "=1+1", " "), "");
    EXPECT_EQ(TestValue(report, "=Parameters!Year.Value", "inf"), "inf");
    EXPECT_EQ(TestValue(report, "=1+1", "nan"), "nan");
    EXPECT_EQ(FirstTestValue(report, "=Parameters!Year.Value"), "2025");
    EXPECT_EQ(FirstTestValue(report, "=Parameters!Day.Value"), "");
}

}  // namespace
}  // namespace designer
