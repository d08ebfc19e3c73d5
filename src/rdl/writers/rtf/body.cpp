// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/body.h"

#include <cstddef>
#include <utility>

#include "rdl/writers/rtf/row.h"

namespace rdl::writers {
namespace {

using layout::Instance;

constexpr std::size_t PieceSize = 64u << 10;

}  // namespace

void RtfBody::Raw(std::string_view rtf) {
    m_out += rtf;
    m_open = false;
}

void RtfBody::Flush() {
    m_spool.Append(m_out);
    m_out.clear();
}

void RtfBody::PieceWritten() {
    if (m_out.size() > PieceSize) {
        Flush();
    }
}

void RtfBody::EndParagraph() {
    m_out += std::exchange(m_open, false) ? "\\par\n" : "";
}

void RtfBody::BeginParagraph() {
    EndParagraph();
    m_open = true;
}

void RtfBody::TextBox(const Instance& item, const FlowPlace& place) {
    BeginParagraph();
    m_paragraphs.Box(item, place, m_out);
}

void RtfBody::Picture(const Instance& item, const FlowPlace& place) {
    BeginParagraph();
    m_paragraphs.Picture(item, place, m_out);
}

void RtfBody::Message(const layout::TableInstance& table, const FlowPlace& place) {
    BeginParagraph();
    m_paragraphs.Message(table, place, m_out);
}

void RtfBody::Blank(double height, const FlowPlace& place) {
    BeginParagraph();
    m_paragraphs.Blank(height, place, m_out);
}

void RtfBody::Mark(const Instance& item) {
    EndParagraph();
    m_paragraphs.Bookmark(item, m_out);
}

void RtfBody::BreakPage() {
    EndParagraph();
    m_out += "\\pard\\plain\\pagebb\\fs2\\sl-20\\slmult0\\par\n";
}

// The row definition precedes the content. It repeats after nested tables, which have their own.
void RtfBody::BeginRow(const FlowRow& row, int level) {
    EndParagraph();
    AppendRowDefinition(row, m_styles, m_definitions.emplace_back());
    if (level == 1) {
        m_out += m_definitions.back();
    }
}

void RtfBody::EndRow(int level, bool nested) {
    const std::string definition = std::move(m_definitions.back());
    m_definitions.pop_back();
    if (level == 1) {
        m_out += (nested ? definition : "") + "\\row\n";
    } else {
        m_out += "{\\*\\nesttableprops" + definition + "\\nestrow}{\\nonesttables\\par}\n";
    }
}

void RtfBody::EndCell(int level) {
    m_open = false;
    m_out += level == 1 ? "\\cell\n" : "\\nestcell\n";
}

}  // namespace rdl::writers
