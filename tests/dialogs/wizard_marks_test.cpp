// SPDX-License-Identifier: GPL-3.0-or-later
// The mark ' on its ways into a statement: statements put values between these marks and do not double them.
#include <QDropEvent>
#include <QMimeData>

#include "dialogs/wizard_fixture.h"

namespace {

class WizardMarks : public Wizard {
 protected:
    // A list that was just open may still be in front.
    void Press(Qt::Key key, Qt::KeyboardModifiers with = {}) const {
        QCoreApplication::processEvents();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == form; }));
        QTest::keyClick(QApplication::focusWidget(), key, with);
    }
    // A button pressed by its mnemonic acts a moment later.
    void Mnemonic(Qt::Key letter, const std::string& page) {
        Press(letter, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([this, &page] { return Page() == page; }));
    }
    static void Drop(QWidget& onto, const char* text) {
        QMimeData dragged;
        dragged.setText(text);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &drop);
    }
};

}  // namespace

TEST_F(WizardMarks, AreOutWhenEnterGoesOnFromTheBox) {
    GoTo("Step1");
    Browse(sales);
    ChooseFolder(0);
    Type("txtTitle", "Ann's");
    Press(Qt::Key_Return);
    ASSERT_EQ(Page(), "Step2");
    Press(Qt::Key_Return);
    Type("txtSubject", "It's");
    Type("txtRecipient", "o'hara");
    Press(Qt::Key_Return);
    ASSERT_EQ(Page(), "Step4");
    Press(Qt::Key_Return);
    ASSERT_EQ(Page(), "Step5");
    Press(Qt::Key_Return);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(Stored("ReportTitle, SendTo, Subject"), Texts{"Anns|ohara;|Its"});
}

TEST_F(WizardMarks, AreOutWhenAMnemonicGoesOnFromTheBox) {
    GoTo("Step1");
    Browse(sales);
    ChooseFolder(0);
    Type("txtTitle", "Ann's");
    Mnemonic(Qt::Key_N, "Step2");
    Mnemonic(Qt::Key_N, "Step3");
    Type("txtRecipient", "o'hara");
    Type("txtMessage", "It's");
    Mnemonic(Qt::Key_N, "Step4");
    Type("txtSelForm", "{region} = 'West'");
    Mnemonic(Qt::Key_N, "Step5");
    Click("cmdNext");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(Stored("ReportTitle, SendTo, Message, SelectionForm"),
              Texts{"Anns|ohara;|Its|{region} = \"West\""});
}

TEST_F(WizardMarks, AreOutWhenAMnemonicGoesBackFromTheBox) {
    GoTo("Step3");
    Type("txtSubject", "It's");
    Mnemonic(Qt::Key_B, "Step2");
    EXPECT_EQ(Box("txtSubject").Text(), "Its");
}

TEST_F(WizardMarks, OfANameInTheAddressBookAreOut) {
    mail.picks = {{"Pat O'Hara"}};
    GoTo("Step3");
    Click("cmdAd");
    EXPECT_EQ(FocusedName(), "txtRecipient");
    Click("cmdNext");
    EXPECT_EQ(Box("txtRecipient").Text(), "Pat OHara;");
    EXPECT_EQ(Page(), "Step4");
}

TEST_F(WizardMarks, OfAReportsTitleAndFormulaAreOut) {
    engine.reports[sales].title = "Ann's";
    engine.reports[sales].formula = "{region} = 'West'";
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("ReportTitle, SelectionForm"), Texts{"Anns|{region} = \"West\""});
}

TEST_F(WizardMarks, OfATextDroppedOnABoxAreOut) {
    GoTo("Step3");
    Type("txtRecipient", "ann");
    Drop(Box("txtSubject"), "It's");
    EXPECT_EQ(FocusedName(), "txtSubject");
    Drop(*The<MultiLineTextBox>("txtMessage").viewport(), "Pat O'Hara");
    EXPECT_EQ(Box("txtSubject").Text(), "Its");
    Click("cmdNext");
    EXPECT_EQ(The<MultiLineTextBox>("txtMessage").Text(), "Pat OHara");
}

// The path must stay that of the file.
TEST_F(WizardMarks, OfAPathBreakTheStatementAndNothingIsStored) {
    const std::string marked = AddReport("ann's.rpt", {});
    GoTo("Step1");
    Browse(marked);
    Type("txtTitle", "Figures");
    GoTo("Step5", marked);
    Type("txtTitle", "Figures");
    Click("cmdNext");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_NE(prompts.boxes[0].text.find("[-2147217900]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_TRUE(Stored("ReportID").empty());
    EXPECT_EQ(Page(), "Step5");
}
