// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/PackageRecords.h"

#include "platform/base/convert.h"
#include "shared/Global.h"

namespace Global {

void InsertPackage(ADODB::Connection& connection, const NewPackage& package) {
    connection.Execute(
        "insert into ReportBatch(ClientName, Recipients,Frequency,RunTime,StartDate, EndDate, Subject, "
        "Message, Destination, NextRunDate, BatchName, MailBatch)Values('NONE','" +
        package.recipients + "','" + package.frequency + "','" + package.runTime + "','" + package.startDate +
        "','" + package.endDate + "','" + package.subject + "','" + package.message + "','" +
        package.destination + "','" + package.nextRunDate + "','" + package.name + "','" + package.mailBatch +
        "')");
}

std::int16_t NewestPackageID() {
    ADODB::Recordset newest;
    newest.Open("select max(ReportID) from ReportBatch", ConnectionString);
    const std::int16_t id = CInt(newest.Fields(0).Value);
    newest.Close();
    return id;
}

void InsertPackageReport(ADODB::Connection& connection, std::int16_t packageID, const std::string& title,
                         const std::string& path, const std::string& format) {
    connection.Execute("insert into ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat)Values('" +
                       std::to_string(packageID) + "','" + title + "','" + path + "','" + format + "')");
}

void InsertPackageValue(ADODB::Connection& connection, const std::string& packageID,
                        const std::string& detailID, const std::string& value) {
    connection.Execute("insert into ReportBatchPar (ReportID, DetailID, ParValue)values (" + packageID + "," +
                       detailID + ",'" + value + "')");
}

void InsertPackageParameters(ADODB::Connection& connection, std::int16_t packageID) {
    const std::string id = std::to_string(packageID);
    ADODB::Recordset reports;
    reports.Open("select detailID, ReportTitle from reportbatchdtls where reportid =" + id, ConnectionString);
    for (; !reports.EOF_(); reports.MoveNext()) {
        ADODB::Recordset waiting;
        waiting.Open("select * from tmpPar where rptName = '" + reports.Fields("ReportTitle").Value + "'",
                     ConnectionString);
        for (; !waiting.EOF_(); waiting.MoveNext()) {
            InsertPackageValue(connection, id, reports.Fields("detailID").Value.Text(),
                               waiting.Fields("ParValue").Value.Text());
        }
        waiting.Close();
    }
    reports.Close();
}

void DeletePackage(ADODB::Connection& connection, const std::string& reportID) {
    connection.Execute("delete from reportbatch where reportid = " + reportID);
    connection.Execute("delete from reportbatchdtls where reportid = " + reportID);
    connection.Execute("delete from reportbatchpar where reportid = " + reportID);
}

void ReplacePackageValues(const std::string& reportID, const std::string& detailID,
                          const std::string& condition, const std::vector<std::string>& values) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    ReplacePackageValues(connection, reportID, detailID, condition, values);
    connection.Close();
}

void ReplacePackageValues(ADODB::Connection& connection, const std::string& reportID,
                          const std::string& detailID, const std::string& condition,
                          const std::vector<std::string>& values) {
    connection.Execute("delete from ReportBatchPar Where " + condition);
    for (const std::string& value : values) {
        connection.Execute("insert into ReportBatchPar(ReportID, DetailID, ParValue) Values(" + reportID +
                           "," + detailID + ",'" + value + "')");
    }
}

void DeleteWaitingParameters(ADODB::Connection& connection) {
    connection.Execute("delete from tmpPar");
}

}  // namespace Global
