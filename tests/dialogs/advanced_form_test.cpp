// SPDX-License-Identifier: GPL-3.0-or-later
// The large box for a selection formula.
#include <gtest/gtest.h>

#include <QFontInfo>
#include <QPushButton>

#include "dialogs/frmAdvanced.h"
#include "platform/controls/multi_line_text_box.h"
#include "platform/controls/text_box.h"
#include "support/fakes.h"
#include "support/modal.h"

namespace {

class AdvancedForm : public testing::Test {
 protected:
    void Show(const std::function<void(frmAdvanced&)>& act) {
        fakes::WhileModal<frmAdvanced>([this] { frmAdvanced::ShowModal(txtSelForm); }, act);
    }
    static MultiLineTextBox& Box(const frmAdvanced& form) {
        return *form.findChild<MultiLineTextBox*>("txtForm");
    }
    static void Type(const frmAdvanced& form, const char* text) {
        Box(form).selectAll();
        QTest::keyClicks(&Box(form), text);
    }
    static void Click(const frmAdvanced& form, const char* name) {
        QTest::mouseClick(form.findChild<QPushButton*>(name), Qt::LeftButton);
    }

    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    TextBox txtSelForm;
};

}  // namespace

TEST_F(AdvancedForm, ShowsTheFormulaInLettersOfOneWidth) {
    txtSelForm.Text("{Orders.City} = \"York\"");
    Show([](frmAdvanced& form) {
        EXPECT_EQ(form.windowTitle().toStdString(), "Advanced Properties");
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(Box(form).Text(), "{Orders.City} = \"York\"");
        EXPECT_TRUE(QFontInfo(Box(form).font()).fixedPitch());
        EXPECT_TRUE(Box(form).hasFocus());
        EXPECT_EQ(form.findChild<QPushButton*>("cmdOk")->text().toStdString(), "Apply");
        EXPECT_EQ(form.findChild<QPushButton*>("cmdCancel")->text().toStdString(), "Cancel");
    });
}

TEST_F(AdvancedForm, LettersAreAsLargeAsTheFontInUse) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(31);
    QApplication::setFont(large);
    Show([](frmAdvanced& form) { EXPECT_EQ(QFontInfo(Box(form).font()).pixelSize(), 31); });
    QApplication::setFont(usual);
}

TEST_F(AdvancedForm, ApplyWritesTheFormulaBackAndUnloads) {
    Show([](frmAdvanced& form) {
        Type(form, "{Orders.Total} > 10");
        Click(form, "cmdOk");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(txtSelForm.Text(), "{Orders.Total} > 10");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(AdvancedForm, CancelEscAndTheCloseBoxLeaveTheFormulaAsItWas) {
    const std::function<void(frmAdvanced&)> ways[] = {
        [](frmAdvanced& form) { Click(form, "cmdCancel"); },
        [](frmAdvanced& form) {
            form.findChild<QPushButton*>("cmdCancel")->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        },
        [](frmAdvanced& form) { QTest::keyClick(&Box(form), Qt::Key_Escape); },
        [](frmAdvanced& form) { form.close(); }};
    for (const auto& leave : ways) {
        txtSelForm.Text("as 'it' was");
        Show([&leave](frmAdvanced& form) {
            Type(form, "other");
            leave(form);
            EXPECT_FALSE(form.isVisible());
        });
        EXPECT_EQ(txtSelForm.Text(), "as 'it' was");
    }
}

TEST_F(AdvancedForm, QuotesTurnDoubleWhenTheBoxLosesTheFocus) {
    Show([](frmAdvanced& form) {
        Type(form, "{Orders.City} = 'York'");
        EXPECT_EQ(Box(form).Text(), "{Orders.City} = 'York'");
        QTest::keyClick(&Box(form), Qt::Key_Tab);
        EXPECT_EQ(Box(form).Text(), "{Orders.City} = \"York\"");
    });
    EXPECT_EQ(txtSelForm.Text(), "");
}

TEST_F(AdvancedForm, ApplyTakesTheQuotesAsTheLostFocusLeftThem) {
    Show([](frmAdvanced& form) {
        Type(form, "'York'");
        Click(form, "cmdOk");
    });
    EXPECT_EQ(txtSelForm.Text(), "\"York\"");
}

TEST_F(AdvancedForm, FormulaWithoutQuotesCanStillBeUndoneWhenTheFocusComesBack) {
    Show([](frmAdvanced& form) {
        Type(form, "typed");
        QTest::keyClick(&Box(form), Qt::Key_Tab);
        Box(form).setFocus();
        QTest::keySequence(&Box(form), QKeySequence::Undo);
        EXPECT_EQ(Box(form).Text(), "");
    });
}

TEST_F(AdvancedForm, TabMovesOnAndWritesNothing) {
    Show([](frmAdvanced& form) {
        std::vector<std::string> order;
        for (int i = 0; i < 3; ++i) {
            order.push_back(QApplication::focusWidget()->objectName().toStdString());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(order, (std::vector<std::string>{"txtForm", "cmdOk", "cmdCancel"}));
        EXPECT_EQ(Box(form).Text(), "");
    });
}

TEST_F(AdvancedForm, EnterIsANewLineInTheBoxAndPressesTheButtonThatIsReachedByTab) {
    Show([](frmAdvanced& form) {
        Type(form, "a");
        QTest::keyClick(&Box(form), Qt::Key_Return);
        QTest::keyClicks(&Box(form), "b");
        EXPECT_TRUE(form.isVisible());
        QTest::keyClick(&Box(form), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(txtSelForm.Text(), "a\nb");
}
