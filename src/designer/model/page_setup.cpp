// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/page_setup.h"

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"

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

std::string PathOf(const Document& document, const Row& row) {
    if (IsOlderSchema(document)) {
        return row.olderPath;
    }
    const bool hasSections = document.Find(document.Root(), "ReportSections/ReportSection") != NoElement;
    return (hasSections ? "ReportSections/ReportSection/Page/" : "Page/") + std::string(row.path);
}

}  // namespace

std::span<const Paper> Papers() {
    return Usual;
}

PageSetup PageSetupOf(const Document& document) {
    PageSetup setup;
    for (std::size_t value = 0; value < PageValues; ++value) {
        setup[value] =
            document.TextAt(document.Root(), PathOf(document, Rows[value])).value_or(Rows[value].missing);
    }
    return setup;
}

void PutPageSetup(Document& document, const PageSetup& setup) {
    const PageSetup old = PageSetupOf(document);
    for (std::size_t value = 0; value < PageValues; ++value) {
        if (setup[value] != old[value]) {
            SetText(document, document.Root(), PathOf(document, Rows[value]), setup[value]);
        }
    }
}

}  // namespace designer
