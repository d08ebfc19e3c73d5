// SPDX-License-Identifier: GPL-3.0-or-later
// The report as a text: what is typed is one step of the document.
#include <QPlainTextEdit>
#include <QTextBlock>

#include "designer/window/typed_change.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

TEST(TypedChange, IsTheSmallestOne) {
    EXPECT_EQ(ChangeOf("<a>one</a>", "<a>one</a>", "\n"), (TypedChange{10, 0, ""}));
    EXPECT_TRUE(ChangeOf("<a>one</a>", "<a>one</a>", "\n").IsNone());
    EXPECT_EQ(ChangeOf("<a>one</a>", "<a>none</a>", "\n"), (TypedChange{3, 0, "n"}));
    EXPECT_EQ(ChangeOf("<a>one</a>", "<a>o</a>", "\n"), (TypedChange{4, 2, ""}));
    EXPECT_EQ(ChangeOf("", "<a/>", "\n"), (TypedChange{0, 0, "<a/>"}));
    EXPECT_EQ(ChangeOf("aa", "aaa", "\n"), (TypedChange{2, 0, "a"}));
}

TEST(TypedChange, BeginsAtATag) {
    EXPECT_EQ(ChangeOf("<a><c/></a>", "<a><b/><c/></a>", "\n"), (TypedChange{3, 0, "<b/>"}));
}

TEST(TypedChange, LeavesLineEndsAlone) {
    EXPECT_EQ(ChangeOf("<a>\r\n1\r\n2\n</a>", "<a>\n1\n3\n2\n</a>", "\r\n"), (TypedChange{8, 0, "3\r\n"}));
    EXPECT_EQ(ChangeOf("a\r\nb\rc", "a\nb\nd", ""), (TypedChange{5, 1, "d"}));
    EXPECT_EQ(ChangeOf("a\r\nb", "ab", "\r\n"), (TypedChange{1, 2, ""}));
}

TEST(TypedChange, KeepsCharactersWhole) {
    EXPECT_EQ(ChangeOf("<a>\xc3\xa4</a>", "<a>\xc3\xb6</a>", "\n"), (TypedChange{3, 2, "\xc3\xb6"}));
    EXPECT_EQ(ChangeOf("\xc3\xa4", "\xc4\xa4", "\n"), (TypedChange{0, 2, "\xc4\xa4"}));
}

class Xml : public WindowTest {
 protected:
    using WindowTest::WindowTest;
    QPlainTextEdit& Editor() { return Find<QPlainTextEdit>("txtXml"); }
    bool IsShown() { return Editor().isVisible(); }
    // Finds the words and types over them.
    void Replace(const QString& words, const QString& typed) {
        Editor().moveCursor(QTextCursor::Start);
        ASSERT_TRUE(Editor().find(words));
        QTest::keyClicks(&Editor(), typed);
    }
    std::string Flaw() { return Find<QLabel>("lblXmlFlaw").text().toStdString(); }
};

TEST_F(Xml, AChangeIsOneStepThatLeavesTheRestAlone) {
    Select({"Note"});
    Run("viewXml");
    EXPECT_EQ(Editor().textCursor().block().text().trimmed(), "<Textbox Name=\"Note\">");
    Replace("Sales", "Costs & more");
    EXPECT_TRUE(m_window->isWindowModified());
    QTest::keyClick(&Editor(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Flaw(),
              "Line 9, column 68: this is not well-formed XML: a & that begins no reference to a character. "
              "The report "
              "is as it was");
    EXPECT_EQ(Model().Source().Text(), SmallReport());
    Replace("Costs &", "Costs and");
    QTest::keyClick(&Editor(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Flaw(), "");
    EXPECT_EQ(UndoName(), "Edit XML");
    EXPECT_EQ(Model().Source().UndoCount(), 1U);
    std::string expected = SmallReport();
    expected.replace(expected.find("Sales<"), 5, "Costs and more");
    EXPECT_EQ(Model().Source().Text(), expected);
    Run("viewDesign");
    EXPECT_EQ(Selected(), "Title");  // the item at the cursor
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), SmallReport());
    Run("viewXml");
    EXPECT_EQ(Editor().toPlainText().toStdString(), SmallReport());
}

TEST_F(Xml, ATextThatIsNotWellFormedKeepsThePage) {
    Run("viewXml");
    Replace("</Body>", "</Boby>");
    Find<QAction>("viewDesign").trigger();
    EXPECT_TRUE(IsShown());
    EXPECT_NE(Flaw(), "");
    Find<QAction>("viewPreview").trigger();
    EXPECT_TRUE(IsShown());
    Find<QAction>("fileSave").trigger();
    EXPECT_EQ(Written(), SmallReport());
    EXPECT_TRUE(IsShown());
    QTest::mouseClick(&Find<QAbstractButton>("cmdRevertXml"), Qt::LeftButton);
    EXPECT_FALSE(m_window->isWindowModified());
    Run("viewDesign");
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(Model().Source().UndoCount(), 0U);
}

TEST_F(Xml, UndoIsThatOfTheTextWhileItIsTyped) {
    Run("viewXml");
    Replace("Thanks", "x");
    QTest::keyClick(&Editor(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&Editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Editor().toPlainText().toStdString(), SmallReport());
    EXPECT_FALSE(m_window->isWindowModified());
    EXPECT_EQ(Model().Source().UndoCount(), 0U);
}

TEST_F(Xml, SavingTakesWhatIsTyped) {
    Run("viewXml");
    Replace("Thanks", "Good bye");
    Run("fileSave");
    std::string expected = SmallReport();
    expected.replace(expected.find("Thanks"), 6, "Good bye");
    EXPECT_EQ(Written(), expected);
    EXPECT_FALSE(m_window->isWindowModified());
    EXPECT_TRUE(IsShown());
}

TEST_F(Xml, AnotherFileForgetsWhatWasTyped) {
    Run("viewXml");
    Replace("</Body>", "</Boby>");
    EXPECT_TRUE(m_window->OpenFile(File()));
    Settle();
    EXPECT_TRUE(Canvas().isVisible());
    EXPECT_FALSE(m_window->isWindowModified());
}

class XmlOfAnotherSystem : public Xml {
 protected:
    static std::string Bytes() {
        std::string bytes = SmallReport();
        for (std::size_t at = 0; (at = bytes.find('\n', at)) != std::string::npos; at += 2) {
            bytes.replace(at, 1, "\r\n");
        }
        bytes.replace(bytes.find("Thanks"), 6, "10\xc2\xa0kg");
        return bytes;
    }
    XmlOfAnotherSystem() : Xml(Bytes()) {}
};

TEST_F(XmlOfAnotherSystem, LineEndsAndBlanksStay) {
    Run("viewXml");
    Replace("<Height>8cm</Height>", "<Height>9cm</Height>");
    Run("viewDesign");
    std::string expected = Bytes();
    expected.replace(expected.find("<Height>8cm"), 11, "<Height>9cm");
    EXPECT_EQ(Model().Source().Bytes(), expected);
}

}  // namespace
}  // namespace designer::test
