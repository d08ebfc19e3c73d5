// SPDX-License-Identifier: GPL-3.0-or-later
// Report items of a new report: text boxes, lines, cells and members of data regions (MS-RDL, ReportItems and
// Tablix). Lengths are millimetres, sizes and paddings of texts points.
#pragma once

#include <string>
#include <string_view>

#include "designer/new_report/columns.h"
#include "designer/new_report/new_report.h"
#include "designer/new_report/part_names.h"
#include "designer/new_report/xml_builder.h"

namespace designer {

// The look of a text box. Empty texts are not written.
struct Look {
    std::string_view font, ink, fill = {};
    double size = 9;
    bool bold = false, right = false, top = false, grows = true;
    std::string format = {};
    double left = 4, above = 2, below = 2;            // paddings
    std::string_view ruleAbove = {}, ruleBelow = {};  // colours
    std::string fillExpression = {};                  // in place of `fill`
};

struct Place {
    double top = 0, left = 0, height = 0, width = 0;
};

// Constant text for a property that may be an expression: it is shown as it is, on one line.
std::string Literal(std::string_view text);
std::string ValueOf(const ReportColumn& column);  // =Fields!X.Value
// The heading of a group: as ValueOf, with words in place of a Null if the column has any.
std::string HeadingOf(const ReportColumn& column);
std::string SumOf(const ReportColumn& column);  // =Sum(Fields!X.Value)
// An expression without its = for the value as a text, by the column's format, with the words of HeadingOf.
std::string ShownText(const ReportColumn& column);
// Texts in expressions are in quotes.
std::string Quoted(std::string_view text);

// A data region over the data set. With a corner the headings of rows and columns are on every page.
struct TablixContent {
    std::vector<double> widths;  // of the body's columns
    XmlList rows, columnMembers, rowMembers;
    Xml corner = {};
    std::string_view noRows = {};  // shown in place of it without rows; empty: none
};

// The names of the data set and of the group of rows.
inline constexpr std::string_view DataSetName = "Data", DetailGroup = "Details";

// Makes items with names that differ, also from these two, and sizes in the paper's unit.
class Parts {
 public:
    explicit Parts(ReportPaper paper);

    std::string Name(std::string_view wanted) { return m_names.Add(wanted); }
    // Returns 2.5cm or 1.25in.
    std::string Size(double millimetres) const;

    // A text box with the name, or the next free one. Without a place it fills a cell.
    Xml Box(std::string_view name, std::string_view value, const Look& look);
    Xml Box(std::string_view name, std::string_view value, const Look& look, const Place& place);
    // `points` is the width of the line.
    Xml Line(std::string_view name, std::string_view colour, double points, const Place& place);
    // Adds the children of an item that say where it is.
    void AddPlace(XmlList& content, const Place& place) const;

    Xml Tablix(std::string_view name, TablixContent content, const Place& place);
    Xml Row(double height, XmlList cells) const;
    Xml Header(double size, Xml item) const;

 private:
    ReportPaper m_paper;
    Names m_names;
};

Xml Cell(Xml item, std::size_t columns = 1);
// Members of a hierarchy: `inner` are their TablixMembers.
Xml Member(XmlList content = {}, XmlList inner = {});
// A member for each instance of a group by the column, in order of its values.
Xml GroupMember(const std::string& name, const ReportColumn& column, XmlList content, XmlList inner);
// A member for each row.
Xml DetailMember();

}  // namespace designer
