// SPDX-License-Identifier: GPL-3.0-or-later
// Desktop windows inside the real frame, driven as a user drives them.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "desktop/frmDesk.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"

using Texts = std::vector<std::string>;

// Records the questions of input boxes.
class DeskPrompts : public fakes::FakePrompts {
 public:
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override;
    std::vector<Texts> asked;  // prompt, title, preset
};

class DeskTest : public testing::Test {
 protected:
    void SetUp() override;
    void TearDown() override;

    // Opens a window of the root, as the menu does.
    frmDesk& OpenRoot();
    // One that is on the screen and in front, while the slot of its Tag is empty: another window had taken
    // the slot over and was closed.
    frmDesk& OpenWithoutSlot();
    frmDesk& Window(int slot);
    // Returns the windows on the screen in the order in which they were made, in a slot or not.
    std::vector<frmDesk*> OnScreen();
    static void Close(frmDesk& window);

    static Texts Listed(frmDesk& window);              // texts
    static Texts ListedWithIcons(frmDesk& window);     // "Icon SmallIcon Key=Text"
    static Texts Cells(frmDesk& window, int columns);  // "Text|SubItem 1|..."
    static Texts Headings(frmDesk& window);
    // "Text" of every node after one dot for each level.
    static Texts Tree(frmDesk& window);

    static void ClickItem(frmDesk& window, const std::string& text, Qt::MouseButton button = Qt::LeftButton);
    static void DoubleClickItem(frmDesk& window, const std::string& text);
    static void ClickNode(frmDesk& window, const std::string& text);
    static void ClickBesideAll(frmDesk& window);
    static void ClickButton(frmDesk& window, const char* caption);
    static bool ButtonEnabled(frmDesk& window, const char* caption);
    static void Key(QWidget& widget, Qt::Key key);
    static QLineEdit* Editor(frmDesk& window);  // of the edited label; null: none
    // Edits the selected item's text: F2, the text, Enter.
    static void Rename(frmDesk& window, const std::string& text, const std::string& newText);
    static bool Hourglass(frmDesk& window);
    void ClickEntry(const char* name);

    void AddFolder(const std::string& name, int parent = 0);
    int AddSchedule(const std::string& title, const std::string& folder);  // its ReportID
    int AddPackage(const std::string& name, const Texts& reports = {});    // its ReportID

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 0, 0)};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    DeskPrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
    frmMain& frame = frmMain::Instance();
};

// The box of an error that leaves an event handler.
fakes::Box EndBox(int number, const std::string& description);
// The application's error box.
fakes::Box ErrorBox(int number, const std::string& description);
