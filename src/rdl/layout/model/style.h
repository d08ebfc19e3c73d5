// SPDX-License-Identifier: GPL-3.0-or-later
// A style with all properties computed for one instance of an item. Instances share it unless an expression
// in it depends on data.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace rdl::layout {

using Color = std::uint32_t;  // 0xAARRGGBB; alpha 0 is no colour
inline constexpr Color Transparent = 0;
inline constexpr Color Black = 0xFF000000;

enum class LineStyle : std::uint8_t {
    None,
    Solid,
    Dotted,
    Dashed,
    Double,
    DashDot,
    DashDotDot,
    Groove,
    Ridge,
    Inset,
    WindowInset,
    Outset
};

// Returns the lengths of dashes and gaps, one digit each, in line widths; empty for solid lines.
constexpr std::string_view DashesOf(LineStyle style) {
    switch (style) {
        case LineStyle::Dotted:
            return "11";
        case LineStyle::Dashed:
            return "32";
        case LineStyle::DashDot:
            return "3212";
        case LineStyle::DashDotDot:
            return "321212";
        default:
            return "";
    }
}

struct Border {
    LineStyle style = LineStyle::None;
    Color color = Black;
    float width = 1;  // points
    bool operator==(const Border&) const = default;
};

constexpr bool IsVisible(Color color) {
    return color >> 24 != 0;
}
constexpr bool IsVisible(const Border& border) {
    return border.style != LineStyle::None && border.width > 0 && IsVisible(border.color);
}

enum class HAlign : std::uint8_t {
    General,
    Left,
    Center,
    Right,
    Justify
};  // General: text left, numbers and dates right
enum class VAlign : std::uint8_t { Top, Middle, Bottom };
enum class Decoration : std::uint8_t { None, Underline, Overline, LineThrough };
enum class WritingMode : std::uint8_t { Horizontal, Vertical, Rotate270 };

// From the background colour to gradientEnd. The Center gradients run from the middle to the edges,
// HorizontalCenter up and down from a horizontal line.
enum class Gradient : std::uint8_t {
    None,
    LeftRight,
    TopBottom,
    Center,
    DiagonalLeft,
    DiagonalRight,
    HorizontalCenter,
    VerticalCenter
};

struct BackgroundPicture {
    std::shared_ptr<const std::string> bytes;  // PNG, JPEG, GIF or BMP, never null
    std::string mimeType;
    std::string item;  // name of its item, for errors
    enum class Repeat : std::uint8_t { Both, Across, Down, None, Stretch } repeat = Repeat::Both;
    float alignX = 0, alignY = 0;  // if not repeated: 0 left or top, 1 right or bottom
};

struct BoxStyle {
    Color background = Transparent;
    Gradient gradient = Gradient::None;
    Color gradientEnd = Transparent;
    std::shared_ptr<const BackgroundPicture> picture;  // drawn over the colour
    Border left, top, right, bottom;
    float paddingLeft = 0, paddingTop = 0, paddingRight = 0, paddingBottom = 0;
    HAlign hAlign = HAlign::General;
    VAlign vAlign = VAlign::Top;
    WritingMode writingMode = WritingMode::Horizontal;
    bool rightToLeft = false;
    bool HasBackground() const { return IsVisible(background) || gradient != Gradient::None || picture; }
    std::string format, language;  // of the box's value, for typed cells
};
using BoxStylePtr = std::shared_ptr<const BoxStyle>;

struct CharStyle {
    std::string family = "Arial";
    float size = 10;  // points
    bool bold = false, italic = false;
    int weight = 400;
    Decoration decoration = Decoration::None;
    Color color = Black;
    bool operator==(const CharStyle&) const = default;
};
using CharStylePtr = std::shared_ptr<const CharStyle>;

}  // namespace rdl::layout
