// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/paragraphs.h"

#include <algorithm>
#include <string_view>

#include "rdl/writers/common/content.h"
#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::ParagraphInstance;
using layout::RunInstance;

constexpr double ListIndent = 18;  // points a level, as in paged output
constexpr double ListHang = 13.5;  // from the mark to the text

void AppendPlace(const RtfParagraphs::Place& place, std::string& out) {
    out += "\\pard\\plain";
    if (place.level > 0) {
        out += "\\intbl";
        if (place.level > 1) {
            AppendWord("\\itap", place.level, out);
        }
    }
    out += place.keepNext ? "\\keepn" : "";
}

void AppendNonZero(const char* word, double points, std::string& out) {
    if (points != 0) {
        AppendTwips(word, points, out);
    }
}

// The field of the page number mark that begins at `i`; null when none does.
const char* FieldAt(std::string_view text, std::size_t i) {
    const std::string_view mark = text.substr(i, 3);
    if (mark == layout::PageNumberMark || mark == layout::OverallPageNumberMark) {
        return "PAGE";
    }
    return mark == layout::TotalPagesMark || mark == layout::OverallTotalPagesMark ? "NUMPAGES" : nullptr;
}

void AppendWithFields(std::string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\xEE') {
            continue;
        }
        if (const char* field = FieldAt(text, i)) {
            AppendRtf(text.substr(begin, i - begin), out);
            out += std::string("{\\field{\\*\\fldinst ") + field + "}{\\fldrslt 1}}";
            i += 2;
            begin = i + 1;
        }
    }
    AppendRtf(text.substr(begin), out);
}

// Whether a text may have characters of a script that runs from right to left, or of another one for which
// word processors keep separate looks: those of U+0580 to U+1FFF and of U+FB00 to U+FEFF.
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

bool NeedsBothDirections(const Instance& item, const ParagraphInstance& paragraph,
                         const RtfParagraphs::Place& place) {
    return place.rightToLeft || (item.box && item.box->rightToLeft) ||
           std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                       [](const RunInstance& run) { return HasComplexScript(run.text); });
}

const layout::CharStyle* FirstStyle(const ParagraphInstance& paragraph) {
    return paragraph.runs.empty() ? nullptr : paragraph.runs.front().style.get();
}

bool IsListed(const ParagraphInstance& paragraph) {
    return paragraph.bulleted || paragraph.listNumber > 0;
}

}  // namespace

void RtfParagraphs::Blank(double height, const Place& place, std::string& out) {
    AppendPlace(place, out);
    AppendTwips("\\fs2\\sl", -std::max(height, 1.0), out);
    out += "\\slmult0 ";
}

void RtfParagraphs::Message(const layout::TableInstance& table, const Place& place, std::string& out) {
    AppendPlace(place, out);
    m_styles.AppendLetters(table.noRowsStyle.get(),
                           place.rightToLeft || HasComplexScript(table.noRowsMessage), out);
    out += ' ';
    AppendRtf(table.noRowsMessage, out);
}

void RtfParagraphs::Picture(const Instance& item, const Place& place, std::string& out) {
    AppendPlace(place, out);
    out += "\\fs2 ";
    Bookmark(item, out);
    const bool link = OpenLink(item, out);
    m_pictures.Append(item, out);
    out += link ? "}}" : "";
}

void RtfParagraphs::Box(const Instance& item, const Place& place, std::string& out) {
    static const ParagraphInstance Empty;
    if (item.paragraphs.empty()) {
        Paragraph(item, Empty, place, out);
        return;
    }
    for (const ParagraphInstance& paragraph : item.paragraphs) {
        if (&paragraph != &item.paragraphs.front()) {
            out += "\\par\n";
        }
        Paragraph(item, paragraph, place, out);
    }
}

void RtfParagraphs::Paragraph(const Instance& item, const ParagraphInstance& paragraph, const Place& place,
                              std::string& out) {
    Format(item, paragraph, place, out);
    const bool bothDirections = NeedsBothDirections(item, paragraph, place);
    m_styles.AppendLetters(FirstStyle(paragraph), bothDirections, out);
    out += ' ';
    if (item.paragraphs.empty() || &paragraph == &item.paragraphs.front()) {
        Bookmark(item, out);
    }
    if (IsListed(paragraph)) {
        AppendRtf(paragraph.bulleted ? "\xE2\x80\xA2\t" : std::to_string(paragraph.listNumber) + ".\t", out);
    }
    const bool link = OpenLink(item, out);
    for (const RunInstance& run : paragraph.runs) {
        const bool same = run.style.get() == FirstStyle(paragraph);
        const RunPlace runPlace{same, link, bothDirections};
        Run(run, runPlace, out);
    }
    out += link ? "}}" : "";
}

// The box's padding is part of its paragraphs: readers disagree about which side a cell's own is on.
void RtfParagraphs::Format(const Instance& item, const ParagraphInstance& paragraph, const Place& place,
                           std::string& out) {
    static const layout::BoxStyle Plain;
    const layout::BoxStyle& box = item.box ? *item.box : Plain;
    const auto points = [](float length) { return static_cast<double>(length); };
    const bool first = item.paragraphs.empty() || &paragraph == &item.paragraphs.front();
    const bool last = item.paragraphs.empty() || &paragraph == &item.paragraphs.back();
    AppendPlace(place, out);
    out += box.rightToLeft ? "\\rtlpar" : "";
    const char* aligns[] = {"\\ql", "\\ql", "\\qc", "\\qr", "\\qj"};
    out += aligns[static_cast<int>(AlignmentOf(item, paragraph.align))];
    double left = points(box.paddingLeft) + points(paragraph.leftIndent) +
                  std::max(points(paragraph.hangingIndent), 0.0);
    double firstLine = -points(paragraph.hangingIndent);
    if (IsListed(paragraph)) {
        left += ListIndent * (1 + std::clamp(paragraph.listLevel - 1, 0, 9));
        firstLine = -ListHang;
    }
    AppendNonZero("\\li", left, out);
    AppendNonZero("\\ri", points(box.paddingRight) + points(paragraph.rightIndent), out);
    AppendNonZero("\\fi", firstLine, out);
    AppendNonZero("\\sb", points(paragraph.spaceBefore) + (first ? points(box.paddingTop) : 0), out);
    AppendNonZero("\\sa", points(paragraph.spaceAfter) + (last ? points(box.paddingBottom) : 0), out);
    if (paragraph.lineHeight > 0) {
        AppendTwips("\\sl", -points(paragraph.lineHeight), out);
        out += "\\slmult0";
    }
    if (IsListed(paragraph)) {
        AppendTwips("\\tx", left, out);
    }
}

void RtfParagraphs::Run(const RunInstance& run, const RunPlace& place, std::string& out) {
    const bool link = !place.isLinked && !run.hyperlink.empty() && OpenLink(run.hyperlink, out);
    if (place.looksAsParagraph) {
        AppendWithFields(run.text, out);
    } else {
        out += "{\\plain";  // the first run's weight and lines end with it
        m_styles.AppendLetters(run.style.get(), place.bothDirections, out);
        out += ' ';
        AppendWithFields(run.text, out);
        out += "}";
    }
    out += link ? "}}" : "";
}

bool RtfParagraphs::OpenLink(const std::string& link, std::string& out) {
    const std::string address = RtfAddress(link);
    if (address.empty()) {
        return false;
    }
    out += "{\\field{\\*\\fldinst HYPERLINK \"" + address + "\"}{\\fldrslt ";
    return true;
}

bool RtfParagraphs::OpenLink(const Instance& item, std::string& out) {
    if (!item.bookmarkLink.empty()) {
        out += "{\\field{\\*\\fldinst HYPERLINK \\\\l \"" + NameOf(item.bookmarkLink) + "\"}{\\fldrslt ";
        return true;
    }
    return !item.hyperlink.empty() && OpenLink(item.hyperlink, out);
}

std::string RtfParagraphs::NameOf(const std::string& bookmark) {
    const auto [entry, fresh] = m_bookmarks.try_emplace(bookmark, static_cast<int>(m_bookmarks.size()) + 1);
    return "b" + std::to_string(entry->second);
}

void RtfParagraphs::Bookmark(const Instance& item, std::string& out) {
    if (item.bookmark.empty()) {
        return;
    }
    const std::string name = NameOf(item.bookmark);
    if (m_placed.insert(m_bookmarks[item.bookmark]).second) {  // a name is there once
        out += "{\\*\\bkmkstart " + name + "}{\\*\\bkmkend " + name + "}";
    }
}

}  // namespace rdl::writers
