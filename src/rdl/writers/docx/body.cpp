// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/body.h"

#include <cstddef>

namespace rdl::writers {
namespace {

using layout::Instance;

constexpr std::size_t PieceSize = 64u << 10;

}  // namespace

void DocxBody::Section(const std::vector<Instance>& items, const Backdrop& backdrop, const std::string& end) {
    m_end = end;
    Body(items, backdrop);
}

void DocxBody::Flush() {
    m_spool.Append(m_out);
    m_out.clear();
}

void DocxBody::PieceWritten() {
    if (m_out.size() > PieceSize) {
        Flush();
    }
}

void DocxBody::TextBox(const Instance& item, const FlowPlace& place) {
    m_paragraphs.Box(item, place, m_out);
}

void DocxBody::Picture(const Instance& item, const FlowPlace& place) {
    m_paragraphs.Picture(item, place, m_out);
}

void DocxBody::Message(const layout::TableInstance& table, const FlowPlace& place) {
    m_paragraphs.Message(table, place, m_out);
}

void DocxBody::Blank(double height, const FlowPlace& place) {
    m_paragraphs.Blank(height, place, "", m_out);
}

void DocxBody::Mark(const Instance& item) {
    m_paragraphs.Mark(item.bookmark, item.documentMapLabel, 0);
}

void DocxBody::Label(const layout::MapLabel& label, const FlowRow& row) {
    m_paragraphs.MarkRow(label, row);
}

void DocxBody::BreakPage() {
    DocxParagraphs::PageBreak(m_out);
}

void DocxBody::EndOfSection(double height) {
    m_paragraphs.Blank(height, {}, m_end, m_out);
}

void DocxBody::BeginTable(const std::vector<double>& lines, bool rightToLeft) {
    m_tables.push_back({DocxColumns(lines), rightToLeft});
}

void DocxBody::EndTable() {
    m_out += m_tables.back().hasRows ? "</w:tbl>\n" : "";
    m_tables.pop_back();
}

void DocxBody::BeginRow(const FlowRow& row, int /*level*/) {
    OpenTable& table = m_tables.back();
    if (!table.hasRows) {
        table.columns.AppendTable(table.rightToLeft, m_out);
        table.hasRows = true;
    }
    m_out += "<w:tr>";
    AppendRowProperties(row, m_out);
}

void DocxBody::EndRow(int /*level*/, bool /*nested*/) {
    m_out += "</w:tr>\n";
}

void DocxBody::BeginCell(const FlowCell& cell) {
    m_out += "<w:tc>";
    AppendCellProperties(cell, m_tables.back().columns, m_out);
}

void DocxBody::EndCell(int /*level*/) {
    m_out += "</w:tc>";
}

}  // namespace rdl::writers
