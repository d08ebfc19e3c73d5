// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/ExportFormat.h"

#include "platform/base/convert.h"
#include "platform/base/file_name.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

bool IsPdfWord(Runner runner, const std::string& word) {
    if (word == "Acrobat") {
        return true;
    }
    return runner != Runner::PackagePoll && (word == "PDF" || word == "Acrobat Format (PDF)");
}

std::string WithoutBlanks(const std::string& text) {
    return Replace(text, " ", "");
}

}  // namespace

ExportKind RecogniseFormat(Runner runner, const std::string& word) {
    if (IsPdfWord(runner, word)) {
        return ExportKind::Pdf;
    }
    if (word == "RTF" || word == "Rich Text") {
        return ExportKind::RichText;
    }
    if (word == "Excel" || word == "MS Excel") {
        return ExportKind::Excel;
    }
    if (word == "HTML" || word == "DHTML") {
        return ExportKind::Html;
    }
    if (word == "WinWord" || word == "MS Word") {
        return ExportKind::Word;
    }
    return ExportKind::None;
}

int EngineFormatCode(ExportKind kind) {
    switch (kind) {
        case ExportKind::Pdf:
            return report::FormatPdf;
        case ExportKind::RichText:
            return report::FormatRtf;
        case ExportKind::Excel:
            return report::FormatExcel;
        case ExportKind::Html:
            return report::FormatHtml;
        case ExportKind::Word:
            return report::FormatWord;
        case ExportKind::None:
            break;
    }
    return 0;
}

std::string HtmlOutputFile(const std::string& reportTitle) {
    // The number of hours gives a new name every hour.
    const std::int64_t hours = DiffHours(DateSerial(2002, 1, 1), Now());
    const std::string name = WithoutBlanks(reportTitle) + std::to_string(hours) + ".htm";
    // The title comes from the report file, which must not lead out of the folder.
    RequireFileName(name);
    return AppPath() + "\\output\\" + name;
}

std::string PackageOutputFile(ExportKind kind, const std::string& destination,
                              const std::string& reportTitle) {
    switch (kind) {
        case ExportKind::Pdf:
            return destination + cmFunc::GetDelimitedField(reportTitle, 2, ">") + ".pdf";
        case ExportKind::RichText:
            return destination + reportTitle + ".rtf";
        case ExportKind::Excel:
            return destination + reportTitle + ".xls";
        case ExportKind::Html:
            return destination + Replace(WithoutBlanks(reportTitle), ">", "") + ".htm";
        case ExportKind::Word:
            return destination + reportTitle + ".doc";
        case ExportKind::None:
            break;
    }
    return {};
}

void SetExcelOptions(report::Report& report) {
    report.SetExcelOptions(true, false, false, false, 4);
}

void SetPackageHtmlOptions(report::Report& report) {
    report.SetHtmlOptions(false, false);
}

}  // namespace Global
