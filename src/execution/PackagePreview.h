// SPDX-License-Identifier: GPL-3.0-or-later
// The preview of a report that belongs to a package.
#pragma once

#include <string>

namespace Global {

// Opens the report that `condition` finds among the reports of packages, hands over its stored values in the
// order of the rows and shows it in the preview window. Logs on to no table, sets no formula and keeps the
// values that are saved in the report. `condition` is the part of the statement after "Where ", an ordering
// clause included. Errors pass to the caller: 3021 if the report has more parameters than stored rows.
void PreviewPackageReport(const std::string& condition);

}  // namespace Global
