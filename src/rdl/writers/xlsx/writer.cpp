// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/writers.h"
#include "rdl/writers/xls/layout.h"
#include "rdl/writers/xlsx/book.h"

namespace rdl::writers {

void WriteXlsx(layout::ReportInstance& report, Output& output, const Options& options) {
    XlsxBook book(report.pageName.empty() ? report.title : report.pageName, InfoOf(report), options.nowTicks);
    XlsLayout(book, report.language).Report(report);
    book.Write(output);
}

}  // namespace rdl::writers
