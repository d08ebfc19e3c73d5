// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the items of a report as paragraphs and tables of one part: the document's body, a header or a
// footer (ECMA-376 Part 1, 17.2, 17.4, 17.10).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/spool/spool.h"
#include "rdl/writers/common/flow_body.h"
#include "rdl/writers/docx/cells.h"
#include "rdl/writers/docx/paragraphs.h"

namespace rdl::writers {

class DocxBody final : public FlowBody {
 public:
    // All outlive this; `relations` are those of the part, `contents` takes its labels. Null: it has none.
    DocxBody(DocxDocument& document, DocxRelations& relations, DocxContents* contents, Spool& spool)
        : m_paragraphs(document, relations, contents), m_spool(spool) {}

    // Appends trusted elements.
    void Raw(std::string_view xml) { m_out += xml; }
    // Writes the body of a section whose last paragraph has these properties: those of the section, or none.
    void Section(const std::vector<layout::Instance>& items, const Backdrop& backdrop,
                 const std::string& end);
    // Moves pending output to the spool.
    void Flush();

 private:
    struct OpenTable {
        DocxColumns columns;
        bool rightToLeft;
        bool hasRows = false;  // a table without rows is none
    };

    void TextBox(const layout::Instance& item, const FlowPlace& place) override;
    void Picture(const layout::Instance& item, const FlowPlace& place) override;
    void Message(const layout::TableInstance& table, const FlowPlace& place) override;
    void Blank(double height, const FlowPlace& place) override;
    void Mark(const layout::Instance& item) override;
    void Label(const layout::MapLabel& label, const FlowRow& row) override;
    void BreakPage() override;
    void EndOfSection(double height) override;
    bool SharesColumns() const override { return true; }
    void BeginTable(const std::vector<double>& lines, bool rightToLeft) override;
    void EndTable() override;
    void BeginRow(const FlowRow& row, int level) override;
    void EndRow(int level, bool nested) override;
    void BeginCell(const FlowCell& cell) override;
    void EndCell(int level) override;
    void PieceWritten() override;

    DocxParagraphs m_paragraphs;
    Spool& m_spool;
    std::string m_out;
    std::string m_end;                // properties of the section's last paragraph
    std::vector<OpenTable> m_tables;  // the innermost last
};

}  // namespace rdl::writers
