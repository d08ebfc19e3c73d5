// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/RunReport.h"

#include "execution/ExportFormat.h"
#include "mail/Delivery.h"
#include "platform/base/convert.h"
#include "platform/base/journal.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/process.h"
#include "platform/contracts/run_switches.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

struct Envelope {
    const Variant& message;
    const Variant& subject;
    const std::string& sendTo;
};

// The engine mails the export itself.
bool MailByEngine(report::Report& report, report::DocumentFormat format, const Envelope& envelope) {
    report.SetExportDestination(report::DestinationMail);
    report.SetMail(envelope.sendTo, envelope.subject.Text(), envelope.message.Text());
    if (format == report::DocumentFormat::Excel) {
        SetExcelOptions(report);
    }
    report.SetExportFormat(report::CodeOf(format));
    report.Export(report::WithoutPrompts);
    DoEvents();
    return true;
}

bool ExportHtmlAndMail(report::Report& report, const Envelope& envelope) {
    const std::string file = HtmlOutputFile(report.Title());
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(report::CodeOf(report::DocumentFormat::Html));
    report.SetHtmlFileName(file);
    report.Export(report::WithoutPrompts);
    cmFunc::PauseSeconds(1);
    const bool sent = SendMailSingle(envelope.message, envelope.subject, envelope.sendTo, file, 1);
    DoEvents();
    return sent;
}

}  // namespace

void LogTablesOn(report::Report& report, const std::string& userName, const std::string& password) {
    const int tables = report.TableCount();
    for (int table = 1; table <= tables; ++table) {
        report.SetTableLogon(table, "", "", userName, password);
    }
}

void HandOverParameter(report::Report& report, int n, const Variant& value, OtherFieldRule rule) {
    report::ParameterField& field = report.Parameter(n);
    switch (field.ValueType()) {
        case report::NumberField:
            field.AddCurrentValue(CDbl(value));
            break;
        case report::BooleanField:
            field.AddCurrentValue(CBool(value));
            break;
        case report::StringField:
            field.AddCurrentValue(value.Text());
            break;
        case report::DateTimeField:
            field.AddCurrentValue(CDate(value));
            break;
        case report::OtherField:
            if (rule == OtherFieldRule::Fail) {
                throw RuntimeError(err::ObjectRequired);
            }
            field.AddCurrentValue(value);
            break;
        default:
            break;
    }
}

bool RunReport(const Variant& reportID, const std::string& reportPath, const Variant& message,
               const Variant& subject, const std::string& sendTo, const Variant& format,
               const std::string& selectionForm, const std::string& userName, const std::string& password) {
    ADODB::Recordset parameters;
    parameters.Open("select * from ReportParameter where ReportID = " + reportID, ConnectionString,
                    ADODB::adOpenStatic, ADODB::adLockReadOnly);
    report::Report& report = OpenReportToRun(reportPath);
    // A second owner: a yield may let other code open another report.
    const std::shared_ptr<report::Report> held = CurrentReport;
    // A user without a password means no logon (sic).
    if (!userName.empty() && !password.empty()) {
        LogTablesOn(report, userName, password);
    }
    if (!Command().empty() && Frame != nullptr) {
        Frame->HideWindow();
    }
    ClearReportParameters();
    for (int field = 1; !parameters.EOF_(); ++field) {
        HandOverParameter(report, field, parameters.Fields("ParValue").Value, OtherFieldRule::HandOver);
        parameters.MoveNext();
    }
    parameters.Close();
    report.SetRunSwitches(report::WithoutPrompts, report::WithoutProgress);
    if (!selectionForm.empty()) {
        report.SetRecordSelectionFormula(selectionForm);
    }
    const Envelope envelope{message, subject, sendTo};
    const std::optional<report::DocumentFormat> known = RecogniseFormat(Runner::Single, format.Text());
    if (!known) {
        Journal("Schedule " + reportID + " is not run: its format \"" + format + "\" is not known");
        return false;
    }
    return *known == report::DocumentFormat::Html ? ExportHtmlAndMail(report, envelope)
                                                  : MailByEngine(report, *known, envelope);
}

bool RunStoredSchedule(const ADODB::Recordset& row) {
    const auto text = [&row](const char* name) { return row.Fields(name).Value.Text(); };
    const bool logon = text("LoginReq") == "T";
    return RunReport(row.Fields("ReportID").Value, text("ReportPath"), row.Fields("message").Value,
                     row.Fields("Subject").Value, text("SendTo"), row.Fields("Format").Value,
                     text("SelectionForm"), logon ? text("UserName") : "", logon ? text("Password") : "");
}

void ClearReportParameters() {
    report::Report& report = OpenedReport();
    const int count = report.ParameterFieldCount();
    for (int field = 1; field <= count; ++field) {
        report.Parameter(field).ClearCurrentValueAndRange();
    }
}

void ClearAttachmentList() {
    AttachmentList.fill({});
}

void BusyCursor(bool busy) {
    constexpr int Hourglass = 11;
    const int pointer = busy ? Hourglass : 0;
    if (Frame != nullptr) {
        Frame->ScreenMousePointer(pointer);
    }
    if (DeskWindow* const desk = FindActiveDesk()) {
        desk->ListMousePointer(pointer);
    }
}

}  // namespace Global
