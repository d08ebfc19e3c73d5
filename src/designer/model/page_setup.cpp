// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/page_setup.h"

#include <algorithm>
#include <vector>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/properties/properties.h"
#include "designer/document/report_items.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr double Millimetre = 72 / 25.4, Inch = 72;

constexpr Paper Usual[] = {
    {"A3", 297 * Millimetre, 420 * Millimetre}, {"A4", 210 * Millimetre, 297 * Millimetre},
    {"A5", 148 * Millimetre, 210 * Millimetre}, {"A6", 105 * Millimetre, 148 * Millimetre},
    {"B5", 176 * Millimetre, 250 * Millimetre}, {"Letter", 8.5 * Inch, 11 * Inch},
    {"Legal", 8.5 * Inch, 14 * Inch},           {"Executive", 7.25 * Inch, 10.5 * Inch},
    {"Tabloid", 11 * Inch, 17 * Inch},
};

struct Row {
    const char* path;
    const char* olderPath;
    const char* missing;
};
constexpr Row Rows[PageValues] = {
    {"PageWidth", "PageWidth", "8.5in"}, {"PageHeight", "PageHeight", "11in"},
    {"LeftMargin", "LeftMargin", "0in"}, {"RightMargin", "RightMargin", "0in"},
    {"TopMargin", "TopMargin", "0in"},   {"BottomMargin", "BottomMargin", "0in"},
    {"Columns", "Body/Columns", "1"},    {"ColumnSpacing", "Body/ColumnSpacing", "0.5in"},
};

// Of a section without a body and a page: A4, as a new report has it.
constexpr const char* NewPage[PageValues] = {"21cm", "29.7cm", "2cm", "2cm", "2cm", "2cm", "1", "0.5in"};
constexpr double NewHeight = 80 * Millimetre;  // of a body

bool IsBefore2010(const Document& document) {
    return IsOlderSchema(document) || Contains(document.Tree().SpaceOf(0), "/2008/");
}

std::string PathOf(const Document& document, const Row& row) {
    return IsOlderSchema(document) ? row.olderPath : "Page/" + std::string(row.path);
}

ElementId SectionAt(const Document& document, std::size_t section) {
    const std::vector<ElementId> sections = SectionsOf(document);
    return section < sections.size() ? sections[section] : NoElement;
}

// Whether it says nothing of its body and its page.
bool IsBare(const Document& document, ElementId section) {
    if (section == NoElement) {
        return true;
    }
    bool isBare = document.Find(section, "Body") == NoElement && document.Find(section, "Page") == NoElement;
    for (const Row& row : Rows) {
        isBare = isBare && document.Find(section, row.olderPath) == NoElement;
    }
    return isBare;
}

// Since 2010 a report has sections; one that has its body without them keeps it.
ElementId EnsureSection(Document& document, std::size_t section) {
    const ElementId root = document.Root();
    const ElementId there = SectionAt(document, section);
    const bool isWritten = there != NoElement && there != root;
    if (isWritten || (there == root && (IsBefore2010(document) || !IsBare(document, root)))) {
        return there;
    }
    return InsertXml(document, EnsureChild(document, root, "ReportSections"), "<ReportSection/>");
}

}  // namespace

std::span<const Paper> Papers() {
    return Usual;
}

PageSetup PageSetupOf(const Document& document, std::size_t section) {
    return PageSetupIn(document, SectionAt(document, section));
}

PageSetup PageSetupIn(const Document& document, ElementId owner) {
    PageSetup setup;
    const bool isBare = IsBare(document, owner);
    for (std::size_t value = 0; value < PageValues; ++value) {
        setup[value] =
            isBare ? NewPage[value]
                   : document.TextAt(owner, PathOf(document, Rows[value])).value_or(Rows[value].missing);
    }
    return setup;
}

void PutPageSetup(Document& document, std::size_t section, const PageSetup& setup) {
    const PageSetup old = PageSetupOf(document, section);
    if (setup == old) {
        return;
    }
    const ElementId owner = CompleteSection(document, section);
    for (std::size_t value = 0; value < PageValues; ++value) {
        if (setup[value] != old[value]) {
            SetText(document, owner, PathOf(document, Rows[value]), setup[value]);
        }
    }
}

double WidestBodyOf(const PageSetup& setup) {
    const auto points = [&setup](PageValue value) { return PointsOf(setup[value]).value_or(0); };
    const int columns = NumberIn(setup[Columns], 1, 1, MostPageColumns);
    return (points(PageWidth) - points(LeftMargin) - points(RightMargin) -
            (columns - 1) * points(ColumnSpacing)) /
           columns;
}

ElementId CompleteSection(Document& document, std::size_t section) {
    const PageSetup page = PageSetupOf(document, section);
    const bool isBare = IsBare(document, SectionAt(document, section));
    const ElementId owner = EnsureSection(document, section);
    const bool isWhole = !isBare && document.Find(owner, "Body/Height") != NoElement &&
                         document.Find(owner, "Width") != NoElement;
    if (isWhole) {
        return owner;
    }
    const ElementId body = EnsureChild(document, owner, "Body");
    if (document.Find(body, "Height") == NoElement) {
        SetText(document, body, "Height", SizeText(NewHeight, page[PageWidth]));
    }
    if (document.Find(owner, "Width") == NoElement) {
        SetText(document, owner, "Width", SizeText(std::max(WidestBodyOf(page), Inch), page[PageWidth]));
    }
    for (std::size_t value = 0; isBare && value < Columns; ++value) {
        SetText(document, owner, PathOf(document, Rows[value]), page[value]);
    }
    if (!IsOlderSchema(document)) {
        EnsureChild(document, owner, "Page");
    }
    return owner;
}

std::size_t SectionOfSelection(const DesignModel& model) {
    const Document& document = model.Source();
    const std::vector<ElementId> sections = SectionsOf(document);
    ElementId around = document.Has(model.Leader()) ? model.Leader() : NoElement;
    for (; around != NoElement; around = document.Parent(around)) {
        const auto found = std::find(sections.begin(), sections.end(), around);
        if (found != sections.end()) {
            return static_cast<std::size_t>(found - sections.begin());
        }
    }
    return 0;
}

}  // namespace designer
