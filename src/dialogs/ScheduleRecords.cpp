#include "dialogs/ScheduleRecords.h"

#include "app/Global.h"
#include "platform/adodb.h"
#include "platform/convert.h"

namespace Global {

namespace {

std::int16_t FirstKey(const std::string& statement, const char* field) {
    ADODB::Recordset rows;
    rows.Open(statement, ConnectionString, ADODB::adOpenForwardOnly, ADODB::adLockReadOnly);
    const std::int16_t key = rows.EOF_() ? std::int16_t{0} : CInt(rows.Fields(field).Value);
    rows.Close();
    return key;
}

}  // namespace

std::int16_t GetFolderID(const std::string& folderName) {
    return FirstKey("select folderid  from folders where foldername = '" + folderName + "'", "FolderID");
}

std::int16_t GetScheduleID(const std::string& title, const std::string& parent) {
    return FirstKey("select reportid from reportscheduler where reporttitle = '" + title +
                        "' and parent = '" + parent + "'",
                    "ReportID");
}

}  // namespace Global
