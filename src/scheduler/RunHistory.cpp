// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunHistory.h"

#include "mail/Delivery.h"
#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "shared/Global.h"

namespace Global {

namespace {

// Uses a connection of its own.
void Execute(const std::string& statement) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.Execute(statement);
    connection.Close();
}

}  // namespace

std::string RunHistoryStatement(const Variant& reportID, const Variant& lastRun, const Variant& status,
                                const Variant& errMsg) {
    return "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(" + reportID + ",'" +
           lastRun + "','" + status + "','" + errMsg + "')";
}

void WriteRunHistory(const Variant& reportID, const Variant& lastRun, const Variant& status,
                     const Variant& errMsg) {
    Execute(RunHistoryStatement(reportID, lastRun, status, errMsg));
}

std::string PackageHistoryMoment() {
    const DateValue now = Now();
    return DateText(now) + "," + TimeText(now);
}

std::string PackageRunStatement(const std::string& reportID, const std::string& moment) {
    return "insert into ReportBatchHstry(ReportID, LastRun, Success)Values('" + reportID + "','" + moment +
           "','T')";
}

void WritePackageRun(const std::string& reportID) {
    Execute(PackageRunStatement(reportID, PackageHistoryMoment()));
}

void WritePackageFailure(const std::string& reportID, const std::string& description) {
    Execute("insert into ReportBatchHstry(ReportID, LastRun, Success, ErrMsg)Values('" + reportID + "','" +
            PackageHistoryMoment() + "','T','" + description + "')");
}

void AlertPollFailure(const std::string& routine, const RuntimeError& error) {
    // "occured": sic
    SendAlertMail(ErrorText("An error occured in " + routine + ". ", error), AlertWho, AlertSubject, 1);
}

}  // namespace Global
