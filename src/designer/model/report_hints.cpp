// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_hints.h"

#include <charconv>

#include "designer/document/item_size.h"
#include "designer/document/properties/properties.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr double Slack = 0.5;  // points: sizes in different units are rounded
constexpr double UsualWidth = 8.5 * 72, UsualSpacing = 36;

double PointsAt(const Document& document, ElementId id, std::string_view path, double missing) {
    const auto text = id == NoElement ? std::nullopt : document.TextAt(id, path);
    return text ? PointsOf(*text).value_or(missing) : missing;
}

int ColumnsAt(const Document& document, ElementId id) {
    const std::string text = id == NoElement ? "" : document.TextAt(id, "Columns").value_or("");
    int columns = 1;
    std::from_chars(text.data(), text.data() + text.size(), columns);
    return std::max(columns, 1);
}

}  // namespace

std::vector<std::string> HintsOf(const Document& document) {
    const ElementId root = document.Root();
    std::vector<ElementId> sections = ChildrenNamed(document, root, "ReportSections", "ReportSection");
    if (sections.empty()) {
        sections.push_back(root);
    }
    std::vector<std::string> hints;
    for (const ElementId section : sections) {
        const bool isOlder = IsOlderSchema(document);
        const ElementId page = isOlder ? section : document.Find(section, "Page");
        const ElementId columned = isOlder ? document.Find(section, "Body") : page;
        const double room = PointsAt(document, page, "PageWidth", UsualWidth) -
                            PointsAt(document, page, "LeftMargin", 0) -
                            PointsAt(document, page, "RightMargin", 0);
        const int columns = ColumnsAt(document, columned);
        const double width = PointsAt(document, section, "Width", 0) * columns +
                             PointsAt(document, columned, "ColumnSpacing", UsualSpacing) * (columns - 1);
        if (width > room + Slack) {
            hints.push_back(
                "The report is " + SizeOfReport(document, width) + " wide, and the page has room for " +
                SizeOfReport(document, std::max(room, 0.0)) + ": the rest goes to pages of its own");
        }
    }
    return hints;
}

}  // namespace designer
