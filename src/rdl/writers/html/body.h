// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the items of a report as HTML elements (HTML Living Standard). Free-standing items are placed in a
// CSS grid whose lines are their edges: the page looks as designed, and growing items push down what is below
// them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/spool/spool.h"
#include "rdl/writers/html/document_map.h"
#include "rdl/writers/html/drawings.h"
#include "rdl/writers/html/styles.h"

namespace rdl::writers {

constexpr std::size_t PieceSize = 64u << 10;  // bytes; of markup that is kept before it goes to the spool

class HtmlBody {
 public:
    HtmlBody(HtmlStyles& styles, Spool& spool) : m_styles(styles), m_spool(spool), m_drawings(styles) {}

    // Appends trusted markup.
    void Raw(std::string_view html);
    // Writes the items of a container of at least `width` by `height` points. Raises rdl::Error naming an
    // item that cannot be shown.
    void Items(const std::vector<layout::Instance>& items, double width, double height);
    // Moves pending output to the spool.
    void Flush();
    const HtmlMap& Map() const { return m_map; }

 private:
    void Item(const layout::Instance& item, const std::string& placeClass);
    void OpenTag(const char* element, const layout::Instance& item, const std::string& classes);
    void TextBlock(const layout::Instance& item, const std::string& placeClass);
    void Paragraphs(const layout::Instance& item, const layout::CharStylePtr& own);
    void Paragraph(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                   const layout::CharStylePtr& own);
    void ListMark(const layout::ParagraphInstance& paragraph);
    void Run(const layout::RunInstance& run, const layout::CharStylePtr& own);
    void Image(const layout::Instance& item, const std::string& placeClass);
    void Drawing(const layout::Instance& item, const std::string& placeClass);
    void Line(const layout::Instance& item, const std::string& placeClass);
    void Container(const layout::Instance& item, const std::string& placeClass);
    bool OpenLink(const layout::Instance& item);
    bool OpenLink(const std::string& link);
    void CloseLink(bool open);
    void Attribute(const char* name, std::string_view value);
    const std::string& AnchorOf(const std::string& bookmark);
    void Identify(const layout::Instance& item);

    void Table(const layout::Instance& item, const std::string& placeClass);
    void TableRows(layout::TableInstance& table);
    void Row(const layout::TableInstance& table, const layout::TableRow& row, bool head);
    void Cell(const layout::TableInstance& table, const layout::TableCell& cell, bool head);
    void NewCell(const layout::TableInstance& table, const layout::TableCell& cell, bool head);
    void CellContent(const layout::Instance& item, const layout::CharStylePtr& own);

    // The last cell whose text others have too.
    struct SameCell {
        layout::SameText text;
        bool inHead = false, inRowHead = false;
        std::string html;
    };

    HtmlStyles& m_styles;
    Spool& m_spool;
    HtmlDrawings m_drawings;
    std::string m_out;
    std::map<std::string, std::string> m_anchors;  // element ids by bookmark
    std::map<std::string, bool> m_anchorUsed;
    HtmlMap m_map;
    SameCell m_sameCell;
    int m_depth = 0;
};

}  // namespace rdl::writers
