// SPDX-License-Identifier: GPL-3.0-or-later
// Charts for tests: small reports of the data set Data (Region, Product, Amount), and what was drawn.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/report_kit.h"

namespace rdl::layout {

struct ChartParts {
    std::string type = "Column", subtype = "Plain";
    std::string values = "<Y>=Sum(Fields!Amount.Value)</Y>";
    std::string point, series, categoryAxis, valueAxis, more;
    std::string seriesGroup;  // an expression; empty: one series
    std::string categoryGroup = "=Fields!Region.Value";
};

inline std::string GroupMember(const std::string& name, const std::string& expression) {
    return expression.empty()
               ? "<ChartMember/>"
               : "<ChartMember><Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>" +
                     expression + "</GroupExpression></GroupExpressions></Group></ChartMember>";
}

// 300 by 200 points.
inline std::string ChartReport(const ChartParts& parts) {
    return Report(
        "<Chart Name=\"Turnover\"><ChartCategoryHierarchy><ChartMembers>" +
        GroupMember("Categories", parts.categoryGroup) +
        "</ChartMembers></ChartCategoryHierarchy><ChartSeriesHierarchy><ChartMembers>" +
        GroupMember("Rows", parts.seriesGroup) +
        "</ChartMembers></ChartSeriesHierarchy><ChartData><ChartSeriesCollection><ChartSeries "
        "Name=\"Amounts\"><ChartDataPoints><ChartDataPoint><ChartDataPointValues>" +
        parts.values + "</ChartDataPointValues>" + parts.point + "</ChartDataPoint></ChartDataPoints><Type>" +
        parts.type + "</Type><Subtype>" + parts.subtype + "</Subtype>" + parts.series +
        "</ChartSeries></ChartSeriesCollection></ChartData><ChartAreas><ChartArea "
        "Name=\"Default\"><ChartCategoryAxes><ChartAxis Name=\"Primary\">" +
        parts.categoryAxis + "</ChartAxis></ChartCategoryAxes><ChartValueAxes><ChartAxis Name=\"Primary\">" +
        parts.valueAxis + "</ChartAxis></ChartValueAxes></ChartArea></ChartAreas>" + parts.more +
        "<DataSetName>Data</DataSetName><Width>300pt</Width><Height>200pt</Height></Chart>");
}

struct Drawn {
    BuiltKit kit;
    const Page& Content() const { return kit.report->sections.front()->items.front().drawing->content; }

    std::vector<std::string> Texts() const { return TextSink::Texts(Content()); }
    bool Says(const std::string& text) const {
        const std::vector<std::string> texts = Texts();
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    }
    // Columns and bars, in the order drawn.
    std::vector<RectOp> Rects() const { return Of<RectOp>(); }
    std::vector<PathOp> Paths() const { return Of<PathOp>(); }
    std::vector<TextOp> Letters() const { return Of<TextOp>(); }

 private:
    template <typename Kind>
    std::vector<Kind> Of() const {
        std::vector<Kind> found;
        for (const Op& op : Content().ops) {
            if (const auto* one = std::get_if<Kind>(&op)) {
                found.push_back(*one);
            }
        }
        return found;
    }
};

inline Drawn Draw(const ChartParts& parts, Table table) {
    return {BuildKit(ChartReport(parts), std::move(table))};
}

}  // namespace rdl::layout
