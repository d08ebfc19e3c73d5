#include "scheduler/BatchReport.h"

#include "app/Global.h"
#include "execution/ExportFormat.h"
#include "execution/RunReport.h"
#include "mail/Delivery.h"
#include "platform/adodb.h"
#include "platform/clock.h"
#include "platform/convert.h"
#include "scheduler/Due.h"
#include "scheduler/NextRun.h"
#include "scheduler/PollTimer.h"
#include "scheduler/RunHistory.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

// The moment as the package history holds it.
std::string HistoryMoment() {
    const DateValue now = Now();
    return DateText(now) + "," + TimeText(now);
}

// Returns how many recipients the package's list gives.
int FillRecipientList(const std::string& recipients) {
    const int count = cmFunc::CountRecipients(recipients);
    RecipientList.assign(static_cast<std::size_t>(count) + 1, {});
    for (int i = 1; i <= count; ++i) {
        RecipientList[static_cast<std::size_t>(i)] = cmFunc::GetDelimitedField(recipients, i, ";");
    }
    return count;
}

void HandOverPackageParameters(report::Report& report, const std::string& reportID,
                               const std::string& detailID) {
    ADODB::Recordset values;
    values.Open("select * from reportbatchpar where reportid =" + reportID + " and DetailID = " + detailID +
                    " order by parid",
                ConnectionString);
    for (int field = 1; !values.EOF_(); values.MoveNext(), ++field) {
        HandOverParameter(report, field, values.Fields("ParValue").Value, OtherFieldRule::Fail);
    }
    values.Close();
}

void ExportPackageReport(report::Report& report, ExportKind kind, const std::string& file) {
    if (kind == ExportKind::Excel) {
        SetExcelOptions(report);
    } else if (kind == ExportKind::Html) {
        SetPackageHtmlOptions(report);
    }
    if (kind == ExportKind::Html) {
        report.SetHtmlFileName(file);
    } else {
        report.SetDiskFileName(file);
    }
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(EngineFormatCode(kind));
    report.Export(false);
}

// Runs every report of the package into its slot. Returns the number of reports.
int RunPackageReports(const std::string& reportID, const std::string& destination) {
    int slot = 1;
    ADODB::Recordset details;
    details.Open("select * from reportbatchdtls where reportid = " + reportID, ConnectionString);
    for (; !details.EOF_(); details.MoveNext(), ++slot) {
        report::Report& report = OpenReport(details.Fields("ReportPath").Value.Text());
        const std::shared_ptr<report::Report> held = CurrentReport;
        HandOverPackageParameters(report, reportID, details.Fields("DetailID").Value.Text());
        report.SetRunSwitches(false, false);
        const ExportKind kind =
            RecogniseFormat(Runner::PackagePoll, details.Fields("ReportFormat").Value.Text());
        if (kind != ExportKind::None) {
            // Named before the engine is called: a report that does not get that far leaves its slot empty.
            AttachmentSlot(slot) =
                PackageOutputFile(kind, destination, details.Fields("ReportTitle").Value.Text());
            ExportPackageReport(report, kind, AttachmentSlot(slot));
        }
    }
    details.Close();
    return slot - 1;
}

void RecordDelivery(ADODB::Connection& connection, const std::string& reportID, DateValue next) {
    const std::string update = "update ReportBatch Set NextRundate = '" + cmFunc::FormatDateText(next) +
                               "' Where ReportID = " + reportID;
    const std::string insert = "insert into ReportBatchHstry(ReportID, LastRun, Success)Values('" + reportID +
                               "','" + HistoryMoment() + "','T')";
    connection.Open(ConnectionString);
    connection.Execute(update);
    connection.Execute(insert);
    connection.Close();
}

// The success word of a failure is "T" as well; what marks it is the text behind.
void RecordFailure(const std::string& reportID, const std::string& description) {
    const std::string insert = "insert into ReportBatchHstry(ReportID, LastRun, Success, ErrMsg)Values('" +
                               reportID + "','" + HistoryMoment() + "','T','" + description + "')";
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    connection.Execute(insert);
    connection.Close();
}

// Runs one due package to its mail. False: the mail failed.
bool RunPackage(const ADODB::Recordset& package) {
    const std::string mailBatch = package.Fields("MailBatch").Value.Text();
    ClearAttachmentList();
    const int recipients = FillRecipientList(package.Fields("Recipients").Value.Text());
    const int files = RunPackageReports(package.Fields("ReportID").Value.Text(),
                                        package.Fields("Destination").Value.Text());
    const bool delivered =
        mailBatch != "T" ||
        SendMailBatch(package.Fields("message").Value, package.Fields("Subject").Value, recipients, files, 1);
    CurrentReport.reset();
    return delivered;
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
        if (!RunPackage(packages)) {
            return false;
        }
        const std::string reportID = packages.Fields("ReportID").Value.Text();
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
    RecordFailure(lastKey, failure.Description());
    AlertPollFailure("BatchReport", failure);
}

}  // namespace Global
