// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/keywords.h"

#include <array>
#include <string_view>

namespace rdl::layout {
namespace {

// Longer words before those that they begin with.
constexpr std::array<std::string_view, 10> Words{"#VALY",      "#VALX",    "#VAL",   "#SERIESNAME", "#SERIES",
                                                 "#AXISLABEL", "#PERCENT", "#TOTAL", "#LEGENDTEXT", "#SER"};

double TotalOf(const ChartRow& row) {
    double total = 0;
    for (const ChartMark& mark : row.marks) {
        total += mark.hasY ? mark.y : 0;
    }
    return total;
}

// Returns the format in braces after a keyword and moves `at` after it.
std::string FormatAt(const std::string& text, std::size_t& at) {
    if (at >= text.size() || text[at] != '{') {
        return {};
    }
    const std::size_t end = text.find('}', at);
    if (end == std::string::npos) {
        return {};
    }
    std::string format = text.substr(at + 1, end - at - 1);
    at = end + 1;
    return format;
}

std::string Meaning(std::string_view word, const std::string& format, const ChartRow& row,
                    const ChartMark& mark, const std::string& category, const Culture& culture) {
    if (word == "#VALY" || word == "#VAL") {
        return ChartNumber(mark.value, format, culture);
    }
    if (word == "#VALX") {
        return mark.hasX ? ChartNumber(Value::Real(mark.x), format, culture) : category;
    }
    if (word == "#AXISLABEL") {
        return category;
    }
    const double total = TotalOf(row);
    if (word == "#TOTAL") {
        return ChartNumber(Value::Real(total), format, culture);
    }
    return ChartNumber(Value::Real(total != 0 ? mark.y / total : 0), format.empty() ? "P2" : format, culture);
}

}  // namespace

std::string ChartKeywords(const std::string& text, const ChartRow& row, const ChartMark* mark,
                          const std::string& category, const Culture& culture) {
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        std::string_view word;
        for (const std::string_view candidate : Words) {
            if (text.compare(at, candidate.size(), candidate) == 0) {
                word = candidate;
                break;
            }
        }
        const bool ofSeries =
            word == "#SERIESNAME" || word == "#SERIES" || word == "#SER" || word == "#LEGENDTEXT";
        if (word.empty() || (!ofSeries && !mark)) {
            result += text[at++];
            continue;
        }
        at += word.size();
        const std::string format = FormatAt(text, at);
        result += ofSeries ? row.name : Meaning(word, format, row, *mark, category, culture);
    }
    return result;
}

}  // namespace rdl::layout
