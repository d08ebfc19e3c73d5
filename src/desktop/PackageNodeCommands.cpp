// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/PackageNodeCommands.h"

#include "desktop/HistoryNodes.h"
#include "desktop/PackageJobs.h"
#include "desktop/frmViewer.h"
#include "dialogs/PackageRecords.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace {

const Node& SelectedNode() {
    return frmViewer::Instance().tvBatch->SelectedItem();
}

std::string PackageOf(const Node& node) {
    return cmFunc::GetDelimitedField(node.Text(), 1, ":");
}

std::string TitleOf(const Node& node) {
    return cmFunc::GetDelimitedField(node.Key, 1, "^");
}

bool Confirmed(const Node& node) {
    switch (node.Image()) {
        case history::PackageNode:
            // The node of the next run is counted as well (sic).
            return MsgBox("Delete the current batch? All " + std::to_string(node.Children()) +
                              " scheduled reports will be deleted.",
                          vbYesNo) == vbYes;
        case history::ReportNode:
            return MsgBox("Remove the current report from the batch?", vbYesNo) == vbYes;
        default:
            return false;
    }
}

void RemoveReport(ADODB::Connection& connection, const std::string& reportID, const std::string& title) {
    connection.Execute("delete from reportbatchdtls where ReportTitle = '" + title +
                       "' and  ReportId = " + reportID);
    connection.Execute("delete from reportbatchpar where reportid = " + reportID);
}

void DeleteSelectedNode() {
    const Node& node = SelectedNode();
    if (!Confirmed(node)) {
        return;
    }
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    if (node.Image() == history::PackageNode) {
        Global::DeletePackage(connection, PackageOf(node));
    } else {
        RemoveReport(connection, PackageOf(history::ParentOf(node)), TitleOf(node));
    }
    connection.Close();
    frmViewer::Instance().Form_Load();
}

void OpenOutputOfSelectedNode() {
    const Node& node = SelectedNode();
    package::OpenOutput("b.ReportID = " + PackageOf(history::ParentOf(node)) + " and r.ReportTitle = '" +
                        TitleOf(node) + "'");
}

void EditParametersOfSelectedNode() {
    const Node& node = SelectedNode();
    package::Report report{PackageOf(history::ParentOf(node)), "0", nullptr};
    package::OpenReport(
        report, "select DetailID, ReportPath,username,password From ReportBatchDtls Where ReportID = " +
                    report.reportID + " and Reporttitle = '" + TitleOf(node) + "'");
    package::EditParameters(report, "ReportID = " + report.reportID + " and DetailID = " + report.detailID);
}

}  // namespace

void mnuDir_Click() {
    package::Run(DeleteSelectedNode);
}

void mnuOutput_Click() {
    package::Run(OpenOutputOfSelectedNode);
}

void mnuEditPar_Click() {
    package::RunBusy(EditParametersOfSelectedNode);
}
