#include "scheduler/BatchReport.h"

#include "app/Global.h"
#include "execution/PackageRun.h"
#include "platform/adodb.h"
#include "platform/clock.h"
#include "platform/convert.h"
#include "platform/due_run.h"
#include "scheduler/Due.h"
#include "scheduler/NextRun.h"
#include "scheduler/PollTimer.h"
#include "scheduler/RunHistory.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

void RecordDelivery(ADODB::Connection& connection, const std::string& reportID, DateValue next) {
    const std::string update = "update ReportBatch Set NextRundate = '" + cmFunc::FormatDateText(next) +
                               "' Where ReportID = " + reportID;
    const std::string insert = PackageRunStatement(reportID);
    connection.Open(ConnectionString);
    connection.Execute(update);
    connection.Execute(insert);
    connection.Close();
}

// `lastKey` is the last package that was delivered. False: a mail failed, and the packages behind wait.
bool PollPackages(std::string& lastKey) {
    const std::string today = cmFunc::FormatDateText(Today());
    ADODB::Connection connection;
    ADODB::Recordset packages;
    packages.Open(
        "select * from reportbatch where startdate <= '" + today + "' and enddate >= '" + today + "'",
        ConnectionString);
    for (; !packages.EOF_(); packages.MoveNext()) {
        if (!IsDue(packages.Fields("NextRunDate").Value, packages.Fields("RunTime").Value)) {
            continue;
        }
        const std::string reportID = packages.Fields("ReportID").Value.Text();
        const MAPI::DueRun run(
            ConnectionString, "package", reportID,
            packages.Fields("NextRunDate").Value.Text() + " " + packages.Fields("RunTime").Value.Text());
        if (!RunPackage(packages, Runner::PackagePoll)) {
            return false;
        }
        const DateValue next = NextPackageRun(packages.Fields("Frequency").Value.Text(),
                                              CDate(packages.Fields("NextRunDate").Value));
        lastKey = reportID;
        RecordDelivery(connection, reportID, next);
    }
    packages.Close();
    return true;
}

}  // namespace

void BatchReport() {
    std::string lastKey;
    RuntimeError failure(0, "");
    try {
        EnableTimer1(false);
        if (PollPackages(lastKey)) {
            EnableTimer1(true);
            return;
        }
    } catch (...) {
        failure = CurrentError();
    }
    WritePackageFailure(lastKey, failure.Description());
    AlertPollFailure("BatchReport", failure);
}

}  // namespace Global
