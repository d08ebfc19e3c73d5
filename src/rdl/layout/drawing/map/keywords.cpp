// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/keywords.h"

#include <algorithm>

#include "rdl/values/ascii.h"

namespace rdl::layout {

std::string WithMapKeywords(const std::string& text, const MapKeyword& find, const Culture& culture) {
    constexpr std::size_t LongestName = 100;
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] != '#') {
            result += text[at++];
            continue;
        }
        std::size_t end = at + 1;
        while (end < text.size() && IsNameByte(text[end]) && end - at <= LongestName) {
            ++end;
        }
        Value value;
        while (end > at + 1 && !find(std::string_view(text).substr(at + 1, end - at - 1), value)) {
            --end;
        }
        if (end == at + 1) {
            result += text[at++];
            continue;
        }
        std::string format;
        const std::size_t brace = std::min(text.find_first_not_of(' ', end), text.size());
        const std::size_t close =
            brace < text.size() && text[brace] == '{' ? text.find('}', brace) : std::string::npos;
        if (close != std::string::npos) {
            format = text.substr(brace + 1, close - brace - 1);
            end = close + 1;
        }
        result += FormatValue(value, format, culture);
        at = end;
    }
    return result;
}

}  // namespace rdl::layout
