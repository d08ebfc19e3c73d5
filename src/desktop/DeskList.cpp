// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmDesk: they open and rename the items of its list and show their context menus.
#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/frmDesk.h"
#include "dialogs/ScheduleRecords.h"
#include "execution/RunReport.h"
#include "platform/base/marks.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/runtime.h"
#include "platform/controls/child_area.h"
#include "shared/Global.h"
#include "store/Folders.h"

namespace {

// If a statement finds a value missing, the place becomes the newest folder, and the statement is repeated
// once.
template <typename Statement>
void WithPlace(const Statement& statement) {
    try {
        statement();
    } catch (const RuntimeError& error) {
        if (error.Number() != err::DataColumnMissing) {
            throw;
        }
        ADODB::Recordset newest;
        newest.Open("select max(folderid) as MaxID from Folders", Global::ConnectionString);
        Global::CurrentFolderID = newest.Fields("MaxID").Value.Text();
        newest.Close();
        statement();
    }
}

}  // namespace

void frmDesk::lsvDesk_Click() {
    if (!lsvDesk->HasSelection()) {
        return;
    }
    const ListItem& item = lsvDesk->SelectedItem();
    switch (item.Icon) {
        case desk::ScheduleItem:
            if (!item.Text().empty()) {
                m_design = m_preview = true;
            }
            break;
        case desk::FolderItem:
            m_design = m_preview = false;
            break;
        case desk::PackageReportItem:
            m_preview = true;
            break;
        default:
            break;
    }
    ShowButtons();
}

void frmDesk::lsvDesk_Deselected() {
    m_design = m_preview = false;
    ShowButtons();
}

void frmDesk::lsvDesk_DblClick() {
    if (lsvDesk->ListItems().Count() == 0) {
        return;
    }
    try {
        Global::BusyCursor(true);
        const ListItem& item = lsvDesk->SelectedItem();
        WithPlace([&] { Global::CurrentFolderID = std::to_string(Global::GetFolderID(item.Text())); });
        if (item.Text().empty()) {
            return;
        }
        switch (item.Icon) {
            case desk::FolderItem:
            case 0:
                OpenFolder(item);
                break;
            case desk::ScheduleItem:
                ComAction(NewPackageCommand);  // sic
                break;
            case desk::PackageItem:
                OpenPackageWindow(item);
                break;
            default:
                break;
        }
        Global::BusyCursor(false);
    } catch (...) {
        Global::ShowError(CurrentError());
        Global::BusyCursor(false);
    }
}

frmDesk& frmDesk::OpenNext() {
    return *OpenDeskWindow(*ChildArea::Of(*this));
}

void frmDesk::OpenFolder(const ListItem& item) {
    const std::string name = item.Text();
    frmDesk& window = OpenNext();
    if (item.Icon == desk::FolderItem) {
        Global::CurrentFolder = name;
    }
    window.setWindowTitle(QString::fromStdString(Global::CurrentFolder));
    WithPlace([&] { desk::ShowSchedules(*window.lsvDesk, name, desk::ScheduleItem); });
    WithPlace([&] { desk::AddFolders(*window.lsvDesk, Global::CurrentFolderID, desk::FolderItem); });
}

void frmDesk::OpenPackageWindow(const ListItem& item) {
    Global::CurrentFolderID = "999";  // sic: no folder has this key
    frmDesk& window = OpenNext();
    window.setWindowTitle(QString::fromStdString("Package - " + item.Text()));
    window.lsvDesk->ListItems().Clear();
    WithPlace([&] { OpenPackage(item.Key); });
}

// If a key asks for the menu, it opens at the item, wherever the pointer is.
void frmDesk::lsvDesk_MouseUp(int button, QPoint place) {
    constexpr int RightButton = 2;
    if (button != RightButton) {
        return;
    }
    lsvDesk_Click();  // the right button has selected the item as the left one does
    if (lsvDesk->ListItems().Count() == 0 || !lsvDesk->HasSelection() ||
        lsvDesk->SelectedItem().Text().empty()) {
        return;
    }
    MainFrame& frame = *Global::Frame;
    const QPoint corner = lsvDesk->mapToGlobal(place);
    const int icon = lsvDesk->SelectedItem().Icon;
    if (icon == desk::FolderItem) {
        frame.PopupMenu("mnuDeskFld", corner.x(), corner.y());
    } else if (icon == desk::ScheduleItem) {
        frame.PopupMenu("mnuDeskRpt", corner.x(), corner.y());
    } else if (icon == desk::PackageItem || icon == desk::PackageReportItem) {
        const bool package = icon == desk::PackageItem;
        frame.EntryCaption("mnubtcDelSel", package ? "Delete Package..." : "Delete Report...");
        for (const char* entry : {"mnubtcRun", "mnubtcOutput", "mnuhash99", "mnubtcPar"}) {
            frame.EntryVisible(entry, !package);
        }
        frame.EntryVisible("mnubtcExec", package);
        frame.PopupMenu("mnubtchPop2", corner.x(), corner.y());
    }
}

void frmDesk::lsvDesk_ColumnClick(int header) {
    lsvDesk->SortKey(header - 1);
    lsvDesk->Sorted(true);
    lsvDesk->Refresh();
}

void frmDesk::lsvDesk_AfterLabelEdit(int& cancel, std::string& newString) {
    try {
        ListItem& item = lsvDesk->SelectedItem();
        if (newString.empty()) {
            MsgBox("You must provide a name for this object", vbExclamation);
            newString = item.Text();
            return;
        }
        if (newString == item.Text()) {
            return;
        }
        if (cancel != 0) {
            lsvDesk->ListItems().Remove(item.Key);
            return;
        }
        // The list shows the removed marks until it is filled again.
        const std::string newName = WithoutMark(newString);
        if (item.Icon != desk::FolderItem) {
            RenameSchedule(item.Text(), newName);
        } else if (!RenameFolder(item.Text(), newName)) {
            newString = item.Text();
            lsvDesk->StartLabelEdit();
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::BusyCursor(false);
        Global::ShowError(error);
    }
}

// Returns false if the name is taken.
bool frmDesk::RenameFolder(const std::string& oldName, const std::string& newName) {
    if (!IsNameFree(newName)) {
        return false;
    }
    Global::RenameFolder(oldName, newName);
    return true;
}

// Packages come here too: no schedule has their name, so no row of theirs changes.
void frmDesk::RenameSchedule(const std::string& oldTitle, const std::string& newTitle) {
    const int id = Global::GetScheduleID(oldTitle, Global::ActiveDesk().Caption());
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.Execute("update ReportScheduler Set ReportTitle = '" + newTitle +
                       "' where ReportID = " + std::to_string(id));
    connection.Close();
}
