// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/PackageCommands.h"

#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/PackageJobs.h"
#include "desktop/frmDesk.h"
#include "dialogs/PackageRecords.h"
#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace {

// Returns the key of a package report: the first field of its item's key.
std::string DetailOf(const std::string& key) {
    return cmFunc::GetDelimitedField(key, 1, ":");
}

std::string ReadReportID(const std::string& statement) {
    ADODB::Recordset rows;
    rows.Open(statement, Global::ConnectionString);
    std::string id = rows.Fields("ReportID").Value.Text();
    rows.Close();
    return id;
}

bool Confirmed(int icon) {
    switch (icon) {
        case desk::PackageItem:
            return MsgBox("Delete the current batch? All scheduled reports will be deleted.", vbYesNo) ==
                   vbYes;
        case desk::PackageReportItem:
            return MsgBox("Remove the current report from the batch?", vbYesNo) == vbYes;
        default:
            return false;
    }
}

bool IsEmptyPackage(const std::string& reportID) {
    ADODB::Recordset rows;
    rows.Open("select count(*) as RepCount from ReportBatchDtls Where ReportID = " + reportID,
              Global::ConnectionString);
    const bool empty = CLng(rows.Fields("RepCount").Value) == 0;
    rows.Close();
    return empty;
}

// Takes the window in the slot before for the one from which the package was opened, with the package still
// selected in it (sic).
void RemoveFromWindowBefore() {
    if (const frmDesk* before = FindDesk(Global::DeskIndex - 1); before != nullptr) {
        before->lsvDesk->ListItems().Remove(before->lsvDesk->SelectedItem().Key);
    }
}

void DeletePackage(const std::string& reportID) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    Global::DeletePackage(connection, reportID);
    connection.Close();
}

// Events run during the pause: windows may be gone after it.
void RemoveReport(const std::string& detailID, const std::string& title) {
    constexpr double UntilReadsCatchUp = 3;  // seconds
    const std::string reportID = std::to_string(
        CInt(Variant(ReadReportID("select reportid from reportbatchdtls where DetailID =" + detailID))));
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.Execute("delete from reportbatchdtls where ReportTitle = '" + title +
                       "' and  DetailId = " + detailID);
    connection.Execute("delete from reportbatchpar where DetailID = " + detailID);
    {
        const KeptWindows kept(ActiveDeskForm());
        cmFunc::PauseSeconds(UntilReadsCatchUp);
    }
    if (IsEmptyPackage(reportID)) {
        RemoveFromWindowBefore();
        Global::DeletePackage(connection, reportID);
    }
    connection.Close();
}

void DeleteSelected() {
    const ListItem& item = ActiveDeskForm().lsvDesk->SelectedItem();
    const int icon = item.Icon;
    const std::string key = item.Key, title = item.Text();
    if (!Confirmed(icon)) {
        return;
    }
    if (icon == desk::PackageItem) {
        DeletePackage(cmFunc::PackageOfKey(key));
    } else {
        RemoveReport(DetailOf(key), title);
    }
    if (const frmDesk* window = FindDesk(Global::DeskIndex); window != nullptr) {
        window->lsvDesk->ListItems().Remove(window->lsvDesk->SelectedItem().Index());
    }
}

void OpenOutputOfSelected() {
    const DeskWindow& window = Global::ActiveDesk();
    const std::string id = ReadReportID("select reportid from reportbatchdtls where detailid =" +
                                        DetailOf(window.SelectedKey()));
    package::OpenOutput("r.ReportID = " + id + " and r.ReportTitle = '" + window.SelectedText() + "'");
}

void EditParametersOfSelected() {
    const DeskWindow& window = Global::ActiveDesk();
    package::Report report;
    report.detailID = DetailOf(window.SelectedKey());
    report.reportID =
        ReadReportID("select ReportID from ReportBatchDtls Where DetailID = " + report.detailID);
    package::OpenReport(report, "select * From ReportBatchDtls Where DetailID = " + report.detailID +
                                    " and Reporttitle = '" + window.SelectedText() + "'");
    package::EditParameters(report, "DetailID = " + report.detailID);
}

}  // namespace

void mnubtcDelSel_Click() {
    package::Run(DeleteSelected);
}

void mnubtcOutput_Click() {
    package::Run(OpenOutputOfSelected);
}

void mnubtcPar_Click() {
    package::RunBusy(EditParametersOfSelected);
}
