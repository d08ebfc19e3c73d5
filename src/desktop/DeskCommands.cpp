// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmDesk: the commands of its toolbar.
#include "desktop/DeskItems.h"
#include "desktop/OnSelection.h"
#include "desktop/frmDesk.h"
#include "dialogs/PreviewSchedule.h"
#include "dialogs/ScheduleRecords.h"
#include "dialogs/frmAddReport.h"
#include "dialogs/frmWiz.h"
#include "execution/RunReport.h"
#include "platform/base/marks.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "store/Folders.h"
#include "store/Upkeep.h"

namespace {

bool Confirmed(const std::string& question) {
    return MsgBox(question, vbYesNo) == vbYes;
}

}  // namespace

void frmDesk::ComAction(int command) {
    OnSelection([this, command] {
        if (RunCommand(command)) {
            Global::BusyCursor(false);
        }
    });
}

// A command has the number of its toolbar button plus 1 (frmDesk.cpp has the table); 5 and 8 would be the
// separators.
bool frmDesk::RunCommand(int command) {
    switch (command) {
        case 1:  // no button: back to the Desktop's root
            if (Global::FolderClicks == 1) {
                Global::FolderClicks = 0;
                lsvDesk->ListItems().Clear();
                Form_Load();
                setWindowTitle("Desktop");
                Toolbar1->Buttons()(NewPackageButton).Enabled(false);
            }
            return true;
        case 2:  // "New Folder"
            return NewFolder();
        case NewReportCommand:
            frmAddReport::Instance().ShowForm();
            return true;
        case NewPackageCommand:
            frmWiz::Instance().ShowForm();
            return true;
        case PreviewCommand:
            return Preview();
        case DeleteCommand:
            return Delete();
        case 9:  // "History"
            Global::Frame->ClickEntry("mnuView");
            return true;
        case 10:  // "Design"
            MsgBox("Remember to refresh the report for changes to be carried through", vbInformation);
            Global::Frame->ClickEntry("mnuDesign");
            return true;
        case 11:  // "Options"
            Global::Frame->ClickEntry("mnuPollInt");
            return true;
        case 12:  // "Help"
            Global::Frame->ClickEntry("mnuHelp");
            return true;
        default:
            return true;
    }
}

bool frmDesk::IsNameFree(const std::string& name) {
    if (Global::FolderNameFree(name)) {
        return true;
    }
    // Sic: "Error renaming file" also for a new folder.
    MsgBox("The name '" + name + "'" + Global::NameIsTaken, vbExclamation, "Error renaming file");
    return false;
}

bool frmDesk::NewFolder() {
    ListItems& items = lsvDesk->ListItems();
    for (int index = 1; index <= items.Count(); ++index) {
        if (items(index).Text() == "New Folder") {
            return false;
        }
    }
    const int seconds = desk::SecondsOfKey(Now());
    const std::string name = WithoutMark(InputBox("Please provide a name for the folder"));
    if (!IsNameFree(name)) {
        lsvDesk->SelectedItem();  // raises 91 without a selected item: there is no text to edit
        lsvDesk->StartLabelEdit();
        return false;
    }
    Global::InsertFolder(name, Global::CurrentFolderID);
    items.Add(name + std::to_string(seconds), name, desk::FolderItem, desk::FolderItem);
    return true;
}

bool frmDesk::Preview() {
    const ListItem& item = lsvDesk->SelectedItem();
    if (item.Text().empty()) {
        return false;
    }
    if (item.Icon == desk::ScheduleItem) {
        Global::PreviewSchedule(Global::GetScheduleID(item.Text(), Caption()));
    } else if (item.Icon == desk::PackageReportItem) {
        Global::Frame->ClickEntry("mnubtcRun");
    }
    return true;
}

bool frmDesk::Delete() {
    ListItem& item = lsvDesk->SelectedItem();
    if (item.Text().empty()) {
        return false;
    }
    switch (item.Icon) {
        case desk::FolderItem:
            DeleteFolder(item);
            break;
        case desk::ScheduleItem:
            DeleteReport(item);
            break;
        case desk::PackageItem:
        case desk::PackageReportItem:
            Global::Frame->ClickEntry("mnubtcDelSel");
            break;
        default:
            break;
    }
    return true;
}

// An item without a row only leaves the list.
void frmDesk::DeleteFolder(ListItem& item) {
    if (!Confirmed("Delete the '" + item.Text() + "' folder and all its contents?")) {
        return;
    }
    const std::int16_t folder = Global::GetFolderID(item.Text());
    if (folder != 0) {  // 0 would delete the folders of the first level too
        Global::DeleteFolder(std::to_string(folder));
    }
    lsvDesk->ListItems().Remove(item.Index());
}

void frmDesk::DeleteReport(ListItem& item) {
    if (!Confirmed("Delete the '" + item.Text() + "' report?")) {
        return;
    }
    Global::DeleteSchedule(Global::GetScheduleID(item.Text(), Global::ActiveDesk().Caption()));
    lsvDesk->ListItems().Remove(item.Index());
}
