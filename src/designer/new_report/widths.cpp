// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/widths.h"

#include <algorithm>
#include <numeric>

#include "designer/new_report/refusal.h"

namespace designer {
namespace {

constexpr double MillimetresOfPoint = 25.4 / 72;
constexpr double Paddings = 8 * MillimetresOfPoint + 0.8;  // and room for the estimate
constexpr double Rounding = 0.1;                           // of sizes as they are written, over all columns
constexpr double LeastWidth = 6, MostStretch = 1.5;
constexpr int LargestFont = 9, SmallestFont = 6;

double Total(const std::vector<double>& widths) {
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

std::vector<double> Widths(const std::vector<ColumnNeed>& needs, double fontSize, double ColumnNeed::*need) {
    std::vector<double> widths;
    for (const ColumnNeed& one : needs) {
        widths.push_back(std::max(LeastWidth, one.*need * fontSize * MillimetresOfPoint + Paddings));
    }
    return widths;
}

void Scale(std::vector<double>& widths, double factor) {
    for (double& width : widths) {
        width *= factor;
    }
}

}  // namespace

ColumnFit FitColumns(const std::vector<ColumnNeed>& needs, double paper) {
    const double width = paper - Rounding;
    const auto most = static_cast<std::size_t>(width / LeastWidth);
    if (needs.size() > most) {
        Refuse("The table has " + std::to_string(needs.size()) + " columns, and " + std::to_string(most) +
               " fit across the page: choose fewer of them");
    }
    for (int size = LargestFont; size >= SmallestFont; --size) {
        std::vector<double> wishes = Widths(needs, size, &ColumnNeed::wish);
        if (const double total = Total(wishes); total <= width) {
            Scale(wishes, std::min(MostStretch, width / total));
            return {static_cast<double>(size), wishes};
        }
        std::vector<double> widths = Widths(needs, size, &ColumnNeed::least);
        const double least = Total(widths), wished = Total(wishes);
        if (least <= width) {
            for (std::size_t i = 0; i < widths.size(); ++i) {
                widths[i] += (wishes[i] - widths[i]) * (width - least) / (wished - least);
            }
            return {static_cast<double>(size), widths};
        }
    }
    std::vector<double> widths = Widths(needs, SmallestFont, &ColumnNeed::least);
    const double spare = Total(widths) - LeastWidth * static_cast<double>(widths.size());
    const double over = Total(widths) - width;
    for (double& one : widths) {
        one -= (one - LeastWidth) * over / spare;
    }
    return {SmallestFont, widths};
}

}  // namespace designer
