// SPDX-License-Identifier: GPL-3.0-or-later
// What a hand expects of the panes beside the canvas.
#include <QDialog>
#include <QDockWidget>
#include <QHeaderView>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeWidget>

#include "../graphics/sales_report.h"
#include "../tables/small_tables.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

std::string TextBox(const std::string& name, const std::string& place) {
    return "<Textbox Name=\"" + name +
           "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value /><Style /></TextRun></TextRuns><Style />"
           "</Paragraph></Paragraphs>" +
           place + "<Height>1cm</Height><Width>4cm</Width></Textbox>";
}

// A list of sales with a text box in it, and one beside it.
std::string ListReport() {
    const std::string rectangle = "<Rectangle Name=\"Card\"><ReportItems>" +
                                  TextBox("Inside", "<Top>1cm</Top><Left>1cm</Left>") +
                                  "</ReportItems></Rectangle>";
    return SalesReport(
        "<Tablix Name=\"L\"><TablixBody><TablixColumns><TablixColumn><Width>8cm</Width></TablixColumn>"
        "</TablixColumns><TablixRows><TablixRow><Height>3cm</Height><TablixCells><TablixCell><CellContents>" +
        rectangle +
        "</CellContents></TablixCell></TablixCells></TablixRow></TablixRows></TablixBody>"
        "<TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers></TablixColumnHierarchy>"
        "<TablixRowHierarchy><TablixMembers><TablixMember><Group Name=\"Details\"/></TablixMember>"
        "</TablixMembers></TablixRowHierarchy><DataSetName>Sales</DataSetName><Top>1cm</Top></Tablix>" +
        TextBox("Free", "<Top>6cm</Top><Left>1cm</Left>"));
}

class PaneHabits : public WindowTest {
 protected:
    using WindowTest::WindowTest;
    void DoubleClick(const char* pane, const QString& text) {
        auto& tree = Find<QTreeWidget>(pane);
        tree.scrollToItem(Row(pane, text));
        const QPoint at = tree.visualItemRect(Row(pane, text)).center();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, at);
        Settle();
    }
    std::string GroupRows() {
        std::string text;
        for (QTreeWidgetItemIterator row(&Find<QTreeWidget>("groups")); *row; ++row) {
            text += std::string((*row)->parent() ? 1 : 0, ' ') + (*row)->text(0).toStdString() + "|";
        }
        return text;
    }
};

class SalesHabits : public PaneHabits {
 protected:
    SalesHabits() : PaneHabits(ListReport()) {}
};

TEST_F(SalesHabits, ADoubleClickOnADataSetOpensItAndKeepsItsFields) {
    EXPECT_EQ(Opened([this] { DoubleClick("reportData", "Sales"); }), "dataSetDialog");
    EXPECT_TRUE(Row("reportData", "Sales")->isExpanded());
    // A heading has nothing to open: it folds.
    DoubleClick("reportData", "Built-in fields");
    EXPECT_FALSE(Row("reportData", "Built-in fields")->isExpanded());
}

TEST_F(SalesHabits, ADoubleClickInTheOutlineKeepsItOpen) {
    DoubleClick("outline", "Body");
    EXPECT_TRUE(Row("outline", "Body")->isExpanded());
    EXPECT_TRUE(Canvas().hasFocus());
}

TEST_F(SalesHabits, ADoubleClickOnAFieldFillsTheSelectedTextBox) {
    Click(At("Free"));
    DoubleClick("reportData", "City");
    EXPECT_EQ(Value("Free"), "=First(Fields!City.Value, \"Sales\")");
    EXPECT_EQ(UndoName(), "Show City");
    EXPECT_EQ(Selected(), "Free");
    DoubleClick("reportData", "Amount");
    EXPECT_EQ(Value("Free"), "=Sum(Fields!Amount.Value, \"Sales\")");
    Click(At("Inside"));
    DoubleClick("reportData", "City");
    EXPECT_EQ(Value("Inside"), "=Fields!City.Value");
    EXPECT_EQ(Model().Source().UndoCount(), 3u);
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
}

TEST_F(SalesHabits, AFieldIsDroppedOnATextBox) {
    for (const auto& [name, value] : {std::pair("Free", "=First(Fields!City.Value, \"Sales\")"),
                                      std::pair("Inside", "=Fields!City.Value")}) {
        DropField("City", At(name));
        EXPECT_EQ(Value(name), value);
        EXPECT_EQ(Selected(), name);
    }
}

class TableHabits : public PaneHabits {
 protected:
    TableHabits()
        : PaneHabits(Placed(Report(
              ListTablix("<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember><TablixMember>"
                         "<Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
                         "</GroupExpression></GroupExpressions></Group><TablixMembers><TablixMember>"
                         "<Group Name=\"Details\"/></TablixMember></TablixMembers></TablixMember>")))) {}
};

TEST_F(TableHabits, ADoubleClickOnAGroupKeepsWhatIsInIt) {
    Click(At("A"));
    const QString group = "ByRegion  =Fields!Region.Value";
    EXPECT_EQ(Opened([&] { DoubleClick("groups", group); }), "groupPropertiesDialog");
    EXPECT_TRUE(Row("groups", group)->isExpanded());
    EXPECT_EQ(Opened([&] { DoubleClick("groups", "Rows"); }), "none");
    auto& groups = Find<QTreeWidget>("groups");
    groups.setCurrentItem(Row("groups", "Details"));
    EXPECT_EQ(Opened([&] { QTest::keyClick(&groups, Qt::Key_Return); }), "groupPropertiesDialog");
}

TEST_F(TableHabits, GroupsAreThoseOfWhatIsSelected) {
    Click(At("A"));
    EXPECT_EQ(GroupRows(), "Rows| ByRegion  =Fields!Region.Value| Details|Columns|");
    Model().Select({BodyOf(Model().Source())});
    Settle();
    EXPECT_EQ(GroupRows(), "");
}

std::string ChartReport() {
    const auto hierarchy = [](const std::string& side, const std::string& group) {
        return "<Chart" + side + "Hierarchy><ChartMembers><ChartMember><Group Name=\"" + side +
               "Group\"><GroupExpressions><GroupExpression>=Fields!" + group +
               ".Value</GroupExpression></GroupExpressions></Group><Label>=Fields!" + group +
               ".Value</Label></ChartMember></ChartMembers></Chart" + side + "Hierarchy>";
    };
    return SalesReport(
        "<Chart Name=\"C\">" + hierarchy("Category", "City") + hierarchy("Series", "Region") +
        "<ChartData><ChartSeriesCollection><ChartSeries Name=\"Amount\"><ChartDataPoints><ChartDataPoint>"
        "<ChartDataPointValues><Y>=Sum(Fields!Amount.Value)</Y></ChartDataPointValues></ChartDataPoint>"
        "</ChartDataPoints><Type>Column</Type></ChartSeries></ChartSeriesCollection></ChartData>"
        "<ChartAreas><ChartArea Name=\"Default\" /></ChartAreas><DataSetName>Sales</DataSetName>"
        "<Top>1cm</Top><Left>1cm</Left><Height>6cm</Height><Width>8cm</Width></Chart>");
}

class ChartHabits : public PaneHabits {
 protected:
    ChartHabits() : PaneHabits(ChartReport()) {}
};

TEST_F(ChartHabits, AChartShowsItsCategoriesAndSeries) {
    Click(At("C"));
    EXPECT_EQ(GroupRows(),
              "Categories| CategoryGroup  =Fields!City.Value|Series| SeriesGroup  =Fields!Region.Value|");
    auto& groups = Find<QTreeWidget>("groups");
    QTest::mouseClick(groups.viewport(), Qt::LeftButton, {},
                      groups.visualItemRect(Row("groups", "SeriesGroup  =Fields!Region.Value")).center());
    Settle();
    EXPECT_EQ(Selected(), "ChartMember");
    EXPECT_EQ(groups.selectedItems().size(), 1);
    EXPECT_EQ(Opened([this] { DoubleClick("groups", "CategoryGroup  =Fields!City.Value"); }), "chartDialog");
}

using PropertyHabits = PaneHabits;

TEST_F(PropertyHabits, F2OpensWhatWasFound) {
    Select({"Title"});
    auto& line = Find<QLineEdit>("findProperty");
    for (const Qt::Key way : {Qt::Key_F2, Qt::Key_Down, Qt::Key_Return}) {
        line.setFocus();
        line.clear();
        QTest::keyClicks(&line, "font size");
        QTest::keyClick(&line, way);
        if (way != Qt::Key_F2) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
        }
        QWidget* const editor = QApplication::focusWidget();
        ASSERT_NE(editor, &Find("properties"));
        EXPECT_EQ(editor->accessibleName().toStdString(), "Font size");
        QTest::keyClick(editor, Qt::Key_Escape);
        Settle();
    }
}

TEST_F(PropertyHabits, F2OpensWhatWasTypedToInTheRows) {
    Select({"Title"});
    auto& pane = Find<QTreeWidget>("properties");
    pane.setFocus();
    pane.setCurrentItem(Row("properties", "Left"), 0);
    QTest::keyClick(&pane, Qt::Key_F2);
    ASSERT_NE(QApplication::focusWidget(), &pane);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName().toStdString(), "Left");
}

TEST_F(PropertyHabits, GoingToAValueDoesNotScrollTheNamesAway) {
    Find<QDockWidget>("dockProperties").setMaximumWidth(220);
    Settle();
    Select({"Title"});
    auto& pane = Find<QTreeWidget>("properties");
    for (const char* name : {"Order", "Name", "Left", "Hidden"}) {
        pane.setFocus();
        pane.setCurrentItem(Row("properties", name), 1);
        QTest::keyClick(&pane, Qt::Key_Return);
        Settle();
        EXPECT_EQ(pane.header()->offset(), 0) << name;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    }
    Model().Select({BodyOf(Model().Source())});
    Settle();
    EXPECT_EQ(pane.header()->offset(), 0);
}

TEST_F(PropertyHabits, OrderAndColumnsAreThereAgain) {
    auto& pane = Find<QTreeWidget>("properties");
    QTest::mouseClick(&Find<QToolButton>("orderProperties"), Qt::LeftButton);
    const int width = pane.columnWidth(0) + 37;
    const QPoint border(pane.header()->sectionViewportPosition(1) - 1, pane.header()->height() / 2);
    QWidget* header = pane.header()->viewport();
    QTest::mousePress(header, Qt::LeftButton, {}, border);
    for (const int step : {10, 37}) {
        const QPoint at = border + QPoint(step, 0);
        QMouseEvent move(QEvent::MouseMove, at, header->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(header, &move);
    }
    QTest::mouseRelease(header, Qt::LeftButton, {}, border + QPoint(37, 0));
    EXPECT_EQ(pane.columnWidth(0), width);
    auto& dock = Find<QDockWidget>("dockProperties");
    m_window->resizeDocks({&dock}, {dock.width() + 60}, Qt::Horizontal);
    Settle();
    const int dockWidth = dock.width();
    m_window->close();
    DesignWindow next;
    next.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&next));
    Settle();
    auto& rows = *next.findChild<QTreeWidget*>("properties");
    EXPECT_TRUE(next.findChild<QToolButton*>("orderProperties")->isChecked());
    next.Model().Select({BodyOf(next.Model().Source())});
    EXPECT_EQ(rows.topLevelItem(0)->childCount(), 0);  // no categories
    EXPECT_EQ(rows.columnWidth(0), width);
    EXPECT_EQ(next.findChild<QDockWidget*>("dockProperties")->width(), dockWidth);
    // It is a width for names: larger ones need more.
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 1.25);
    QApplication::setFont(large);
    Settle();
    EXPECT_GT(rows.columnWidth(0), width);
    QApplication::setFont(font);
}

}  // namespace
}  // namespace designer::test
