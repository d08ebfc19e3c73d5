// SPDX-License-Identifier: GPL-3.0-or-later
// Gauge panels for tests: a panel of 300 by 100 points over the data set Data (Region, Product, Amount).
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/report_kit.h"

namespace rdl::layout {

inline std::string GaugeNumber(const std::string& element, const std::string& value,
                               const std::string& more = {}) {
    return "<" + element + "><Value>" + value + "</Value>" + more + "</" + element + ">";
}

inline std::string Colored(const std::string& color) {
    return "<Style><BackgroundColor>" + color + "</BackgroundColor></Style>";
}

// Nothing of a scale but its pointers and what `more` says.
inline const std::string BareScale =
    "<ScaleLabels><Hidden>true</Hidden></ScaleLabels><GaugeMajorTickMarks><Hidden>true</Hidden>"
    "</GaugeMajorTickMarks><GaugeMinorTickMarks><Hidden>true</Hidden></GaugeMinorTickMarks><Width>0</Width>";

inline std::string RadialGauge(const std::string& pointers, const std::string& scale,
                               const std::string& gauge = {}) {
    return "<RadialGauges><RadialGauge Name=\"Dial\"><GaugeScales><RadialScale Name=\"S\"><GaugePointers>" +
           pointers + "</GaugePointers>" + scale + "</RadialScale></GaugeScales>" + gauge +
           "</RadialGauge></RadialGauges>";
}

inline std::string LinearGauge(const std::string& pointers, const std::string& scale,
                               const std::string& gauge = {}) {
    return "<LinearGauges><LinearGauge Name=\"Line\"><GaugeScales><LinearScale Name=\"S\"><GaugePointers>" +
           pointers + "</GaugePointers>" + scale + "</LinearScale></GaugeScales>" + gauge +
           "</LinearGauge></LinearGauges>";
}

inline std::string Pointer(const std::string& kind, const std::string& value, const std::string& more = {}) {
    return "<" + kind + "Pointer Name=\"P\">" + GaugeNumber("GaugeInputValue", value) + more + "</" + kind +
           "Pointer>";
}

inline std::string State(const std::string& start, const std::string& end, const std::string& color,
                         const std::string& icon = "Circle") {
    return "<IndicatorState Name=\"" + color + "\">" + GaugeNumber("StartValue", start) +
           GaugeNumber("EndValue", end) + "<Color>" + color + "</Color><IndicatorStyle>" + icon +
           "</IndicatorStyle></IndicatorState>";
}

inline std::string Indicator(const std::string& value, const std::string& states,
                             const std::string& more = "<TransformationType>None</TransformationType>") {
    return "<StateIndicators><StateIndicator Name=\"I\">" + GaugeNumber("GaugeInputValue", value) +
           "<IndicatorStates>" + states + "</IndicatorStates>" + more + "</StateIndicator></StateIndicators>";
}

// A number that shows what a value comes to.
inline std::string Numeral(const std::string& value, const std::string& inner = {},
                           const std::string& more = {}) {
    return "<NumericIndicators><NumericIndicator Name=\"N\">" + GaugeNumber("GaugeInputValue", value, inner) +
           more + "</NumericIndicator></NumericIndicators>";
}

inline std::string Panel(const std::string& gauges, const std::string& more = {}) {
    return "<GaugePanel Name=\"Panel\">" + gauges + "<DataSetName>Data</DataSetName>" + more +
           "<Width>300pt</Width><Height>100pt</Height></GaugePanel>";
}

struct DrawnGauges {
    BuiltKit kit;
    const Instance& Item() const { return kit.report->sections.front()->items.front(); }
    const DrawingInstance& Drawing() const { return *Item().drawing; }

    std::vector<std::string> Texts() const { return TextSink::Texts(Drawing().content); }
    template <typename Kind>
    std::vector<Kind> Of() const {
        std::vector<Kind> found;
        for (const Op& op : Drawing().content.ops) {
            if (const auto* one = std::get_if<Kind>(&op)) {
                found.push_back(*one);
            }
        }
        return found;
    }
    std::vector<PathOp> Filled(Color color) const {
        std::vector<PathOp> found = Of<PathOp>();
        std::erase_if(found, [color](const PathOp& path) { return path.fill != color; });
        return found;
    }
};

inline DrawnGauges DrawGauges(const std::string& panel, Table table = Sales({{"North", "Tea", 50}})) {
    return {BuildKit(Report(panel), std::move(table))};
}

struct Reach {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
};

// Of the ends of a path's segments.
inline Reach ReachOf(const PathOp& path) {
    Reach reach;
    for (const PathOp::Segment& segment : path.segments) {
        if (segment.kind == PathOp::Segment::Close) {
            continue;
        }
        const int last = segment.kind == PathOp::Segment::CurveTo ? 2 : 0;
        reach.left = std::min(reach.left, segment.x[last]);
        reach.right = std::max(reach.right, segment.x[last]);
        reach.top = std::min(reach.top, segment.y[last]);
        reach.bottom = std::max(reach.bottom, segment.y[last]);
    }
    return reach;
}

}  // namespace rdl::layout
