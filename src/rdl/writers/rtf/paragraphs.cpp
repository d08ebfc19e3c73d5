// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/paragraphs.h"

#include <algorithm>
#include <string_view>

#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::ParagraphInstance;
using layout::RunInstance;

void AppendNonZero(const char* word, double points, std::string& out) {
    if (points != 0) {
        AppendTwips(word, points, out);
    }
}

void AppendWithFields(std::string_view text, std::string& out) {
    SplitFields(
        text, [&out](std::string_view piece) { AppendRtf(piece, out); },
        [&out](const char* field) {
            out += std::string("{\\field{\\*\\fldinst ") + field + "}{\\fldrslt 1}}";
        });
}

}  // namespace

void RtfParagraphs::AppendPlace(const FlowPlace& place, std::string& out) {
    out += "\\pard\\plain";
    if (place.level > 0) {
        out += "\\intbl";
        if (place.level > 1) {
            AppendWord("\\itap", place.level, out);
        }
    }
    out += place.keepNext ? "\\keepn" : "";
    if (layout::IsVisible(place.background)) {
        AppendWord("\\cbpat", m_styles.Color(place.background), out);
    }
}

void RtfParagraphs::Blank(double height, const FlowPlace& place, std::string& out) {
    AppendPlace(place, out);
    AppendTwips("\\fs2\\sl", -std::max(height, 1.0), out);
    out += "\\slmult0 ";
}

void RtfParagraphs::Message(const layout::TableInstance& table, const FlowPlace& place, std::string& out) {
    AppendPlace(place, out);
    m_styles.AppendCharStyle(table.noRowsStyle.get(),
                             place.rightToLeft || HasComplexScript(table.noRowsMessage), out);
    out += ' ';
    AppendRtf(table.noRowsMessage, out);
}

void RtfParagraphs::Picture(const Instance& item, const FlowPlace& place, std::string& out) {
    AppendPlace(place, out);
    out += "\\fs2 ";
    Bookmark(item, out);
    const bool link = OpenLink(item, out);
    m_pictures.Append(item, out);
    out += link ? "}}" : "";
}

void RtfParagraphs::Box(const Instance& item, const FlowPlace& place, std::string& out) {
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

void RtfParagraphs::Paragraph(const Instance& item, const ParagraphInstance& paragraph,
                              const FlowPlace& place, std::string& out) {
    const FlowMeasures measures = MeasuresOf(item, paragraph);
    Format(measures, place, out);
    const bool bothDirections = NeedsBothDirections(item, paragraph, place);
    m_styles.AppendCharStyle(FirstStyle(paragraph), bothDirections, out);
    out += ' ';
    if (item.paragraphs.empty() || &paragraph == &item.paragraphs.front()) {
        Bookmark(item, out);
    }
    AppendRtf(measures.mark, out);
    const bool link = OpenLink(item, out);
    for (const RunInstance& run : paragraph.runs) {
        const bool same = run.style.get() == FirstStyle(paragraph);
        const RunPlace runPlace{same, link, bothDirections};
        Run(run, runPlace, out);
    }
    out += link ? "}}" : "";
}

void RtfParagraphs::Format(const FlowMeasures& measures, const FlowPlace& place, std::string& out) {
    AppendPlace(place, out);
    out += measures.rightToLeft ? "\\rtlpar" : "";
    const char* aligns[] = {"\\ql", "\\ql", "\\qc", "\\qr", "\\qj"};
    out += aligns[static_cast<int>(measures.align)];
    AppendNonZero("\\li", measures.left, out);
    AppendNonZero("\\ri", measures.right, out);
    if (measures.rightToLeft && (measures.left != 0 || measures.right != 0)) {
        // Some readers take \li and \ri for the sides of the page, some for begin and end: these are the
        // latter.
        AppendTwips("\\lin", measures.right, out);
        AppendTwips("\\rin", measures.left, out);
    }
    AppendNonZero("\\fi", measures.firstLine, out);
    AppendNonZero("\\sb", measures.before, out);
    AppendNonZero("\\sa", measures.after, out);
    if (measures.lineHeight > 0) {
        AppendTwips("\\sl", -measures.lineHeight, out);
        out += "\\slmult0";
    }
    if (!measures.mark.empty()) {
        AppendTwips("\\tx", measures.left, out);
    }
}

void RtfParagraphs::Run(const RunInstance& run, const RunPlace& place, std::string& out) {
    const bool link = !place.isLinked && !run.hyperlink.empty() && OpenLink(run.hyperlink, out);
    if (place.looksAsParagraph) {
        AppendWithFields(run.text, out);
    } else {
        out += "{\\plain";  // the first run's weight and lines end with it
        m_styles.AppendCharStyle(run.style.get(), place.bothDirections, out);
        out += ' ';
        AppendWithFields(run.text, out);
        out += "}";
    }
    out += link ? "}}" : "";
}

bool RtfParagraphs::OpenLink(const std::string& link, std::string& out) {
    const std::string address = DocumentAddress(link);
    if (address.empty()) {
        return false;
    }
    out += "{\\field{\\*\\fldinst HYPERLINK \"" + address + "\"}{\\fldrslt ";
    return true;
}

bool RtfParagraphs::OpenLink(const Instance& item, std::string& out) {
    if (!item.bookmarkLink.empty()) {
        out += "{\\field{\\*\\fldinst HYPERLINK \\\\l \"" + m_bookmarks.NameOf(item.bookmarkLink) +
               "\"}{\\fldrslt ";
        return true;
    }
    return !item.hyperlink.empty() && OpenLink(item.hyperlink, out);
}

void RtfParagraphs::Bookmark(const Instance& item, std::string& out) {
    const std::string name = m_bookmarks.Place(item.bookmark);
    if (!name.empty()) {
        out += "{\\*\\bkmkstart " + name + "}{\\*\\bkmkend " + name + "}";
    }
}

}  // namespace rdl::writers
