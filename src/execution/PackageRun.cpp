// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/PackageRun.h"

#include "execution/RunReport.h"
#include "mail/Delivery.h"
#include "platform/base/journal.h"
#include "platform/base/send_check.h"
#include "platform/contracts/run_switches.h"
#include "platform/posix/service_notify.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

// Returns the number of recipients. The last name of a list that does not end in ";" is lost: see
// cmFunc::CountRecipients.
int FillRecipientList(const std::string& recipients) {
    RecipientList = cmFunc::RecipientsOf(recipients);
    const auto count = static_cast<int>(RecipientList.size());
    RecipientList.insert(RecipientList.begin(), std::string());  // the slots count from 1
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

void ExportPackageReport(report::Report& report, report::DocumentFormat format, const std::string& file) {
    if (format == report::DocumentFormat::Excel) {
        SetExcelOptions(report);
    } else if (format == report::DocumentFormat::Html) {
        SetPackageHtmlOptions(report);
    }
    if (format == report::DocumentFormat::Html) {
        report.SetHtmlFileName(file);
    } else {
        report.SetDiskFileName(file);
    }
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(report::CodeOf(format));
    SendCheck::Call();
    report.Export(report::WithoutPrompts);
}

// Runs every report of the package and puts its file into a slot. Returns the number of reports.
int RunPackageReports(const std::string& reportID, const std::string& destination, Runner runner) {
    int slot = 1;
    ADODB::Recordset details;
    details.Open("select * from reportbatchdtls where reportid = " + reportID, ConnectionString);
    for (; !details.EOF_(); details.MoveNext(), ++slot) {
        ServiceManager::Instance().NotifyAlive();
        report::Report& report = OpenReportToRun(details.Fields("ReportPath").Value.Text());
        const std::shared_ptr<report::Report> held = CurrentReport;
        HandOverPackageParameters(report, reportID, details.Fields("DetailID").Value.Text());
        report.SetRunSwitches(report::WithoutPrompts, report::WithoutProgress);
        const std::optional<report::DocumentFormat> format =
            RecogniseFormat(runner, details.Fields("ReportFormat").Value.Text());
        if (format) {
            // The slot is set before the engine is called: an error before this line leaves it empty.
            AttachmentSlot(slot) =
                PackageOutputFile(*format, destination, details.Fields("ReportTitle").Value.Text());
            ExportPackageReport(report, *format, AttachmentSlot(slot));
        } else {
            Journal("Package " + reportID + " goes without its report \"" +
                    details.Fields("ReportTitle").Value + "\", as the format \"" +
                    details.Fields("ReportFormat").Value + "\" is not known");
        }
    }
    details.Close();
    return slot - 1;
}

}  // namespace

bool RunPackage(const ADODB::Recordset& package, Runner runner) {
    const std::string mailBatch = package.Fields("MailBatch").Value.Text();
    ClearAttachmentList();
    const int recipients = FillRecipientList(package.Fields("Recipients").Value.Text());
    const int files = RunPackageReports(package.Fields("ReportID").Value.Text(),
                                        package.Fields("Destination").Value.Text(), runner);
    const bool delivered =
        mailBatch != "T" ||
        SendMailBatch(package.Fields("message").Value, package.Fields("Subject").Value, recipients, files, 1);
    CurrentReport.reset();
    return delivered;
}

}  // namespace Global
