// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmDesk: they fill its tree and its list of folders, schedules and packages.
#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/DetailViews.h"
#include "desktop/frmDesk.h"
#include "dialogs/ScheduleRecords.h"
#include "execution/RunReport.h"
#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/shared_store.h"
#include "shared/Global.h"
#include "store/Folders.h"
#include "store/TextConventions.h"

namespace {

using Global::StoredFolder;

std::string KeyOf(const StoredFolder& folder) {
    return folder.id + "^" + folder.name;
}

}  // namespace

void frmDesk::AddRoot() {
    tvwFolder->Nodes().Add("", "Desktop", "Desktop", desk::TreeRoot);
}

void frmDesk::BuildTree() {
    Global::BusyCursor(true);
    AddRoot();
    // One statement for each folder: over a link each would be a round trip.
    const TableSnapshot folders(Global::ConnectionString, "folders", "parent");
    Nodes& nodes = tvwFolder->Nodes();
    for (const StoredFolder& folder : Global::FoldersBelow("0")) {
        nodes.Add("Desktop", KeyOf(folder), folder.name, desk::TreeFolder);
        for (const StoredFolder& child : Global::FoldersBelow(folder.id)) {
            nodes.Add(KeyOf(folder), KeyOf(child), child.name, desk::TreeFolder);
            AddChildren(child.id, KeyOf(child));
        }
    }
    Global::BusyCursor(false);
}

// The children of this node are the last level of the tree: deeper folders are reached through the list.
void frmDesk::AddChildren(const std::string& parentID, const std::string& parentKey) {
    for (const StoredFolder& folder : Global::FoldersBelow(parentID)) {
        tvwFolder->Nodes().Add(parentKey, KeyOf(folder), folder.name, desk::TreeFolder);
    }
}

void frmDesk::AddBatches() {
    try {
        ADODB::Recordset rows;
        rows.Open("select * from reportbatch", Global::ConnectionString);
        const ListView::Filling filling(*lsvDesk);
        for (; !rows.EOF_(); rows.MoveNext()) {
            try {
                lsvDesk->ListItems().Add("Pckg:" + rows.Fields("ReportID").Value,
                                         rows.Fields("BatchName").Value.Text(), desk::PackageItem,
                                         desk::PackageItem);
            } catch (const RuntimeError& error) {
                if (error.Number() != err::KeyNotUnique) {  // the package is already listed
                    throw;
                }
            }
        }
        rows.Close();
    } catch (...) {
        Global::ShowError(CurrentError());
    }
}

void frmDesk::OpenPackage(const std::string& key) {
    ADODB::Recordset rows;
    rows.Open("select * from reportbatchdtls where  reportid = " + cmFunc::PackageOfKey(key),
              Global::ConnectionString);
    ListView& list = *DeskAt(Global::DeskCount).lsvDesk;
    for (; !rows.EOF_(); rows.MoveNext()) {
        const std::string title = rows.Fields("ReportTitle").Value.Text();
        list.ListItems().Add(rows.Fields("DetailID").Value + ":" + title, title, desk::PackageReportItem,
                             desk::PackageReportItem);
    }
    rows.Close();
}

void frmDesk::tvwFolder_Click() {
    const std::string name = tvwFolder->SelectedItem().Text();
    Global::CurrentFolderID = std::to_string(Global::GetFolderID(name));
    setWindowTitle(QString::fromStdString(name));
    if (lsvDesk->View() == ListView::ReportView) {
        bldDetails(name);
        return;
    }
    desk::ShowSchedules(*lsvDesk, name, 0);
    ++Global::FolderClicks;
    desk::AddFolders(*lsvDesk, Global::CurrentFolderID, 0);
    if (CInt(Global::CurrentFolderID) == 0) {
        AddBatches();
    }
}

void frmDesk::RefreshList(const std::string& folderName, const std::string& folderID) {
    setWindowTitle(QString::fromStdString(folderName));
    desk::ShowSchedules(*lsvDesk, folderName, desk::ScheduleItem);
    desk::AddFolders(*lsvDesk, folderID, desk::FolderItem);
    if (CInt(folderID) == 0) {
        // Sic: the packages go to the form's own instance and not to this window, which shows none until it
        // is filled again.
        DefaultInstance().AddBatches();
    }
}
