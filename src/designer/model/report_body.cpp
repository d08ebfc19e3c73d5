// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_body.h"

#include <utility>
#include <vector>

#include "designer/document/item_size.h"
#include "designer/model/page_setup.h"

namespace designer {
namespace {

constexpr double ShownHeight = 8 / 2.54 * 72;  // points, of a body that is not there

// Returns the width that the section is shown with.
double WidthOf(const Document& document, ElementId section) {
    const auto written = section == NoElement ? std::nullopt : document.TextAt(section, "Width");
    return written ? PointsOf(*written).value_or(0) : WidestBodyOf(PageSetupIn(document, section));
}

// Takes the bands of a report one after the other, and adds the bodies that are missing between them.
class BandList {
 public:
    BandList(const Document& document, ReportItems& items) : m_document(document), m_items(items) {}

    // The sections come in their order; a body comes after the page header.
    void AddSection(std::size_t section, ElementId element) {
        const std::size_t first = m_bands.size();
        while (IsNext(section) && m_items.bands[m_next].kind == BandKind::PageHeader) {
            Take();
        }
        if (IsNext(section) && m_items.bands[m_next].kind == BandKind::Body) {
            Take();
            ReportBand& body = m_bands.back();
            const bool hasHeight = m_document.Find(body.element, "Height") != NoElement;
            body.height = hasHeight ? body.height : ShownHeight;
        } else {
            m_bands.push_back(
                {BandKind::Body, section, NoElement, WidthOf(m_document, element), ShownHeight});
        }
        while (IsNext(section)) {
            Take();
        }
        const bool hasWidth = element != NoElement && m_document.Find(element, "Width") != NoElement;
        const double width = hasWidth ? 0 : WidthOf(m_document, element);
        for (std::size_t band = first; !hasWidth && band < m_bands.size(); ++band) {
            m_bands[band].width = width;
        }
    }

    void Apply() {
        for (ReportItem& item : m_items.items) {
            item.band = m_places[item.band];
        }
        m_items.bands = std::move(m_bands);
    }

 private:
    bool IsNext(std::size_t section) const {
        return m_next < m_items.bands.size() && m_items.bands[m_next].section == section;
    }
    void Take() {
        m_places.push_back(m_bands.size());
        m_bands.push_back(m_items.bands[m_next++]);
    }

    const Document& m_document;
    ReportItems& m_items;
    std::vector<ReportBand> m_bands;
    std::vector<std::size_t> m_places;  // of the old bands
    std::size_t m_next = 0;
};

}  // namespace

void AddMissingBodies(const Document& document, ReportItems& items) {
    std::vector<ElementId> sections = SectionsOf(document);
    if (sections.empty()) {
        sections.push_back(NoElement);
    }
    BandList list(document, items);
    for (std::size_t section = 0; section < sections.size(); ++section) {
        list.AddSection(section, sections[section]);
    }
    list.Apply();
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
