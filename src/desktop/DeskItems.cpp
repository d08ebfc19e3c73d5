// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/DeskItems.h"

#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace desk {

void ShowSchedules(ListView& list, const std::string& folderName, int smallIcon) {
    ADODB::Recordset rows;
    rows.Open("select * from reportscheduler where parent = '" + folderName + "' order by reporttitle",
              Global::ConnectionString);
    const ListView::Filling filling(list);
    list.ListItems().Clear();
    for (; !rows.EOF_(); rows.MoveNext()) {
        list.ListItems().Add("pk" + rows.Fields("ReportID").Value, rows.Fields("ReportTitle").Value.Text(),
                             ScheduleItem, smallIcon);
    }
    rows.Close();
}

void AddFolders(ListView& list, const std::string& parentID, int smallIcon) {
    ADODB::Recordset rows;
    rows.Open("select foldername, folderid from folders where parent = " + parentID,
              Global::ConnectionString);
    const ListView::Filling filling(list);
    for (; !rows.EOF_(); rows.MoveNext()) {
        const std::string name = rows.Fields("FolderName").Value.Text();
        list.ListItems().Add(name + "^" + rows.Fields("FolderID").Value, name, FolderItem, smallIcon);
    }
    rows.Close();
}

int SecondsOfKey(DateValue moment) {
    const DateValue start = DateSerial(1977, 2, 27);
    return CLng(Variant(moment.Seconds() - start.Seconds()));
}

}  // namespace desk
