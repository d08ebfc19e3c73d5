// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/text_layout.h"

#include <algorithm>

#include "rdl/layout/pages/tolerance.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

constexpr double ListIndent = 18;  // points a level
const CharStyle PlainStyle;

const CharStyle& StyleOf(const RunInstance& run) {
    return run.style ? *run.style : PlainStyle;
}

bool IsPlainText(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == '\xEE' || c == '\xE2';
    });
}

HAlign AlignmentOf(const Instance& item, const ParagraphInstance& paragraph) {
    HAlign align = paragraph.align;
    if (align == HAlign::General && item.box) {
        align = item.box->hAlign;
    }
    if (align == HAlign::General) {
        const bool rightToLeft = item.box && item.box->rightToLeft;
        align = item.isNumeric != rightToLeft ? HAlign::Right : HAlign::Left;
    }
    return align;
}

void SetLineHeight(TextLine& line, const ParagraphInstance& paragraph, double ascent, double descent,
                   double gap) {
    const double natural = ascent + descent + gap;
    line.height = paragraph.lineHeight > 0 ? static_cast<double>(paragraph.lineHeight) : natural;
    line.baseline = ascent + (line.height - natural) / 2;
    if (paragraph.lineHeight <= 0) {
        line.baseline = ascent;
    }
}

}  // namespace

text::FontId TextLayout::FontOf(const CharStyle& style) {
    constexpr std::size_t Kept = 16;
    for (const KnownFont& known : m_fonts) {
        if (known.style == &style && known.copy == style) {
            return known.font;
        }
    }
    if (m_fonts.size() >= Kept) {
        m_fonts.clear();
    }
    const text::FontId font = text::FindFont({style.family, style.bold, style.italic});
    m_fonts.push_back({&style, style, font});
    return font;
}

void TextLayout::Lay(const Instance& item, double width, LaidText& out) {
    out.Clear();
    if (std::all_of(item.paragraphs.begin(), item.paragraphs.end(), [](const ParagraphInstance& paragraph) {
            return std::all_of(paragraph.runs.begin(), paragraph.runs.end(),
                               [](const RunInstance& run) { return run.text.empty(); });
        })) {
        return;
    }
    if (LayPlain(item, width, out)) {
        return;
    }
    for (const ParagraphInstance& paragraph : item.paragraphs) {
        LayParagraph(item, paragraph, width, out);
    }
}

// Most cells of a table: one run on one line.
bool TextLayout::LayPlain(const Instance& item, double width, LaidText& out) {
    if (item.paragraphs.size() != 1 || item.paragraphs.front().runs.size() != 1) {
        return false;
    }
    const ParagraphInstance& paragraph = item.paragraphs.front();
    const RunInstance& run = paragraph.runs.front();
    const HAlign align = AlignmentOf(item, paragraph);
    if (align == HAlign::Justify || paragraph.bulleted || paragraph.listNumber > 0 ||
        !IsPlainText(run.text)) {
        return false;
    }
    const CharStyle& style = StyleOf(run);
    const double size = static_cast<double>(style.size);
    const text::FontId font = FontOf(style);
    const double left = static_cast<double>(paragraph.leftIndent);
    const double available = width - left - static_cast<double>(paragraph.rightIndent);
    text::Shape(run.text, font, size, item.box && item.box->rightToLeft, out.runs);
    double total = 0;
    for (const text::GlyphRun& shaped : out.runs) {
        total += shaped.width;
    }
    if (total > available + Tolerance || paragraph.hangingIndent != 0) {
        out.runs.clear();
        return false;
    }
    out.text = run.text;
    const text::FontMetrics& metrics = text::Metrics(font);
    TextLine line;
    SetLineHeight(line, paragraph, metrics.ascent * size, metrics.descent * size, metrics.lineGap * size);
    line.top = static_cast<double>(paragraph.spaceBefore);
    line.x = left;
    if (align != HAlign::Left) {
        line.x += align == HAlign::Right ? available - total : (available - total) / 2;
    }
    line.pieceCount = 1;
    out.lines.push_back(line);
    out.pieces.push_back({&run, font, 0, total, 0, static_cast<std::uint32_t>(run.text.size()), 0,
                          static_cast<std::uint32_t>(out.runs.size())});
    out.height = line.top + line.height + static_cast<double>(paragraph.spaceAfter);
    return true;
}

void TextLayout::Gather(const ParagraphInstance& paragraph) {
    m_text.clear();
    m_ranges.clear();
    for (const RunInstance& run : paragraph.runs) {
        const std::size_t begin = m_text.size();
        for (const char c : run.text) {
            if (c == '\t') {
                m_text += "    ";
            } else {
                m_text += c;
            }
        }
        m_ranges.push_back({&run, begin, m_text.size(), FontOf(StyleOf(run))});
    }
}

template <class Use>
void TextLayout::ForRuns(std::size_t begin, std::size_t end, const Use& use) const {
    const auto first = std::partition_point(m_ranges.begin(), m_ranges.end(),
                                            [begin](const Range& range) { return range.end <= begin; });
    for (auto at = first; at != m_ranges.end() && at->begin < end; ++at) {
        const std::size_t from = std::max(begin, at->begin);
        const std::size_t to = std::min(end, at->end);
        if (from < to) {
            use(*at, from, to);
        }
    }
}

double TextLayout::Width(std::size_t begin, std::size_t end) const {
    double width = 0;
    ForRuns(begin, end, [&](const Range& range, std::size_t from, std::size_t to) {
        width += text::TextWidth(std::string_view(m_text).substr(from, to - from), range.font,
                                 static_cast<double>(StyleOf(*range.run).size));
    });
    return width;
}

// Returns the width of the hyphen shown if the line ends after the unit.
double TextLayout::HyphenWidth(const BreakUnit& unit) const {
    const std::string_view text = std::string_view(m_text).substr(unit.begin, unit.visibleEnd - unit.begin);
    if (!EndsWithSoftHyphen(text)) {
        return 0;
    }
    const auto range = std::partition_point(m_ranges.begin(), m_ranges.end(), [&unit](const Range& before) {
        return before.end < unit.visibleEnd;
    });
    return text::TextWidth("-", range->font, static_cast<double>(StyleOf(*range->run).size));
}

// How much of a word that is wider than a line fits: at least one character.
std::size_t TextLayout::FittingEnd(std::size_t begin, std::size_t end, double width) const {
    double used = 0;
    std::size_t at = begin;
    while (at < end) {
        std::size_t next = at;
        NextCharacter(m_text, next);
        used += Width(at, next);
        if (used > width + Tolerance && at > begin) {
            break;
        }
        at = next;
    }
    return at;
}

void TextLayout::LayParagraph(const Instance& item, const ParagraphInstance& paragraph, double width,
                              LaidText& out) {
    Gather(paragraph);
    FindBreaks(m_text, m_units);
    out.hasPageMarks = out.hasPageMarks || m_text.find("\xEE\x80") != std::string::npos;
    out.height += static_cast<double>(paragraph.spaceBefore);
    m_left = static_cast<double>(paragraph.leftIndent);
    if (paragraph.bulleted || paragraph.listNumber > 0) {
        m_left += ListIndent * (1 + std::clamp(paragraph.listLevel - 1, 0, 9));
    }
    m_firstLine = true;
    const double full = width - m_left - static_cast<double>(paragraph.rightIndent);
    const auto hanging = static_cast<double>(paragraph.hangingIndent);
    // A hanging indent moves the lines after the first; a negative one moves the first.
    const auto availableNow = [&] {
        return full - (m_firstLine ? std::max(0.0, -hanging) : std::max(0.0, hanging));
    };
    m_available = availableNow();
    std::size_t lineBegin = m_units.front().begin;
    std::size_t lineEnd = lineBegin;
    double used = 0;
    const auto endLine = [&](std::size_t end, std::size_t next, bool isLast) {
        EndLine(item, paragraph, lineBegin, end, isLast, out);
        out.lines.back().endsWord = isLast || next > end;
        m_firstLine = false;
        m_available = availableNow();
        lineBegin = lineEnd = next;
        used = 0;
    };
    for (const BreakUnit& unit : m_units) {
        std::size_t begin = unit.begin;
        double visible = Width(begin, unit.visibleEnd);
        if (used + visible + HyphenWidth(unit) > m_available + Tolerance && lineEnd > lineBegin) {
            endLine(lineEnd, begin, false);
        }
        while (visible > m_available + Tolerance) {
            const std::size_t fitting = FittingEnd(begin, unit.visibleEnd, m_available);
            if (fitting >= unit.visibleEnd) {
                break;
            }
            // Subtracts instead of measuring the rest again: a long word would take quadratic time.
            visible -= Width(begin, fitting);
            endLine(fitting, fitting, false);
            begin = fitting;
        }
        used += visible + Width(std::max(begin, unit.visibleEnd), unit.end);
        lineEnd = std::max(unit.visibleEnd, begin);
        if (unit.hardBreak) {
            const std::size_t next =
                (&unit + 1 < m_units.data() + m_units.size()) ? (&unit + 1)->begin : unit.end;
            endLine(lineEnd, next, true);
        }
    }
    endLine(lineEnd, lineEnd, true);
    out.height += static_cast<double>(paragraph.spaceAfter);
}

void TextLayout::AddPieces(std::size_t begin, std::size_t end, bool rightToLeft, bool isLast, double& x,
                           LaidText& out) {
    ForRuns(begin, end, [&](const Range& range, std::size_t from, std::size_t to) {
        TextPiece piece{range.run,
                        range.font,
                        x,
                        0,
                        static_cast<std::uint32_t>(out.text.size()),
                        0,
                        static_cast<std::uint32_t>(out.runs.size()),
                        0};
        std::string part = m_text.substr(from, to - from);
        if (!isLast && to == end && EndsWithSoftHyphen(part)) {
            part.replace(part.size() - 2, 2, "-");
        }
        out.text += part;
        piece.end = static_cast<std::uint32_t>(out.text.size());
        text::Shape(part, range.font, static_cast<double>(StyleOf(*range.run).size), rightToLeft, out.runs);
        for (std::size_t i = piece.firstRun; i < out.runs.size(); ++i) {
            piece.width += out.runs[i].width;
        }
        piece.runCount = static_cast<std::uint32_t>(out.runs.size()) - piece.firstRun;
        x += piece.width;
        out.pieces.push_back(piece);
    });
}

// The first piece of the text stands at the right.
void TextLayout::PlaceBackwards(const TextLine& line, LaidText& out) {
    double x = 0;
    for (std::size_t p = out.pieces.size(); p > line.firstPiece; --p) {
        out.pieces[p - 1].x = x;
        x += out.pieces[p - 1].width;
    }
}

void TextLayout::AddListMark(const ParagraphInstance& paragraph, double indent, TextLine& line,
                             LaidText& out) {
    const RunInstance& first = paragraph.runs.front();
    const std::string mark = paragraph.bulleted ? "\xE2\x80\xA2" : std::to_string(paragraph.listNumber) + ".";
    const text::FontId font = FontOf(StyleOf(first));
    TextPiece piece{&first,
                    font,
                    -indent,
                    0,
                    static_cast<std::uint32_t>(out.text.size()),
                    0,
                    static_cast<std::uint32_t>(out.runs.size()),
                    0};
    out.text += mark;
    piece.end = static_cast<std::uint32_t>(out.text.size());
    text::Shape(mark, font, static_cast<double>(StyleOf(first).size), false, out.runs);
    piece.runCount = static_cast<std::uint32_t>(out.runs.size()) - piece.firstRun;
    out.pieces.push_back(piece);
    ++line.pieceCount;
}

void TextLayout::Justify(const TextLine& line, double extra, LaidText& out) {
    std::size_t spaces = 0;
    const auto forSpaces = [&](auto change) {
        for (std::size_t p = line.firstPiece; p < out.pieces.size(); ++p) {
            TextPiece& piece = out.pieces[p];
            for (std::size_t r = piece.firstRun; r < piece.firstRun + piece.runCount; ++r) {
                for (text::Glyph& glyph : out.runs[r].glyphs) {
                    if (out.text[piece.begin + glyph.cluster] == ' ') {
                        change(piece, out.runs[r], glyph);
                    }
                }
            }
        }
    };
    forSpaces([&](TextPiece&, text::GlyphRun&, text::Glyph&) { ++spaces; });
    if (spaces == 0 || extra <= 0) {
        return;
    }
    const double each = extra / static_cast<double>(spaces);
    forSpaces([&](TextPiece& piece, text::GlyphRun& run, text::Glyph& glyph) {
        glyph.advance += static_cast<float>(each);
        run.width += each;
        piece.width += each;
    });
    double x = out.pieces[line.firstPiece].x;
    for (std::size_t p = line.firstPiece; p < out.pieces.size(); ++p) {
        out.pieces[p].x = x;
        x += out.pieces[p].width;
    }
}

void TextLayout::EndLine(const Instance& item, const ParagraphInstance& paragraph, std::size_t begin,
                         std::size_t end, bool isLast, LaidText& out) {
    TextLine line;
    line.paragraph = static_cast<std::uint32_t>(&paragraph - item.paragraphs.data());
    line.firstPiece = static_cast<std::uint32_t>(out.pieces.size());
    double width = 0;
    const bool rightToLeft = item.box && item.box->rightToLeft;
    AddPieces(begin, end, rightToLeft, isLast, width, out);
    if (rightToLeft) {
        PlaceBackwards(line, out);
    }
    line.pieceCount = static_cast<std::uint32_t>(out.pieces.size()) - line.firstPiece;
    double ascent = 0, descent = 0, gap = 0;
    const auto include = [&](text::FontId font, const CharStyle& style) {
        const text::FontMetrics& metrics = text::Metrics(font);
        const auto size = static_cast<double>(style.size);
        ascent = std::max(ascent, metrics.ascent * size);
        descent = std::max(descent, metrics.descent * size);
        gap = std::max(gap, metrics.lineGap * size);
    };
    for (std::size_t i = line.firstPiece; i < out.pieces.size(); ++i) {
        include(out.pieces[i].font, StyleOf(*out.pieces[i].run));
    }
    if (line.pieceCount == 0 && !m_ranges.empty()) {
        include(m_ranges.front().font, StyleOf(*m_ranges.front().run));
    }
    SetLineHeight(line, paragraph, ascent, descent, gap);
    const auto hanging = static_cast<double>(paragraph.hangingIndent);
    line.x = m_left;
    if (!rightToLeft) {  // else it moves the right end, which m_available has done
        line.x += m_firstLine ? std::max(0.0, -hanging) : std::max(0.0, hanging);
    }
    const double extra = m_available - width;
    switch (AlignmentOf(item, paragraph)) {
        case HAlign::Right:
            line.x += extra;
            break;
        case HAlign::Center:
            line.x += extra / 2;
            break;
        case HAlign::Justify:
            if (!isLast) {
                Justify(line, extra, out);
                if (rightToLeft) {
                    PlaceBackwards(line, out);
                }
            }
            break;
        default:
            break;
    }
    if (m_firstLine && (paragraph.bulleted || paragraph.listNumber > 0) && !paragraph.runs.empty()) {
        AddListMark(paragraph, ListIndent * 0.75, line, out);
    }
    line.top = out.height;
    out.height += line.height;
    out.lines.push_back(line);
}

}  // namespace rdl::layout
