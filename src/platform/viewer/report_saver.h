// SPDX-License-Identifier: GPL-3.0-or-later
// Saves the report in the viewer to a file in one of the export formats.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

#include "platform/contracts/report_engine.h"

namespace viewer {

// Returns the filters of the save dialog, one for each export format.
QStringList SaveFilters();
// Returns the extension of a filter of the save dialog, without the dot.
QString ExtensionOf(const QString& filter);
// Returns a file name made of the title.
QString NameFor(const std::string& title);

// Exports the report with its current parameters in the format of the file's extension. Raises 5 for an
// unknown extension, and the errors of the export.
void SaveReport(report::Report& report, const QString& file);

}  // namespace viewer
