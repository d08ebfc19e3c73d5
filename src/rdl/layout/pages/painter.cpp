// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/painter.h"

#include <algorithm>
#include <cmath>

namespace rdl::layout {
namespace {

const CharStyle DefaultStyle;

// One of the two colours of a relief.
Color Shaded(Color color, bool isDark) {
    Color shaded = color & 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8) {
        const Color part = color >> shift & 0xFF;
        shaded |= (isDark ? part / 2 : part + (0xFF - part) / 2) << shift;
    }
    return shaded;
}

bool HasBackdrop(const BoxStyle& box) {
    return box.gradient != Gradient::None || box.picture;
}

}  // namespace

Rect ContentOf(const Rect& area, const BoxStyle& box) {
    const auto left = static_cast<double>(box.paddingLeft);
    const auto top = static_cast<double>(box.paddingTop);
    return {area.x + left, area.y + top,
            std::max(0.0, area.width - left - static_cast<double>(box.paddingRight)),
            std::max(0.0, area.height - top - static_cast<double>(box.paddingBottom))};
}

std::string WithPageNumbers(const std::string& text, const SectionInstance::PageFacts& facts) {
    const int numbers[] = {facts.number, facts.total, facts.overallNumber, facts.overallTotal};
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t mark = text.find("\xEE\x80", at);
        if (mark == std::string::npos || mark + 2 >= text.size()) {
            break;
        }
        const int which = static_cast<unsigned char>(text[mark + 2]) - 0x80;
        result.append(text, at, mark - at);
        if (which >= 0 && which < 4 && numbers[which] > 0) {
            result += std::to_string(numbers[which]);
        } else {
            result.append(text, mark, 3);
        }
        at = mark + 3;
    }
    return result.append(text, at);
}

void Painter::Begin(Page& page, double top) {
    m_page = &page;
    m_top = top;
    m_hasContent = false;
}

void Painter::Fill(const Rect& area, const BoxStyle& box) {
    if (!box.HasBackground() || area.width <= 0 || area.height <= 0) {
        return;
    }
    if (IsVisible(box.background)) {
        m_page->ops.emplace_back(RectOp{area.x, area.y, area.width, area.height, box.background});
    }
    if (HasBackdrop(box)) {
        AppendBackdrop(area, box, m_page->ops);
    }
    Reach(area.Right());
}

std::size_t Painter::ReserveFill() {
    m_page->ops.emplace_back(RectOp{0, 0, 0, 0, Transparent});
    return m_page->ops.size() - 1;
}

void Painter::FillReserved(std::size_t place, const Rect& area, const BoxStyle& box) {
    m_page->ops[place] = RectOp{area.x, area.y, area.width, area.height, box.background};
    if (box.HasBackground()) {
        Reach(area.Right());
    }
    if (HasBackdrop(box)) {
        std::vector<Op> behind;
        AppendBackdrop(area, box, behind);
        m_page->ops.insert(m_page->ops.begin() + static_cast<std::ptrdiff_t>(place) + 1,
                           std::make_move_iterator(behind.begin()), std::make_move_iterator(behind.end()));
    }
}

void Painter::Line(double x1, double y1, double x2, double y2, const Border& border, LineOp::Edge edge) {
    if (!IsVisible(border)) {
        return;
    }
    m_page->ops.emplace_back(LineOp{x1, y1, x2, y2, border.width, border.color, border.style, edge});
    Reach(std::max(x1, x2));
}

void Painter::Edge(Sides side, double x1, double y1, double x2, double y2, const Border& border) {
    const LineOp::Edge edge = side == Left    ? LineOp::Edge::Begins
                              : side == Right ? LineOp::Edge::Ends
                                              : LineOp::Edge::Either;
    if (border.style <= LineStyle::DashDotDot) {
        Line(x1, y1, x2, y2, border, edge);
        return;
    }
    const bool isLit = side == Top || side == Left;
    const bool isSunk = border.style != LineStyle::Outset && border.style != LineStyle::Ridge;
    const Color colors[] = {Shaded(border.color, isLit == isSunk), Shaded(border.color, isLit != isSunk)};
    const bool isDouble = border.style == LineStyle::Groove || border.style == LineStyle::Ridge;
    const double step = isDouble ? static_cast<double>(border.width) / 4 : 0;
    const double inwards = isLit ? step : -step;
    for (int half = 0; half < (isDouble ? 2 : 1); ++half) {
        const double shift = half == 0 ? -inwards : inwards;
        const bool isLevel = y1 == y2;
        Line(x1 + (isLevel ? 0 : shift), y1 + (isLevel ? shift : 0), x2 + (isLevel ? 0 : shift),
             y2 + (isLevel ? shift : 0),
             {LineStyle::Solid, colors[half], isDouble ? border.width / 2 : border.width}, edge);
    }
}

void Painter::Borders(const Rect& area, const BoxStyle& box, unsigned sides) {
    if (sides & Top) {
        Edge(Top, area.x, area.y, area.Right(), area.y, box.top);
    }
    if (sides & Bottom) {
        Edge(Bottom, area.x, area.Bottom(), area.Right(), area.Bottom(), box.bottom);
    }
    if (sides & Left) {
        Edge(Left, area.x, area.y, area.x, area.Bottom(), box.left);
    }
    if (sides & Right) {
        Edge(Right, area.Right(), area.y, area.Right(), area.Bottom(), box.right);
    }
}

void Painter::BeginClip(const Rect& area) {
    m_page->ops.emplace_back(ClipOp{area.x, area.y, area.width, area.height});
}

void Painter::EndClip() {
    m_page->ops.emplace_back(UnclipOp{});
}

void Painter::Restack(std::vector<Stretch>& stretches) {
    const auto below = [](const Stretch& left, const Stretch& right) { return left.layer < right.layer; };
    if (std::is_sorted(stretches.begin(), stretches.end(), below)) {
        return;
    }
    const auto at = [this](std::size_t place) {
        return m_page->ops.begin() + static_cast<std::ptrdiff_t>(place);
    };
    const std::size_t begin = stretches.front().begin;
    std::vector<Op> ordered;
    ordered.reserve(stretches.back().end - begin);
    std::stable_sort(stretches.begin(), stretches.end(), below);
    for (const Stretch& stretch : stretches) {
        ordered.insert(ordered.end(), std::make_move_iterator(at(stretch.begin)),
                       std::make_move_iterator(at(stretch.end)));
    }
    std::move(ordered.begin(), ordered.end(), at(begin));
}

double Painter::Turn::X(double along, double across) const {
    return rotation == 0 ? originX + along : rotation > 90 ? originX + across : originX - across;
}

double Painter::Turn::Y(double along, double across) const {
    return rotation == 0 ? originY + across : rotation > 90 ? originY - along : originY + along;
}

void Painter::Piece(const TextPiece& piece, const LaidText& laid, const Turn& turn, double along,
                    double baseline) {
    const CharStyle& style = piece.run->style ? *piece.run->style : DefaultStyle;
    if (piece.end == piece.begin || !IsVisible(style.color)) {
        return;
    }
    const auto textBase = static_cast<std::uint32_t>(m_page->text.size());
    m_page->text.append(laid.text, piece.begin, piece.end - piece.begin);
    double at = along;
    for (std::uint32_t i = piece.firstRun; i < piece.firstRun + piece.runCount; ++i) {
        const text::GlyphRun& run = laid.runs[i];
        TextOp op{turn.X(at, baseline),
                  turn.Y(at, baseline),
                  style.size,
                  style.color,
                  run.font,
                  static_cast<std::uint32_t>(m_page->glyphs.size()),
                  static_cast<std::uint32_t>(run.glyphs.size()),
                  textBase + run.begin,
                  textBase + run.end,
                  turn.rotation,
                  m_tags.Current()};
        for (const text::Glyph& glyph : run.glyphs) {
            m_page->glyphs.push_back(glyph);
            m_page->glyphs.back().cluster -= run.begin;
        }
        at += run.width;
        m_page->ops.emplace_back(op);
    }
    if (style.decoration == Decoration::None) {
        return;
    }
    const text::FontMetrics& metrics = text::Metrics(piece.font);
    const auto size = static_cast<double>(style.size);
    double across = baseline + std::abs(metrics.underlinePosition) * size;
    if (style.decoration == Decoration::LineThrough) {
        across = baseline - metrics.strikePosition * size;
    } else if (style.decoration == Decoration::Overline) {
        across = baseline - metrics.ascent * size;
    }
    const Border line{LineStyle::Solid, style.color,
                      static_cast<float>(std::max(0.4, metrics.underlineThickness * size))};
    const std::size_t before = m_page->ops.size();
    Line(turn.X(along, across), turn.Y(along, across), turn.X(along + piece.width, across),
         turn.Y(along + piece.width, across), line);
    TagFrom(before);
}

void Painter::TagFrom(std::size_t begin) {
    if (m_tags.Current() == 0) {
        return;
    }
    for (std::size_t i = begin; i < m_page->ops.size(); ++i) {
        std::visit(
            [this](auto& op) {
                if constexpr (requires { op.tag; }) {
                    op.tag = m_tags.Current();
                }
            },
            m_page->ops[i]);
    }
}

// Adds the space between two words that lines and list marks do not have at their ends.
void Painter::WordBreak(const TextPiece& piece, const Turn& turn, double along, double baseline) {
    const CharStyle& style = piece.run->style ? *piece.run->style : DefaultStyle;
    std::vector<text::GlyphRun> space;
    text::Shape(" ", piece.font, static_cast<double>(style.size), false, space);
    if (space.size() != 1 || !IsVisible(style.color)) {
        return;
    }
    const auto firstGlyph = static_cast<std::uint32_t>(m_page->glyphs.size());
    const auto textBegin = static_cast<std::uint32_t>(m_page->text.size());
    const std::vector<text::Glyph>& glyphs = space.front().glyphs;
    m_page->glyphs.insert(m_page->glyphs.end(), glyphs.begin(), glyphs.end());
    m_page->text += ' ';
    m_page->ops.emplace_back(TextOp{turn.X(along, baseline), turn.Y(along, baseline), style.size, style.color,
                                    space.front().font, firstGlyph, static_cast<std::uint32_t>(glyphs.size()),
                                    textBegin, textBegin + 1, turn.rotation, m_tags.Current()});
}

// A link of its own within the text of its item.
void Painter::LinkedPiece(const TextPiece& piece, const LaidText& laid, const Turn& turn, double along,
                          double top, const TextLine& line) {
    ElementId link = m_tags.Begin(Role::Link);
    const Tags::Within within(m_tags, link);
    Piece(piece, laid, turn, along, top + line.baseline);
    m_page->ops.emplace_back(
        LinkOp{turn.X(along, 0), turn.Y(0, top), piece.width, line.height, piece.run->hyperlink, {}, link});
    m_tags.End(link);
}

void Painter::DrawLines(const Instance& item, const LaidText& laid, std::size_t first, std::size_t last,
                        const Turn& turn, double across) {
    const double shift = across - laid.lines[first].top;
    for (std::size_t i = first; i < last; ++i) {
        const TextLine& line = laid.lines[i];
        // The mark of a list, the last piece, is read before its text.
        const bool hasMark = m_tags.Current() && line.pieceCount > 1 &&
                             laid.pieces[line.firstPiece + line.pieceCount - 1].x < 0;
        const Tags::ParagraphTags tags = m_tags.OfParagraph(line.paragraph, item.paragraphs[line.paragraph]);
        for (std::uint32_t n = 0; n < line.pieceCount; ++n) {
            const std::uint32_t place = hasMark ? (n + line.pieceCount - 1) % line.pieceCount : n;
            const TextPiece& piece = laid.pieces[line.firstPiece + place];
            const double along = line.x + piece.x;
            const Tags::Within within(m_tags, hasMark && n == 0 ? tags.label : tags.text);
            if (!piece.run->hyperlink.empty() && item.hyperlink.empty() && turn.rotation == 0) {
                LinkedPiece(piece, laid, turn, along, shift + line.top, line);
            } else {
                Piece(piece, laid, turn, along, shift + line.top + line.baseline);
            }
            const bool isLast = n + 1 == line.pieceCount && line.endsWord && i + 1 < laid.lines.size();
            if (m_tags.Current() && (isLast || (hasMark && n == 0))) {
                WordBreak(piece, turn, along + piece.width, shift + line.top + line.baseline);
            }
        }
    }
}

// Lays out a body text again, now that its page numbers are known.
void Painter::Replaced(const Rect& area, const Instance& item) {
    Instance copy = item;
    for (ParagraphInstance& paragraph : copy.paragraphs) {
        for (RunInstance& run : paragraph.runs) {
            run.text = WithPageNumbers(run.text, facts);
        }
    }
    LaidText laid;
    m_layout.Lay(copy, item.box ? ContentOf(area, *item.box).width : area.width, laid);
    laid.hasPageMarks = false;
    Text(area, copy, laid, 0, laid.lines.size());
}

void Painter::Text(const Rect& area, const Instance& item, const LaidText& laid, std::size_t first,
                   std::size_t last) {
    if (first >= last) {
        return;
    }
    SetContent();
    if (laid.hasPageMarks && facts.number > 0 && first == 0 && last == laid.lines.size()) {
        Replaced(area, item);
        return;
    }
    static const BoxStyle NoBox;
    const BoxStyle& box = item.box ? *item.box : NoBox;
    const Rect inside = ContentOf(area, box);
    const bool turned = box.writingMode != WritingMode::Horizontal;
    const double room = turned ? inside.width : inside.height;
    const double height = laid.lines[last - 1].top + laid.lines[last - 1].height - laid.lines[first].top;
    double across = first == 0 ? laid.lines.front().top : 0;
    if (box.vAlign != VAlign::Top && room > height) {
        across = box.vAlign == VAlign::Bottom ? room - height : (room - height) / 2;
    }
    Turn turn{inside.x, inside.y, 0};
    if (box.writingMode == WritingMode::Vertical) {
        turn = {inside.Right(), inside.y, 90};
    } else if (box.writingMode == WritingMode::Rotate270) {
        turn = {inside.x, inside.Bottom(), 270};
    }
    const bool clips = height > room + 0.5;
    if (clips) {
        m_page->ops.emplace_back(ClipOp{area.x, area.y, area.width, area.height});
    }
    DrawLines(item, laid, first, last, turn, across);
    if (clips) {
        m_page->ops.emplace_back(UnclipOp{});
    }
    Reach(area.Right());
}

void Painter::Image(const Rect& area, const Instance& item) {
    if (!item.imageBytes || item.imageBytes->empty()) {
        return;
    }
    SetContent();
    const Rect inside = item.box ? ContentOf(area, *item.box) : area;
    const ImageSize size = SizeOfImage(*item.imageBytes);
    Reach(area.Right());
    const std::size_t before = m_page->ops.size();
    PutImage(inside, item, size);
    TagFrom(before);
}

void Painter::PutImage(const Rect& inside, const Instance& item, const ImageSize& size) {
    if (item.sizing == Instance::Sizing::Fit || size.width <= 0 || size.height <= 0) {
        m_page->ops.emplace_back(
            ImageOp{inside.x, inside.y, inside.width, inside.height, item.imageBytes, item.name});
        return;
    }
    if (item.sizing == Instance::Sizing::FitProportional) {
        const double scale = std::min(inside.width / size.width, inside.height / size.height);
        m_page->ops.emplace_back(
            ImageOp{inside.x, inside.y, size.width * scale, size.height * scale, item.imageBytes, item.name});
        return;
    }
    m_page->ops.emplace_back(ClipOp{inside.x, inside.y, inside.width, inside.height});
    m_page->ops.emplace_back(
        ImageOp{inside.x, inside.y, size.width, size.height, item.imageBytes, item.name});
    m_page->ops.emplace_back(UnclipOp{});
}

void Painter::Drawing(const Rect& area, const DrawingInstance& drawing) {
    SetContent();
    Reach(area.Right());
    const std::size_t before = m_page->ops.size();
    AppendMoved(drawing.content, area.x, area.y, *m_page);
    TagFrom(before);
}

void Painter::Marks(const Rect& area, const Instance& item) {
    if (!item.hyperlink.empty() || !item.bookmarkLink.empty()) {
        m_page->ops.emplace_back(LinkOp{area.x, area.y, area.width, area.height, item.hyperlink,
                                        item.hyperlink.empty() ? item.bookmarkLink : std::string(),
                                        m_tags.Current()});
    }
    if (!item.bookmark.empty() || !item.documentMapLabel.empty()) {
        m_page->ops.emplace_back(AnchorOp{area.x, area.y, item.bookmark, item.documentMapLabel, 0});
    }
}

void Painter::Label(double x, double y, const MapLabel& label) {
    m_page->ops.emplace_back(AnchorOp{x, y, {}, label.text, label.level});
}

bool Painter::Collects(const Instance& item) const {
    return m_wanted && std::find(m_wanted->begin(), m_wanted->end(), item.name) != m_wanted->end();
}

bool Painter::AddsNothing(const Instance& item, const LaidText& laid) const {
    return laid.lines.empty() && item.hyperlink.empty() && item.bookmarkLink.empty() &&
           item.bookmark.empty() && item.documentMapLabel.empty() && !Collects(item);
}

void Painter::Collect(const Instance& item) {
    if (!Collects(item)) {
        return;
    }
    m_collected.emplace_back(item.name, item.value.IsNull() ? Value::Text(item.PlainText()) : item.value);
}

}  // namespace rdl::layout
