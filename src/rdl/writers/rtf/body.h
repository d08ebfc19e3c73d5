// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the items of a report as RTF paragraphs and tables (RTF 1.9.1, Paragraph Text and Table
// Definitions), from top to bottom.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/spool/spool.h"
#include "rdl/writers/common/flow_body.h"
#include "rdl/writers/rtf/paragraphs.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

class RtfBody final : public FlowBody {
 public:
    RtfBody(RtfStyles& styles, Spool& spool) : m_styles(styles), m_paragraphs(styles), m_spool(spool) {}

    // Appends trusted control words, which end the last paragraph.
    void Raw(std::string_view rtf);
    // Moves pending output to the spool.
    void Flush();

 private:
    void TextBox(const layout::Instance& item, const FlowPlace& place) override;
    void Picture(const layout::Instance& item, const FlowPlace& place) override;
    void Message(const layout::TableInstance& table, const FlowPlace& place) override;
    void Blank(double height, const FlowPlace& place) override;
    void Mark(const layout::Instance& item) override;
    void BreakPage() override;
    void BeginRow(const FlowRow& row, int level) override;
    void EndRow(int level, bool nested) override;
    void EndCell(int level) override;
    void PieceWritten() override;
    void EndOfSection(double height) override { Blank(height, {}); }
    void BeginParagraph();
    void EndParagraph();  // if it is not ended

    RtfStyles& m_styles;
    RtfParagraphs m_paragraphs;
    Spool& m_spool;
    std::string m_out;
    bool m_open = false;                     // the last paragraph is not ended
    std::vector<std::string> m_definitions;  // of the rows around this place, the innermost last
};

}  // namespace rdl::writers
