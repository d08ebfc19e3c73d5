// SPDX-License-Identifier: GPL-3.0-or-later
// The widths of tables by the mouse: columns that are added stay on the page, and headings of rows are
// pulled.
#include "../tables/small_tables.h"
#include "table_fixture.h"

namespace designer::test {
namespace {

// A table from 1 to 15 centimetres, on a page with room for 16.
std::string WideReport() {
    std::string text = With(Placed(Report(ListTablix())), "<Width>2cm</Width>", "<Width>4cm</Width>");
    text = With(text, "<Width>3cm</Width>", "<Width>10cm</Width>");
    return With(text, "<Width>10cm</Width></Report>",
                "<Width>15cm</Width><Page><PageWidth>20cm</PageWidth><LeftMargin>2cm</LeftMargin>"
                "<RightMargin>2cm</RightMargin></Page></Report>");
}

class TableWidths : public TableWindowTest {
 protected:
    using TableWindowTest::TableWindowTest;
    std::string ReportWidth() {
        return Model().Source().TextAt(Model().Source().Root(), "Width").value_or("-");
    }
    double Right() {
        const ReportItem* table = Model().Item(Id("T"));
        return (table->place.left + Grid().width) * 2.54 / 72;
    }
};

class WideTable : public TableWidths {
 protected:
    WideTable() : TableWidths(WideReport()) {}
};

TEST_F(WideTable, ADraggedColumnStaysOnThePage) {
    // Beside the last column: it has the width of that one, and 24 centimetres become 15.
    DropField("Region", InBody(15.2, 1.5));
    EXPECT_EQ(Grid().columns.size(), 3u);
    EXPECT_EQ(Widths(), "2.5cm 6.25cm 6.25cm ");
    EXPECT_EQ(ReportWidth(), "16cm");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    DropField("Region", InBody(1, 1.5));
    EXPECT_EQ(Grid().columns.size(), 4u);
    EXPECT_NEAR(Right(), 16, 0.02);
    EXPECT_EQ(ReportWidth(), "16cm");
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), WideReport());
}

TEST_F(WideTable, AColumnOfTheMenuStaysOnThePage) {
    Click(At("B"));
    Run("tableColumnRight");
    EXPECT_EQ(Widths(), "2.5cm 6.25cm 6.25cm ");
    EXPECT_EQ(ReportWidth(), "16cm");
}

TEST_F(WideTable, AColumnThatFitsChangesNoOther) {
    Model().Edit("Narrow",
                 [&](Document& document) { SetText(document, Grid().columns[1].element, "Width", "3cm"); });
    Settle();
    DropField("Region", InBody(8.2, 1.5));
    EXPECT_EQ(Widths(), "4cm 3cm 3cm ");
    EXPECT_EQ(ReportWidth(), "15cm");
}

// What its author made wider than the page stays so.
TEST_F(WideTable, ATableThatWasTooWideIsLeftAlone) {
    Model().Edit("Widen", [&](Document& document) {
        SetText(document, Grid().columns[1].element, "Width", "14cm");
        SetText(document, document.Root(), "Width", "19cm");
    });
    Settle();
    Click(At("A"));
    Run("tableColumnRight");
    EXPECT_EQ(Widths(), "4cm 4cm 14cm ");
}

TEST_F(WideTable, ColumnsDoNotBecomeTooNarrow) {
    Click(At("A"));
    for (int count = 0; count < 40; ++count) {
        Run("tableColumnRight");
    }
    for (const GridTrack& column : Grid().columns) {
        EXPECT_GE(column.size, 17.9) << Widths();
    }
}

TEST_F(WideTable, TheHeadOfADraggedColumnIsACaption) {
    std::string text = WideReport();
    text = With(text, "<Field Name=\"Region\">", "<Field Name=\"orderYear\">");
    WriteBytes(File(), text);
    ASSERT_TRUE(m_window->OpenFile(File()));
    Settle();
    DropField("orderYear", InBody(15.2, 1.5));
    EXPECT_NE(Model().Source().Text().find("<Value>Order Year</Value>"), std::string::npos);
}

std::string MatrixReport(const std::string& direction = {}) {
    const auto header = [](const std::string& size, const std::string& name) {
        return "<TablixHeader><Size>" + size + "</Size><CellContents>" + Box(name, name) +
               "</CellContents></TablixHeader>";
    };
    const std::string total = "<TablixMember>" + header("5cm", "Total") + "</TablixMember>";
    return Report(
        "<Tablix "
        "Name=\"T\"><TablixCorner><TablixCornerRows><TablixCornerRow><TablixCornerCell><CellContents>" +
        Box("K1", "K1") + "</CellContents></TablixCornerCell><TablixCornerCell><CellContents>" +
        Box("K2", "K2") +
        "</CellContents></TablixCornerCell></TablixCornerRow></TablixCornerRows></TablixCorner><TablixBody>"
        "<TablixColumns><TablixColumn><Width>2cm</Width></TablixColumn></"
        "TablixColumns><TablixRows><TablixRow>"
        "<Height>1cm</Height><TablixCells>" +
        Cell("V", "1") + "</TablixCells></TablixRow><TablixRow><Height>1cm</Height><TablixCells>" +
        Cell("S", "2") +
        "</TablixCells></TablixRow></TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>"
        "<TablixMember><Group Name=\"Years\"><GroupExpressions><GroupExpression>=Fields!Net_Amount.Value"
        "</GroupExpression></GroupExpressions></Group>" +
        header("1cm", "Year") +
        "</TablixMember></TablixMembers></TablixColumnHierarchy><TablixRowHierarchy><TablixMembers>"
        "<TablixMember><Group Name=\"Regions\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group>" +
        header("3cm", "Region") +
        "<TablixMembers><TablixMember><Group Name=\"Cities\"><GroupExpressions><GroupExpression>"
        "=Fields!Region.Value</GroupExpression></GroupExpressions></Group>" +
        header("2cm", "City") + "</TablixMember></TablixMembers></TablixMember>" + total +
        "</TablixMembers></TablixRowHierarchy>" + direction +
        "<DataSetName>Sales</DataSetName><Top>1cm</Top><Left>1cm</Left></Tablix>");
}

class MatrixHeadings : public TableWidths {
 protected:
    MatrixHeadings() : TableWidths(MatrixReport()) {}
    std::string SizeOf(const std::string& name) {
        const ElementId header = Model().Source().Parent(Model().Source().Parent(Id(name)));
        return Model().Source().TextAt(header, "Size").value_or("-");
    }
    std::string Sizes() { return SizeOf("Region") + " " + SizeOf("City") + " " + SizeOf("Total"); }
};

TEST_F(MatrixHeadings, TheBorderOfALevelIsPulled) {
    Click(At("V"));
    Drag(InBody(4, 2.5), InBody(5, 2.5));
    EXPECT_EQ(Sizes(), "4cm 2cm 6cm");
    EXPECT_EQ(UndoName(), "Resize headings");
    // The next border is the last one before the body.
    Drag(InBody(7, 2.5), InBody(6, 2.5));
    EXPECT_EQ(Sizes(), "4cm 1cm 5cm");
    EXPECT_EQ(Widths(), "2cm ");
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
    Run("editUndo");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), MatrixReport());
}

TEST_F(MatrixHeadings, TheHeightOfTheHeadingsOfColumnsIsPulled) {
    Click(At("V"));
    Drag(InBody(6.5, 2), InBody(6.5, 2.5));
    EXPECT_EQ(SizeOf("Year"), "1.5cm");
    EXPECT_EQ(Sizes(), "3cm 2cm 5cm");
}

TEST_F(MatrixHeadings, ALevelKeepsSomeWidth) {
    Click(At("V"));
    Drag(InBody(6, 2.5), InBody(2, 2.5));
    EXPECT_EQ(SizeOf("Region"), "3cm");
    EXPECT_GT(PointsOf(SizeOf("City")).value_or(0), 1.9);
    EXPECT_LT(PointsOf(SizeOf("City")).value_or(0), 2.1);
}

TEST_F(MatrixHeadings, ThePointerShowsIt) {
    Click(At("V"));
    MoveTo(InBody(4, 2.5));
    QMouseEvent move(QEvent::MouseMove, InBody(4, 2.5), Canvas().viewport()->mapToGlobal(InBody(4, 2.5)),
                     Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(Canvas().viewport(), &move);
    EXPECT_EQ(Canvas().viewport()->cursor().shape(), Qt::SplitHCursor);
}

TEST_F(MatrixHeadings, FromRightToLeftItIsTheRightBorder) {
    const std::string report = MatrixReport("<LayoutDirection>RTL</LayoutDirection>");
    WriteBytes(File(), report);
    ASSERT_TRUE(m_window->OpenFile(File()));
    Settle();
    Click(At("V"));
    // From left to right: the column, the cities, the regions.
    Drag(InBody(8, 2.5), InBody(9, 2.5));
    EXPECT_EQ(Sizes(), "4cm 2cm 6cm");
    Drag(InBody(5, 2.5), InBody(5.5, 2.5));
    EXPECT_EQ(Sizes(), "4cm 2.5cm 6.5cm");
}

TEST_F(MatrixHeadings, AnOlderMatrixToo) {
    const std::string box = "<Textbox Name=\"%1\"><Value>x</Value></Textbox>";
    const auto named = [&](const char* name) { return With(box, "%1", name); };
    const std::string grouping =
        "<Grouping Name=\"%2\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression>"
        "</GroupExpressions></Grouping><ReportItems>";
    const std::string matrix =
        "<Matrix Name=\"T\"><ColumnGroupings><ColumnGrouping><Height>1cm</Height><DynamicColumns>" +
        With(grouping, "%2", "Years") + named("Year") +
        "</ReportItems></DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings><RowGrouping>"
        "<Width>3cm</Width><DynamicRows>" +
        With(grouping, "%2", "Regions") + named("Region") +
        "</ReportItems></DynamicRows></RowGrouping></RowGroupings><MatrixRows><MatrixRow><Height>1cm</Height>"
        "<MatrixCells><MatrixCell><ReportItems>" +
        named("V") +
        "</ReportItems></MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn>"
        "<Width>2cm</Width></MatrixColumn></MatrixColumns><DataSetName>Sales</DataSetName><Top>1cm</Top>"
        "<Left>1cm</Left></Matrix>";
    WriteBytes(File(), Report(matrix, "2005"));
    ASSERT_TRUE(m_window->OpenFile(File()));
    Settle();
    Click(At("V"));
    Drag(InBody(4, 2.5), InBody(5, 2.5));
    EXPECT_NE(Model().Source().Text().find("<RowGrouping><Width>4cm</Width>"), std::string::npos);
    Drag(InBody(5.5, 2), InBody(5.5, 3));
    EXPECT_NE(Model().Source().Text().find("<ColumnGrouping><Height>2cm</Height>"), std::string::npos);
}

// A total spans both levels, and has no width of its own.
TEST_F(MatrixHeadings, AnOlderMatrixWithATotalHasAWidthForEachLevel) {
    const auto level = [](const std::string& width, const std::string& name, const std::string& subtotal) {
        return "<RowGrouping><Width>" + width + "</Width><DynamicRows><Grouping Name=\"" + name +
               "s\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression>"
               "</GroupExpressions></Grouping>" +
               subtotal + "<ReportItems><Textbox Name=\"" + name +
               "\"><Value>x</Value></Textbox></ReportItems></DynamicRows></RowGrouping>";
    };
    const std::string total =
        "<Subtotal><ReportItems><Textbox Name=\"Total\"><Value>Total</Value></Textbox></ReportItems>"
        "</Subtotal>";
    const std::string matrix =
        "<Matrix Name=\"T\"><ColumnGroupings><ColumnGrouping><Height>1cm</Height><DynamicColumns><Grouping "
        "Name=\"Years\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression>"
        "</GroupExpressions></Grouping><ReportItems><Textbox Name=\"Year\"><Value>x</Value></Textbox>"
        "</ReportItems></DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings>" +
        level("3cm", "Region", total) + level("2cm", "City", "") +
        "</RowGroupings><MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell><ReportItems>"
        "<Textbox Name=\"V\"><Value>1</Value></Textbox></ReportItems></MatrixCell></MatrixCells></MatrixRow>"
        "</MatrixRows><MatrixColumns><MatrixColumn><Width>2cm</Width></MatrixColumn></MatrixColumns>"
        "<DataSetName>Sales</DataSetName><Top>1cm</Top><Left>1cm</Left></Matrix>";
    WriteBytes(File(), Report(matrix, "2005"));
    ASSERT_TRUE(m_window->OpenFile(File()));
    Settle();
    Click(At("V"));
    Drag(InBody(4, 2.5), InBody(4.5, 2.5));
    Drag(InBody(6.5, 2.5), InBody(7.5, 2.5));
    std::string after = Report(matrix, "2005");
    after = With(after, "<Width>3cm</Width>", "<Width>3.5cm</Width>");
    after = With(after, "<RowGrouping><Width>2cm</Width>", "<RowGrouping><Width>3cm</Width>");
    EXPECT_EQ(Model().Source().Text(), after);
    EXPECT_EQ(Model().Source().UndoCount(), 2u);
}

}  // namespace
}  // namespace designer::test
