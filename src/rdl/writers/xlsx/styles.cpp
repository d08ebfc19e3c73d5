// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xlsx/styles.h"

#include <algorithm>

#include "rdl/values/utf8.h"
#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/xls/box_codes.h"

namespace rdl::writers {
namespace {

using layout::BoxStyle;
using layout::CharStyle;
using layout::HAlign;

// Programs read 65,490 cell formats.
constexpr std::size_t MostStyles = 64'000, MostPlainStyles = 1'000;
constexpr std::size_t LongestFamily = 31;

// To the library a plain 0 is no colour.
lxw_color_t ColorOf(layout::Color color) {
    const layout::Color rgb = (layout::IsVisible(color) ? OnPaper(color) : color) & 0xFFFFFF;
    return rgb == 0 ? static_cast<lxw_color_t>(LXW_COLOR_BLACK) : rgb;
}

std::uint8_t VerticalCode(unsigned code) {
    constexpr std::uint8_t Codes[] = {LXW_ALIGN_VERTICAL_TOP, LXW_ALIGN_VERTICAL_CENTER,
                                      LXW_ALIGN_VERTICAL_BOTTOM};
    return Codes[code];
}

void SetFont(lxw_format* format, const CharStyle& style) {
    const std::string_view family = WholeCharacters(style.family, LongestFamily);
    format_set_font_name(format, family.empty() ? "Arial" : std::string(family).c_str());
    format_set_font_size(format, std::clamp(static_cast<double>(style.size), 1.0, 409.0));
    format_set_font_color(format, ColorOf(style.color));
    if (style.bold || style.weight >= 600) {
        format_set_bold(format);
    }
    if (style.italic) {
        format_set_italic(format);
    }
    if (style.decoration == layout::Decoration::Underline) {
        format_set_underline(format, LXW_UNDERLINE_SINGLE);
    } else if (style.decoration == layout::Decoration::LineThrough) {
        format_set_font_strikeout(format);
    }
}

void SetBorders(lxw_format* format, const BoxStyle& box) {
    format_set_left(format, static_cast<std::uint8_t>(BorderCode(box.left)));
    format_set_right(format, static_cast<std::uint8_t>(BorderCode(box.right)));
    format_set_top(format, static_cast<std::uint8_t>(BorderCode(box.top)));
    format_set_bottom(format, static_cast<std::uint8_t>(BorderCode(box.bottom)));
    format_set_left_color(format, ColorOf(box.left.color));
    format_set_right_color(format, ColorOf(box.right.color));
    format_set_top_color(format, ColorOf(box.top.color));
    format_set_bottom_color(format, ColorOf(box.bottom.color));
}

void SetBox(lxw_format* format, const BoxStyle& box, HAlign align, bool wrap) {
    constexpr std::int16_t Upwards = 90, Downwards = -90;
    SetBorders(format, box);
    if (layout::IsVisible(box.background)) {
        format_set_pattern(format, LXW_PATTERN_SOLID);
        format_set_fg_color(format, ColorOf(box.background));
    }
    const AlignmentCodes place = AlignmentOf(box, align);
    format_set_align(format, static_cast<std::uint8_t>(place.horizontal));  // numbered alike
    format_set_align(format, VerticalCode(place.vertical));
    if (const unsigned indent = IndentCode(box, align); indent > 0) {
        format_set_indent(format, static_cast<std::uint8_t>(indent));
    }
    if (wrap) {
        format_set_text_wrap(format);
    }
    if (box.writingMode == layout::WritingMode::Vertical) {
        format_set_rotation(format, Downwards);
    } else if (box.writingMode == layout::WritingMode::Rotate270) {
        format_set_rotation(format, Upwards);
    }
    if (box.rightToLeft) {
        format_set_reading_order(format, 2);
    }
}

std::string KeyOf(const layout::Border& border) {
    return std::to_string(BorderCode(border)) + ' ' + std::to_string(border.color) + ' ';
}

std::string KeyOf(const BoxStyle& box, const CharStyle& text, HAlign align, std::uint16_t format, bool wrap) {
    std::string key = KeyOf(box.left) + KeyOf(box.right) + KeyOf(box.top) + KeyOf(box.bottom);
    for (const unsigned part :
         {layout::IsVisible(box.background) ? box.background | 0xFF000000 : 0u,
          static_cast<unsigned>(box.vAlign), static_cast<unsigned>(box.writingMode),
          box.rightToLeft ? 1u : 0u, static_cast<unsigned>(align), IndentCode(box, align),
          static_cast<unsigned>(format), wrap ? 1u : 0u, static_cast<unsigned>(text.size * 20), text.color,
          text.bold || text.weight >= 600 ? 1u : 0u, text.italic ? 1u : 0u,
          static_cast<unsigned>(text.decoration)}) {
        key += std::to_string(part) + ' ';
    }
    return key + text.family;
}

}  // namespace

std::uint16_t XlsxStyles::Format(const std::string& excelFormat) {
    const auto next = static_cast<std::uint16_t>(m_formats.size());
    const auto [found, isNew] = m_formatIndexes.try_emplace(excelFormat, next);
    if (isNew) {
        m_formats.push_back(excelFormat);
    }
    return found->second;
}

// Returns the index of the style. Once there are `most` styles, a new one gets index 0, the plain style.
std::uint16_t XlsxStyles::Find(const BoxStyle& box, const CharStyle& text, HAlign align, std::uint16_t format,
                               bool wrap, std::size_t most) {
    const auto next = static_cast<std::uint16_t>(m_styles.size());
    if (m_styles.size() >= most) {
        const auto found = m_indexes.find(KeyOf(box, text, align, format, wrap));
        return found == m_indexes.end() ? std::uint16_t{0} : found->second;
    }
    const auto [found, isNew] = m_indexes.try_emplace(KeyOf(box, text, align, format, wrap), next);
    if (isNew) {
        lxw_format* const style = workbook_add_format(&m_book);
        if (!style) {
            throw std::bad_alloc();
        }
        SetFont(style, text);
        SetBox(style, box, align, wrap);
        if (format != 0) {
            format_set_num_format(style, m_formats[format].c_str());
        }
        m_styles.push_back(style);
        m_looks.push_back({std::make_shared<const BoxStyle>(box), std::make_shared<const CharStyle>(text),
                           align, format, wrap});
    }
    return found->second;
}

std::uint16_t XlsxStyles::Framed(std::uint16_t style, const BoxStyle& frame, unsigned sides) {
    const Look look = m_looks.at(style);
    BoxStyle box = *look.box;
    const std::pair<layout::Border*, const layout::Border*> lines[] = {{&box.left, &frame.left},
                                                                       {&box.right, &frame.right},
                                                                       {&box.top, &frame.top},
                                                                       {&box.bottom, &frame.bottom}};
    for (unsigned i = 0; i < 4; ++i) {
        if ((sides >> i & 1) != 0 && lines[i].first->style == layout::LineStyle::None) {
            *lines[i].first = *lines[i].second;
        }
    }
    const std::uint16_t framed = Find(box, *look.text, look.align, look.format, look.wrap, MostStyles);
    return framed == 0 ? style : framed;
}

std::uint16_t XlsxStyles::Plain() {
    if (m_styles.empty()) {
        Find(BoxStyle(), CharStyle(), HAlign::General, 0, false, MostStyles);
    }
    return 0;
}

std::uint16_t XlsxStyles::Cell(const layout::BoxStylePtr& box, const layout::CharStylePtr& text, HAlign align,
                               std::uint16_t format, bool wrap) {
    Plain();
    const StyleCache::Key key = StyleCache::KeyOf(box, text, align, format, wrap);
    if (const auto known = m_known.Find(key)) {
        return *known;
    }
    std::uint16_t style =
        Find(box ? *box : BoxStyle(), text ? *text : CharStyle(), align, format, wrap, MostStyles);
    if (style == 0 && format != 0) {
        // The look is given up, but a date must not show as a number.
        style = Find(BoxStyle(), CharStyle(), HAlign::General, format, false, MostStyles + MostPlainStyles);
    }
    m_known.Keep(key, box, text, style);
    return style;
}

}  // namespace rdl::writers
