// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/HistoryCommands.h"

#include "desktop/HistoryNodes.h"
#include "desktop/frmViewer.h"
#include "execution/PackagePreview.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

void mnuView_Click() {
    frmViewer::Instance().ShowForm();
}

void mnuRefHis_Click() {
    frmViewer::Instance().Form_KeyDown(frmViewer::RefreshKey);
}

// Deletes less than the Desktop does: the history of the schedule stays (sic).
void mnuDel_Click() {
    try {
        const Node& node = frmViewer::Instance().tvReports->SelectedItem();
        if (node.Children() > 0) {
            return;
        }
        const Node& schedule = node.Image() == history::ReportNode ? node : history::ParentOf(node);
        const std::string id = cmFunc::GetDelimitedField(schedule.Text(), 1, ":");
        if (MsgBox("Delete the selected schedule?", vbYesNo) != vbYes) {
            return;
        }
        ADODB::Connection connection;
        connection.Open(Global::ConnectionString);
        connection.Execute("delete from reportscheduler where reportid = " + id);
        connection.Execute("delete from reportparameter where reportid = " + id);
        connection.Close();
        frmViewer::Instance().tvReports->Refresh();
        frmViewer::Instance().Form_Load();
    } catch (...) {
        Global::ShowError(CurrentError());
    }
}

void mnubView_Click() {
    const Node& node = frmViewer::Instance().tvBatch->SelectedItem();
    const std::string package = cmFunc::GetDelimitedField(history::ParentOf(node).Text(), 1, ":");
    const std::string title = cmFunc::GetDelimitedField(node.Key, 1, "^");
    Global::PreviewPackageReport("r.ReportID = " + package + " and Reporttitle = '" + title + "'");
}
