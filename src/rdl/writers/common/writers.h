// SPDX-License-Identifier: GPL-3.0-or-later
// The writers of the output formats. Each writes the document in order; the same report and clock give the
// same bytes. Raises rdl::Error naming the item for content that cannot be written; errors of `output` pass
// through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "rdl/api/export_options.h"
#include "rdl/api/output.h"
#include "rdl/data/common/table.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/page.h"

namespace rdl::writers {

struct Options {
    std::int64_t nowTicks = 0;  // creation date of the document: start of the run, local time in ticks
    ExportOptions choices;
    int pixelsOfBand = 16'000'000;  // of the picture of a page, in memory at a time
};

void WritePdf(layout::ReportInstance& report, Output& output, const Options& options);

// Document properties; empty ones are omitted.
struct DocumentInfo {
    std::string title, author, description, language;
};
DocumentInfo InfoOf(const layout::ReportInstance& report);
// Writes finished pages as `next` returns them, until it returns null.
void WritePdf(const DocumentInfo& info, const std::function<std::shared_ptr<const layout::Page>()>& next,
              Output& output, const Options& options);

void WriteRtf(layout::ReportInstance& report, Output& output,
              const Options& options);  // for .rtf, and for .doc in Word
void WriteHtml(layout::ReportInstance& report, Output& output,
               const Options& options);  // one self-contained file
void WriteXls(layout::ReportInstance& report, Output& output,
              const Options& options);  // Excel 97-2003 (MS-XLS)
void WriteXlsx(layout::ReportInstance& report, Output& output,
               const Options& options);  // Office Open XML (ECMA-376)
// Office Open XML (ECMA-376).
void WriteDocx(layout::ReportInstance& report, Output& output, const Options& options);
// A picture of one page.
void WritePng(layout::ReportInstance& report, Output& output, const Options& options);
// The values of the report, without a look: one table for the text boxes outside of data regions, then one
// for each region, with an empty line between them (RFC 4180, UTF-8 with a byte order mark).
void WriteCsv(layout::ReportInstance& report, Output& output, const Options& options);
// The rows of a data set in the same form, unformatted.
void WriteCsv(const Table& table, Output& output);

}  // namespace rdl::writers
