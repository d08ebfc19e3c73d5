// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/report_items.h"

#include <algorithm>
#include <climits>

#include "designer/document/constants.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"

namespace designer {
namespace {

class ItemReader {
 public:
    explicit ItemReader(const Document& document) : m_document(document), m_tree(document.Tree()) {}

    ReportItems Read() {
        std::size_t number = 0;
        for (const ElementId section : SectionsOf(m_document)) {
            ReadSection(m_document.IndexOf(section), number++);
        }
        return std::move(m_result);
    }

 private:
    struct Around {
        ElementId container;
        double left, top;      // of the container on the band
        double width, height;  // of the container
        int depth;
    };

    double Size(int element, std::string_view name, double missing = 0) const {
        const int child = m_tree.Child(element, name);
        return child == NoIndex ? missing : PointsOf(m_tree.TextOf(child)).value_or(missing);
    }

    // Before 2008 the page's settings are those of the report itself.
    void ReadSection(int section, std::size_t number) {
        const int page = m_tree.Child(section, "Page");
        const int owner = page == NoIndex ? section : page;
        const double width = Size(section, "Width");
        ReadBand(m_tree.Child(owner, "PageHeader"), BandKind::PageHeader, number, width);
        ReadBand(m_tree.Child(section, "Body"), BandKind::Body, number, width);
        ReadBand(m_tree.Child(owner, "PageFooter"), BandKind::PageFooter, number, width);
    }

    void ReadBand(int element, BandKind kind, std::size_t section, double width) {
        if (element != NoIndex) {
            const double height = Size(element, "Height");
            m_result.bands.push_back({kind, section, m_document.IdAt(element), width, height});
            ReadItems(element, {m_document.IdAt(element), 0, 0, width, height, 0});
        }
    }

    void ReadItems(int owner, const Around& around) {
        const int items = m_tree.Child(owner, "ReportItems");
        for (int child = items == NoIndex ? NoIndex : m_tree[items].firstChild; child != NoIndex;
             child = m_tree[child].nextSibling) {
            if (m_tree.IsOfReport(child) && IsReportItem(m_tree.LocalName(child))) {
                ReadItem(child, around, NoElement);
            }
        }
    }

    Rect PlaceOf(int element, const Around& around) const {
        const double left = Size(element, "Left"), top = Size(element, "Top");
        const bool isLine = m_tree.LocalName(element) == "Line";
        return {around.left + left, around.top + top,
                Size(element, "Width", isLine ? 0 : std::max(0.0, around.width - left)),
                Size(element, "Height", isLine ? 0 : std::max(0.0, around.height - top))};
    }

    // The depth of elements is bounded, and so is this recursion. An item of a cell has the place of the
    // cell, which `around` is then.
    void ReadItem(int element, const Around& around, ElementId cell) {
        ReportItem item;
        item.id = m_document.IdAt(element);
        item.kind = m_tree.LocalName(element);
        item.name = m_tree.AttributeOf(element, "Name").value_or("");
        item.container = around.container;
        item.cell = cell;
        item.band = m_result.bands.size() - 1;
        item.zIndex = NumberAt(m_document, item.id, "ZIndex", 0, INT_MIN, INT_MAX);
        item.depth = around.depth;
        item.place = cell == NoElement || item.kind == "Line"
                         ? PlaceOf(element, around)
                         : Rect{around.left, around.top, around.width, around.height};
        const std::size_t index = m_result.items.size();
        m_result.items.push_back(item);
        if (HasGrid(item.kind)) {
            ReadRegion(item, index);
        } else if (item.kind == "Rectangle" || item.kind == "List") {
            ReadItems(element, {item.id, item.place.left, item.place.top, item.place.width, item.place.height,
                                item.depth + 1});
        }
    }

    void ReadRegion(const ReportItem& region, std::size_t index) {
        const TablixGrid grid = GridOf(m_document, region.id);
        m_result.items[index].place.width = grid.width;
        m_result.items[index].place.height = grid.height;
        for (const GridCell& cell : grid.cells) {
            if (cell.item != NoElement) {
                ReadItem(m_document.IndexOf(cell.item),
                         {region.id, region.place.left + cell.place.left, region.place.top + cell.place.top,
                          cell.place.width, cell.place.height, region.depth + 1},
                         cell.element);
            }
        }
    }

    const Document& m_document;
    const SourceTree& m_tree;
    ReportItems m_result;
};

}  // namespace

ReportItems ReadReportItems(const Document& document) {
    return ItemReader(document).Read();
}

std::vector<ElementId> SectionsOf(const Document& document) {
    const ElementId all = document.Find(document.Root(), "ReportSections");
    if (all == NoElement) {
        return {document.Root()};
    }
    std::vector<ElementId> sections = document.Children(all);
    std::erase_if(sections, [&document](ElementId section) {
        return !document.Tree().IsOfReport(document.IndexOf(section));
    });
    return sections;
}

ElementId BodyOf(const Document& document) {
    const ElementId section = document.Find(document.Root(), "ReportSections/ReportSection");
    return document.Find(section == NoElement ? document.Root() : section, "Body");
}

}  // namespace designer
