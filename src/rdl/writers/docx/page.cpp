// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/page.h"

#include <algorithm>

#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

constexpr int MostColumns = 45;  // of a word processor
// Headers and footers come out a little higher than they are defined, by their borders and last paragraph;
// without room for it they would push the body. In points.
constexpr double Slack = 2;

void AppendReference(const char* element, const char* type, const std::string& id, std::string& out) {
    if (!id.empty()) {
        out += std::string("<w:") + element + " w:type=\"" + type + "\" r:id=\"" + id + "\"/>";
    }
}

}  // namespace

std::string SectionProperties(const layout::PageSetup& page, const DocxMargins& margins) {
    std::string out = "<w:sectPr>";
    AppendReference("headerReference", "default", margins.header, out);
    AppendReference("headerReference", "first", margins.firstHeader, out);
    AppendReference("footerReference", "default", margins.footer, out);
    AppendReference("footerReference", "first", margins.firstFooter, out);
    out += "<w:type w:val=\"nextPage\"/><w:pgSz";
    AppendTwipsAttribute("w:w", page.width, out);
    AppendTwipsAttribute("w:h", page.height, out);
    out += page.width > page.height ? " w:orient=\"landscape\"/>" : "/>";
    out += "<w:pgMar";
    AppendTwipsAttribute("w:top", page.marginTop + page.headerHeight, out);
    AppendTwipsAttribute("w:right", page.marginRight, out);
    AppendTwipsAttribute("w:bottom", page.marginBottom + page.footerHeight, out);
    AppendTwipsAttribute("w:left", page.marginLeft, out);
    AppendTwipsAttribute("w:header", std::max(page.marginTop - Slack, 0.0), out);
    AppendTwipsAttribute("w:footer", std::max(page.marginBottom - Slack, 0.0), out);
    out += " w:gutter=\"0\"/>";
    if (page.columns > 1) {
        out += "<w:cols";
        AppendAttribute("w:num", std::min(page.columns, MostColumns), out);
        AppendTwipsAttribute("w:space", page.columnSpacing, out);
        out += "/>";
    }
    return out + (HasTitlePage(page) ? "<w:titlePg/></w:sectPr>" : "</w:sectPr>");
}

}  // namespace rdl::writers
