// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_hints.h"

#include <algorithm>
#include <set>

#include "designer/document/constants.h"
#include "designer/document/item_size.h"
#include "designer/document/properties/properties.h"
#include "designer/document/report_items.h"
#include "designer/model/page_setup.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr double Slack = 0.5;  // points: sizes in different units are rounded
constexpr std::size_t MostWideItems = 20;
constexpr double UsualWidth = 8.5 * 72, UsualSpacing = 36;

double PointsAt(const Document& document, ElementId id, std::string_view path, double missing) {
    const auto text = id == NoElement ? std::nullopt : document.TextAt(id, path);
    return text ? PointsOf(*text).value_or(missing) : missing;
}

struct SectionWidth {
    double widest = 0;  // body between the margins, in points
    double limit = 0;   // of items: what is to the right of it goes to pages of its own
};

// Items that are too wide, without those inside them.
void AddWideItems(const Document& document, const std::vector<SectionWidth>& sections,
                  std::vector<std::string>& hints) {
    const ReportItems items = ReadReportItems(document);
    std::set<ElementId> wide;
    std::size_t added = 0;
    for (const ReportItem& item : items.items) {
        const ReportBand& band = items.bands[item.band];
        if (band.kind != BandKind::Body || band.section >= sections.size()) {
            continue;
        }
        const double right = std::max(item.place.left, item.place.Right());
        const bool isIn = wide.contains(item.container);
        if (!isIn && right <= sections[band.section].limit + Slack) {
            continue;
        }
        wide.insert(item.id);
        if (!isIn && !item.name.empty() && added < MostWideItems) {
            hints.push_back(item.kind + " " + item.name + " reaches to " + SizeOfReport(document, right) +
                            ", and the page has room for " +
                            SizeOfReport(document, std::max(sections[band.section].widest, 0.0)) +
                            ": the rest goes to pages of its own");
            ++added;
        }
    }
}

}  // namespace

std::vector<std::string> HintsOf(const Document& document) {
    const ElementId root = document.Root();
    std::vector<ElementId> sections = ChildrenNamed(document, root, "ReportSections", "ReportSection");
    if (sections.empty()) {
        sections.push_back(root);
    }
    std::vector<std::string> hints;
    std::vector<SectionWidth> widths;
    for (const ElementId section : sections) {
        const bool isOlder = IsOlderSchema(document);
        const ElementId page = isOlder ? section : document.Find(section, "Page");
        const ElementId columned = isOlder ? document.Find(section, "Body") : page;
        const double widest = PointsAt(document, page, "PageWidth", UsualWidth) -
                              PointsAt(document, page, "LeftMargin", 0) -
                              PointsAt(document, page, "RightMargin", 0);
        const int columns = NumberAt(document, columned, "Columns", 1, 1, MostPageColumns);
        const double own = PointsAt(document, section, "Width", 0);
        const double gaps = PointsAt(document, columned, "ColumnSpacing", UsualSpacing) * (columns - 1);
        const double width = own * columns + gaps;
        widths.push_back({widest, std::max(own, (widest - gaps) / columns)});
        if (width > widest + Slack) {
            hints.push_back(
                "The report is " + SizeOfReport(document, width) + " wide, and the page has room for " +
                SizeOfReport(document, std::max(widest, 0.0)) + ": the rest goes to pages of its own");
        }
    }
    AddWideItems(document, widths, hints);
    return hints;
}

}  // namespace designer
