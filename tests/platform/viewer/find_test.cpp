// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/finder.h"
#include "platform/viewer/page_document.h"
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

// Makes a page at every third request only, as a run in a thread of its own does.
class LatePages : public report::PageView {
 public:
    explicit LatePages(std::unique_ptr<report::PageView> pages) : m_pages(std::move(pages)) {
        m_pages->Reach(1);
    }
    bool Reach(int n) override {
        if (n > m_pages->PagesMade() && ++m_asked % 3 == 0) {
            m_pages->Reach(m_pages->PagesMade() + 1);
        }
        return n <= m_pages->PagesMade();
    }
    int PagesMade() const override { return m_pages->PagesMade(); }
    bool AllMade() const override { return m_pages->AllMade(); }
    double Width(int n) const override { return m_pages->Width(n); }
    double Height(int n) const override { return m_pages->Height(n); }
    bool WaitsForTotal() const override { return m_pages->WaitsForTotal(); }
    void Draw(int n, QPainter& painter) override { m_pages->Draw(n, painter); }
    bool WritePdf(const std::string& file, int first, int last,
                  const std::function<bool(int)>& goOn) override {
        return m_pages->WritePdf(file, first, last, goOn);
    }
    std::vector<report::Character> Characters(int n) override { return m_pages->Characters(n); }
    std::vector<report::Link> Links(int n) override { return m_pages->Links(n); }
    const std::vector<report::MapEntry>& DocumentMap() const override { return m_pages->DocumentMap(); }

 private:
    std::unique_ptr<report::PageView> m_pages;
    int m_asked = 0;
};

TEST_F(ViewerFind, PagesThatComeLateAreWaitedFor) {
    m_engine.reports["sales.rpt"].pages = Fruit();
    const std::shared_ptr<report::Report> report = m_engine.OpenReport("sales.rpt");
    PageDocument document(std::make_unique<LatePages>(report->OpenPages()));
    Finder finder;
    finder.SetDocument(&document);
    std::string said;
    QObject::connect(&finder, &Finder::Found, [&](int page, const CharacterRange&, bool wrapped) {
        said += std::to_string(page) + (wrapped ? " round;" : ";");
    });
    QObject::connect(&finder, &Finder::NotFound, [&] { said += "nowhere;"; });
    const auto find = [&](const char* words, Direction direction) {
        finder.Start(words, direction, 1, 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !finder.IsBusy(); }));
    };
    find("plum", Direction::Forwards);
    EXPECT_EQ(document.Count(), 5);
    find("Page 6", Direction::Backwards);
    find("banana", Direction::Forwards);
    EXPECT_EQ(said, "5;6 round;nowhere;");
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
