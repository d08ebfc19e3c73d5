// SPDX-License-Identifier: GPL-3.0-or-later
// Members of HtmlBody: tables.
#include <algorithm>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/html/body.h"
#include "rdl/writers/html/text.h"

namespace rdl::writers {
namespace {

using layout::CharStylePtr;
using layout::HAlign;
using layout::Instance;
using layout::InstanceKind;
using layout::TableCell;
using layout::TableInstance;
using layout::TableRow;

constexpr int MostColumns = 1000, MostRows = 65534;  // that one cell may span

bool IsHeading(const TableInstance& table, const TableRow& row) {
    return row.columnHeader && !table.columnWidths.empty();
}

// Whether the paragraph is laid out as a cell lays out its text.
bool HasPlainMeasures(const layout::ParagraphInstance& paragraph) {
    return !paragraph.bulleted && paragraph.listNumber == 0 && paragraph.leftIndent == 0 &&
           paragraph.rightIndent == 0 && paragraph.hangingIndent == 0 && paragraph.spaceBefore == 0 &&
           paragraph.spaceAfter == 0 && paragraph.lineHeight == 0;
}

// A table without any heading only puts its content into place.
bool IsData(TableInstance& table) {
    if (table.headerColumns > 0) {
        return true;
    }
    TableRow first;
    if (table.RowCount() > 0) {
        table.Row(0, first);
    }
    return IsHeading(table, first);
}

}  // namespace

void HtmlBody::Table(const Instance& item, const std::string& placeClass) {
    if (!item.table) {
        return;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    TableInstance& table = *item.table;
    const std::string& box = m_styles.Box(item.box, HtmlStyles::Place::Block, nullptr, HAlign::Left);
    OpenTag("div", item, placeClass + " " + box + (table.keepTogether ? " k" : ""));
    m_out += ">\n";
    if (!table.noRowsMessage.empty()) {
        m_out += table.noRowsStyle ? "<p class=\"" + m_styles.Text(table.noRowsStyle) + "\">" : "<p>";
        AppendHtml(table.noRowsMessage, m_out);
        m_out += "</p></div>\n";
        --m_depth;
        return;
    }
    double width = 0;
    for (const double column : table.columnWidths) {
        width += column;
    }
    std::string css = "width:";
    AppendPoints(width, css);
    m_out += "<table class=\"" + m_styles.Class(css + ";") + "\"";
    m_out += table.rightToLeft ? " dir=\"rtl\"" : "";
    m_out += IsData(table) ? ">\n" : " role=\"presentation\">\n";
    if (!item.documentMapLabel.empty()) {
        m_out += "<caption class=\"v\">";
        AppendHtml(item.documentMapLabel, m_out);
        m_out += "</caption>\n";
    }
    m_out += "<colgroup>";
    for (const double column : table.columnWidths) {
        css = "width:";
        AppendPoints(column, css);
        m_out += "<col class=\"" + m_styles.Class(css + ";") + "\">";
    }
    m_out += "</colgroup>\n";
    TableRows(table);
    m_out += "</table></div>\n";
    --m_depth;
}

// Leading heading rows go into thead, all others into tbody.
void HtmlBody::TableRows(TableInstance& table) {
    const std::size_t count = table.RowCount();
    TableRow row;
    bool heads = true, inHead = false, inBody = false;
    for (std::size_t i = 0; i < count; ++i) {
        table.Row(i, row);
        heads = heads && IsHeading(table, row);
        if (heads && !inHead) {
            m_out += "<thead>\n";
            inHead = true;
        } else if (!heads && !inBody) {
            m_out += inHead ? "</thead>\n<tbody>\n" : "<tbody>\n";
            inBody = true;
        }
        Row(table, row, IsHeading(table, row));
        if (m_out.size() > PieceSize) {
            Flush();
        }
    }
    if (inBody) {
        m_out += "</tbody>\n";
    } else if (inHead) {
        m_out += "</thead>\n";
    }
}

void HtmlBody::Row(const TableInstance& table, const TableRow& row, bool head) {
    std::string css = "height:";
    AppendPoints(row.height, css);
    m_out += "<tr class=\"" + m_styles.Class(css + ";");
    m_out += row.breakBefore ? " bb" : "";
    m_out += row.breakAfter ? " ba\"" : "\"";
    if (!row.labels.empty()) {
        const std::string id = m_map.NextId();
        Attribute("id", id);
        for (const layout::MapLabel& label : row.labels) {
            m_map.Add(label.text, label.level, id);
        }
    }
    m_out += ">";
    for (const TableCell& cell : row.cells) {
        Cell(table, cell, head);
    }
    m_out += "</tr>\n";
}

void HtmlBody::Cell(const TableInstance& table, const TableCell& cell, bool head) {
    const Instance& item = cell.content;
    // Each bookmark and label has an id of its own.
    if (!item.same.IsSet() || cell.columnSpan > 1 || cell.rowSpan > 1 || !item.bookmark.empty() ||
        !item.documentMapLabel.empty()) {
        NewCell(table, cell, head);
        return;
    }
    const bool rowHead = cell.column < table.headerColumns;
    if (m_sameCell.text.IsSameAs(item.same) && m_sameCell.inHead == head && m_sameCell.inRowHead == rowHead) {
        m_out += m_sameCell.html;
        return;
    }
    const std::size_t begin = m_out.size();
    NewCell(table, cell, head);
    m_sameCell = {item.same, head, rowHead, m_out.substr(begin)};
}

void HtmlBody::NewCell(const TableInstance& table, const TableCell& cell, bool head) {
    const Instance& item = cell.content;
    const bool text = item.kind == InstanceKind::Text;
    bool blank = text;
    for (const layout::ParagraphInstance& paragraph : item.paragraphs) {
        for (const layout::RunInstance& run : paragraph.runs) {
            blank = blank && run.text.empty();
        }
    }
    const bool rowHead = cell.column < table.headerColumns;
    const bool heading = (head || rowHead) && !blank;
    CharStylePtr own;
    if (text && item.paragraphs.size() == 1 && item.paragraphs[0].runs.size() == 1) {
        own = item.paragraphs[0].runs[0].style;
    }
    const HAlign align =
        AlignmentOf(item, item.paragraphs.empty() ? HAlign::General : item.paragraphs[0].align);
    const std::string& box = m_styles.Box(item.kind == InstanceKind::Text ? item.box : nullptr,
                                          HtmlStyles::Place::Cell, own, align);
    OpenTag(heading ? "th" : "td", item, box);
    if (heading) {
        const bool group = (head ? cell.columnSpan : cell.rowSpan) > 1;
        m_out += head ? (group ? " scope=\"colgroup\"" : " scope=\"col\"")
                      : (group ? " scope=\"rowgroup\"" : " scope=\"row\"");
    }
    if (cell.columnSpan > 1) {
        m_out += " colspan=\"" + std::to_string(std::min(cell.columnSpan, MostColumns)) + "\"";
    }
    if (cell.rowSpan > 1) {
        m_out += " rowspan=\"" + std::to_string(std::min(cell.rowSpan, MostRows)) + "\"";
    }
    m_out += '>';
    if (!blank) {
        CellContent(item, own);
    }
    m_out += heading ? "</th>" : "</td>";
}

void HtmlBody::CellContent(const Instance& item, const CharStylePtr& own) {
    if (item.kind != InstanceKind::Text) {
        Instance inner = item;
        inner.bookmark.clear();                                                        // the cell bears them
        if (item.kind != InstanceKind::Image && item.kind != InstanceKind::Drawing) {  // says what they show
            inner.toolTip.clear();
        }
        Item(inner, m_styles.Class(""));
        return;
    }
    if (!own || !HasPlainMeasures(item.paragraphs[0])) {
        Paragraphs(item, own);
        return;
    }
    const bool link = OpenLink(item);
    Run(item.paragraphs[0].runs[0], own);
    CloseLink(link);
}

}  // namespace rdl::writers
