// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include "../tables/small_tables.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class PropertyPanelTest : public WindowTest {
 protected:
    using WindowTest::WindowTest;
    QTreeWidget& Pane() { return Find<QTreeWidget>("properties"); }
    // The row below the category; without a category one that stands alone.
    QTreeWidgetItem* Row(const QString& category, const QString& name) {
        for (QTreeWidgetItem* row : Pane().findItems(name, Qt::MatchExactly | Qt::MatchRecursive)) {
            if ((row->parent() ? row->parent()->text(0) : QString()) == category) {
                return row;
            }
        }
        return nullptr;
    }
    std::string Value(const QString& category, const QString& name) {
        const QTreeWidgetItem* row = Row(category, name);
        return row ? row->text(1).toStdString() : "none";
    }
    std::string Shown() {
        std::string names;
        for (QTreeWidgetItemIterator row(&Pane()); *row; ++row) {
            const bool isShown = !(*row)->isHidden() && !((*row)->parent() && (*row)->parent()->isHidden());
            names += isShown ? (*row)->text(0).toStdString() + "|" : "";
        }
        return names;
    }
    void FindRows(const QString& text) {
        auto& line = Find<QLineEdit>("findProperty");
        line.setFocus();
        QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&line, Qt::Key_Delete);
        QTest::keyClicks(&line, text);
        Settle();
    }
};

TEST_F(PropertyPanelTest, ALineFindsNamesAndValues) {
    Select({"Title"});
    FindRows("padd");
    EXPECT_EQ(Shown(), "Layout|Left padding|Right padding|Top padding|Bottom padding|");
    FindRows("sales");
    EXPECT_EQ(Shown(), "General|Value|");
    FindRows("nothing has this");
    EXPECT_EQ(Shown(), "");
    QTest::keyClick(&Find<QLineEdit>("findProperty"), Qt::Key_Escape);
    EXPECT_NE(Shown().find("Left padding"), std::string::npos);
    EXPECT_EQ(QApplication::focusWidget(), &Pane());
    // Another selection is searched for the same text.
    FindRows("page w");
    EXPECT_EQ(Shown(), "");
    Model().Select({Model().Source().Root()});
    EXPECT_EQ(Shown(), "Page|Page width|");
}

TEST_F(PropertyPanelTest, RowsAreOrderedByAlphabet) {
    Select({"Title"});
    QTest::mouseClick(&Find<QToolButton>("orderProperties"), Qt::LeftButton);
    EXPECT_EQ(Pane().topLevelItem(0)->text(0), "Background colour");
    EXPECT_EQ(Pane().topLevelItem(1)->text(0), "Background picture");
    EXPECT_EQ(Value("", "Left"), "1cm");
    TypeInRow(Row("", "Left"), "2cm");
    EXPECT_EQ(Text("Title", "Left"), "2cm");
    QTest::mouseClick(&Find<QToolButton>("orderProperties"), Qt::LeftButton);
    EXPECT_EQ(Pane().topLevelItem(0)->text(0), "General");
    EXPECT_EQ(Value("Position", "Left"), "2cm");
}

TEST_F(PropertyPanelTest, FontsAndPaddingAreInPoints) {
    Select({"Title"});
    TypeInRow(Row("Font", "Font size"), "14");
    EXPECT_EQ(Text("Title", "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontSize"), "14pt");
    TypeInRow(Row("Layout", "Left padding"), "2");
    EXPECT_EQ(Text("Title", "Style/PaddingLeft"), "2pt");
    TypeInRow(Row("Position", "Left"), "2");
    EXPECT_EQ(Text("Title", "Left"), "2cm");
}

TEST_F(PropertyPanelTest, AbsurdSizesAreRefused) {
    Select({"Title"});
    for (const char* size : {"-5", "-5cm", "99999cm"}) {
        TypeInRow(Row("Position", "Width"), size);
        EXPECT_EQ(Text("Title", "Width"), "4cm");
        EXPECT_NE(Problem().find("it is 0in to 455in"), std::string::npos);
    }
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(PropertyPanelTest, NamesAreNotCut) {
    Select({"Title"});
    Pane().setMinimumWidth(500);
    Settle();
    const QTreeWidgetItem* row = Row("Fill", "Background picture source");
    ASSERT_NE(row, nullptr);
    const QFontMetrics metrics = Pane().fontMetrics();
    EXPECT_GE(Pane().visualItemRect(row).left() + Pane().columnWidth(0),
              metrics.horizontalAdvance(row->text(0)) + 2 * Pane().indentation());
    EXPECT_LE(Pane().columnWidth(0), Pane().viewport()->width() * 65 / 100);
}

class TrackProperties : public PropertyPanelTest {
 protected:
    TrackProperties() : PropertyPanelTest(Placed(Report(ListTablix()))) {}
    std::string TextOfTrack(const char* path) { return Model().Source().TextAt(Id("T"), path).value_or("-"); }
};

TEST_F(TrackProperties, ACellShowsThoseOfItsColumnAndRow) {
    Click(At("A"));
    EXPECT_EQ(Value("Column", "Width"), "2cm");
    EXPECT_EQ(Value("Column", "Hidden"), "false");
    EXPECT_EQ(Value("Row", "Height"), "1cm");
    EXPECT_EQ(Value("Row", "Keep with group"), "After");
    EXPECT_EQ(Value("Row", "Header size"), "none");
    TypeInRow(Row("Column", "Width"), "30");
    EXPECT_EQ(TextOfTrack("TablixBody/TablixColumns/TablixColumn/Width"), "30cm");
    EXPECT_EQ(UndoName(), "Change Width of column");
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Root(), "Width"), "34cm");
    Pane().setCurrentItem(Row("Row", "Repeat on new pages"), 1);
    QTest::keyClick(&Pane(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_T);
    Settle();
    EXPECT_EQ(TextOfTrack("TablixRowHierarchy/TablixMembers/TablixMember/RepeatOnNewPage"), "true");
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), Placed(Report(ListTablix())));
}

TEST_F(TrackProperties, SeveralColumnsAreChangedAtOnce) {
    Click(At("A"));
    Click(At("B"), Qt::ShiftModifier);
    EXPECT_EQ(Value("Column", "Width"), "");
    TypeInRow(Row("Column", "Hidden"), "true");
    EXPECT_EQ(UndoName(), "Change Hidden of 2 columns");
    EXPECT_NE(Model().Source().Text().find(
                  "<TablixColumnHierarchy><TablixMembers><TablixMember><Visibility><Hidden>true</Hidden>"
                  "</Visibility></TablixMember><TablixMember><Visibility><Hidden>true</Hidden></Visibility>"
                  "</TablixMember></TablixMembers>"),
              std::string::npos)
        << Model().Source().Text();
    Pane().setFocus();
    Pane().setCurrentItem(Row("Column", "Hidden"), 1);
    QTest::keyClick(&Pane(), Qt::Key_Delete);
    EXPECT_EQ(UndoName(), "Reset Hidden of 2 columns");
    EXPECT_EQ(Value("Column", "Hidden"), "false");
}

TEST_F(TrackProperties, ASizeIsNotReset) {
    Click(At("A"));
    Pane().setFocus();
    Pane().setCurrentItem(Row("Column", "Width"), 1);
    QTest::keyClick(&Pane(), Qt::Key_Delete);
    EXPECT_EQ(Model().Source().Text(), Placed(Report(ListTablix())));
    EXPECT_EQ(Problem(), "A column and a row have a size of their own");
}

// The data of the report is on the left; what is selected on the page stays selected.
TEST_F(TrackProperties, PartsOfTheReportDataShowTheirOwn) {
    Click(At("A"));
    auto& data = Find<QTreeWidget>("reportData");
    const auto go = [&](const QString& name) {
        QTreeWidgetItem* row = data.findItems(name, Qt::MatchExactly | Qt::MatchRecursive).front();
        data.scrollToItem(row);
        QTest::mouseClick(data.viewport(), Qt::LeftButton, {}, data.visualItemRect(row).center());
        Settle();
    };
    go("Sales");
    EXPECT_EQ(Value("Query", "Query"), "select");
    EXPECT_EQ(Value("Column", "Width"), "none");
    TypeInRow(Row("Query", "Query"), "select 1");
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Root(), "DataSets/DataSet/Query/CommandText"),
              "select 1");
    go("Net_Amount");
    EXPECT_EQ(Value("General", "Column"), "Net");
    EXPECT_EQ(Selected(), "A");
    // Without a current property the expression is that of the text box, not of the part.
    Pane().setCurrentItem(nullptr);
    std::string shown;
    QTimer::singleShot(0, m_window, [&] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            shown = dialog->findChild<QPlainTextEdit*>("expression")->toPlainText().toStdString();
            dialog->reject();
        }
    });
    Run("reportExpression");
    EXPECT_EQ(shown, "Region");
    m_window->activateWindow();
    Settle();
    Canvas().setFocus();
    Settle();
    EXPECT_EQ(Value("Column", "Width"), "2cm");
}

TEST_F(PropertyPanelTest, AButtonOpensTheExpressionOfTheCurrentProperty) {
    Select({"Title"});
    auto& button = Find<QToolButton>("propertyExpression");
    Pane().setCurrentItem(Row("Position", "Left"), 1);
    EXPECT_FALSE(button.isEnabled());
    Pane().setCurrentItem(Row("Font", "Text colour"), 1);
    EXPECT_TRUE(button.isEnabled());
    std::string title;
    QTimer::singleShot(0, m_window, [&] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            title = dialog->windowTitle().toStdString();
            dialog->reject();
        }
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(title, "Expression: Text colour");
}

TEST_F(PropertyPanelTest, ColoursAreOfferedByTheirNames) {
    Select({"Title"});
    TypeInRow(Row("Fill", "Background colour"), "lightsteelb");
    EXPECT_EQ(Text("Title", "Style/BackgroundColor"), "lightsteelblue");
}

}  // namespace
}  // namespace designer::test
