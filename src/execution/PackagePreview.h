// A package's report on the screen.
#pragma once

#include <string>

namespace Global {

// Opens the report that `condition` finds among those of the packages, hands it its stored values in the
// order of the rows and shows it. No logon is made, no formula is set, and values saved in the report are not
// cleared. `condition` is the end of the statement, behind "Where ", an ordering clause included.
// Errors pass to the caller: 3021 when the report has more parameters than there are rows.
void PreviewPackageReport(const std::string& condition);

}  // namespace Global
