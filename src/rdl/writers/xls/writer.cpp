// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/writers.h"
#include "rdl/writers/xls/book.h"
#include "rdl/writers/xls/layout.h"

namespace rdl::writers {

void WriteXls(layout::ReportInstance& report, Output& output, const Options& /*options*/) {
    XlsBook book(report.pageName.empty() ? report.title : report.pageName);
    XlsLayout sheets(book, report.language);
    for (std::size_t i = 0; i < report.sections.size(); ++i) {
        sheets.Section(*report.sections[i], i == 0, i + 1 == report.sections.size());
    }
    if (report.sections.empty()) {
        book.AddSheet({}, layout::PageSetup());
    }
    book.Write(output);
}

}  // namespace rdl::writers
