// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/unicode_properties.h"

#include <algorithm>
#include <iterator>

namespace rdl::text {

namespace {

struct Range {
    char32_t first, last;
};

constexpr Range ShapedRanges[] = {
    {0x0300, 0x036F},   {0x0590, 0x109F},   {0x1100, 0x11FF},   {0x1700, 0x1CFF},   {0x200B, 0x200F},
    {0x202A, 0x202E},   {0x2060, 0x206F},   {0xA800, 0xABFF},   {0xD7B0, 0xD7FF},   {0xFB1D, 0xFDFF},
    {0xFE00, 0xFE0F},   {0xFE20, 0xFE2F},   {0xFE70, 0xFEFF},   {0x10800, 0x11FFF}, {0x1E800, 0x1EFFF},
    {0x1F1E6, 0x1F1FF}, {0x1F3FB, 0x1F3FF}, {0xE0000, 0xE01EF},
};
constexpr Range RightToLeftRanges[] = {
    {0x0590, 0x08FF}, {0x200F, 0x200F}, {0x202B, 0x202B},   {0x202E, 0x202E},   {0x2067, 0x2067},
    {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFF}, {0x10800, 0x10FFF}, {0x1E800, 0x1EFFF},
};
constexpr Range InvisibleRanges[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x00AD, 0x00AD}, {0x200B, 0x200F},   {0x202A, 0x202E},
    {0x2060, 0x206F}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xE0000, 0xE01EF},
};

template <std::size_t Count>
bool Within(const Range (&ranges)[Count], char32_t character) {
    const auto* const range = std::find_if(std::begin(ranges), std::end(ranges),
                                           [character](const Range& r) { return character <= r.last; });
    return range != std::end(ranges) && character >= range->first;
}

}  // namespace

bool NeedsShaping(char32_t character) {
    return character >= 0x0300 && Within(ShapedRanges, character);
}

bool IsRightToLeft(char32_t character) {
    return character >= 0x0590 && Within(RightToLeftRanges, character);
}

bool IsInvisible(char32_t character) {
    return Within(InvisibleRanges, character);
}

}  // namespace rdl::text
