// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QUrl>

#include "platform/viewer/viewer_fixture.h"

namespace viewer::test {
namespace {

class ViewerMouse : public ViewerTest {
 protected:
    void Drag(QPoint from, QPoint to) {
        QWidget* view = Canvas().viewport();
        QTest::mousePress(view, Qt::LeftButton, {}, from);
        QTest::mouseMove(view, (from + to) / 2);
        QTest::mouseMove(view, to);
        QTest::mouseRelease(view, Qt::LeftButton, {}, to);
        Settle();
    }
};

TEST_F(ViewerMouse, TextIsMarkedAndCopied) {
    Show(2);
    // The second line, from after "Te" to its end.
    Drag(At(1, 36 + 12, 54), At(1, 300, 54));
    EXPECT_EQ(Canvas().TextToCopy(), "xt of it");
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "xt of it");
}

TEST_F(ViewerMouse, AMarkGoesOverLines) {
    Show(2);
    Drag(At(1, 36 + 30, 42), At(1, 36 + 24, 54));
    EXPECT_EQ(Canvas().TextToCopy(), "1\nText");
}

TEST_F(ViewerMouse, ADoubleClickMarksAWord) {
    Show(2);
    QTest::mouseDClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 36 + 8, 54));
    EXPECT_EQ(Canvas().TextToCopy(), "Text");
}

TEST_F(ViewerMouse, WithoutAMarkThePageIsCopied) {
    Show(2);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Page 1\nText of it");
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Canvas().TextToCopy(), "Page 1\nText of it");
}

TEST_F(ViewerMouse, ALinkLeadsToItsPage) {
    fakes::FakePages pages = Pages(9);
    pages.pages[0].links = {{{36, 100, 60, 12}, "", 8, 0}};
    Show(std::move(pages));
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 106));
    Settle();
    EXPECT_EQ(PageBox(), "8 of 9");
}

class Opener : public QObject {
    Q_OBJECT
 public:
    QStringList opened;
 public slots:
    void Open(const QUrl& url) { opened << url.toString(); }
};

TEST_F(ViewerMouse, ALinkOutIsOpenedByTheDesktop) {
    Opener opener;
    QDesktopServices::setUrlHandler("http", &opener, "Open");
    fakes::FakePages pages = Pages(2);
    pages.pages[0].links = {{{36, 100, 60, 12}, "http://example.com/a"}, {{36, 200, 60, 12}, "other.html"}};
    Show(std::move(pages));
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 106));
    EXPECT_EQ(opener.opened, QStringList("http://example.com/a"));
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 300, 106));
    EXPECT_EQ(opener.opened.size(), 1);
    QDesktopServices::unsetUrlHandler("http");
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 206));
    EXPECT_EQ(Message(), "The link other.html is not opened: it does not lead to the web or to mail");
}

TEST_F(ViewerMouse, NothingButTheWebAndMailIsOpened) {
    Opener opener;
    const char* const schemes[] = {"file", "ftp", "javascript", "smb", "tel", "http", "https", "mailto"};
    for (const char* scheme : schemes) {
        QDesktopServices::setUrlHandler(scheme, &opener, "Open");
    }
    for (const std::string link :
         {"file:///etc/passwd", "FILE:///etc/passwd", " \t file:///etc/passwd", "fi\nle:///etc/passwd",
          "/etc/passwd", "//host/share/a.desktop", "ftp://host/a", "javascript:x()", "smb://host/a", "tel:5",
          "http:///etc/passwd", "http:a", "mailto:a@example.com?attach=/etc/passwd",
          "mailto:a@example.com?ATTACHMENT=%2Fetc%2Fpasswd"}) {
        fakes::FakePages pages = Pages(1);
        pages.pages[0].links = {{{36, 100, 60, 12}, link}};
        Show(std::move(pages));
        QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 106));
        EXPECT_EQ(opener.opened, QStringList()) << link;
        EXPECT_EQ(Message(), "The link " + link + " is not opened: it does not lead to the web or to mail");
    }
    for (const std::string link : {"HTTP://example.com/a b", " https://example.com/",
                                   "mailto:a@example.com?subject=x&cc=b@example.com"}) {
        fakes::FakePages pages = Pages(1);
        pages.pages[0].links = {{{36, 100, 60, 12}, link}};
        Show(std::move(pages));
        QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 106));
        EXPECT_EQ(Message(), "") << link;
    }
    EXPECT_EQ(opener.opened, QStringList({"http://example.com/a b", "https://example.com/",
                                          "mailto:a@example.com?subject=x&cc=b@example.com"}));
    for (const char* scheme : schemes) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

TEST_F(ViewerMouse, AMessageGoesByItsButtonByEscAndWithTheNextThingThatIsDone) {
    fakes::FakePages pages = Pages(3);
    pages.pages[0].links = {{{36, 100, 60, 12}, "other.html"}, {{36, 200, 60, 12}, "", 2, 0}};
    const auto fail = [&] {
        Canvas().GoTo(1);
        Settle();
        QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 106));
        Settle();
        ASSERT_NE(Message(), "");
    };
    Show(std::move(pages));
    fail();
    Find("cmdMessageClose").setFocus();
    Click("cmdMessageClose");
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(m_viewer.focusWidget(), &Canvas());
    fail();
    Key(Qt::Key_Escape);
    EXPECT_EQ(Message(), "");
    fail();
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, At(1, 50, 206));
    EXPECT_EQ(Message(), "");
    fail();
    Click("cmdNext");
    EXPECT_EQ(Message(), "");
}

TEST_F(ViewerMouse, ThePointerTellsWhatIsUnderIt) {
    fakes::FakePages pages = Pages(1);
    pages.pages[0].links = {{{36, 100, 60, 12}, "http://example.com/a"}};
    Show(std::move(pages));
    QTest::mouseMove(Canvas().viewport(), At(1, 50, 106));
    EXPECT_EQ(Canvas().viewport()->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseMove(Canvas().viewport(), At(1, 45, 42));
    EXPECT_EQ(Canvas().viewport()->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(Canvas().viewport(), At(1, 300, 400));
    EXPECT_EQ(Canvas().viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ViewerMouse, AnEmptyViewerBearsIt) {
    QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, {}, QPoint(50, 50));
    QTest::mouseDClick(Canvas().viewport(), Qt::LeftButton, {}, QPoint(50, 50));
    Key(Qt::Key_C, Qt::ControlModifier);
    Key(Qt::Key_End);
    Key(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(m_viewer.CurrentPage(), 0);
}

}  // namespace
}  // namespace viewer::test

#include "mouse_test.moc"
