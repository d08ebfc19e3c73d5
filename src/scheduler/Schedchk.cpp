// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/Schedchk.h"

#include <optional>
#include <utility>

#include "execution/RunReport.h"
#include "mail/Delivery.h"
#include "platform/base/convert.h"
#include "platform/base/send_check.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/stop_gate.h"
#include "scheduler/Attempt.h"
#include "scheduler/Deliveries.h"
#include "scheduler/Due.h"
#include "scheduler/NextRun.h"
#include "scheduler/PollTimer.h"
#include "scheduler/RunHistory.h"
#include "scheduler/RunLog.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

DueRun ScheduleRunOf(const ADODB::Recordset& row) {
    return {RunKind::Schedule, row.Fields("ReportID").Value.Text(), row.Fields("NextRun").Value.Text(),
            row.Fields("RunAt").Value.Text()};
}

// Returns true if the run was delivered before and is now recorded. It is not run again.
bool RecordAgain(const ADODB::Recordset& row, DateValue& NextDate) {
    ADODB::Connection connection;
    const DueRun run = ScheduleRunOf(row);
    const std::optional<std::string> next = Deliveries::Instance().RecordAgain(connection, run);
    if (!next) {
        return false;
    }
    NextDate = CDate(*next);
    RunLog::Instance().RecordedLater(run.kind, run.reportID, row.Fields("ReportTitle").Value.Text());
    return true;
}

// Returns false for a word that stores the same date again: each of its runs then has an identity of its own.
bool MovesOn(const std::string& frequency) {
    const DateValue stored = Today();
    DateValue next = stored;
    NextSingleRun(frequency, stored, next);
    return next != stored;
}

// Raises ClaimLost before a mail for which the claim does not hold any more.
bool RunClaimedSchedule(const ADODB::Recordset& row, const ADODB::Claim& claim) {
    const SendCheck isStillClaimed([&claim] { claim.Prove(); });
    return RunStoredSchedule(row);
}

// A run starts only if it can be recorded: the connection that will store the date proves that first. One
// that another scheduler has taken, or whose row has changed, is left to it or to the next poll.
void RunDueSchedule(const ADODB::Recordset& row, const std::string& RunStamp, DateValue& NextDate) {
    const DueRun due = ScheduleRunOf(row);
    Deliveries::Instance().GiveBackClaim(RunKind::Schedule, due.reportID);
    ADODB::Claim claim(ConnectionString, "ReportScheduler", row);
    if (!claim.IsHeld()) {
        return;
    }
    RunLog::Instance().Begins(due.kind, due.reportID, row.Fields("ReportTitle").Value.Text());
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.ProveWritable();
    const std::string frequency = row.Fields("Frequency").Value.Text();
    const AlertsWait untilRecorded;
    std::optional<Attempt> attempt;
    if (MovesOn(frequency)) {
        attempt.emplace(due);
    }
    try {
        if (!RunClaimedSchedule(row, claim)) {
            return RunLog::Instance().Undelivered();
        }
    } catch (const ADODB::ClaimLost& lost) {
        return RunLog::Instance().Left(lost);
    }
    if (attempt) {
        attempt->SetDelivered();
    }
    NextSingleRun(frequency, CDate(row.Fields("NextRun").Value), NextDate);
    Deliveries::Instance().Record(connection, {due, cmFunc::FormatDateText(NextDate), RunStamp},
                                  std::move(claim));
    connection.Close();
    RunLog::Instance().Delivered();
}

void PollSchedules(StopGate::Work& work, const std::string& RunStamp, std::string& reportID) {
    const std::string today = cmFunc::FormatDateText(Today());
    DateValue NextDate;  // sic: not reset for each row; an unknown word stores the date of the row before
    ADODB::Recordset rows;
    rows.CacheSize = 50;
    rows.CursorLocation = ADODB::adUseClient;
    rows.Open(
        "Select * from ReportScheduler Where StartDate <= '" + today + "' and EndDate >= '" + today + "'",
        ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        reportID = rows.Fields("ReportID").Value.Text();
        if (!RecordAgain(rows, NextDate) && IsDue(rows.Fields("NextRun").Value, rows.Fields("RunAt").Value)) {
            RunDueSchedule(rows, RunStamp, NextDate);
            work.Recorded();
        }
    }
    rows.Close();
    Deliveries::Instance().Clear(RunKind::Schedule);
}

}  // namespace

void Schedchk() {
    if (!StoreIsReached()) {
        return EnableTimer1(true);
    }
    const DateValue now = Now();  // read once: two readings around midnight would give two days
    const std::string RunStamp = cmFunc::FormatMomentText(now);
    std::string reportID;
    StopGate::Work work;
    try {
        EnableTimer1(false);
        PollSchedules(work, RunStamp, reportID);
    } catch (...) {
        const RuntimeError error = CurrentError();
        RunLog::Instance().Failed("Schedchk", error, reportID);
        WriteFailureRow("Schedchk", error,
                        [&] { WriteRunHistory(reportID, RunStamp, "Failure", error.Description()); });
        AlertPollFailure("Schedchk", error);
    }
    EnableTimer1(true);
}

}  // namespace Global
