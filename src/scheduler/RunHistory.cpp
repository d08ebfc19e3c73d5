#include "scheduler/RunHistory.h"

#include "app/Global.h"
#include "mail/Delivery.h"
#include "platform/adodb.h"

namespace Global {

void WriteRunHistory(const Variant& reportID, const Variant& lastRun, const Variant& status,
                     const Variant& errMsg) {
    const std::string statement = "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(" +
                                  reportID + ",'" + lastRun + "','" + status + "','" + errMsg + "')";
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.Execute(statement);
    connection.Close();
}

void AlertPollFailure(const std::string& routine, const RuntimeError& error) {
    SendAlertMail(ErrorText("An error occured in " + routine + ". ", error), AlertWho, AlertSubject, 1);
}

}  // namespace Global
