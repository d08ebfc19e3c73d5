// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/report_saver.h"

#include <QFileInfo>

#include "platform/base/file_name.h"
#include "platform/base/paths.h"
#include "platform/contracts/export_formats.h"
#include "platform/contracts/run_switches.h"

namespace viewer {
namespace {

QString FilterOf(const report::FormatRow& format) {
    return QString("%1 (*.%2)").arg(QLatin1String(format.title), QLatin1String(format.word));
}

}  // namespace

QStringList SaveFilters() {
    QStringList filters;
    for (const report::FormatRow& format : report::FormatTable) {
        filters << FilterOf(format);
    }
    return filters;
}

QString ExtensionOf(const QString& filter) {
    for (const report::FormatRow& format : report::FormatTable) {
        if (filter == FilterOf(format)) {
            return QLatin1String(format.word);
        }
    }
    return {};
}

QString NameFor(const std::string& title) {
    return QString::fromStdString(SafeFileName(title, "report"));
}

void SaveReport(report::Report& report, const QString& file) {
    QString extension = QFileInfo(file).suffix().toLower();
    if (extension == "htm") {
        extension = "html";
    }
    const report::FormatRow* const format = report::FindFormat(extension.toStdString());
    if (format == nullptr) {
        constexpr int InvalidProcedureCall = 5;
        throw RuntimeError(InvalidProcedureCall,
                           "There is no format for files \"." + extension.toStdString() + "\"");
    }
    const std::string path = paths::FromMachine(file.toStdString());
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(format->Code());
    if (format->format == report::DocumentFormat::Html) {
        report.SetHtmlFileName(path);
    } else {
        report.SetDiskFileName(path);
    }
    report.Export(report::WithoutPrompts);
}

}  // namespace viewer
