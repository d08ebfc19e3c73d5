// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/viewer_fixture.h"

namespace viewer::test {
namespace {

class ViewerFind : public ViewerTest {
 protected:
    void Type(const char* words) {
        Key(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(&Find<QLineEdit>("txtFind"), words);
        Settle();
    }
    std::string State() { return Find<QLabel>("lblFind").text().toStdString(); }
    static fakes::FakePages Fruit() {
        fakes::FakePages pages = Pages(6);
        pages.pages[1].lines = {"apple", "pear"};
        pages.pages[4].lines = {"plum", "Apple", "cherry"};
        return pages;
    }
};

TEST_F(ViewerFind, TypingGoesToTheFirstPlace) {
    Show(Fruit());
    Type("app");
    EXPECT_TRUE(Find("findBar").isVisible());
    EXPECT_EQ(State(), "Page 2");
    EXPECT_EQ(Canvas().TextToCopy(), "app");
    QTest::keyClicks(&Find<QLineEdit>("txtFind"), "le");
    Settle();
    EXPECT_EQ(State(), "Page 2") << "the longer word is looked for from the same place";
}

TEST_F(ViewerFind, F3GoesOnAndRound) {
    Show(Fruit());
    Type("apple");
    Key(Qt::Key_F3);
    EXPECT_EQ(State(), "Page 5");
    EXPECT_EQ(Canvas().TextToCopy(), "Apple");
    Key(Qt::Key_F3);
    EXPECT_EQ(State(), "Page 2, gone round");
    Key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(State(), "Page 5, gone round");
    Key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(State(), "Page 2");
}

TEST_F(ViewerFind, EnterAndButtonsGoOnAsWell) {
    Show(Fruit());
    Type("apple");
    QTest::keyClick(&Find<QLineEdit>("txtFind"), Qt::Key_Return);
    Settle();
    EXPECT_EQ(State(), "Page 5");
    QTest::keyClick(&Find<QLineEdit>("txtFind"), Qt::Key_Return, Qt::ShiftModifier);
    Settle();
    EXPECT_EQ(State(), "Page 2");
    Click("cmdFindNext");
    EXPECT_EQ(State(), "Page 5");
    Click("cmdFindPrevious");
    EXPECT_EQ(State(), "Page 2");
}

TEST_F(ViewerFind, WhatIsNowhereIsNotFound) {
    Show(Fruit());
    Type("banana");
    EXPECT_EQ(State(), "Not found");
    EXPECT_EQ(PageBox(), "1 of 6");
}

TEST_F(ViewerFind, PagesThatAreNotMadeYetAreSearchedToo) {
    fakes::FakePages pages = Pages(3000);
    pages.pages[2900].lines = {"needle"};
    Source(std::move(pages));
    m_viewer.ViewReport();
    Type("needle");
    EXPECT_EQ(State(), "Page 2901");
    EXPECT_EQ(m_viewer.CurrentPage(), 2901);
}

TEST_F(ViewerFind, BackwardsFromTheFirstPageIsFromTheLast) {
    Source(Fruit());
    m_viewer.ViewReport();
    Key(Qt::Key_F, Qt::ControlModifier);
    Find<QLineEdit>("txtFind").setText("apple");
    Click("cmdFindPrevious");
    EXPECT_EQ(State(), "Page 5, gone round");
}

TEST_F(ViewerFind, TheWayBackwardsMakesThePagesThatAreMissing) {
    auto pages = std::make_unique<fakes::FakePageView>(Fruit(), m_engine.calls);
    pages->Reach(1);
    PageDocument document(std::move(pages));
    Finder finder;
    finder.SetDocument(&document);
    int found = 0;
    QObject::connect(&finder, &Finder::Found, [&](int page) { found = page; });
    finder.Start("apple", viewer::Direction::Backwards, 1, 0);
    Settle();
    EXPECT_EQ(found, 5);
    EXPECT_TRUE(document.IsComplete());
}

TEST_F(ViewerFind, EscapeClosesTheLineAndTheMarksGo) {
    Show(Fruit());
    const QImage before = Canvas().viewport()->grab().toImage();
    Type("Page 1");
    EXPECT_NE(Canvas().viewport()->grab().toImage().copy(0, 0, 800, 400), before.copy(0, 0, 800, 400));
    QTest::keyClick(&Find<QLineEdit>("txtFind"), Qt::Key_Escape);
    Settle();
    EXPECT_FALSE(Find("findBar").isVisible());
    EXPECT_TRUE(Canvas().hasFocus());
    EXPECT_EQ(Canvas().viewport()->grab().toImage(), before);
}

TEST_F(ViewerFind, AnEmptiedLineFindsNothing) {
    Show(Fruit());
    Type("apple");
    Find<QLineEdit>("txtFind").clear();
    Settle();
    EXPECT_EQ(State(), "");
}

TEST_F(ViewerFind, F3WithoutWordsAsksForThem) {
    Show(Fruit());
    Key(Qt::Key_F3);
    EXPECT_TRUE(Find<QLineEdit>("txtFind").hasFocus());
}

TEST_F(ViewerFind, WithoutAReportThereIsNothingToFindIn) {
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(Find("findBar").isVisible());
}

}  // namespace
}  // namespace viewer::test
