// SPDX-License-Identifier: GPL-3.0-or-later
// Odd and hostile names, and commands at the wrong moment.

#include "desk_fixture.h"
#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

using DeskOddNames = DeskTest;

namespace {

const Texts OddNames = {"   ",         "<b>Sales</b> &amp; <img src=x>",
                        "R&D && more", "two\nlines",
                        "a^b:c|d",     "\"\"\"",
                        "%s %1 [*]",   "--; drop"};

}  // namespace

TEST_F(DeskOddNames, FoldersKeepThemInListTreeTitleAndDatabase) {
    frmDesk& window = OpenRoot();
    prompts.inputs.assign(OddNames.begin(), OddNames.end());
    for (std::size_t i = 0; i < OddNames.size(); ++i) {
        ClickButton(window, "New Folder");
    }
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAreArray(OddNames));
    EXPECT_THAT(Listed(window), ElementsAreArray(OddNames));
    for (const std::string& name : OddNames) {
        AddSchedule("Week", name);
        DoubleClickItem(window, name);
        frmDesk& opened = Window(Global::DeskCount);
        EXPECT_EQ(opened.Caption(), name);
        EXPECT_THAT(Listed(opened), ElementsAre("Week"));
        ClickNode(opened, name);
        EXPECT_THAT(Listed(opened), ElementsAre("Week")) << name;
        ClickEntry("mnuDetails");
        EXPECT_THAT(Listed(opened), ElementsAre("Week")) << name;
        Close(opened);
        window.Form_Activate();
    }
}

TEST_F(DeskOddNames, TenThousandLettersAreANameAsAnyOther) {
    const std::string name(10'000, 'W');
    frmDesk& window = OpenRoot();
    prompts.inputs = {name};
    ClickButton(window, "New Folder");
    for (const char* entry : {"mnuViewList", "mnuDetails", "mnuIcons"}) {
        ClickEntry(entry);
        QApplication::processEvents();
    }
    DoubleClickItem(window, name);
    QApplication::processEvents();
    frmDesk& opened = Window(2);
    EXPECT_EQ(opened.Caption(), name);
    EXPECT_LE(opened.parentWidget()->width(), frame.Children().width());
    prompts.answers = {vbYes};
    Close(opened);
    window.Form_Activate();
    ClickItem(window, name);
    ClickButton(window, "Delete");
    EXPECT_THAT(database.Rows("select * from Folders"), testing::IsEmpty());
}

TEST_F(DeskOddNames, FolderThatIsDeletedWhileItsNameIsEditedGoesUnderItsNewName) {
    AddFolder("Sales");
    AddFolder("Stock");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    Key(*window.lsvDesk->CurrentView(), Qt::Key_F2);
    ASSERT_NE(Editor(window), nullptr);
    Editor(window)->selectAll();
    QTest::keyClicks(Editor(window), "Trade");
    prompts.answers = {vbYes};
    // The question takes the focus.
    prompts.onBox = [&] {
        if (QLineEdit* editor = Editor(window)) {
            editor->clearFocus();
        }
    };
    ClickButton(window, "Delete");
    QApplication::processEvents();
    EXPECT_EQ(Editor(window), nullptr);
    EXPECT_THAT(Listed(window), ElementsAre("Stock"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Stock"));
}

TEST_F(DeskOddNames, RefilledWhileANameIsEditedNothingIsRenamed) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    Key(*window.lsvDesk->CurrentView(), Qt::Key_F2);
    ASSERT_NE(Editor(window), nullptr);
    QTest::keyClicks(Editor(window), "Trade");
    window.RefreshList("Desktop", "0");
    QApplication::processEvents();
    EXPECT_EQ(Editor(window), nullptr);
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Sales"));
}

TEST_F(DeskOddNames, ManyWindowsAreOpenedAndClosed) {
    AddFolder("Sales");
    frmDesk& root = OpenRoot();
    for (int i = 0; i < 150; ++i) {
        root.Form_Activate();
        ClickItem(root, "Sales");
        root.lsvDesk_DblClick();
    }
    EXPECT_EQ(Global::DeskCount, 151);
    EXPECT_EQ(Window(151).Caption(), "Sales");
    for (int slot = 151; slot > 1; --slot) {
        Close(Window(slot));
    }
    EXPECT_EQ(Global::DeskCount, 1);
    EXPECT_EQ(OnScreen().size(), 1U);
}
