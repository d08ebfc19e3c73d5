// SPDX-License-Identifier: GPL-3.0-or-later
// A Matrix of 2005 gets columns and rows by the commands of the window.
#include "window_fixture.h"

namespace designer::test {
namespace {

std::string OldMatrix() {
    const auto box = [](const std::string& name, const std::string& value) {
        return "<ReportItems><Textbox Name=\"" + name + "\"><Value>" + value +
               "</Value></Textbox></ReportItems>";
    };
    const auto group = [](const std::string& name) {
        return "<Grouping Name=\"" + name +
               "\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression></"
               "GroupExpressions>"
               "</Grouping>";
    };
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\" "
           "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\"><DataSets><DataSet "
           "Name=\"Sales\"><Fields><Field Name=\"Region\"><DataField>Region</DataField></Field><Field "
           "Name=\"Amount\"><DataField>Amount</DataField></Field></Fields><Rows><Row><Region>North</Region>"
           "<Amount>10</Amount></Row></Rows></DataSet></DataSets><Body><ReportItems><Matrix Name=\"M\">"
           "<ColumnGroupings><ColumnGrouping><Height>1cm</Height><DynamicColumns>" +
           group("C") + box("HC", "=Fields!Region.Value") +
           "</DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings><RowGrouping><Width>3cm</Width>"
           "<DynamicRows>" +
           group("R") + box("HR", "=Fields!Region.Value") +
           "</DynamicRows></RowGrouping></RowGroupings><MatrixColumns><MatrixColumn><Width>3cm</Width></"
           "MatrixColumn>"
           "</MatrixColumns><MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell>" +
           box("X", "=Sum(Fields!Amount.Value)") +
           "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><DataSetName>Sales</DataSetName><Top>1cm</"
           "Top>"
           "<Left>1cm</Left></Matrix></ReportItems><Height>6cm</Height></Body><Width>12cm</Width></Report>";
}

class OlderMatrixWindow : public WindowTest {
 protected:
    OlderMatrixWindow() : WindowTest(OldMatrix()) {}
};

TEST_F(OlderMatrixWindow, AColumnIsAddedFilledMovedAndDeleted) {
    Click(At("X"));
    EXPECT_EQ(Selected(), "X");
    Run("tableColumnRight");
    EXPECT_EQ(UndoName(), "Add column");
    const std::string added = Selected();
    EXPECT_EQ(Model().Items().items.size(), 7u);  // two headings and a cell
    EXPECT_EQ(Canvas().Failure(), "");
    Key(Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), "=Count(Fields!Amount.Value)");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Text(added, "Value"), "=Count(Fields!Amount.Value)");
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
    EXPECT_GT(Canvas().AreaOf(Id(added)).left(), Canvas().AreaOf(Id("X")).left());
    Run("tableMoveLeft");
    EXPECT_LT(Canvas().AreaOf(Id(added)).left(), Canvas().AreaOf(Id("X")).left());
    // A heading of a column is that column.
    Model().Select({Model().Items().items.front().id});
    for (const ReportItem& item : Model().Items().items) {
        if (Text(item.name, "Value") == "Amount") {
            Click(At(item.name));
            EXPECT_EQ(Selected(), item.name);
        }
    }
    Run("tableDeleteColumn");
    EXPECT_EQ(Id("X"), NoElement);
    EXPECT_NE(Id(added), NoElement);
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
    while (Model().Source().UndoCount() > 0) {
        Run("editUndo");
    }
    EXPECT_EQ(Model().Source().Text(), OldMatrix());
}

TEST_F(OlderMatrixWindow, ARowIsAdded) {
    Click(At("X"));
    Run("tableRowAbove");
    EXPECT_EQ(Model().Items().items.size(), 7u);
    EXPECT_LT(At(Selected()).y(), At("X").y());
    EXPECT_FALSE(Find<QAction>("tableRowAboveGroup").isEnabled());
    Canvas().Refresh();
    EXPECT_EQ(Canvas().Failure(), "");
    m_window->grab().save("/tmp/c17_m.png");
}

}  // namespace
}  // namespace designer::test
