// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/BatchReport.h"

#include <utility>

#include "execution/PackageRun.h"
#include "mail/Delivery.h"
#include "platform/base/convert.h"
#include "platform/base/due_run.h"
#include "platform/base/send_check.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/shared_store.h"
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

DueRun PackageRunOf(const ADODB::Recordset& package) {
    return {RunKind::Package, package.Fields("ReportID").Value.Text(),
            package.Fields("NextRunDate").Value.Text(), package.Fields("RunTime").Value.Text()};
}

// Returns true if the run was delivered before and is now recorded. It is not run again.
bool RecordAgain(ADODB::Connection& connection, const ADODB::Recordset& package) {
    const DueRun run = PackageRunOf(package);
    if (!Deliveries::Instance().RecordAgain(connection, run)) {
        return false;
    }
    RunLog::Instance().RecordedLater(run.kind, run.reportID, package.Fields("BatchName").Value.Text());
    return true;
}

// Raises ClaimLost before a file or a mail for which the claim does not hold any more, and after the last
// file of a package that is not mailed.
bool RunClaimedPackage(const ADODB::Recordset& package, const ADODB::Claim& claim) {
    const SendCheck isStillClaimed([&claim] { claim.Prove(); });
    const bool isDelivered = RunPackage(package, Runner::PackagePoll);
    if (isDelivered && !MAPI::DueRun::MayBeOut()) {
        claim.Prove();
    }
    return isDelivered;
}

// Returns true for the errors of a store that does not answer or takes no changes.
bool IsOfStore(const RuntimeError& error) {
    return error.Number() == err::DataUnavailable || error.Number() == err::DataReadOnly ||
           error.Number() == err::DiskFull;
}

// A run starts only if it can be recorded: the connection that will store the date proves that first. Sets
// `lastKey` once the package is delivered. Returns false if its mail failed. A package that another scheduler
// has taken, or whose row has changed, is left to it or to the next poll.
bool RunDuePackage(ADODB::Connection& connection, const ADODB::Recordset& package, std::string& lastKey) {
    const DueRun run = PackageRunOf(package);
    Deliveries::Instance().GiveBackClaim(RunKind::Package, run.reportID);
    ADODB::Claim claim(ConnectionString, "ReportBatch", package);
    if (!claim.IsHeld()) {
        return true;
    }
    RunLog::Instance().Begins(run.kind, run.reportID, package.Fields("BatchName").Value.Text());
    connection.Open(ConnectionString);
    connection.ProveWritable();
    const AlertsWait untilRecorded;
    Attempt attempt(run);
    try {
        if (!RunClaimedPackage(package, claim)) {
            return false;
        }
    } catch (const ADODB::ClaimLost& lost) {
        RunLog::Instance().Left(lost);
        connection.Close();
        return true;
    }
    attempt.SetDelivered();
    const DateValue next =
        NextPackageRun(package.Fields("Frequency").Value.Text(), CDate(package.Fields("NextRunDate").Value));
    lastKey = run.reportID;
    Deliveries::Instance().Record(connection, {run, cmFunc::FormatDateText(next), PackageHistoryMoment()},
                                  std::move(claim));
    connection.Close();
    RunLog::Instance().Delivered();
    return true;
}

// Sets `lastKey` to the last delivered package. Returns false if a mail failed; the packages after it wait.
bool PollPackages(StopGate::Work& work, std::string& lastKey) {
    const std::string today = cmFunc::FormatDateText(Today());
    ADODB::Connection connection;
    ADODB::Recordset packages;
    packages.Open(
        "select * from reportbatch where startdate <= '" + today + "' and enddate >= '" + today + "'",
        ConnectionString);
    for (; !packages.EOF_(); packages.MoveNext()) {
        if (RecordAgain(connection, packages)) {
            lastKey = packages.Fields("ReportID").Value.Text();
        } else if (IsDue(packages.Fields("NextRunDate").Value, packages.Fields("RunTime").Value)) {
            if (!RunDuePackage(connection, packages, lastKey)) {
                return false;
            }
            work.Recorded();
        }
    }
    packages.Close();
    Deliveries::Instance().Clear(RunKind::Package);
    return true;
}

}  // namespace

void BatchReport() {
    if (!StoreIsReached()) {
        return EnableTimer1(true);
    }
    std::string lastKey;
    RuntimeError failure(0, "");
    StopGate::Work work;
    try {
        EnableTimer1(false);
        if (PollPackages(work, lastKey)) {
            EnableTimer1(true);
            return;
        }
    } catch (...) {
        failure = CurrentError();
    }
    RunLog::Instance().Failed("BatchReport", failure);
    WriteFailureRow("BatchReport", failure, [&] { WritePackageFailure(lastKey, failure.Description()); });
    AlertPollFailure("BatchReport", failure);
    // sic: the failure of a package leaves the timer off. That of a team's store does not.
    if (IsOfStore(failure) && IsSharedStore(ConnectionString)) {
        EnableTimer1(true);
    }
}

}  // namespace Global
