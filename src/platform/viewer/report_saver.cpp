// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/report_saver.h"

#include <QFileInfo>
#include <algorithm>
#include <array>

#include "platform/base/file_name.h"
#include "platform/base/paths.h"

namespace viewer {
namespace {

struct Format {
    const char* extension;
    const char* filter;
    int code;
};

constexpr std::array Formats = {
    Format{"pdf", "PDF document (*.pdf)", report::FormatPdf},
    Format{"xls", "Excel workbook (*.xls)", report::FormatExcel},
    Format{"doc", "Word document (*.doc)", report::FormatWord},
    Format{"rtf", "Rich text (*.rtf)", report::FormatRtf},
    Format{"html", "Web page (*.html)", report::FormatHtml},
};

}  // namespace

QStringList SaveFilters() {
    QStringList filters;
    for (const Format& format : Formats) {
        filters << format.filter;
    }
    return filters;
}

QString ExtensionOf(const QString& filter) {
    const auto found = std::find_if(Formats.begin(), Formats.end(),
                                    [&](const Format& format) { return filter == format.filter; });
    return found == Formats.end() ? QString() : QString(found->extension);
}

QString NameFor(const std::string& title) {
    return QString::fromStdString(SafeFileName(title, "report"));
}

void SaveReport(report::Report& report, const QString& file) {
    QString extension = QFileInfo(file).suffix().toLower();
    if (extension == "htm") {
        extension = "html";
    }
    const auto format = std::find_if(Formats.begin(), Formats.end(),
                                     [&](const Format& one) { return extension == one.extension; });
    if (format == Formats.end()) {
        constexpr int InvalidProcedureCall = 5;
        throw RuntimeError(InvalidProcedureCall,
                           "There is no format for files \"." + extension.toStdString() + "\"");
    }
    const std::string path = paths::FromMachine(file.toStdString());
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(format->code);
    if (format->code == report::FormatHtml) {
        report.SetHtmlFileName(path);
    } else {
        report.SetDiskFileName(path);
    }
    report.Export(false);
}

}  // namespace viewer
