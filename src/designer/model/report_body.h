// SPDX-License-Identifier: GPL-3.0-or-later
// Bodies that a report should have and lacks. They are shown as if they were there, and are written with
// the first thing that is put into them.
#pragma once

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer {

// Adds a band for each body that is missing, whose element is NoElement. A section without a width has that
// of its page, a body without a height that of a new report.
void AddMissingBodies(const Document& document, ReportItems& items);

// Returns the band as it is in the file, which has all of its section afterwards if anything of it was
// missing. Edits of the step that is open.
ReportBand CompleteBand(Document& document, const ReportBand& band);

}  // namespace designer
