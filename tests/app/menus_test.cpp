// SPDX-License-Identifier: GPL-3.0-or-later
// Every menu of the main window with its entries, their order and captions, and what its pictures hold.
#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <ostream>

#include "app/Menus.h"
#include "app/frmMain.h"
#include "support/fakes.h"

namespace {

struct Entry {
    std::string name, caption;
    bool operator==(const Entry&) const = default;
};

void PrintTo(const Entry& entry, std::ostream* stream) {
    *stream << entry.name << " \"" << entry.caption << "\"";
}

using Entries = std::vector<Entry>;

struct Expected {
    const char* menu;
    const char* caption;
    Entries entries;
};

const Expected Bar[] = {
    {"mnuFile", "&File", {{"mnuDesktop", "&Show Desktop"}, {"mnuEnd", "&Exit"}}},
    {"mnuTools",
     "&Tools",
     {{"mnuAdd", "Single Report Wizard"},
      {"mnuQuick", "Package Reports Wizard"},
      {"mnuPollInt", "Options"},
      {"mnuDesign", "Design Current"},
      {"mnuView", "Schedule History"}}},
    {"mnuViewType",
     "&View",
     {{"mnuIcons", "&Icons                  "},
      {"mnuViewList", "&List"},
      {"mnuDetails", "&Details"},
      {"mnuRefHis", "Refresh History"}}},
    {"mnuWin", "&Windows", {{"mnuCasc", "&Cascade"}, {"mnuTile", "&Tile"}, {"mnuArr", "&Arrange Icnons"}}},
    {"mnuHelpTop",
     "&Help",
     {{"mnuAbout", "About Oxbow Courier..."}, {"mnuHelp", "Help..."}, {"mnuSupport", "Support"}}},
};

const Expected Popups[] = {
    {"mnuPop", "", {{"mnuExec", "Execute Schedule"}, {"", "-"}, {"mnuDel", "Delete schedule"}}},
    {"mnuPop2",
     "",
     {{"mnubView", "Run Report..."},
      {"mnuOutput", "View Output..."},
      {"dntes", "-"},
      {"mnuEditPar", "Edit Parameters..."},
      {"mnuDir", "Delete selection..."}}},
    {"mnuDeskRpt",
     "",
     {{"mnuDeskView", "Run Report"},
      {"mnuDeskExec", "Execute Schedule"},
      {"mnuDeskDel", "Delete Report"},
      {"", "-"},
      {"mnuDeskProp", "Properties"}}},
    {"mnuDeskFld",
     "",
     {{"mnuDeskNew", "New Folder"},
      {"mnuDeskOpen", "Open..."},
      {"mnuRename", "Rename..."},
      {"", "-"},
      {"mnuDeskDelfld", "Delete..."}}},
    {"mnutb", "", {{"mnutbLoad", "Load Editor..."}, {"mnutbExit", "Exit"}, {"mnuNothing", "Cancel Menu"}}},
    {"mnubtchPop1", "", {{"mnuDelPckg", "Delete Package..."}}},
    {"mnubtchPop2",
     "",
     {{"mnubtcRun", "Run Report..."},
      {"mnubtcOutput", "View Output..."},
      {"mnuhash99", "-"},
      {"mnubtcPar", "Edit Parameters..."},
      {"mnubtcExec", "Execute Package..."},
      {"mnubtcDelSel", "Delete Selection..."}}},
};

// A separator's name counts only where the system hides it by name.
bool IsNamedSeparator(const std::string& name) {
    return name == "dntes" || name == "mnuhash99";
}

class Menus : public testing::Test {
 protected:
    Entries Shown(const QMenu& menu) const {
        Entries entries;
        for (const QAction* action : menu.actions()) {
            const std::string name = action->objectName().toStdString();
            if (action->isSeparator()) {
                entries.push_back({IsNamedSeparator(name) ? name : "", "-"});
            } else {
                entries.push_back({name, action->text().toStdString()});
            }
        }
        return entries;
    }
    void Check(const Expected& expected) {
        const QMenu* menu = form.Menu(expected.menu);
        ASSERT_NE(menu, nullptr) << expected.menu;
        EXPECT_EQ(menu->title().toStdString(), expected.caption);
        EXPECT_EQ(Shown(*menu), expected.entries) << expected.menu;
    }
    frmMain form;
};

// Saves the picture in the folder OXC_PICTURES, if it is set.
void Keep(const QPixmap& picture, const std::string& name) {
    const QString folder = qEnvironmentVariable("OXC_PICTURES");
    if (!folder.isEmpty()) {
        ASSERT_TRUE(picture.save(folder + "/" + QString::fromStdString(name) + ".png"));
    }
}

}  // namespace

TEST_F(Menus, BarHasItsMenusInTheirOrder) {
    std::vector<std::string> bar;
    for (const QAction* action : form.menuBar()->actions()) {
        bar.push_back(action->menu()->objectName().toStdString());
    }
    EXPECT_EQ(bar, (std::vector<std::string>{"mnuFile", "mnuTools", "mnuViewType", "mnuWin", "mnuHelpTop"}));
    for (const Expected& expected : Bar) {
        Check(expected);
    }
}

TEST_F(Menus, PopupsHaveTheirEntriesAndAreNeverInTheBar) {
    for (const Expected& expected : Popups) {
        Check(expected);
        EXPECT_FALSE(form.menuBar()->actions().contains(form.Menu(expected.menu)->menuAction()));
    }
}

TEST_F(Menus, NoOtherMenuIsThere) {
    std::size_t menus = 0;
    for (const MenuRow& row : MenuTable()) {
        menus += row.name == nullptr ? 1 : 0;
    }
    EXPECT_EQ(menus, std::size(Bar) + std::size(Popups));
}

TEST_F(Menus, EveryEntryOfAPopupIsDrawn) {
    for (const Expected& expected : Popups) {
        QMenu* menu = form.Menu(expected.menu);
        menu->popup({0, 0});
        int lowest = 0;
        for (QAction* action : menu->actions()) {
            const QRect place = menu->actionGeometry(action);
            EXPECT_TRUE(menu->rect().contains(place)) << action->objectName().toStdString();
            EXPECT_GT(place.height(), 0);
            EXPECT_GE(place.top(), lowest) << action->objectName().toStdString();
            lowest = place.bottom();
        }
        Keep(menu->grab(), expected.menu);
        menu->close();
    }
}

TEST_F(Menus, EntryWithoutAHandlerOnlyClosesItsMenu) {
    fakes::FakeProcess process;
    fakes::FakePrompts prompts;
    for (const char* name : {"mnuNothing", "mnuDelPckg"}) {
        EXPECT_TRUE(form.Entry(name)->isEnabled()) << name;
        form.Entry(name)->trigger();
    }
    EXPECT_TRUE(process.ends.empty());
    EXPECT_TRUE(prompts.boxes.empty());
}
