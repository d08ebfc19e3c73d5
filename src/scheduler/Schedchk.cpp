#include "scheduler/Schedchk.h"

#include "app/Global.h"
#include "execution/RunReport.h"
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

void StoreNextRun(const std::string& reportID, DateValue NextDate) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.Execute("update ReportScheduler set NextRun = '" + cmFunc::FormatDateText(NextDate) +
                       "' Where ReportID = " + reportID);
    connection.Close();
}

void PollSchedules(const std::string& RunStamp, std::string& reportID) {
    const std::string today = cmFunc::FormatDateText(Today());
    DateValue NextDate;  // keeps its value from row to row: a word that is not known takes the row before's
    ADODB::Recordset rows;
    rows.CacheSize = 50;
    rows.CursorLocation = ADODB::adUseClient;
    rows.Open(
        "Select * from ReportScheduler Where StartDate <= '" + today + "' and EndDate >= '" + today + "'",
        ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        reportID = rows.Fields("ReportID").Value.Text();
        const MAPI::DueRun run(ConnectionString, "schedule", reportID,
                               rows.Fields("NextRun").Value.Text() + " " + rows.Fields("RunAt").Value.Text());
        if (!IsDue(rows.Fields("NextRun").Value, rows.Fields("RunAt").Value) || !RunStoredSchedule(rows)) {
            continue;
        }
        NextSingleRun(rows.Fields("Frequency").Value.Text(), CDate(rows.Fields("NextRun").Value), NextDate);
        StoreNextRun(reportID, NextDate);
        WriteRunHistory(reportID, RunStamp, "Success", "None");
    }
    rows.Close();
}

}  // namespace

void Schedchk() {
    const DateValue now = Now();  // read once: at midnight two readings would be of two days
    const std::string RunStamp = cmFunc::FormatDateText(now) + " " + TimeText(now);
    std::string reportID;
    try {
        EnableTimer1(false);
        PollSchedules(RunStamp, reportID);
    } catch (...) {
        const RuntimeError error = CurrentError();
        WriteRunHistory(reportID, RunStamp, "Failure", error.Description());
        AlertPollFailure("Schedchk", error);
    }
    EnableTimer1(true);
}

}  // namespace Global
