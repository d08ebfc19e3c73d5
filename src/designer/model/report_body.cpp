// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_body.h"

#include <algorithm>

#include "designer/document/item_size.h"
#include "designer/model/page_setup.h"

namespace designer {
namespace {

constexpr double ShownHeight = 8 / 2.54 * 72;  // points, of a body that is not there

// The body comes after the page header of its section.
void AddBody(ReportItems& items, std::size_t section, double width) {
    const auto next = std::find_if(items.bands.begin(), items.bands.end(), [section](const ReportBand& band) {
        return band.section > section || (band.section == section && band.kind == BandKind::PageFooter);
    });
    const auto place = static_cast<std::size_t>(next - items.bands.begin());
    items.bands.insert(next, {BandKind::Body, section, NoElement, width, ShownHeight});
    for (ReportItem& item : items.items) {
        item.band += item.band >= place ? 1 : 0;
    }
}

}  // namespace

void AddMissingBodies(const Document& document, ReportItems& items) {
    const std::vector<ElementId> sections = SectionsOf(document);
    for (std::size_t section = 0; section < std::max<std::size_t>(sections.size(), 1); ++section) {
        const auto written =
            section < sections.size() ? document.TextAt(sections[section], "Width") : std::nullopt;
        const double room = RoomOf(PageSetupOf(document, section));
        const double width = written ? PointsOf(*written).value_or(room) : room;
        bool hasBody = false;
        for (ReportBand& band : items.bands) {
            if (band.section != section) {
                continue;
            }
            const bool isBody = band.kind == BandKind::Body;
            hasBody = hasBody || isBody;
            band.width = written ? band.width : width;
            const bool hasHeight = !isBody || document.Find(band.element, "Height") != NoElement;
            band.height = hasHeight ? band.height : ShownHeight;
        }
        if (!hasBody) {
            AddBody(items, section, width);
        }
    }
}

ReportBand CompleteBand(Document& document, const ReportBand& band) {
    if (band.element != NoElement && band.kind != BandKind::Body) {
        return band;
    }
    const ElementId section = CompleteSection(document, band.section);
    ReportBand complete = band;
    complete.element = document.Find(section, "Body");
    return complete;
}

}  // namespace designer
