// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "designer/model/new_items.h"
#include "designer/model/placing.h"
#include "designer/model/report_hints.h"

namespace designer {
namespace {

std::string Newer(const std::string& width, const std::string& page) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<ReportSections><ReportSection><Body><Height>5cm</Height></Body><Width>" +
           width + "</Width><Page>" + page + "</Page></ReportSection></ReportSections></Report>";
}

constexpr const char* Paper =
    "<PageWidth>21cm</PageWidth><LeftMargin>2cm</LeftMargin><RightMargin>2cm</RightMargin>";

TEST(ReportHints, AReportThatIsWiderThanItsPage) {
    EXPECT_EQ(HintsOf(Document(Newer("17cm", Paper))), std::vector<std::string>{});
    EXPECT_EQ(
        HintsOf(Document(Newer("17.5cm", Paper))),
        std::vector<std::string>{"The report is 17.5cm wide, and the page has room for 17cm: the rest goes "
                                 "to pages of its own"});
    EXPECT_EQ(
        HintsOf(Document(Newer("9cm", std::string(Paper) + "<Columns>2</Columns><ColumnSpacing>1cm"
                                                           "</ColumnSpacing>"))),
        std::vector<std::string>{"The report is 19cm wide, and the page has room for 17cm: the rest goes "
                                 "to pages of its own"});
    EXPECT_EQ(HintsOf(Document(Newer("9cm", std::string(Paper) + "<Columns> 2\n</Columns><ColumnSpacing>1cm"
                                                                 "</ColumnSpacing>")))
                  .size(),
              1U);
    EXPECT_EQ(
        HintsOf(Document("<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/"
                         "reportdefinition\"><Body><Height>5in</Height></Body><Width>9in</Width></Report>")),
        std::vector<std::string>{"The report is 9in wide, and the page has room for 8.5in: the rest goes "
                                 "to pages of its own"});
    EXPECT_EQ(HintsOf(Document("<Report/>")), std::vector<std::string>{});
}

TEST(ReportHints, AnItemThatReachesOverThePage) {
    const auto report = [](const std::string& items) {
        std::string text = Newer("16cm", Paper);
        text.insert(text.find("<Height>"), "<ReportItems>" + items + "</ReportItems>");
        return Document(text);
    };
    const auto box = [](const std::string& kind, const std::string& name, const std::string& left,
                        const std::string& width, const std::string& inside = "") {
        return "<" + kind + " Name='" + name + "'><Left>" + left + "</Left><Width>" + width +
               "</Width><Height>1cm</Height>" + inside + "</" + kind + ">";
    };
    EXPECT_EQ(HintsOf(report(box("Textbox", "A", "1cm", "16cm"))), std::vector<std::string>{});
    EXPECT_EQ(
        HintsOf(report(box("Textbox", "A", "1cm", "400cm") + box("Line", "L", "20cm", "-10cm"))),
        (std::vector<std::string>{"Textbox A reaches to 401cm, and the page has room for 17cm: the rest "
                                  "goes to pages of its own",
                                  "Line L reaches to 20cm, and the page has room for 17cm: the rest "
                                  "goes to pages of its own"}));
    const std::string inside = "<ReportItems>" + box("Textbox", "B", "1cm", "30cm") + "</ReportItems>";
    EXPECT_EQ(HintsOf(report(box("Rectangle", "R", "0cm", "30cm", inside))),
              std::vector<std::string>{"Rectangle R reaches to 30cm, and the page has room for 17cm: the "
                                       "rest goes to pages of its own"});
    EXPECT_EQ(HintsOf(report(box("Rectangle", "R", "0cm", "5cm", inside))),
              std::vector<std::string>{"Textbox B reaches to 31cm, and the page has room for 17cm: the rest "
                                       "goes to pages of its own"});
}

TEST(ReportHints, WhatIsInsertedDoesNotWidenTheReport) {
    Document document(Newer("10cm", Paper));
    const ReportBand body = ReadReportItems(document).bands[0];
    const ElementId box = InsertItem(document, body, NewItem::TextBox, {250, 10, 100, 20});
    EXPECT_EQ(document.TextAt(box, "Left"), "6.47222cm");
    EXPECT_EQ(document.TextAt(document.Parent(body.element), "Width"), "10cm");
    InsertItem(document, body, NewItem::TextBox, {250, 10, 300, 20});
    EXPECT_EQ(document.TextAt(document.Parent(body.element), "Width"), "10.58333cm");
}

}  // namespace
}  // namespace designer
