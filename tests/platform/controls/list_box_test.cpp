// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_box.h"

#include <gmock/gmock.h>

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "shown_form.h"
#include "support/raises.h"

using testing::ElementsAre;
using testing::IsEmpty;

class Lines : public testing::Test {
 protected:
    void SetUp() override {
        for (const char* text : {"1>sales.rpt", "2>stock.rpt", "4>sales.rpt"}) {
            list.AddItem(text);
        }
        form.Show(&list);
        QObject::connect(&list, &ListBox::Click, [this] { told.push_back("Click " + list.Text()); });
        QObject::connect(&list, &ListBox::DblClick, [this] { told.push_back("DblClick " + list.Text()); });
        QObject::connect(&list, &ListBox::MouseMove, [this] { ++moves; });
        QObject::connect(&list, &ListBox::OLEDragDrop,
                         [this](const std::vector<std::string>& files) { dropped = files; });
    }
    QPoint PlaceOf(int index) { return list.visualItemRect(list.item(index)).center(); }
    void ClickOn(int index) { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, PlaceOf(index)); }
    bool Drop(const QList<QUrl>& urls) {
        QMimeData carried;
        carried.setUrls(urls);
        QDragEnterEvent enter(PlaceOf(0), Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent drop(PlaceOf(0), Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &drop);
        return drop.isAccepted();
    }

    ShownForm form;
    ListBox list;
    std::vector<std::string> told, dropped;
    int moves = 0;
};

TEST_F(Lines, CountFromZeroAndNoneIsSelectedAtFirst) {
    EXPECT_EQ(list.ListCount(), 3);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(list.List(1), "2>stock.rpt");
    EXPECT_EQ(list.List(3), "");
    list.setFocus();
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(Lines, AreNotRemovedWithoutASelection) {
    EXPECT_EQ(NumberRaisedBy([this] { list.RemoveItem(list.ListIndex()); }), 5);
    EXPECT_EQ(DescriptionRaisedBy([this] { list.RemoveItem(-1); }), "Invalid procedure call or argument");
    EXPECT_EQ(NumberRaisedBy([this] { list.RemoveItem(3); }), 5);
    EXPECT_EQ(list.ListCount(), 3);
}

TEST_F(Lines, SelectedOneThatIsRemovedLeavesNoneSelected) {
    for (const int index : {1, 1, 0}) {
        list.ListIndex(index);
        told.clear();
        list.RemoveItem(index);
        EXPECT_EQ(list.ListIndex(), -1);
        EXPECT_THAT(told, IsEmpty());
    }
    EXPECT_EQ(list.ListCount(), 0);
}

TEST_F(Lines, SelectionStaysWhileOthersAreRemoved) {
    list.ListIndex(1);
    list.RemoveItem(0);
    EXPECT_EQ(list.ListIndex(), 0);
    list.RemoveItem(1);
    EXPECT_EQ(list.Text(), "2>stock.rpt");
}

TEST_F(Lines, AreClickedByMouseKeysAndCode) {
    ClickOn(1);
    ClickOn(1);
    list.setFocus();
    Press(Qt::Key_Down);
    list.ListIndex(0);
    list.ListIndex(-1);
    EXPECT_THAT(told, ElementsAre("Click 2>stock.rpt", "Click 2>stock.rpt", "Click 4>sales.rpt",
                                  "Click 1>sales.rpt"));
    EXPECT_EQ(NumberRaisedBy([this] { list.ListIndex(3); }), 380);
}

TEST_F(Lines, DoubleClickIsToldOnALineOnly) {
    ClickOn(2);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, PlaceOf(2));
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.back(), "DblClick 4>sales.rpt");
    told.clear();
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.viewport()->rect().bottomRight());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Lines, MouseMovesAreToldWithoutAButton) {
    for (const int index : {1, 2}) {
        QMouseEvent move(QEvent::MouseMove, PlaceOf(index), list.viewport()->mapToGlobal(PlaceOf(index)),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &move);
    }
    EXPECT_EQ(moves, 2);
    EXPECT_TRUE(list.viewport()->hasMouseTracking());
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(Lines, FilesAreDroppedAsTheSystemWritesPaths) {
    list.AcceptFiles(true);
    EXPECT_TRUE(Drop({QUrl::fromLocalFile("/srv/reports/a b.rpt"), QUrl("http://example.com/x.rpt")}));
    EXPECT_THAT(dropped, ElementsAre("Z:\\srv\\reports\\a b.rpt"));
    EXPECT_EQ(list.ListCount(), 3);
    dropped.clear();
    EXPECT_FALSE(Drop({QUrl("http://example.com/x.rpt")}));
    list.AcceptFiles(false);
    EXPECT_FALSE(Drop({QUrl::fromLocalFile("/srv/a.rpt")}));
    EXPECT_THAT(dropped, IsEmpty());
}

TEST_F(Lines, ClearTakesAll) {
    list.ListIndex(0);
    told.clear();
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_THAT(told, IsEmpty());
}
