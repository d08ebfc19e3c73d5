// SPDX-License-Identifier: GPL-3.0-or-later
// What the pages of a wizard know of the report that it makes.
#pragma once

#include <string>

#include "designer/dialogs/source_kinds.h"
#include "designer/new_report/new_report.h"
#include "rdl/api/query_rows.h"

namespace designer {

struct ReportDraft {
    const SourceKind* kind = nullptr;
    rdl::QueryRequest request;  // with the logon
    rdl::QueryRows rows;        // of the query
    std::string subject;        // the table or the file, for a first title
    NewReport report;
};

}  // namespace designer
