// SPDX-License-Identifier: GPL-3.0-or-later
// Breaks the paragraphs of a text box into lines and shapes them. Lengths are points.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/layout/pages/line_breaker.h"
#include "rdl/text/fonts.h"

namespace rdl::layout {

// A part of a line in one style.
struct TextPiece {
    const RunInstance* run = nullptr;
    text::FontId font = 0;
    double x = 0, width = 0;                   // x is relative to the line's left edge
    std::uint32_t begin = 0, end = 0;          // in LaidText::text
    std::uint32_t firstRun = 0, runCount = 0;  // in LaidText::runs
};

struct TextLine {
    double top = 0, height = 0, baseline = 0;  // baseline is relative to the line's top
    double x = 0;                              // x of the first piece, relative to the content's left edge
    std::uint32_t firstPiece = 0, pieceCount = 0;
    std::uint32_t paragraph = 0;  // of the item, from 0
    bool endsWord = false;        // what follows begins another word, though there is no space at the end
};

// Refers to runs of the instance, which must outlive it.
struct LaidText {
    std::vector<TextLine> lines;
    std::vector<TextPiece> pieces;
    std::vector<text::GlyphRun> runs;
    std::string text;
    double height = 0;
    bool hasPageMarks = false;  // contains page number placeholders
    void Clear() {
        lines.clear();
        pieces.clear();
        runs.clear();
        text.clear();
        height = 0;
        hasPageMarks = false;
    }
};

class TextLayout {
 public:
    // Lays out the text of `item` in `width` points, in time linear to its length.
    void Lay(const Instance& item, double width, LaidText& out);

 private:
    struct Range {  // range of a run in the paragraph's text
        const RunInstance* run;
        std::size_t begin, end;
        text::FontId font;
    };
    bool LayPlain(const Instance& item, double width, LaidText& out);
    void LayParagraph(const Instance& item, const ParagraphInstance& paragraph, double width, LaidText& out);
    void Gather(const ParagraphInstance& paragraph);
    // Calls `use` with each range that the characters touch, and the part of it that they cover.
    template <class Use>
    void ForRuns(std::size_t begin, std::size_t end, const Use& use) const;
    double Width(std::size_t begin, std::size_t end) const;
    double HyphenWidth(const BreakUnit& unit) const;
    std::size_t FittingEnd(std::size_t begin, std::size_t end, double width) const;
    void EndLine(const Instance& item, const ParagraphInstance& paragraph, std::size_t begin, std::size_t end,
                 bool isLast, LaidText& out);
    void AddPieces(std::size_t begin, std::size_t end, bool rightToLeft, bool isLast, double& x,
                   LaidText& out);
    static void PlaceBackwards(const TextLine& line, LaidText& out);
    void AddListMark(const ParagraphInstance& paragraph, double indent, TextLine& line, LaidText& out);
    static void Justify(const TextLine& line, double extra, LaidText& out);
    text::FontId FontOf(const CharStyle& style);

    std::string m_text;
    std::vector<Range> m_ranges;
    std::vector<BreakUnit> m_units;
    double m_left = 0, m_available = 0;
    bool m_firstLine = true;
    // Fonts of recent styles: a table uses few.
    struct KnownFont {
        const CharStyle* style;
        CharStyle copy;
        text::FontId font;
    };
    std::vector<KnownFont> m_fonts;
};

}  // namespace rdl::layout
