// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/writers.h"
#include "rdl/writers/xls/book.h"
#include "rdl/writers/xls/layout.h"

namespace rdl::writers {

void WriteXls(layout::ReportInstance& report, Output& output, const Options& /*options*/) {
    XlsBook book(report.pageName.empty() ? report.title : report.pageName);
    XlsLayout(book, report.language).Report(report);
    book.Write(output);
}

}  // namespace rdl::writers
