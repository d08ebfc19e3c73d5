// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/PackageJobs.h"

#include <string_view>

#include "dialogs/PackageRecords.h"
#include "dialogs/frmPar.h"
#include "execution/ExportFormat.h"
#include "execution/RunReport.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/TextConventions.h"

namespace package {

namespace {

// Returns the extension, with its dot, of a file that a user saves in this format, or an empty text for a
// word that is not known. ".MS Word" is the word for documents here, and "MS Word" is none (sic).
std::string ExtensionOf(const std::string& word) {
    constexpr std::string_view Stored = "MS Word", Here = ".MS Word";
    if (word == Stored) {
        return {};
    }
    const auto format =
        Global::RecogniseFormat(Global::Runner::PackageDemand, word == Here ? std::string(Stored) : word);
    return format ? "." + std::string(report::RowOf(*format).word) : std::string();
}

void ReadStoredValues(const std::string& condition) {
    ADODB::Recordset rows;
    rows.Open("select ParValue from ReportBatchPar Where " + condition, Global::ConnectionString);
    Global::ParValues.assign(1, {});  // slot 0
    for (; !rows.EOF_(); rows.MoveNext()) {
        Global::ParValues.push_back(rows.Fields("ParValue").Value.Text());
    }
    rows.Close();
}

void StoreValues(const Report& report, const std::string& condition) {
    Global::BusyCursor(true);
    const auto fields = static_cast<std::size_t>(report.file->ParameterFieldCount());
    std::vector<std::string> values(fields);
    for (std::size_t field = 1; field <= fields; ++field) {
        values[field - 1] = field < Global::ParValues.size() ? Global::ParValues[field] : "";
    }
    Global::ReplacePackageValues(report.reportID, report.detailID, condition, values);
    Global::BusyCursor(false);
}

}  // namespace

void OpenOutput(const std::string& condition) {
    ADODB::Recordset rows;
    rows.Open(
        "select b.destination, r.Reporttitle, r.ReportFormat from ReportBatch b inner join ReportBatchDtls r "
        "on b.ReportID = r.ReportID Where " +
            condition,
        Global::ConnectionString);
    const std::string destination = rows.Fields("destination").Value.Text();
    const std::string name = cmFunc::GetDelimitedField(rows.Fields("Reporttitle").Value.Text(), 2, ">");
    const std::string format = rows.Fields("ReportFormat").Value.Text();
    rows.Close();
    std::string verb = "open";
    if (!ShellMod::OpenDocument(destination + name + ExtensionOf(format), ShellMod::ShowMaximized, "", "",
                                verb, {})) {
        MsgBox(ShellMod::ShellErrorText, vbExclamation);
    }
}

void OpenReport(Report& report, const std::string& statement) {
    ADODB::Recordset rows;
    rows.Open(statement, Global::ConnectionString);
    if (!rows.EOF_()) {
        report.detailID = rows.Fields("DetailID").Value.Text();
        Global::OpenReport(rows.Fields("ReportPath").Value.Text());
        report.file = Global::CurrentReport;
    }
    rows.Close();
}

void EditParameters(const Report& report, const std::string& condition) {
    Global::ParCancelled = false;
    Global::BusyCursor(false);
    ReadStoredValues(condition);
    if (!report.file) {
        throw RuntimeError(err::ObjectNotSet);
    }
    if (report.file->ParameterFieldCount() == 0) {
        MsgBox("This report does not have any parameters.", vbInformation);
        return;
    }
    Global::ParCaller = "frmViewer";
    frmPar::ShowModal();
    if (!Global::ParCancelled) {
        StoreValues(report, condition);
    }
}

void Run(void (*command)()) {
    try {
        command();
    } catch (...) {
        Global::ShowError(CurrentError());
    }
}

void RunBusy(void (*command)()) {
    try {
        Global::BusyCursor(true);
        command();
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::BusyCursor(false);
        Global::ShowError(error);
    }
}

}  // namespace package
