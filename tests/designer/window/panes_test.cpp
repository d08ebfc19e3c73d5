// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTabWidget>
#include <QTreeWidget>

#include "platform/viewer/report_viewer.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class Panes : public WindowTest {
 protected:
    std::string Property(const QString& name) {
        const QTreeWidgetItem* row = Row("properties", name);
        return row ? row->text(1).toStdString() : "none";
    }
    std::string Problem() {
        QTest::qWait(600);
        return WindowTest::Problem();
    }
};

TEST_F(Panes, OutlineSelectsBothWays) {
    auto& outline = Find<QTreeWidget>("outline");
    outline.setCurrentItem(Row("outline", "Amount"));
    Settle();
    EXPECT_EQ(Selected(), "Amount");
    Click(At("Note"));
    EXPECT_EQ(outline.selectedItems(), QList<QTreeWidgetItem*>{Row("outline", "Note")});
    outline.setCurrentItem(Row("outline", "Body"));
    EXPECT_EQ(Selected(), "Body");
    outline.setCurrentItem(Row("outline", "Report"));
    EXPECT_EQ(Selected(), "Report");
    EXPECT_EQ(Row("outline", "Page")->parent()->text(0).toStdString(), "Page Footer");
}

TEST_F(Panes, PropertiesShowAndTakeValues) {
    Select({"Title"});
    EXPECT_EQ(Property("Name"), "Title");
    EXPECT_EQ(Property("Left"), "1cm");
    TypeInRow(Row("properties", "Left"), "25mm");
    EXPECT_EQ(Text("Title", "Left"), "25mm");
    TypeInRow(Row("properties", "Top"), "2.5");
    EXPECT_EQ(Text("Title", "Top"), "2.5cm");
    TypeInRow(Row("properties", "Name"), "Heading");
    EXPECT_EQ(Selected(), "Heading");
    EXPECT_EQ(UndoName(), "Change Name of Title");
}

TEST_F(Panes, AValueThatIsBeingTypedIsSaved) {
    Select({"Title"});
    auto& pane = Find<QTreeWidget>("properties");
    pane.setFocus();
    pane.setCurrentItem(Row("properties", "Left"), 1);
    QTest::keyClick(&pane, Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "30mm");
    EXPECT_EQ(Text("Title", "Left"), "1cm");
    Run("fileSave");
    EXPECT_EQ(Text("Title", "Left"), "30mm");
    EXPECT_NE(ReadBytes(File()).find("<Left>30mm</Left>"), std::string::npos);
}

TEST_F(Panes, AValueThatDoesNotFitIsRefused) {
    Select({"Title"});
    TypeInRow(Row("properties", "Width"), "wide");
    EXPECT_EQ(Text("Title", "Width"), "4cm");
    EXPECT_EQ(Property("Width"), "4cm");
    EXPECT_EQ(WindowTest::Problem(),
              "\"wide\" is no value of Width: a size is a number with in, cm, mm, pt or pc: 2.5cm");
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(Panes, OfSeveralItemsWhatIsTheSameIsShown) {
    Select({"Title", "Amount"});
    EXPECT_EQ(Property("Name"), "none");
    EXPECT_EQ(Property("Left"), "1cm");
    EXPECT_EQ(Property("Top"), "");
    TypeInRow(Row("properties", "Left"), "2cm");
    EXPECT_EQ(Text("Title", "Left") + Text("Amount", "Left"), "2cm2cm");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

TEST_F(Panes, DeleteGivesTheDefaultAgain) {
    Select({"Title"});
    TypeInRow(Row("properties", "Order"), "7");
    auto& pane = Find<QTreeWidget>("properties");
    pane.setCurrentItem(Row("properties", "Order"), 1);
    QTest::keyClick(&pane, Qt::Key_Delete);
    EXPECT_EQ(Text("Title", "ZIndex"), "-");
    EXPECT_EQ(Property("Order"), "0");
    EXPECT_NE(Id("Title"), NoElement);
}

TEST_F(Panes, ProblemsAreThoseOfTheEngineAndSelectTheirItem) {
    EXPECT_EQ(Problem(), "No problems");
    Model().Edit("Break", [&](Document& document) { SetText(document, Id("Amount"), RunValue, "=1+"); });
    const std::string problem = Problem();
    EXPECT_NE(problem.find("Amount"), std::string::npos) << problem;
    Select({});
    auto& list = Find<QListWidget>("problems");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(Selected(), "Amount");
    Run("editUndo");
    EXPECT_EQ(Problem(), "No problems");
}

TEST_F(Panes, ProblemsOfSeveralItemsAreAllThere) {
    Model().Edit("Break", [&](Document& document) {
        for (const char* name : {"Amount", "Note", "Page"}) {
            SetText(document, Id(name), RunValue, "=1+");
        }
    });
    Problem();
    auto& list = Find<QListWidget>("problems");
    ASSERT_EQ(list.count(), 3);
    for (const auto& [row, name] : {std::pair(0, "Amount"), std::pair(1, "Note"), std::pair(2, "Page")}) {
        EXPECT_TRUE(list.item(row)->text().contains(QString("Textbox %1").arg(name)))
            << list.item(row)->text().toStdString();
    }
}

TEST_F(Panes, AReportThatIsTooWideForItsPageIsAProblem) {
    Model().Edit("Widen", [&](Document& document) {
        SetText(document, document.Root(), "ReportSections/ReportSection/Width", "22cm");
    });
    EXPECT_EQ(Problem(),
              "The report is 22cm wide, and the page has room for 21cm: the rest goes to pages of "
              "its own");
}

TEST_F(Panes, ARefusalGoesWithTheNextSuccess) {
    Select({"Title", "Page"});
    Run("group");
    auto& list = Find<QListWidget>("problems");
    EXPECT_EQ(list.item(0)->text(), "Only items that are in one band or rectangle become a group");
    EXPECT_EQ(Status(), "Only items that are in one band or rectangle become a group");
    Select({"Title", "Amount"});
    Run("group");
    EXPECT_EQ(Selected(), "Rectangle1");
    EXPECT_EQ(UndoName(), "Group 2 items");
    EXPECT_EQ(list.item(0)->text(), "No problems");
    EXPECT_EQ(Status(), "");
    Run("ungroup");
    EXPECT_EQ(Selected(), "Title Amount");
    EXPECT_EQ(UndoName(), "Ungroup Rectangle1");
}

TEST_F(Panes, PreviewRunsTheTextAsItIs) {
    Select({"Title"});
    Key(Qt::Key_Right);
    Run("viewPreview");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<ReportViewer>("preview").CurrentPage() == 1; }));
    EXPECT_EQ(Written(), SmallReport());
    EXPECT_FALSE(Find<QAction>("editDelete").isEnabled());
    Run("viewDesign");
    EXPECT_TRUE(Canvas().isVisible());
}

TEST_F(Panes, PreviewListsWhatTheEngineRefuses) {
    Model().Edit("Break", [&](Document& document) { SetText(document, Id("Amount"), RunValue, "=1+"); });
    Run("viewPreview");
    EXPECT_TRUE(Find<QListWidget>("previewErrors").isVisible());
    EXPECT_NE(Find<QListWidget>("previewErrors").item(0)->text().indexOf("Amount"), -1);
}

TEST_F(Panes, NextPaneGoesRound) {
    Canvas().setFocus();
    QSet<QString> met;
    for (int i = 0; i < 7; ++i) {
        Run("nextPane");
        met.insert(QApplication::focusWidget()->objectName());
    }
    EXPECT_TRUE(Canvas().hasFocus());
    EXPECT_EQ(met, (QSet<QString>{"canvas", "toolTextBox", "reportData", "outline", "properties", "groups",
                                  "problems"}));
}

TEST_F(Panes, WhatTakesTheKeysHasAName) {
    for (const QWidget* widget : m_window->findChildren<QWidget*>()) {
        const bool isOurs = !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_");
        if (isOurs && widget->focusPolicy() & Qt::TabFocus &&
            qobject_cast<const QAbstractScrollArea*>(widget)) {
            EXPECT_FALSE(widget->accessibleName().isEmpty() && widget->window() == m_window)
                << widget->objectName().toStdString();
        }
    }
}

}  // namespace
}  // namespace designer::test
