// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/tree_view.h"

#include <gmock/gmock.h>

#include <QHeaderView>
#include <QScrollBar>

#include "shown_controls.h"
#include "support/raises.h"

using testing::ElementsAre;

// Desktop > (Sales > North), Stock
class TreeOnAWindow : public testing::Test {
 protected:
    void SetUp() override {
        tree.resize(300, 300);
        nodes.Add("", "Desktop", "Desktop", 3).Expanded(true);
        nodes.Add("Desktop", "1^Sales", "Sales", 4);
        nodes.Add("Desktop", "2^Stock", "Stock", 4);
        nodes.Add("1^Sales", "3^North", "North", 4);
        QObject::connect(&tree, &TreeView::Click, [this] { told.push_back("Click"); });
        QObject::connect(&tree, &TreeView::DblClick, [this] { told.push_back("DblClick"); });
        QObject::connect(&tree, &TreeView::MouseUp,
                         [this](int button, QPoint) { told.push_back("MouseUp " + std::to_string(button)); });
        QObject::connect(&tree, &TreeView::KeyDown,
                         [this](int code) { told.push_back("KeyDown " + std::to_string(code)); });
        tree.show();
        tree.activateWindow();
        tree.setFocus();
        QApplication::processEvents();
    }
    void ClickNode(const char* key, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(tree.viewport(), button, Qt::NoModifier, tree.visualItemRect(&nodes(key)).center());
    }
    std::string SelectedText() { return tree.HasSelection() ? tree.SelectedItem().Text() : "(none)"; }

    TreeView tree;
    ::Nodes& nodes = tree.Nodes();
    std::vector<std::string> told;
};

TEST_F(TreeOnAWindow, KeepsItsNodesInTheOrderInWhichTheyCame) {
    EXPECT_EQ(nodes.Count(), 4);
    EXPECT_EQ(nodes(1).Text(), "Desktop");
    EXPECT_EQ(nodes(4).Text(), "North");
    EXPECT_EQ(nodes("3^North").Parent()->Key, "1^Sales");
    EXPECT_EQ(nodes("Desktop").Children(), 2);
    EXPECT_EQ(nodes("Desktop").Parent(), nullptr);
    EXPECT_EQ(nodes(2).Image(), 4);
}

TEST_F(TreeOnAWindow, CountsNodesWithoutAKey) {
    nodes.Add("2^Stock", "", "Shelf");
    nodes.Add("2^Stock", "", "Shelf");
    EXPECT_EQ(nodes.Count(), 6);
    EXPECT_EQ(nodes("2^Stock").Children(), 2);
}

TEST_F(TreeOnAWindow, RefusesTakenKeysAndUnknownParents) {
    EXPECT_EQ(DescriptionRaisedBy([&] { nodes.Add("", "Desktop", "x"); }), "Key is not unique in collection");
    EXPECT_EQ(DescriptionRaisedBy([&] { nodes.Add("none", "y", "y"); }), "Element not found");
    EXPECT_EQ(DescriptionRaisedBy([&] { nodes(5); }), "Index out of bounds");
    EXPECT_EQ(NumberRaisedBy([&] { nodes(0); }), 35600);
    EXPECT_EQ(NumberRaisedBy([&] { nodes("none"); }), 35601);
    EXPECT_EQ(NumberRaisedBy([&] { tree.SelectedItem(); }), 91);
    EXPECT_EQ(nodes.Count(), 4);
}

TEST_F(TreeOnAWindow, RemovesANodeWithAllBelowIt) {
    nodes("3^North").Selected(true);
    nodes.Remove("1^Sales");
    EXPECT_EQ(nodes.Count(), 2);
    EXPECT_FALSE(nodes.Has("3^North"));
    EXPECT_EQ(nodes(2).Text(), "Stock");
    EXPECT_EQ(SelectedText(), "(none)");
    nodes.Clear();
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(tree.topLevelItemCount(), 0);
    nodes.Add("", "Desktop", "Desktop");
}

TEST_F(TreeOnAWindow, HasNothingSelectedAtFirst) {
    EXPECT_EQ(SelectedText(), "(none)");
    EXPECT_THAT(told, ElementsAre());
}

TEST_F(TreeOnAWindow, TellsAClickOnANodeByMouseAndByKeyboard) {
    ClickNode("1^Sales");
    EXPECT_EQ(SelectedText(), "Sales");
    EXPECT_THAT(told, ElementsAre("Click", "MouseUp 1"));
    told.clear();
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(SelectedText(), "Stock");
    EXPECT_THAT(told, ElementsAre("KeyDown 40", "Click"));
}

TEST_F(TreeOnAWindow, SelectedByCodeIsNotClicked) {
    nodes("1^Sales").Selected(true);
    EXPECT_TRUE(nodes("1^Sales").Selected());
    EXPECT_EQ(SelectedText(), "Sales");
    EXPECT_THAT(told, ElementsAre());
}

TEST_F(TreeOnAWindow, OpenedAndClosedIsNotClicked) {
    ClickNode("1^Sales");
    told.clear();
    const QRect sales = tree.visualItemRect(&nodes("1^Sales"));
    const QPoint arrow(sales.left() - tree.indentation() / 2, sales.center().y());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, arrow);
    EXPECT_TRUE(nodes("1^Sales").Expanded());
    QTest::keyClick(&tree, Qt::Key_Left);
    EXPECT_FALSE(nodes("1^Sales").Expanded());
    nodes("1^Sales").Expanded(true);
    EXPECT_EQ(SelectedText(), "Sales");
    EXPECT_THAT(told, ElementsAre("MouseUp 1", "KeyDown 37"));
}

TEST_F(TreeOnAWindow, SelectsWithTheRightButtonBeforeItTells) {
    std::string seen;
    QObject::connect(&tree, &TreeView::MouseUp, [&] { seen = SelectedText(); });
    ClickNode("2^Stock", Qt::RightButton);
    EXPECT_EQ(seen, "Stock");
    EXPECT_THAT(told, ElementsAre("MouseUp 2"));
}

TEST_F(TreeOnAWindow, KeepsItsSelectionWhenTheClickIsBesideAllNodes) {
    ClickNode("2^Stock");
    told.clear();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 280));
    EXPECT_EQ(SelectedText(), "Stock");
    EXPECT_THAT(told, ElementsAre("MouseUp 1"));
}

TEST_F(TreeOnAWindow, EnterAndTheDoubleClickAreTheSame) {
    ClickNode("2^Stock");
    told.clear();
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_THAT(told, ElementsAre("KeyDown 13", "DblClick"));
    told.clear();
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier,
                       tree.visualItemRect(&nodes("2^Stock")).center());
    EXPECT_THAT(told, ElementsAre("DblClick"));
}

TEST_F(TreeOnAWindow, SurvivesAHandlerThatRefillsIt) {
    QObject::connect(&tree, &TreeView::KeyDown, [this] {
        nodes.Clear();
        nodes.Add("", "Desktop", "Desktop");
    });
    ClickNode("2^Stock");
    QTest::keyClick(&tree, Qt::Key_F5);
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_EQ(SelectedText(), "(none)");
}

TEST_F(TreeOnAWindow, ScrollsToTextsThatAreLongerThanItIsWide) {
    QScrollBar& bar = *tree.horizontalScrollBar();
    QApplication::processEvents();
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_EQ(tree.header()->sectionSize(0), tree.viewport()->width());
    Node& node = nodes.Add("Desktop", "4^Long", std::string(100, 'W'), 4);
    QApplication::processEvents();
    const int wide = tree.fontMetrics().horizontalAdvance(QString(100, 'W'));
    EXPECT_GT(bar.maximum(), wide - tree.viewport()->width());
    node.Text("Short");
    tree.resize(500, 300);
    QApplication::processEvents();
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_EQ(tree.header()->sectionSize(0), tree.viewport()->width());
}
