// SPDX-License-Identifier: GPL-3.0-or-later
// Reports without a body, a section or a width are mended by the first thing that is put on the page.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <QRegularExpression>
#include <QTreeWidget>

#include "../tables/small_tables.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Bare(const std::string& year, const std::string& content = {}) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" + year +
           "/01/reportdefinition\" xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/"
           "reportdesigner\">" +
           content + "</Report>";
}

class MissingBody : public WindowTest {
 protected:
    MissingBody() : WindowTest(Bare("2016")) {}
    void Show(const std::string& report) {
        WriteBytes(File(), report);
        ASSERT_TRUE(m_window->OpenFile(File()));
        Settle();
    }
    // The text without line ends and what lines are indented by.
    std::string Text() {
        return QString::fromStdString(Model().Source().Text())
            .remove(QRegularExpression("\\n *"))
            .toStdString();
    }
    // The report runs, was changed in one step, and is the old one again after an undo.
    void ExpectMended(const std::string& before) {
        Canvas().Refresh();
        EXPECT_EQ(Canvas().Failure(), "");
        EXPECT_EQ(Model().Source().UndoCount(), 1u);
        Run("editUndo");
        EXPECT_EQ(Text(), before);
    }
};

TEST_F(MissingBody, AnItemOfTheMenuMakesTheSection) {
    Run("insertTextBox");
    EXPECT_EQ(Selected(), "Textbox1");
    EXPECT_THAT(Text(), HasSubstr("<ReportSections><ReportSection><Body><ReportItems><Textbox"));
    EXPECT_THAT(Text(), HasSubstr("</ReportItems><Height>8cm</Height></Body><Width>17cm</Width><Page>"
                                  "<PageHeight>29.7cm</PageHeight>"));
    ExpectMended(Bare("2016"));
}

TEST_F(MissingBody, ARectangleIsDrawnOnThePageThatIsNotThere) {
    EXPECT_EQ(Model().Items().bands.size(), 1u);
    Run("viewDesign");
    QTest::mouseClick(&Find("toolRectangle"), Qt::LeftButton);
    const QPoint corner = Canvas().AreaOf(NoElement).topLeft().toPoint() + QPoint(40, 40);
    Drag(corner, corner + QPoint(100, 80));
    EXPECT_EQ(Selected(), "Rectangle1");
    ExpectMended(Bare("2016"));
}

TEST_F(MissingBody, AFieldIsDragged) {
    const std::string before = Bare(
        "2016",
        "<DataSources><DataSource Name=\"D\"><ConnectionProperties><DataProvider>SQLite</DataProvider>"
        "<ConnectString>d.db</ConnectString></ConnectionProperties></DataSource></DataSources>" +
            DataSet() +
            "<ReportSections><ReportSection><Page><PageWidth>15cm</PageWidth><LeftMargin>1cm</LeftMargin>"
            "</Page></ReportSection></ReportSections>");
    Show(before);
    DropField("Region", Canvas().AreaOf(NoElement).topLeft().toPoint() + QPoint(50, 50));
    EXPECT_EQ(Selected(), "Tablix1");
    EXPECT_THAT(Text(), HasSubstr("<Width>14cm</Width><Page><PageWidth>15cm</PageWidth>"));
    ExpectMended(before);
}

TEST_F(MissingBody, OnlyTheWidthIsMissing) {
    const std::string before =
        Bare("2016",
             "<ReportSections><ReportSection><Body><Height>5cm</Height></Body><Page /></ReportSection>"
             "</ReportSections>");
    Show(before);
    Run("insertRectangle");
    EXPECT_THAT(Text(), HasSubstr("</Body><Width>8.5in</Width><Page />"));
    ExpectMended(before);
}

TEST_F(MissingBody, OlderReportsHaveItDirectly) {
    for (const std::string year : {"2003", "2005", "2008"}) {
        const std::string before = Bare(year);
        Show(before);
        Run("insertRectangle");
        EXPECT_THAT(Text(), Not(HasSubstr("ReportSection")));
        EXPECT_THAT(Text(), HasSubstr("<Body><ReportItems><Rectangle"));
        EXPECT_THAT(Text(), HasSubstr("</Body><Width>17cm</Width>"));
        ExpectMended(before);
    }
}

TEST_F(MissingBody, APageHeaderIsInTheSection) {
    Run("pageHeader");
    EXPECT_THAT(Text(), HasSubstr("<Width>17cm</Width><Page><PageHeader>"));
    EXPECT_EQ(Selected(), "PageHeader");
    ExpectMended(Bare("2016"));
}

TEST_F(MissingBody, ThePageIsWrittenWhereItBelongs) {
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        auto* line = dialog->findChild<QLineEdit*>("left");
        line->selectAll();
        QTest::keyClicks(line, "3cm");
        QTest::keyClick(line, Qt::Key_Return);
    });
    Run("reportPage");
    EXPECT_THAT(Text(), HasSubstr("</Body><Width>"));
    EXPECT_THAT(Text(), HasSubstr("<LeftMargin>3cm</LeftMargin>"));
    EXPECT_THAT(Text(), Not(HasSubstr("<Report><Page>")));
    ExpectMended(Bare("2016"));
}

TEST_F(MissingBody, TheEdgeOfThePageIsPulled) {
    const QRectF area = Canvas().AreaOf(NoElement);
    Drag(QPoint(static_cast<int>(area.center().x()), static_cast<int>(area.bottom())),
         QPoint(static_cast<int>(area.center().x()), static_cast<int>(area.bottom()) - 60));
    EXPECT_THAT(Text(), HasSubstr("<ReportSections><ReportSection><Body><Height>"));
    ExpectMended(Bare("2016"));
}

TEST_F(MissingBody, WhatIsCopiedElsewhereIsPasted) {
    Show(SmallReport());
    Select({"Title"});
    Key(Qt::Key_C, Qt::ControlModifier);
    Show(Bare("2016"));
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Selected(), "Title");
    ExpectMended(Bare("2016"));
}

// A click on the page that is not there selects nothing, and nothing breaks.
TEST_F(MissingBody, LookingChangesNothing) {
    Click(Canvas().AreaOf(NoElement).center().toPoint());
    EXPECT_EQ(Selected(), "");
    Key(Qt::Key_Escape);
    Key(Qt::Key_Tab);
    auto& outline = Find<QTreeWidget>("outline");
    for (QTreeWidgetItem* row : outline.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive)) {
        outline.setCurrentItem(row);
    }
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
    EXPECT_EQ(Text(), Bare("2016"));
}

}  // namespace
}  // namespace designer::test
