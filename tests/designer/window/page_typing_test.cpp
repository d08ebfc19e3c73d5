// SPDX-License-Identifier: GPL-3.0-or-later
// Typing on the page: into several text boxes at once, and in the look of the text box.
#include <QTextBlock>
#include <QTextEdit>

#include "../graphics/sales_report.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class PageTyping : public WindowTest {
 protected:
    using WindowTest::WindowTest;
    QTextEdit& Editor() { return Find<QTextEdit>("txtInPlace"); }
    void Take() {
        QTest::keyClick(&Editor(), Qt::Key_Return);
        Settle();
    }
    std::string Values() { return Value("Title") + "|" + Value("Amount") + "|" + Value("Note"); }
};

TEST_F(PageTyping, SeveralTextBoxesGetWhatIsTyped) {
    Click(At("Title"));
    Click(At("Amount"), Qt::ControlModifier);
    QTest::keyClicks(&Canvas(), "n");
    EXPECT_EQ(Status(), "What you type goes into 2 text boxes");
    EXPECT_EQ(Editor().accessibleName(), "Text of 2 text boxes");
    QTest::keyClicks(&Editor(), "ew");
    Take();
    EXPECT_EQ(Values(), "new|new|Thanks");
    EXPECT_EQ(UndoName(), "Edit 2 items");
    EXPECT_EQ(Selected(), "Title Amount");
    Run("editUndo");
    EXPECT_EQ(Values(), "Sales|=1+1|Thanks");
}

TEST_F(PageTyping, EachTextBoxKeepsItsOwnLook) {
    Model().Edit("Look", [&](Document& document) {
        SetText(document, Id("Title"), "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontWeight", "Bold");
        SetText(document, Id("Note"), "Paragraphs/Paragraph/TextRuns/TextRun/Style/Color", "Red");
    });
    Select({"Title", "Note"});
    Canvas().setFocus();
    QTest::keyClicks(&Canvas(), "a");
    Take();
    EXPECT_EQ(Values(), "a|=1+1|a");
    const std::string style = "Paragraphs/Paragraph/TextRuns/TextRun/Style/";
    EXPECT_EQ(Text("Title", (style + "FontWeight").c_str()), "Bold");
    EXPECT_EQ(Text("Note", (style + "FontWeight").c_str()), "-");
    EXPECT_EQ(Text("Note", (style + "Color").c_str()), "Red");
    EXPECT_EQ(Text("Title", (style + "Color").c_str()), "-");
}

TEST_F(PageTyping, OpeningATextIsOfOneTextBox) {
    Click(At("Title"));
    Click(At("Amount"), Qt::ControlModifier);
    Key(Qt::Key_F2);
    EXPECT_EQ(Selected(), "Amount");
    QTest::keyClicks(&Editor(), "one");
    Take();
    EXPECT_EQ(Values(), "Sales|one|Thanks");
}

TEST_F(PageTyping, WhatIsNoTextBoxSaysSo) {
    Run("insertRectangle");
    QTest::keyClicks(&Canvas(), "x");
    EXPECT_EQ(Status(), "Only a text box takes text");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

std::string StyledReport() {
    const auto box = [](const std::string& name, const std::string& boxStyle, const std::string& paragraph,
                        const std::string& run, const std::string& place) {
        return "<Textbox Name=\"" + name +
               "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>Total</Value><Style>" + run +
               "</Style></TextRun><TextRun><Value> of all</Value><Style /></TextRun></TextRuns><Style>" +
               paragraph + "</Style></Paragraph></Paragraphs>" + place +
               "<Height>3cm</Height><Width>8cm</Width><Style>" + boxStyle + "</Style></Textbox>";
    };
    return SalesReport(
        box("Big",
            "<BackgroundColor>#203040</BackgroundColor><VerticalAlign>Bottom</VerticalAlign>"
            "<PaddingLeft>12pt</PaddingLeft><PaddingBottom>6pt</PaddingBottom>",
            "<TextAlign>Right</TextAlign>",
            "<FontFamily>DejaVu Serif</FontFamily><FontSize>24pt</FontSize><Color>LightGreen</Color>"
            "<FontWeight>Bold</FontWeight>",
            "<Top>1cm</Top><Left>1cm</Left>") +
        box("Plain", "", "", "", "<Top>6cm</Top><Left>1cm</Left>"));
}

class EditorLook : public PageTyping {
 protected:
    EditorLook() : PageTyping(StyledReport()) {}
    QTextEdit& Open(const char* name) {
        Select({name});
        Key(Qt::Key_F2);
        return Editor();
    }
    static QTextCharFormat FormatAt(QTextEdit& editor, int position) {
        QTextCursor cursor(editor.document());
        cursor.setPosition(position);
        return cursor.charFormat();
    }
    double PointSize(QTextEdit& editor, int position) {
        return QFontInfo(FormatAt(editor, position).font()).pointSizeF();
    }
};

TEST_F(EditorLook, TheTextHasTheFontColourAndAlignmentOfTheTextBox) {
    QTextEdit& editor = Open("Big");
    const QTextCharFormat big = FormatAt(editor, 2), plain = FormatAt(editor, 8);
    EXPECT_EQ(big.font().family(), "DejaVu Serif");
    EXPECT_EQ(big.font().pointSizeF(), 24);
    EXPECT_TRUE(big.font().bold());
    EXPECT_EQ(big.foreground().color().name(), "#90ee90");
    EXPECT_EQ(plain.font().pointSizeF(), 10);
    EXPECT_EQ(plain.foreground().color().name(), "#000000");
    EXPECT_EQ(editor.palette().color(QPalette::Base).name(), "#203040");
    EXPECT_EQ(editor.document()->begin().blockFormat().alignment() & Qt::AlignHorizontal_Mask,
              Qt::AlignRight);
    // At the bottom, above the padding.
    const double scale = Canvas().logicalDpiY() / 72.0;
    const QPoint corner(0, editor.viewport()->height());
    const double below = editor.height() - editor.viewport()->mapTo(&editor, corner).y();
    EXPECT_NEAR(below, 6 * scale, 2);
    EXPECT_GT(editor.viewport()->y(), editor.height() / 3);
}

TEST_F(EditorLook, TheTextFollowsTheZoom) {
    Canvas().SetZoom(200);
    QTextEdit& editor = Open("Big");
    EXPECT_EQ(FormatAt(editor, 2).font().pointSizeF(), 48);
    EXPECT_EQ(FormatAt(editor, 8).font().pointSizeF(), 20);
    QTextCursor cursor = editor.textCursor();
    cursor.setPosition(12);
    editor.setTextCursor(cursor);
    QTest::keyClicks(&editor, "!");
    Canvas().SetZoom(50);
    EXPECT_EQ(editor.toPlainText(), "Total of all!");
    EXPECT_EQ(FormatAt(editor, 2).font().pointSizeF(), 12);
    EXPECT_EQ(editor.textCursor().position(), 13);
    Take();
    EXPECT_EQ(Value("Big"), "Total");
    EXPECT_NE(Model().Source().Text().find("<Value> of all!</Value>"), std::string::npos);
    EXPECT_NE(Model().Source().Text().find("<FontSize>24pt</FontSize>"), std::string::npos);
}

TEST_F(EditorLook, TheEditorBecomesHigherWithItsText) {
    QTextEdit& editor = Open("Plain");
    const int before = editor.height();
    for (int line = 0; line < 12; ++line) {
        QTest::keyClicks(&editor, "line");
        QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier);
    }
    EXPECT_GT(editor.height(), before);
    EXPECT_EQ(editor.verticalScrollBar()->maximum(), 0);
    // It stays within the canvas.
    for (int line = 0; line < 60; ++line) {
        QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier);
    }
    EXPECT_LE(editor.geometry().bottom(), Canvas().viewport()->height());
    Take();
}

TEST_F(EditorLook, ATextOfAnOlderReportHasTheStyleOfItsBox) {
    WriteBytes(
        File(),
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
        "<Body><ReportItems><Textbox Name=\"Old\"><Style><FontSize>20pt</FontSize><FontWeight>Bold"
        "</FontWeight><TextAlign>Center</TextAlign></Style><Top>1cm</Top><Left>1cm</Left><Height>2cm"
        "</Height><Width>6cm</Width><Value>Old text</Value></Textbox></ReportItems><Height>5cm</Height>"
        "</Body><Width>16cm</Width></Report>");
    ASSERT_TRUE(m_window->OpenFile(File()));
    Settle();
    QTextEdit& editor = Open("Old");
    EXPECT_EQ(FormatAt(editor, 2).font().pointSizeF(), 20);
    EXPECT_TRUE(FormatAt(editor, 2).font().bold());
    EXPECT_EQ(editor.document()->begin().blockFormat().alignment() & Qt::AlignHorizontal_Mask,
              Qt::AlignHCenter);
    QTest::keyClicks(&editor, "New");
    Take();
    EXPECT_EQ(Text("Old", "Value"), "New");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

TEST_F(EditorLook, PaperIsWhiteInTheDarkToo) {
    QPalette dark(QColor(50, 50, 50));
    m_window->setPalette(dark);
    QTextEdit& editor = Open("Plain");
    EXPECT_EQ(editor.palette().color(QPalette::Base), QColor(Qt::white));
    EXPECT_EQ(FormatAt(editor, 2).foreground().color(), QColor(Qt::black));
}

}  // namespace
}  // namespace designer::test
