// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/box_codes.h"

#include <algorithm>
#include <cmath>

namespace rdl::writers {
namespace {

using layout::BoxStyle;
using layout::HAlign;
using layout::LineStyle;

constexpr float PointsPerIndent = 8;  // about three digits of the default font

unsigned HorizontalCode(HAlign align) {
    switch (align) {
        case HAlign::Left:
            return 1;
        case HAlign::Center:
            return 2;
        case HAlign::Right:
            return 3;
        case HAlign::Justify:
            return 5;
        case HAlign::General:
            break;
    }
    return 0;
}

}  // namespace

unsigned BorderCode(const layout::Border& border) {
    const bool wide = border.width >= 1.5F;
    switch (border.style) {
        case LineStyle::None:
            return 0;
        case LineStyle::Dotted:
            return 4;
        case LineStyle::Dashed:
            return wide ? 8 : 3;
        case LineStyle::Double:
            return 6;
        case LineStyle::DashDot:
            return wide ? 10 : 9;
        case LineStyle::DashDotDot:
            return wide ? 12 : 11;
        default:
            break;
    }
    return border.width >= 2.5F ? 5 : wide ? 2 : border.width < 0.5F ? 7 : 1;
}

AlignmentCodes AlignmentOf(const BoxStyle& box, HAlign align) {
    constexpr unsigned Right = 3, Bottom = 2;
    const auto across = static_cast<unsigned>(box.vAlign);  // 0 to 2 from the first line's side
    if (box.writingMode == layout::WritingMode::Horizontal) {
        return {HorizontalCode(align), across};
    }
    const unsigned along = align == HAlign::Center ? 1u : align == HAlign::Right ? 2u : 0u;
    const bool runsDown = box.writingMode == layout::WritingMode::Vertical;
    return {runsDown ? Right - across : 1 + across, runsDown ? along : Bottom - along};
}

unsigned IndentCode(const BoxStyle& box, HAlign align) {
    if (box.writingMode != layout::WritingMode::Horizontal ||
        (align != HAlign::Left && align != HAlign::Right)) {
        return 0;
    }
    const float padding = align == HAlign::Left ? box.paddingLeft : box.paddingRight;
    return std::isfinite(padding) ? static_cast<unsigned>(std::clamp(padding / PointsPerIndent, 0.0F, 15.0F))
                                  : 0;
}

}  // namespace rdl::writers
