// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upkeep.h"

#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace Global {

void PurgeOldHistory() {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.Execute("delete from reporthistory where datediff('d',lastrun, Now()) > 30");
    // The package history holds "date,time": only its first ten characters are a date.
    connection.Execute("delete from reportbatchhstry where datediff('d',left(lastrun,10),Now()) > 30");
    connection.Close();
}

bool FolderNameFree(const std::string& name) {
    ADODB::Recordset count;
    count.Open("select count(*) from folders where foldername = '" + name + "'", ConnectionString);
    const bool taken = CLng(count.Fields(0).Value) > 0;
    count.Close();
    return !taken && UCase(name) != "DESKTOP";
}

}  // namespace Global
