// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/flow_text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "rdl/values/ascii.h"
#include "rdl/writers/common/content.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::PageSetup;
using layout::ParagraphInstance;
using layout::RunInstance;

constexpr double LongestLength = 1584;  // points: 22 inches, the largest page of a word processor
constexpr double ListIndent = 18;       // points a level, as in paged output
constexpr double ListHang = 13.5;       // from the mark to the text

double Points(float length) {
    return static_cast<double>(length);
}

std::string MarkOf(const ParagraphInstance& paragraph) {
    if (paragraph.bulleted) {
        return "\xE2\x80\xA2\t";
    }
    return paragraph.listNumber > 0 ? std::to_string(paragraph.listNumber) + ".\t" : "";
}

// A box's padding as its lines see it: the paragraphs of a turned text turn with it.
struct TurnedPadding {
    double left, above, right, below;
};

TurnedPadding PaddingOf(const layout::BoxStyle& box) {
    const double left = Points(box.paddingLeft), top = Points(box.paddingTop),
                 right = Points(box.paddingRight), bottom = Points(box.paddingBottom);
    switch (box.writingMode) {
        case layout::WritingMode::Vertical:  // lines run down, the first one is at the right
            return {top, right, bottom, left};
        case layout::WritingMode::Rotate270:  // lines run up, the first one is at the left
            return {bottom, left, top, right};
        case layout::WritingMode::Horizontal:
            break;
    }
    return {left, top, right, bottom};
}

// The field of the page number mark that begins at `i`; null when none does.
const char* FieldAt(std::string_view text, std::size_t i) {
    const std::string_view mark = text.substr(i, 3);
    if (mark == layout::PageNumberMark || mark == layout::OverallPageNumberMark) {
        return "PAGE";
    }
    return mark == layout::TotalPagesMark || mark == layout::OverallTotalPagesMark ? "NUMPAGES" : nullptr;
}

// A table is as wide as its columns came out.
double RightOf(const Instance& item) {
    if (!item.table) {
        return item.x + item.width;
    }
    const std::vector<double>& columns = item.table->columnWidths;
    return item.x + std::accumulate(columns.begin(), columns.end(), 0.0);
}

}  // namespace

int Twips(double points) {
    const double bounded = std::isfinite(points) ? std::clamp(points, -LongestLength, LongestLength) : 0;
    return static_cast<int>(std::lround(bounded * 20));
}

layout::Color OnPaper(layout::Color color) {
    const unsigned alpha = color >> 24;
    layout::Color opaque = 0;
    for (const int shift : {16, 8, 0}) {
        const unsigned part = color >> shift & 0xFF;
        opaque |= ((part * alpha + 255 * (255 - alpha) + 127) / 255) << shift;
    }
    return opaque;
}

FlowMeasures MeasuresOf(const Instance& item, const ParagraphInstance& paragraph) {
    static const layout::BoxStyle Plain;
    const layout::BoxStyle& box = item.box ? *item.box : Plain;
    const bool first = item.paragraphs.empty() || &paragraph == &item.paragraphs.front();
    const bool last = item.paragraphs.empty() || &paragraph == &item.paragraphs.back();
    const TurnedPadding padding = PaddingOf(box);
    FlowMeasures measures;
    measures.align = AlignmentOf(item, paragraph.align);
    measures.left = padding.left + Points(paragraph.leftIndent);
    measures.right = padding.right + Points(paragraph.rightIndent);
    (box.rightToLeft ? measures.right : measures.left) += std::max(Points(paragraph.hangingIndent), 0.0);
    measures.firstLine = -Points(paragraph.hangingIndent);
    measures.mark = MarkOf(paragraph);
    if (!measures.mark.empty()) {
        measures.left += ListIndent * (1 + std::clamp(paragraph.listLevel - 1, 0, 9));
        measures.firstLine = -ListHang;
    }
    measures.before = Points(paragraph.spaceBefore) + (first ? padding.above : 0);
    measures.after = Points(paragraph.spaceAfter) + (last ? padding.below : 0);
    measures.lineHeight = std::max(Points(paragraph.lineHeight), 0.0);
    measures.rightToLeft = box.rightToLeft;
    return measures;
}

const layout::CharStyle* FirstStyle(const ParagraphInstance& paragraph) {
    return paragraph.runs.empty() ? nullptr : paragraph.runs.front().style.get();
}

bool HasComplexScript(std::string_view text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(text[i + 1]);
        if ((lead >= 0xD6 && lead <= 0xE1) || (lead == 0xEF && next >= 0xAC && next <= 0xBB)) {
            return true;
        }
    }
    return false;
}

bool NeedsBothDirections(const Instance& item, const ParagraphInstance& paragraph, const FlowPlace& place) {
    return place.rightToLeft || (item.box && item.box->rightToLeft) ||
           std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                       [](const RunInstance& run) { return HasComplexScript(run.text); });
}

void SplitFields(std::string_view text, const std::function<void(std::string_view)>& take,
                 const std::function<void(const char*)>& field) {
    std::size_t begin = 0;
    for (std::size_t i = text.find('\xEE'); i != std::string_view::npos; i = text.find('\xEE', i + 1)) {
        if (const char* const name = FieldAt(text, i)) {
            take(text.substr(begin, i - begin));
            field(name);
            i += 2;
            begin = i + 1;
        }
    }
    take(text.substr(begin));
}

std::string DocumentAddress(const std::string& link) {
    const std::string safe = SafeLink(link);
    const std::string scheme = LowerAscii(std::string_view(safe).substr(0, safe.find(':')));
    if (scheme.size() == safe.size() || !IsOneOf(scheme, {"http", "https", "mailto", "ftp"})) {
        return {};
    }
    return PercentEncoded(
        safe, [](char c) { return c > 0x20 && c < 0x7F && c != '"' && c != '\\' && c != '{' && c != '}'; });
}

std::string FlowBookmarks::NameOf(const std::string& bookmark) {
    const auto [entry, fresh] = m_numbers.try_emplace(bookmark, static_cast<int>(m_numbers.size()) + 1);
    return "b" + std::to_string(entry->second);
}

std::string FlowBookmarks::Place(const std::string& bookmark) {
    if (bookmark.empty()) {
        return {};
    }
    std::string name = NameOf(bookmark);
    return m_placed.insert(m_numbers[bookmark]).second ? name : std::string();
}

PageSetup PaperOf(const layout::SectionInstance& section) {
    constexpr double Tolerance = 2;
    PageSetup page = section.page;
    double right = 0;
    for (const Instance& item : section.items) {
        right = std::max(right, RightOf(item));
    }
    const double wanted = page.marginLeft + right + page.marginRight;
    if (page.columns <= 1 && wanted > page.width + Tolerance) {
        page.width = std::max(page.width, std::min(wanted, LongestLength));
    }
    return page;
}

bool HasTitlePage(const PageSetup& page) {
    return (page.headerHeight > 0 && !page.headerOnFirst) || (page.footerHeight > 0 && !page.footerOnFirst);
}

}  // namespace rdl::writers
