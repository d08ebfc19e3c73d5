// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of a list edited in place.
#include <gmock/gmock.h>

#include <QLineEdit>

#include "platform/controls/items/label_delegate.h"
#include "shown_controls.h"

using testing::ElementsAre;

class LabelEdit : public ShownList {
 protected:
    void SetUp() override {
        ShownList::SetUp();
        QObject::connect(&list, &ListView::AfterLabelEdit, [this](int& cancel, std::string& newString) {
            edits.push_back(list.SelectedItem().Text() + " -> " + newString);
            if (handler) {
                handler(cancel, newString);
            }
        });
        ClickItem(2);
        QApplication::processEvents();
    }
    // Returns the editor on the screen, or null.
    QLineEdit* Editor() {
        QApplication::processEvents();
        for (auto* editor : list.findChildren<QLineEdit*>("LabelEdit")) {
            if (editor->isVisible()) {
                return editor;
            }
        }
        return nullptr;
    }
    void Type(const char* text, Qt::Key end) {
        QLineEdit* editor = Editor();
        ASSERT_NE(editor, nullptr);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, end);
    }

    std::vector<std::string> edits;
    std::function<void(int&, std::string&)> handler;
};

TEST_F(LabelEdit, OpensByF2WithTheWholeTextSelectedAndEnterTakesTheNewText) {
    for (const int view :
         {ListView::IconView, ListView::SmallIconView, ListView::ListMode, ListView::ReportView}) {
        list.View(view);
        list.ListItems()(2).Text("Beta");
        edits.clear();
        Key(Qt::Key_F2);
        ASSERT_NE(Editor(), nullptr) << view;
        EXPECT_EQ(Editor()->selectedText(), "Beta");
        EXPECT_TRUE(Viewport()->rect().contains(Editor()->geometry()));
        Type("Delta", Qt::Key_Return);
        EXPECT_THAT(edits, ElementsAre("Beta -> Delta"));
        EXPECT_EQ(list.ListItems()(2).Text(), "Delta");
        EXPECT_EQ(Editor(), nullptr);
        EXPECT_TRUE(list.CurrentView()->hasFocus());
    }
}

TEST_F(LabelEdit, OpensBySystemCodeAndNotWithoutASelection) {
    list.StartLabelEdit();
    Type("Delta", Qt::Key_Enter);
    EXPECT_EQ(list.ListItems()(2).Text(), "Delta");
    list.SelectedItem().Selected(false);
    list.StartLabelEdit();
    EXPECT_EQ(Editor(), nullptr);
    Key(Qt::Key_F2);
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(LabelEdit, OpensByASlowSecondClick) {
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    ClickItem(2);
    QTRY_VERIFY_WITH_TIMEOUT(Editor() != nullptr, 2000);
    QTest::keyClick(Editor(), Qt::Key_Escape);
}

TEST_F(LabelEdit, DoesNotOpenByADoubleClick) {
    QTest::mouseDClick(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(2));
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(LabelEdit, EscGivesTheTextUpAndTellsNobody) {
    Key(Qt::Key_F2);
    told.clear();
    Type("Delta", Qt::Key_Escape);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_EQ(list.ListItems()(2).Text(), "Beta");
    EXPECT_THAT(edits, ElementsAre());
    EXPECT_THAT(told, ElementsAre());
}

TEST_F(LabelEdit, FocusThatGoesElsewhereTakesTheTextOfTheItemThatWasEdited) {
    Key(Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), "Delta");
    list.CurrentView()->setFocus();
    EXPECT_EQ(list.ListItems()(2).Text(), "Delta");
    EXPECT_THAT(edits, ElementsAre("Beta -> Delta"));
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(LabelEdit, AnUnchangedTextIsToldToo) {
    Key(Qt::Key_F2);
    Type("", Qt::Key_Return);
    EXPECT_THAT(edits, ElementsAre("Beta -> Beta"));
}

TEST_F(LabelEdit, TheHandlerMaySetAnotherText) {
    handler = [](int&, std::string& newString) { newString = "Chosen"; };
    Key(Qt::Key_F2);
    Type("Delta", Qt::Key_Return);
    EXPECT_EQ(list.ListItems()(2).Text(), "Chosen");
}

TEST_F(LabelEdit, TheHandlerMayKeepTheOldText) {
    handler = [](int& cancel, std::string&) { cancel = 1; };
    Key(Qt::Key_F2);
    Type("Delta", Qt::Key_Return);
    EXPECT_EQ(list.ListItems()(2).Text(), "Beta");
}

TEST_F(LabelEdit, TheHandlerMayRemoveTheItem) {
    handler = [this](int&, std::string&) { list.ListItems().Remove(list.SelectedItem().Key); };
    Key(Qt::Key_F2);
    Type("Delta", Qt::Key_Return);
    EXPECT_THAT(TextsOf(list), ElementsAre("Alpha", "Gamma"));
    EXPECT_EQ(SelectedText(), "(none)");
}

TEST_F(LabelEdit, TheHandlerMayOpenTheEditorAgain) {
    bool refuse = true;
    handler = [&](int&, std::string& newString) {
        if (refuse) {
            newString = list.SelectedItem().Text();
            list.StartLabelEdit();
        }
    };
    Key(Qt::Key_F2);
    Type("Alpha", Qt::Key_Return);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), "Beta");
    EXPECT_TRUE(Editor()->hasFocus());
    refuse = false;
    Type("Delta", Qt::Key_Return);
    EXPECT_EQ(list.ListItems()(2).Text(), "Delta");
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_THAT(edits, ElementsAre("Beta -> Alpha", "Beta -> Delta"));
}

TEST_F(LabelEdit, OpenedAgainStaysAtItsItemThoughAnotherWasClicked) {
    bool refuse = true;
    handler = [&](int&, std::string& newString) {
        if (refuse) {
            newString = "Beta";
            list.StartLabelEdit();
            refuse = false;
        }
    };
    Key(Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), "Alpha");
    list.CurrentView()->setFocus();
    ClickItem(1);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(SelectedText(), "Beta");
    EXPECT_EQ(Editor()->text(), "Beta");
}

TEST_F(LabelEdit, AClearedListTakesItsEditorAway) {
    Key(Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    list.ListItems().Clear();
    EXPECT_EQ(Editor(), nullptr);
    list.ListItems().Add("d", "Delta").Selected(true);
    list.StartLabelEdit();
    Type("Epsilon", Qt::Key_Return);
    EXPECT_EQ(list.ListItems()(1).Text(), "Epsilon");
}

TEST_F(LabelEdit, InASortedListTheItemGoesToItsNewPlaceAndStaysSelected) {
    list.Sorted(true);
    Key(Qt::Key_F2);
    Type("Zeta", Qt::Key_Return);
    EXPECT_THAT(TextsOf(list), ElementsAre("Alpha", "Gamma", "Zeta"));
    EXPECT_EQ(SelectedText(), "Zeta");
}

TEST_F(LabelEdit, AWindowThatIsClosedTakesAnOpenEditorAlong) {
    ListView other;
    other.ListItems().Add("a", "Alpha").Selected(true);
    other.show();
    other.StartLabelEdit();
    QApplication::processEvents();
    EXPECT_NE(other.findChild<QLineEdit*>("LabelEdit"), nullptr);
}

namespace {

// Returns the lines below an item's picture.
class Labels : public LabelDelegate {
 public:
    using LabelDelegate::initStyleOption;
};

}  // namespace

TEST_F(LabelEdit, NameBelowItsPictureBreaksBetweenItsWords) {
    Labels labels;
    for (const char* name :
         {"quarterly_figures", "Quarterly-Figures", "QuarterlyFigures", "Quarterly Figures"}) {
        list.ListItems()(1).Text(name);
        QStyleOptionViewItem option;
        option.initFrom(&list);
        option.font = list.font();
        labels.initStyleOption(&option, list.CurrentView()->model()->index(0, 0));
        const QStringList lines = option.text.split(QChar(QChar::LineSeparator));
        ASSERT_EQ(lines.size(), 2) << name;
        EXPECT_EQ(lines[1].toLower().toStdString(), "figures") << name;
        EXPECT_FALSE(option.text.contains(QChar(0x200B)));
    }
}
