// SPDX-License-Identifier: GPL-3.0-or-later
// A text has a character that the encoding of the file does not have: until it is saved, the file is edited
// as any other.
#include <QPlainTextEdit>

#include "../graphics/sales_report.h"
#include "designer/model/new_items.h"
#include "dialog_test.h"

namespace designer::test {
namespace {

constexpr const char* ValuePath = "Paragraphs/Paragraph/TextRuns/TextRun/Value";

std::string BoxText(const std::string& name, const std::string& top) {
    return "<Textbox Name=\"" + name +
           "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>Sales</Value></TextRun></TextRuns>"
           "</Paragraph></Paragraphs><Top>" +
           top + "</Top><Left>8cm</Left><Height>1cm</Height><Width>4cm</Width></Textbox>";
}

class MissingCharacter : public DialogTest {
 protected:
    MissingCharacter()
        : DialogTest("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>" +
                     SalesReport(BoxText("Title", "0cm") + BoxText("Other", "2cm"))) {
        Model().Edit("Insert Chart", [this](Document& document) {
            InsertItem(document, Model().Items().bands[0], NewItem::Chart, {0, 0, 200, 150}, {});
        });
        Settle();
        Click(At("Title"));
        QKeyEvent omega(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x3A9)));
        QApplication::sendEvent(&Canvas(), &omega);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        Settle();
    }
};

TEST_F(MissingCharacter, ADialogTriesItsChangeAllTheSame) {
    EXPECT_EQ(Text("Title", ValuePath), "\u03A9");
    Select({"Chart1"});
    InDialog("reportItem", [](QDialog& dialog) {
        List(dialog, "entryValue").setEditText("=Max(Fields!Amount.Value)");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(UndoName(), "Change Chart1");
}

TEST_F(MissingCharacter, TheDialogsForExpressionsAndForTheCodeTakeWhatIsTyped) {
    Click(At("Other"));
    InDialog("reportExpression", [](QDialog& dialog) {
        auto* text = dialog.findChild<QPlainTextEdit*>("expression");
        text->selectAll();
        QTest::keyClicks(text, "=1+1");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Text("Other", ValuePath), "=1+1");
    InDialog("reportCode", [](QDialog& dialog) {
        QTest::keyClicks(dialog.focusWidget(), "' none");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(UndoName(), "Change Code");
}

}  // namespace
}  // namespace designer::test
