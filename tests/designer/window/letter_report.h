// SPDX-License-Identifier: GPL-3.0-or-later
// A report with the text box T, whose paragraph has three runs: Dear, a field, and hello.
#pragma once

#include <string>

#include "../graphics/sales_report.h"

namespace designer::test {

inline std::string Letter() {
    const std::string run = "<TextRun><Value>", end = "</Value><Style /></TextRun>";
    return SalesReport("<Textbox Name=\"T\"><Paragraphs><Paragraph><TextRuns>" + run + "Dear " + end + run +
                       "=First(Fields!City.Value, \"Sales\")" + end + run + ", hello" + end +
                       "</TextRuns><Style /></Paragraph></Paragraphs><Top>1cm</Top><Left>1cm</Left>"
                       "<Height>1cm</Height><Width>8cm</Width></Textbox>");
}

}  // namespace designer::test
