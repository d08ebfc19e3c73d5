// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

#include "designer/item_dialogs/style_dialog.h"
#include "dialog_test.h"

namespace designer::test {
namespace {

constexpr const char* Run1 = "Paragraphs/Paragraph/TextRuns/TextRun/Style/";

class FormatTest : public DialogTest {
 protected:
    std::string Of(const std::string& name, const std::string& property) {
        return Text(name, (Run1 + property).c_str());
    }
};

TEST_F(FormatTest, KeysMakeTextsBoldAndPlainAgain) {
    const std::string before = Model().Source().Text();
    Select({"Title", "Amount"});
    Run("formatBold");
    EXPECT_EQ(Of("Title", "FontWeight") + Of("Amount", "FontWeight"), "BoldBold");
    EXPECT_EQ(UndoName(), "Bold 2 items");
    EXPECT_TRUE(Find<QAction>("formatBold").isChecked());
    Select({"Amount"});
    Run("formatBold");
    EXPECT_EQ(Of("Amount", "FontWeight"), "-");
    Select({"Title", "Amount"});
    EXPECT_FALSE(Find<QAction>("formatBold").isChecked());
    Run("formatBold");
    EXPECT_EQ(Of("Amount", "FontWeight"), "Bold");
    Run("formatItalic");
    Run("formatUnderline");
    Run("formatRight");
    EXPECT_EQ(Of("Title", "FontStyle") + Of("Title", "TextDecoration"), "ItalicUnderline");
    EXPECT_EQ(Text("Title", "Paragraphs/Paragraph/Style/TextAlign"), "Right");
    Run("formatCentre");
    EXPECT_EQ(Text("Title", "Paragraphs/Paragraph/Style/TextAlign"), "Center");
    while (Model().Source().UndoCount() > 0) {
        Run("editUndo");
    }
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(FormatTest, TextGrowsAndShrinksByUsualSizes) {
    Select({"Title"});
    Run("formatLarger");
    EXPECT_EQ(Of("Title", "FontSize"), "11pt");
    for (int i = 0; i < 3; ++i) {
        Run("formatLarger");
    }
    EXPECT_EQ(Of("Title", "FontSize"), "16pt");
    Run("formatSmaller");
    EXPECT_EQ(Of("Title", "FontSize"), "14pt");
    EXPECT_EQ(UndoName(), "Size of text of Title");
}

TEST_F(FormatTest, CommandsNeedASelection) {
    Model().Select({});
    Settle();
    EXPECT_FALSE(Find<QAction>("formatStyle").isEnabled());
    EXPECT_FALSE(Find<QAction>("formatBold").isEnabled());
    EXPECT_FALSE(Find<QAction>("formatVisibility").isEnabled());
}

TEST_F(FormatTest, TheStyleDialogChangesWhatWasTouchedOnly) {
    Select({"Title", "Amount"});
    const std::string before = Model().Source().Text();
    InDialog("formatStyle", [&](QDialog& dialog) {
        EXPECT_EQ(List(dialog, "Font").lineEdit()->placeholderText(), "Arial");
        Type(dialog, "Font size", "12");
        Type(dialog, "Text colour", "navy");
        Type(dialog, "Left border style", "Solid");
        Type(dialog, "Top padding", "3pt");
        Type(dialog, "List", "Bulleted");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("Amount", "Paragraphs/Paragraph/ListStyle"), "Bulleted");
    EXPECT_EQ(Of("Title", "FontSize") + " " + Of("Amount", "Color"), "12pt navy");
    EXPECT_EQ(Text("Amount", "Style/LeftBorder/Style"), "Solid");
    EXPECT_EQ(Text("Title", "Style/PaddingTop"), "3pt");
    EXPECT_EQ(Text("Title", "Style/Border"), "-");
    EXPECT_EQ(UndoName(), "Format 2 items");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(FormatTest, CancelAndAnUntouchedDialogChangeNothing) {
    Select({"Title"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        Type(dialog, "Font size", "12pt");
        Press(dialog, QDialogButtonBox::Cancel);
    });
    InDialog("formatStyle", [&](QDialog& dialog) { Press(dialog, QDialogButtonBox::Ok); });
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(FormatTest, AbsurdSizesAreRefused) {
    Select({"Title"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        for (const char* size : {"-5pt", "99999pt"}) {
            Type(dialog, "Font size", size);
            Press(dialog, QDialogButtonBox::Ok);
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(Message(dialog),
                      "\"" + std::string(size) + "\" is no value of Font size: it is 1pt to 200pt");
        }
    });
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(FormatTest, AWrongValueIsNamedAndTheDialogStays) {
    Select({"Title"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        Type(dialog, "Background colour", "#12");
        dialog.findChild<QTabWidget*>("pages")->setCurrentIndex(0);
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Message(dialog), "\"#12\" is no value of Background colour: a colour is a name or #RRGGBB");
        EXPECT_EQ(dialog.focusWidget(), &List(dialog, "Background colour"));
        Type(dialog, "Background colour", "#112233");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("Title", "Style/BackgroundColor"), "#112233");
}

TEST_F(FormatTest, DifferentValuesStayUnlessOneIsTyped) {
    Select({"Title"});
    Run("formatLarger");
    Select({"Title", "Amount"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        EXPECT_EQ(List(dialog, "Font size").lineEdit()->placeholderText(), "(several values)");
        EXPECT_EQ(List(dialog, "Font size").currentText(), "");
        Type(dialog, "Font", "DejaVu Sans");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Of("Title", "FontSize") + " " + Of("Amount", "FontSize"), "11pt -");
    EXPECT_EQ(Of("Amount", "FontFamily"), "DejaVu Sans");
}

TEST_F(FormatTest, BorderPresetsMakeAllSidesAlike) {
    Model().Edit("Border", [&](Document& document) {
        SetText(document, Id("Title"), "Style/TopBorder/Style", "Dashed");
        SetText(document, Id("Title"), "Style/TopBorder/Width", "2pt");
    });
    Select({"Title"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        dialog.findChild<QTabWidget*>("pages")->setCurrentIndex(1);
        QTest::mouseClick(dialog.findChild<QPushButton*>("allBorders"), Qt::LeftButton);
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("Title", "Style/Border/Style") + " " + Text("Title", "Style/TopBorder/Style"), "Solid -");
    Run("bordersNone");
    EXPECT_EQ(Text("Title", "Style/Border/Style"), "-");
    Select({"Title", "Amount"});
    Run("bordersAround");
    EXPECT_EQ(Text("Title", "Style/TopBorder/Style") + Text("Title", "Style/BottomBorder/Style"), "Solid-");
    EXPECT_EQ(Text("Amount", "Style/TopBorder/Style") + Text("Amount", "Style/BottomBorder/Style"), "-Solid");
    EXPECT_EQ(UndoName(), "Borders of 2 items");
}

TEST_F(FormatTest, FormatsAreShownWithSamples) {
    EXPECT_EQ(SampleOfFormat("N2", "en-US").toStdString(), "1,234.57 | -1,234.57");
    EXPECT_EQ(SampleOfFormat("N2", "de-DE").toStdString(), "1.234,57 | -1.234,57");
    EXPECT_EQ(SampleOfFormat("#,0;(#,0)", "en-US").toStdString(), "1,235 | (1,235)");
    EXPECT_EQ(SampleOfFormat("yyyy-MM-dd", "").toStdString(), "2026-03-09");
    EXPECT_EQ(SampleOfFormat("d", "de-DE").toStdString(), "09.03.2026");
    EXPECT_EQ(SampleOfFormat("=Fields!F.Value", "").toStdString(), "");
    Select({"Amount"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        auto& list = *dialog.findChild<QTreeWidget*>("formats");
        dialog.findChild<QTabWidget*>("pages")->setCurrentIndex(4);
        Type(dialog, "Language", "de-DE");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        QTest::keyClick(&list, Qt::Key_Down);
        EXPECT_EQ(list.currentItem()->text(2).toStdString(), "1.234,57 | -1.234,57");
        EXPECT_EQ(List(dialog, "Format").currentText(), "N2");
        EXPECT_EQ(dialog.findChild<QWidget*>("sample")->accessibleDescription().toStdString(),
                  "1.234,57 | -1.234,57");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Of("Amount", "Format") + " " + Of("Amount", "Language"), "N2 de-DE");
}

TEST_F(FormatTest, ALineHasBordersOnly) {
    Run("insertLine");
    const ElementId line = Model().Leader();
    InDialog("formatStyle", [&](QDialog& dialog) {
        EXPECT_FALSE(List(dialog, "Font").isEnabled());
        Type(dialog, "Border colour", "red");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Model().Source().TextAt(line, "Style/Border/Color"), "red");
    EXPECT_FALSE(Find<QAction>("formatBold").isEnabled());
}

TEST_F(FormatTest, TheVisibilityDialogHidesItems) {
    Select({"Title", "Amount"});
    InDialog("formatVisibility", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QComboBox*>("Page break"), nullptr);
        Type(dialog, "Hidden", "maybe");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_EQ(Message(dialog), "\"maybe\" is no value of Hidden: it is true or false");
        Type(dialog, "Hidden", "=1>2");
        Type(dialog, "Toggled by", "Note");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("Amount", "Visibility/Hidden") + " " + Text("Title", "Visibility/ToggleItem"),
              "=1>2 Note");
    EXPECT_EQ(UndoName(), "Change visibility of 2 items");
}

TEST_F(FormatTest, AnExpressionThatTheEngineDoesNotUnderstandIsRefused) {
    Select({"Title"});
    InDialog("formatStyle", [&](QDialog& dialog) {
        Type(dialog, "Text colour", "=IIf(1 > 2, \"Red\"");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Message(dialog),
                  "Textbox Title, Color: \")\" was expected instead of the end, at character 18");
        Type(dialog, "Text colour", "=IIf(1 > 2, \"Red\", \"Blue\")");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Of("Title", "Color"), "=IIf(1 > 2, \"Red\", \"Blue\")");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

TEST_F(FormatTest, EveryControlOfTheDialogsHasAName) {
    Select({"Title"});
    for (const char* command : {"formatStyle", "formatVisibility"}) {
        InDialog(command, [&](QDialog& dialog) {
            for (const QComboBox* list : dialog.findChildren<QComboBox*>()) {
                EXPECT_FALSE(list->accessibleName().isEmpty()) << list->objectName().toStdString();
            }
            for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
                const bool isOfTabs = qobject_cast<const QTabBar*>(button->parent());
                EXPECT_TRUE(isOfTabs || !button->accessibleName().isEmpty() || !button->text().isEmpty())
                    << button->objectName().toStdString();
            }
        });
    }
}

}  // namespace
}  // namespace designer::test
