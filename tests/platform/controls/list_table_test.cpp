// SPDX-License-Identifier: GPL-3.0-or-later
// A list shown as a table.
#include <gmock/gmock.h>

#include <QHeaderView>
#include <QTreeView>

#include "shown_controls.h"

using testing::ElementsAre;

class ListAsATable : public ShownList {
 protected:
    void SetUp() override {
        ShownList::SetUp();
        for (const char* heading : {"Report Name", "Frequency", "Next Run"}) {
            list.ColumnHeaders().Add(heading);
        }
        list.View(ListView::ReportView);
        list.ListItems()(1).SubItems(1, "Weekly");
        list.ListItems()(2).SubItems(1, "Daily");
        QApplication::processEvents();
    }
    QHeaderView& Headings() { return *static_cast<QTreeView*>(list.CurrentView())->header(); }
    QString Shown(int item, int column) {
        const QAbstractItemModel& model = *list.CurrentView()->model();
        return model.index(item - 1, column).data().toString();
    }
    QPoint PlaceOfCell(int item, int column) {
        return list.CurrentView()->visualRect(list.CurrentView()->model()->index(item - 1, column)).center();
    }
    void ClickHeading(int column) {
        QTest::mouseClick(Headings().viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(Headings().sectionViewportPosition(column) + 12, Headings().height() / 2));
    }
};

TEST_F(ListAsATable, ShowsHeadingsAndCells) {
    EXPECT_EQ(Headings().count(), 3);
    EXPECT_EQ(list.CurrentView()->model()->headerData(2, Qt::Horizontal).toString(), "Next Run");
    EXPECT_EQ(Shown(1, 0), "Alpha");
    EXPECT_EQ(Shown(2, 1), "Daily");
    EXPECT_EQ(Shown(3, 1), "");
}

TEST_F(ListAsATable, ColumnOfPathsShowsThemAsPeopleWriteThem) {
    list.ColumnHeaders().ShowPaths(2);
    list.ListItems()(1).SubItems(1, "Z:\\srv\\a.rpt");
    list.ListItems()(1).SubItems(2, "Z:\\srv\\a.rpt");
    EXPECT_EQ(Shown(1, 1), "/srv/a.rpt");
    EXPECT_EQ(Shown(1, 2), "Z:\\srv\\a.rpt");
    EXPECT_EQ(list.ListItems()(1).SubItems(1), "Z:\\srv\\a.rpt");
    list.ColumnHeaders().Clear();
    for (const char* heading : {"Report Name", "Frequency"}) {
        list.ColumnHeaders().Add(heading);
    }
    EXPECT_EQ(Shown(1, 1), "Z:\\srv\\a.rpt");
}

TEST_F(ListAsATable, TellsTheHeadingThatIsClickedFromOne) {
    std::vector<int> clicked;
    QObject::connect(&list, &ListView::ColumnClick, [&](int heading) { clicked.push_back(heading); });
    ClickHeading(1);
    ClickHeading(0);
    EXPECT_THAT(clicked, ElementsAre(2, 1));
}

TEST_F(ListAsATable, SortsUpwardsAlsoAtASecondClickOnTheSameHeading) {
    QObject::connect(&list, &ListView::ColumnClick, [this](int heading) {
        list.SortKey(heading - 1);
        list.Sorted(true);
        list.Refresh();
    });
    for (int time = 0; time < 2; ++time) {
        ClickHeading(1);
        EXPECT_THAT(TextsOf(list), ElementsAre("Gamma", "Beta", "Alpha"));
        EXPECT_EQ(Shown(3, 0), "Alpha");
        EXPECT_TRUE(Headings().isSortIndicatorShown());
        EXPECT_EQ(Headings().sortIndicatorSection(), 1);
        EXPECT_EQ(Headings().sortIndicatorOrder(), Qt::AscendingOrder);
    }
}

TEST_F(ListAsATable, SelectsByAClickOnAnyCellOfTheRow) {
    list.FullRowSelect(true);
    QTest::mouseClick(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfCell(2, 1));
    EXPECT_EQ(SelectedText(), "Beta");
    const QItemSelectionModel& selection = *list.CurrentView()->selectionModel();
    EXPECT_TRUE(selection.isSelected(list.CurrentView()->model()->index(1, 2)));
    QTest::keyClicks(list.CurrentView(), "al");
    EXPECT_EQ(SelectedText(), "Alpha");
}

TEST_F(ListAsATable, WithoutFullRowsSelectsByTheTextOnly) {
    list.ListItems()(1).Selected(true);
    list.FullRowSelect(false);
    EXPECT_EQ(SelectedText(), "Alpha");
    const QItemSelectionModel& selection = *list.CurrentView()->selectionModel();
    EXPECT_FALSE(selection.isSelected(list.CurrentView()->model()->index(0, 1)));
    QTest::mouseClick(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfCell(2, 1));
    EXPECT_EQ(SelectedText(), "(none)");
    ClickItem(2);
    EXPECT_EQ(SelectedText(), "Beta");
}

TEST_F(ListAsATable, LetsColumnsBeMovedWhereThatIsAllowed) {
    EXPECT_FALSE(Headings().sectionsMovable());
    list.AllowColumnReorder(true);
    EXPECT_TRUE(Headings().sectionsMovable());
    EXPECT_TRUE(Headings().isFirstSectionMovable());
}

TEST_F(ListAsATable, HidesItsHeadings) {
    list.HideColumnHeaders(true);
    EXPECT_TRUE(list.HideColumnHeaders());
    EXPECT_FALSE(Headings().isVisible());
    list.HideColumnHeaders(false);
    EXPECT_TRUE(Headings().isVisible());
}

TEST_F(ListAsATable, KeepsColumnsAndCellsInTheOtherViews) {
    list.View(ListView::IconView);
    EXPECT_EQ(list.ColumnHeaders().Count(), 3);
    EXPECT_EQ(list.ListItems()(1).SubItems(1), "Weekly");
}

TEST_F(ListAsATable, GivesTheFirstColumnTheMostRoomAndFillsTheRestWithTheLast) {
    EXPECT_GT(Headings().sectionSize(0), Headings().sectionSize(1));
    EXPECT_EQ(Headings().length(), Headings().width());
    const int before = Headings().sectionSize(1);
    list.ColumnHeaders().Clear();
    list.ListItems()(1).SubItems(1, "quarterly, on the last working day");
    for (const char* heading : {"Report Name", "Frequency", "Next Run"}) {
        list.ColumnHeaders().Add(heading);
    }
    QApplication::processEvents();
    EXPECT_GT(Headings().sectionSize(1), before);
}

TEST_F(ListAsATable, LongNameLeavesTheOtherColumnsInSight) {
    list.resize(list.fontMetrics().averageCharWidth() * 70, list.height());
    QApplication::processEvents();
    list.ListItems()(1).Text(std::string(200, 'n'));
    list.ColumnHeaders().Add("Recipients");
    QApplication::processEvents();
    QApplication::processEvents();
    const int last = Headings().count() - 1;
    EXPECT_LT(Headings().sectionViewportPosition(last), Headings().viewport()->width());
    EXPECT_GE(Headings().sectionSize(0), 24 * list.fontMetrics().averageCharWidth());
}

TEST_F(ListAsATable, IsRefilledWithOtherColumns) {
    list.ListItems().Clear();
    list.ColumnHeaders().Clear();
    EXPECT_EQ(Headings().count(), 1);
    for (const char* heading : {"Report Name", "Path", "Output Format", "Frequency", "Next Run"}) {
        list.ColumnHeaders().Add(heading);
    }
    list.ListItems().Add("1:bk", "Sales", 10, 10).SubItems(4, "Monday");
    EXPECT_EQ(Headings().count(), 5);
    EXPECT_EQ(Shown(1, 4), "Monday");
}
