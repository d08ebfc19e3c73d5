// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QDialog>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeWidget>

#include "../tables/small_tables.h"
#include "designer/model/table_selection.h"
#include "table_fixture.h"

namespace designer::test {
namespace {

class Tables : public TableWindowTest {
 protected:
    const std::optional<std::string> m_bodyHeight{"5cm"};
    std::string RowTexts(std::size_t row) {
        std::string texts;
        for (const GridCell& cell : Grid().cells) {
            if (cell.part == GridCell::Part::Body && cell.row == row && cell.item != NoElement) {
                texts += TextOfBox(Model().Source(), cell.item) + "|";
            }
        }
        return texts;
    }
};

TEST_F(Tables, ABorderIsPulledToTheGridAsOneStep) {
    Click(At("A"));
    Drag(InBody(3, 1.5), InBody(4.02, 1.5));
    EXPECT_EQ(Widths(), "3cm 3cm ");
    EXPECT_EQ(UndoName(), "Resize column");
    Drag(InBody(2, 2.5), InBody(2, 3));
    EXPECT_EQ(Model().Source().TextAt(Grid().rows[1].element, "Height"), "10mm");
    EXPECT_EQ(Model().Source().UndoCount(), 2u);
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), Placed(Report(ListTablix())));
}

TEST_F(Tables, BarsSelectColumnsAndRows) {
    Click(At("A"));
    Click(InBody(4.5, 1) - QPoint(0, 5));
    EXPECT_EQ(Selected(), "B D");
    Click(InBody(1, 2.25) - QPoint(5, 0));
    EXPECT_EQ(Selected(), "C D");
}

TEST_F(Tables, CellsAreSelectedByShiftAndArrows) {
    Click(At("A"));
    Click(At("D"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "B C D A");
    Click(At("B"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "B A");
    Click(At("A"));
    Key(Qt::Key_Down);
    EXPECT_EQ(Selected(), "C");
    Key(Qt::Key_Right);
    EXPECT_EQ(Selected(), "D");
    Key(Qt::Key_Right);
    EXPECT_EQ(Selected(), "D");
    Key(Qt::Key_Up);
    EXPECT_EQ(Selected(), "B");
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(Tables, TypingBeginsTheTextOfACell) {
    Click(At("B"));
    QTest::keyClicks(&Canvas(), "N");
    QTest::keyClicks(&Find("txtInPlace"), "et 1");
    QTest::keyClick(&Find("txtInPlace"), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Value("B"), "Net 1");
    EXPECT_EQ(UndoName(), "Edit B");
}

TEST_F(Tables, TheMenuAddsAndDeletesColumnsAndRows) {
    Click(At("A"));
    Run("tableColumnRight");
    EXPECT_EQ(RowTexts(0), "Region||Net|");
    EXPECT_EQ(UndoName(), "Add column");
    Run("tableDeleteColumn");
    EXPECT_EQ(RowTexts(0), "Region|Net|");
    Click(At("C"));
    Run("tableRowBelowGroup");
    EXPECT_EQ(Grid().rows.size(), 3u);
    EXPECT_EQ(RowTexts(2), "||");
    Run("tableDeleteRow");
    EXPECT_EQ(Grid().rows.size(), 2u);
    Click(At("A"));
    EXPECT_FALSE(Find<QAction>("tableRowBelowGroup").isEnabled());
    Run("tableMoveRight");
    EXPECT_EQ(RowTexts(0), "Net|Region|");
    EXPECT_EQ(Model().Source().UndoCount(), 5u);
}

TEST_F(Tables, CellsAreMergedAndSplit) {
    Click(At("A"));
    EXPECT_FALSE(Find<QAction>("tableMerge").isEnabled());
    Click(At("B"), Qt::ShiftModifier);
    EXPECT_FALSE(Find<QAction>("tableSplit").isEnabled());
    Run("tableMerge");
    EXPECT_EQ(RowTexts(0), "Region Net|");
    Run("tableSplit");
    EXPECT_EQ(RowTexts(0), "Region Net||");
}

TEST_F(Tables, TheBodyGrowsWithItsTable) {
    Click(At("C"));
    for (int row = 0; row < 12; ++row) {
        Run("tableRowBelow");
    }
    const ReportItem* table = Model().Item(Id("T"));
    EXPECT_GE(Model().Items().bands[table->band].height, table->place.Bottom());
    EXPECT_NE(Model().Source().TextAt(BodyOf(Model().Source()), "Height"), m_bodyHeight);
    for (int row = 0; row < 12; ++row) {
        Key(Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(Model().Source().TextAt(BodyOf(Model().Source()), "Height"), m_bodyHeight);
}

TEST_F(Tables, ATotalAndAParentGroup) {
    Click(At("C"));
    Run("totalAfter");
    EXPECT_EQ(RowTexts(2), "Total|=Sum(Fields!Net_Amount.Value)|");
    Click(At("C"));
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->findChild<QComboBox*>("cboGroupOn")->currentText().toStdString(),
                  "=Fields!Region.Value");
        QTest::keyClick(dialog->findChild<QComboBox*>("cboGroupOn"), Qt::Key_Return);
        EXPECT_FALSE(dialog->isVisible());
        dialog->close();
    });
    Run("groupParent");
    EXPECT_EQ(RowTexts(1), "=Fields!Region.Value||");
    EXPECT_EQ(RowTexts(3), "Total|=Sum(Fields!Net_Amount.Value)|");
    auto& groups = Find<QTreeWidget>("groups");
    ASSERT_EQ(groups.selectedItems().size(), 1);
    EXPECT_EQ(groups.selectedItems().front()->text(0).toStdString(), "RegionGroup  =Fields!Region.Value");
    EXPECT_FALSE(Find<QTreeWidget>("properties")
                     .findItems("Group on", Qt::MatchExactly | Qt::MatchRecursive)
                     .isEmpty());
    Run("groupDeleteRows");
    EXPECT_EQ(Grid().rows.size(), 2u);
}

TEST_F(Tables, AGroupIsOnTheNameOfAFieldOrAnExpression) {
    Click(At("C"));
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* box = dialog->findChild<QComboBox*>("cboGroupOn");
        const auto type = [box](const char* text) {
            QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(box, text);
            QTest::keyClick(box, Qt::Key_Return);
        };
        type("Regoin");
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->findChild<QLabel*>("lblFault")->text().toStdString(),
                  "A group needs the name of a field or an expression: =Fields!Region.Value");
        type("region");
        EXPECT_FALSE(dialog->isVisible());
        dialog->close();
    });
    Run("groupParent");
    EXPECT_EQ(RowTexts(1), "=Fields!Region.Value||");
}

TEST_F(Tables, AFieldIsDroppedOnACellABorderTheRowBarAndThePage) {
    DropField("Region", At("D"));
    EXPECT_EQ(Value("D"), "=Fields!Region.Value");
    EXPECT_EQ(UndoName(), "Show Region");
    DropField("Net_Amount", InBody(6.2, 1.5));
    EXPECT_EQ(RowTexts(0), "Region|Net|Net Amount|");
    EXPECT_EQ(RowTexts(1), "=Fields!Region.Value|=Fields!Region.Value|=Fields!Net_Amount.Value|");
    DropField("Region", InBody(1, 2) - QPoint(5, 0));
    EXPECT_EQ(RowTexts(1), "=Fields!Region.Value|||");
    EXPECT_EQ(Model().Source().UndoCount(), 3u);
    DropField("Region", InBody(1, 4.5));
    EXPECT_EQ(Selected(), "Tablix1");
    EXPECT_EQ(Corner("Tablix1"), "1cm 4.5cm");
}

TEST_F(Tables, EnterPutsAFieldWhereTheSelectionIs) {
    Click(At("D"));
    auto& data = Find<QTreeWidget>("reportData");
    const auto rows = data.findItems("Region", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(rows.size(), 1);
    data.setCurrentItem(rows.front());
    QTest::keyClick(&data, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Value("D"), "=Fields!Region.Value");
    EXPECT_TRUE(Canvas().hasFocus());
}

TEST_F(Tables, NewTablesShowTheFirstDataSet) {
    Run("insertTable");
    EXPECT_EQ(Selected(), "Tablix1");
    EXPECT_EQ(GridOf(Model().Source(), Id("Tablix1")).columns.size(), 3u);
    Run("insertMatrix");
    const TablixGrid matrix = GridOf(Model().Source(), Id("Tablix2"));
    ASSERT_EQ(matrix.cells.size(), 4u);
    std::string texts;
    for (const GridCell& cell : matrix.cells) {
        texts += TextOfBox(Model().Source(), cell.item) + "|";
    }
    EXPECT_EQ(texts, "=Fields!Net_Amount.Value|=Fields!Region.Value|Region|=Sum(Fields!Net_Amount.Value)|");
    Run("insertList");
    EXPECT_EQ(Text("Tablix3", "DataSetName"), "Sales");
    EXPECT_EQ(Model().Source().UndoCount(), 3u);
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
}

TEST_F(Tables, ARefusalIsShown) {
    Click(At("A"));
    Run("tableMoveLeft");
    EXPECT_EQ(Problem(), "The column is the first one");
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

}  // namespace
}  // namespace designer::test
