// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/DetailViews.h"

#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/frmDesk.h"
#include "dialogs/ScheduleRecords.h"
#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"

namespace {

void WriteView(const char* value) {
    ShellMod::WriteSetting("View", value);
}

// Empties the list and makes it a table with these columns.
ListView& PrepareTable(std::initializer_list<const char*> columns) {
    ListView& list = *ActiveDeskForm().lsvDesk;
    list.ListItems().Clear();
    list.ColumnHeaders().Clear();
    list.View(ListView::ReportView);
    list.FullRowSelect(true);
    list.AllowColumnReorder(true);
    list.HideColumnHeaders(false);
    for (const char* column : columns) {
        list.ColumnHeaders().Add(column);
    }
    return list;
}

void AddScheduleRows(ListView& list, const std::string& folderName) {
    ADODB::Recordset rows;
    rows.Open("select * from reportscheduler where parent = '" + folderName + "' order by reporttitle",
              Global::ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        ListItem& item = list.ListItems().Add("pk" + rows.Fields("ReportID").Value,
                                              rows.Fields("ReportTitle").Value.Text(), desk::ScheduleItem,
                                              desk::ScheduleItem);
        int column = 0;
        for (const char* field : {"Frequency", "Format", "NextRun", "SendTo"}) {
            item.SubItems(++column, rows.Fields(field).Value.Text());
        }
    }
    rows.Close();
}

void AddPackageRows(ListView& list) {
    ADODB::Recordset rows;
    rows.Open("select batchname, reportid from reportbatch", Global::ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        const std::string name = rows.Fields("BatchName").Value.Text();
        list.ListItems().Add(name + ":" + rows.Fields("ReportID").Value, name, desk::PackageItem,
                             desk::PackageItem);
    }
    rows.Close();
}

}  // namespace

void mnuIcons_Click() {
    ListView& list = *ActiveDeskForm().lsvDesk;
    list.Arrange(ListView::ArrangeTop);
    list.HideColumnHeaders(true);
    list.View(ListView::IconView);
    list.Refresh();
    WriteView("0");
}

void mnuViewList_Click() {
    ListView& list = *ActiveDeskForm().lsvDesk;
    list.Arrange(ListView::ArrangeLeft);
    list.HideColumnHeaders(true);
    list.View(ListView::SmallIconView);
    WriteView("2");
    list.Refresh();
}

void mnuDetails_Click() {
    const std::string caption = Global::ActiveDesk().Caption();
    if (caption.substr(0, 9) == "Package -") {
        batchDetails(Replace(caption, "Package - ", ""));
    } else {
        bldDetails(caption);
    }
    WriteView("3");
}

void bldDetails(const std::string& folderName) {
    ListView& list = PrepareTable({"Report Name", "Frequency", "Output Format", "Next Run", "Recipients"});
    const ListView::Filling filling(list);
    AddScheduleRows(list, folderName);
    desk::AddFolders(list, std::to_string(Global::GetFolderID(folderName)), desk::FolderItem);
    if (folderName == "Desktop") {
        AddPackageRows(list);
    }
}

void batchDetails(const std::string& batchName) {
    ListView& list = PrepareTable({"Report Name", "Path", "Output Format", "Frequency", "Next Run"});
    list.ColumnHeaders().ShowPaths(2);
    ADODB::Recordset package;
    package.Open(
        "select ReportID, frequency, nextrundate from reportbatch where batchname = '" + batchName + "'",
        Global::ConnectionString);
    const std::string id = package.Fields("ReportID").Value.Text();
    const std::string nextRun = package.Fields("NextRunDate").Value.Text();
    const std::string frequency = package.Fields("Frequency").Value.Text();
    package.Close();

    ADODB::Recordset rows;
    rows.Open("select * from reportbatchdtls where reportid = " + id, Global::ConnectionString);
    const ListView::Filling filling(list);
    for (; !rows.EOF_(); rows.MoveNext()) {
        ListItem& item = list.ListItems().Add(rows.Fields("DetailID").Value + ":bk",
                                              rows.Fields("ReportTitle").Value.Text(),
                                              desk::PackageReportItem, desk::PackageReportItem);
        item.SubItems(1, rows.Fields("ReportPath").Value.Text());
        item.SubItems(2, rows.Fields("ReportFormat").Value.Text());
        item.SubItems(3, frequency);
        item.SubItems(4, nextRun);
    }
    rows.Close();
}
