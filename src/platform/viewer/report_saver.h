// A report that is looked at, written to a file in one of the export formats.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "platform/contracts/report_engine.h"

namespace viewer {

QStringList SaveFilters();
// The extension of a filter of the dialog, without the point.
QString ExtensionOf(const QString& filter);
// The title as the name of a file.
QString NameFor(const std::string& title);

// Exports the report with the parameters that it has, in the format of the file's extension. Raises 5 for an
// extension that no format has, and what the export raises.
void SaveReport(report::Report& report, const QString& file);

}  // namespace viewer
