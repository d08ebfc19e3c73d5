// SPDX-License-Identifier: GPL-3.0-or-later
// Rows and columns of tables by keys, and tables from right to left.
#include "../tables/small_tables.h"
#include "designer/tables/cell_text.h"
#include "table_fixture.h"

namespace designer::test {
namespace {

constexpr const char* TwoHeads = "<TablixMember/><TablixMember/>";  // both rows stand once

class TableMoves : public TableWindowTest {
 protected:
    explicit TableMoves(const std::string& report = Placed(Report(ListTablix(TwoHeads))))
        : TableWindowTest(report) {}
    std::string Texts() {
        std::string texts;
        for (const GridCell& cell : Grid().cells) {
            if (cell.part == GridCell::Part::Body && cell.item != NoElement) {
                texts += TextOfBox(Model().Source(), cell.item) + "|";
            }
        }
        return texts;
    }
};

TEST_F(TableMoves, ARowIsMovedByKeys) {
    const std::string before = Model().Source().Text();
    Click(At("A"));
    Run("tableMoveDown");
    EXPECT_EQ(Texts(), "=Fields!Region.Value|=Fields!Net_Amount.Value|Region|Net|");
    EXPECT_EQ(Selected(), "A");
    EXPECT_EQ(UndoName(), "Move row");
    Run("tableMoveDown");
    EXPECT_EQ(Problem(), "The row is the last one");
    Run("tableMoveUp");
    EXPECT_EQ(Texts(), "Region|Net|=Fields!Region.Value|=Fields!Net_Amount.Value|");
    Run("tableMoveUp");
    EXPECT_EQ(Problem(), "The row is the first one");
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), before);
    EXPECT_EQ(Find<QAction>("tableMoveUp").shortcut().toString(), "Alt+Shift+Up");
}

TEST_F(TableMoves, SeveralColumnsMoveTogether) {
    Click(At("B"));
    Run("tableColumnRight");
    Click(At("A"));
    Click(At("B"), Qt::ShiftModifier);
    Run("tableMoveRight");
    EXPECT_EQ(Texts(), "|Region|Net||=Fields!Region.Value|=Fields!Net_Amount.Value|");
    EXPECT_EQ(Widths(), "3cm 2cm 3cm ");
    Run("tableMoveLeft");
    EXPECT_EQ(Texts(), "Region|Net||=Fields!Region.Value|=Fields!Net_Amount.Value||");
}

TEST_F(TableMoves, ShiftAndArrowsSelectCells) {
    Click(At("A"));
    Key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "B A");
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "B C D A");
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "B C D A");
    Key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "C A");
    Key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "A");
    Click(At("D"));
    Key(Qt::Key_Left, Qt::ShiftModifier);
    Key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "A B C D");
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(TableMoves, CellsAreNotMergedOverRows) {
    Click(At("A"));
    Click(At("D"), Qt::ShiftModifier);
    Run("tableMerge");
    EXPECT_EQ(Problem(), "A report has no cells that span rows of data; select cells of one row");
}

class ColumnGroupTest : public TableMoves {
 protected:
    ColumnGroupTest()
        : TableMoves(Placed(With(Report(ListTablix(TwoHeads)),
                                 "<TablixColumnHierarchy><TablixMembers><TablixMember/>",
                                 "<TablixColumnHierarchy><TablixMembers><TablixMember><Group Name=\"G\">"
                                 "<GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression>"
                                 "</GroupExpressions></Group></TablixMember>"))) {}
};

TEST_F(ColumnGroupTest, AColumnBesideTheGroupIsOutsideOfIt) {
    Click(At("B"));
    EXPECT_FALSE(Find<QAction>("tableColumnLeftOfGroup").isEnabled());
    Click(At("A"));
    Run("tableColumnLeftOfGroup");
    EXPECT_EQ(Texts(), "|Region|Net||=Fields!Region.Value|=Fields!Net_Amount.Value|");
    EXPECT_NE(
        Model().Source().Text().find("<TablixMembers><TablixMember></TablixMember><TablixMember><Group "),
        std::string::npos)
        << Model().Source().Text();
    Click(At("A"));
    Run("tableColumnRightOfGroup");
    EXPECT_EQ(Texts(), "|Region||Net||=Fields!Region.Value||=Fields!Net_Amount.Value|");
}

class MirroredTable : public TableMoves {
 protected:
    MirroredTable()
        : TableMoves(With(Placed(Report(ListTablix(TwoHeads))), "<DataSetName>Sales</DataSetName><Top>",
                          "<LayoutDirection>RTL</LayoutDirection><DataSetName>Sales</DataSetName><Top>")) {}
};

// The first column is 2 cm wide and on the right: from 4 to 6 cm of the page.
TEST_F(MirroredTable, BordersAreDragged) {
    Click(At("A"));
    EXPECT_GT(At("A").x(), At("B").x());
    Drag(InBody(4, 1.5), InBody(5, 1.5));
    EXPECT_EQ(Widths(), "2cm 4cm ");
    Drag(InBody(7, 1.5), InBody(8, 1.5));
    EXPECT_EQ(Widths(), "3cm 4cm ");
}

TEST_F(MirroredTable, LeftIsWhereTheNextColumnIs) {
    Click(At("A"));
    Run("tableMoveLeft");
    EXPECT_EQ(Texts(), "Net|Region|=Fields!Net_Amount.Value|=Fields!Region.Value|");
    Run("tableMoveRight");
    Run("tableColumnLeft");
    EXPECT_EQ(Texts(), "Region||Net|=Fields!Region.Value||=Fields!Net_Amount.Value|");
    Click(At("A"));
    Key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Model().Selection().size(), 2u);
    Run("tableDeleteColumn");
    EXPECT_EQ(Texts(), "Net|=Fields!Net_Amount.Value|");
}

TEST_F(MirroredTable, AFieldBesideTheLastColumnMakesANewOne) {
    Click(At("A"));
    DropField("Region", InBody(1, 1.5) - QPoint(20, 0));
    EXPECT_EQ(Widths(), "2cm 3cm 3cm ");
    DropField("Region", InBody(7, 1.5));
    EXPECT_EQ(Widths(), "2cm 2cm 3cm 3cm ");
}

// A matrix of 2005 with one group on each side; H is the header of its rows, K that of its columns.
class OlderMatrixTest : public TableMoves {
 protected:
    static std::string Header(const std::string& name) {
        return "<ReportItems><Textbox Name=\"" + name +
               "\"><Value>=Fields!Region.Value</Value></Textbox></ReportItems>";
    }
    static std::string Group(const std::string& name) {
        return "<Grouping Name=\"" + name +
               "\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression></"
               "GroupExpressions>"
               "</Grouping>";
    }
    OlderMatrixTest()
        : TableMoves(
              Report("<Matrix Name=\"T\"><ColumnGroupings><ColumnGrouping><Height>1cm</Height>"
                     "<DynamicColumns>" +
                         Group("C") + Header("K") +
                         "</DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings>"
                         "<RowGrouping><Width>2cm</Width><DynamicRows>" +
                         Group("R") + Header("H") +
                         "</DynamicRows></RowGrouping></RowGroupings><MatrixRows><MatrixRow><Height>1cm"
                         "</Height><MatrixCells><MatrixCell>" +
                         Header("X") +
                         "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns>"
                         "<MatrixColumn><Width>3cm</Width></MatrixColumn></MatrixColumns><DataSetName>"
                         "Sales</DataSetName></Matrix>",
                     "2005")) {}
};

TEST_F(OlderMatrixTest, CommandsOnAHeaderAreForItsGroup) {
    Click(At("K"));
    Run("totalAfter");
    EXPECT_NE(Model().Source().Text().find("</Grouping><Subtotal><ReportItems><Textbox Name=\"Textbox1\">"),
              std::string::npos)
        << Model().Source().Text();
    EXPECT_EQ(Text("Textbox1", "Value"), "Total");
    Click(At("Textbox1"));
    Run("groupDelete");
    EXPECT_EQ(Problem(), "The matrix has no other group of columns");
    Click(At("H"));
    Run("groupDelete");
    EXPECT_EQ(Problem(), "The matrix has no other group of rows");
    Click(At("X"));
    Run("totalBefore");
    EXPECT_EQ(Model().Source().TextAt(Id("T"), "RowGroupings/RowGrouping/DynamicRows/Subtotal/Position"),
              "Before");
}

}  // namespace
}  // namespace designer::test
