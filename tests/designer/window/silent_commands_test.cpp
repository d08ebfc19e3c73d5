// SPDX-License-Identifier: GPL-3.0-or-later
// A command that cannot act says why: at its key, and in the status bar when the pointer is on it.
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "../tables/small_tables.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class SilentCommands : public WindowTest {
 protected:
    SilentCommands()
        : WindowTest(Placed(Report(
              ListTablix() + "<Textbox Name=\"Alone\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>x"
                             "</Value></TextRun></TextRuns></Paragraph></Paragraphs><Top>4cm</Top>"
                             "<Left>6cm</Left><Height>5mm</Height><Width>2cm</Width></Textbox>"))) {}
    // What the key says, and nothing else happens.
    std::string Said(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        m_window->statusBar()->clearMessage();
        const std::string before = Model().Source().Text();
        Key(key, modifiers);
        EXPECT_EQ(Model().Source().Text(), before);
        return Status();
    }
};

constexpr auto ControlAlt = Qt::ControlModifier | Qt::AltModifier;
constexpr auto ControlShift = Qt::ControlModifier | Qt::ShiftModifier;

TEST_F(SilentCommands, KeysOfTheTableSayWhatIsMissing) {
    Click(At("A"));
    EXPECT_EQ(Said(Qt::Key_Return, Qt::AltModifier), "The selected cell is in no group");
    EXPECT_EQ(Problem(), "The selected cell is in no group");
    EXPECT_EQ(Said(Qt::Key_A, ControlAlt), "The selected cell is in no group");
    EXPECT_EQ(Said(Qt::Key_Down, ControlAlt | Qt::ShiftModifier), "The row is in no group");
    EXPECT_EQ(Said(Qt::Key_End, ControlAlt), "The column is in no group");
    Click(At("Alone"));
    EXPECT_EQ(Said(Qt::Key_Return, Qt::AltModifier), "Select a group, or a cell of one");
    EXPECT_EQ(Said(Qt::Key_F, ControlShift), "Select a table, a matrix, or a cell of one");
    // The arrow moves nothing.
    EXPECT_EQ(Said(Qt::Key_Left, ControlAlt), "Select a cell, or a column of a table");
    EXPECT_EQ(Said(Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier), "Select a cell, or a row of a table");
}

TEST_F(SilentCommands, KeysOfOtherMenusSayWhatIsMissing) {
    Model().Select({});
    Canvas().setFocus();
    EXPECT_EQ(Said(Qt::Key_B, Qt::ControlModifier), "Select a text box");
    EXPECT_EQ(Said(Qt::Key_1, Qt::ControlModifier), "Select an item");
    EXPECT_EQ(Said(Qt::Key_L, ControlShift), "Select two items or more");
    EXPECT_EQ(Said(Qt::Key_H, ControlShift), "Select three items or more");
    EXPECT_EQ(Said(Qt::Key_BracketRight, Qt::ControlModifier), "Select an item");
    EXPECT_EQ(Said(Qt::Key_J, ControlAlt), "Select two items or more");
    EXPECT_EQ(Said(Qt::Key_K, ControlAlt), "Select a rectangle");
    EXPECT_EQ(Said(Qt::Key_E, Qt::ControlModifier),
              "Select a text box, or a property that takes an expression");
    EXPECT_EQ(Said(Qt::Key_K, Qt::ControlModifier), "Select an item");
    EXPECT_EQ(Said(Qt::Key_Delete, {}), "Select an item");
    EXPECT_EQ(Said(Qt::Key_F2, {}), "Select a text box");
    Click(At("Alone"));
    EXPECT_EQ(Said(Qt::Key_Return, Qt::ControlModifier),
              "Select a chart, gauge, indicator, bar code or subreport");
    EXPECT_EQ(m_window->findChild<QWidget*>("txtInPlace"), nullptr);
}

TEST_F(SilentCommands, AnotherKeyIsSilent) {
    Model().Select({});
    Canvas().setFocus();
    EXPECT_EQ(Said(Qt::Key_F12, {}), "");
    EXPECT_EQ(Said(Qt::Key_Shift, Qt::ShiftModifier), "");
}

TEST_F(SilentCommands, CellsHaveNoPlaceOfTheirOwn) {
    Click(At("A"));
    Click(At("B"), Qt::ShiftModifier);
    EXPECT_EQ(Said(Qt::Key_L, ControlShift), "What is in a cell has no place of its own");
    EXPECT_EQ(Said(Qt::Key_W, ControlShift), "What is in a cell has no place of its own");
    EXPECT_EQ(Said(Qt::Key_J, ControlAlt), "What is in a cell has no place of its own");
    EXPECT_EQ(Said(Qt::Key_D, Qt::ControlModifier), "What is in a cell has no place of its own");
}

TEST_F(SilentCommands, WhatHasNoFillAndNoBorderSaysSo) {
    Run("insertLine");
    EXPECT_EQ(Find<QAction>("formatFill").statusTip(), "Select an item with a background");
    EXPECT_TRUE(Find<QAction>("bordersAll").isEnabled());
    Click(At("Alone"));
    EXPECT_TRUE(Find<QAction>("formatFill").isEnabled());
    Model().Select({});
    EXPECT_EQ(Find<QAction>("bordersAll").statusTip(), "Select an item with a border");
}

TEST_F(SilentCommands, TheLargestTextSaysSo) {
    Model().Edit("Size", [&](Document& document) {
        SetText(document, Id("Alone"), "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontSize", "72pt");
    });
    Click(At("Alone"));
    EXPECT_EQ(Said(Qt::Key_Greater, ControlShift), "The text has the largest of the usual sizes");
    Model().Edit("Size", [&](Document& document) {
        SetText(document, Id("Alone"), "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontSize", "6pt");
    });
    EXPECT_EQ(Said(Qt::Key_Less, ControlShift), "The text has the smallest of the usual sizes");
    Model().Edit("Size", [&](Document& document) {
        SetText(document, Id("Alone"), "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontSize", "=\"6pt\"");
    });
    EXPECT_EQ(Said(Qt::Key_Less, ControlShift), "The size of the text is an expression");
    EXPECT_EQ(Model().Source().UndoCount(), 3u);
}

TEST_F(SilentCommands, ThePointerOnAGreyCommandShowsWhy) {
    Click(At("A"));
    auto& menu = Find<QMenu>("menuTable");
    QTest::mouseClick(m_window->menuBar(), Qt::LeftButton, {},
                      m_window->menuBar()->actionGeometry(menu.menuAction()).center());
    ASSERT_TRUE(menu.isVisible());
    const auto point = [&](const char* command) {
        const QPoint at = menu.actionGeometry(&Find<QAction>(command)).center();
        for (const QPoint step : {QPoint(0, 0), QPoint(1, 0)}) {
            QMouseEvent move(QEvent::MouseMove, at + step, menu.mapToGlobal(at + step), Qt::NoButton,
                             Qt::NoButton, {});
            QApplication::sendEvent(&menu, &move);
        }
        Settle();
    };
    point("groupDelete");
    EXPECT_EQ(Status(), "The selected cell is in no group");
    point("tableColumnLeft");
    EXPECT_EQ(Status(), "");
    menu.close();
    Settle();
}

// Whatever is selected: what is grey in these menus has a reason.
TEST_F(SilentCommands, EveryGreyCommandHasAReason) {
    for (const std::vector<std::string>& names :
         {std::vector<std::string>{}, {"A"}, {"Alone"}, {"T"}, {"A", "Alone"}, {"C", "D"}}) {
        Select(names);
        for (const QAction* top : m_window->menuBar()->actions()) {
            if (QString title = top->text();
                !QStringList{"Table", "Format", "Arrange", "Report", "Insert"}.contains(title.remove('&'))) {
                continue;
            }
            for (const QAction* action : top->menu()->actions()) {
                EXPECT_TRUE(action->isEnabled() || action->isSeparator() || !action->statusTip().isEmpty())
                    << action->objectName().toStdString() << " with " << names.size();
                EXPECT_TRUE(!action->isEnabled() || action->statusTip().isEmpty())
                    << action->objectName().toStdString();
            }
        }
    }
}

}  // namespace
}  // namespace designer::test
