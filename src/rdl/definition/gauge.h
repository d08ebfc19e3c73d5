// SPDX-License-Identifier: GPL-3.0-or-later
// A gauge panel's definition (MS-RDL, GaugePanel): radial and linear gauges, indicators and labels. The panel
// is a data region without cells whose rows are the groups of its data; its values are computed for each leaf
// of the groups. Most properties are numbers, words or expressions, stored under their element names;
// consumers apply the defaults.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/definition/model.h"

namespace rdl {

struct GaugePart {
    bool isSet = false;
    std::string name;
    std::vector<std::pair<std::string, Expr>> properties;
    Style style;
    // Returns the property, or an expression that is not set.
    const Expr& operator[](std::string_view property) const;
};

enum class GaugeFormula { None, Average, Linear, Max, Min, Median, Variance };

// A number computed from the values of all the panel's groups.
struct GaugeValue {
    Expr value, multiplier, addConstant;
    GaugeFormula formula = GaugeFormula::None;
};

struct GaugePointer : GaugePart {
    GaugeValue value;
    GaugePart cap, thermometer;
};

struct GaugeRange : GaugePart {
    GaugeValue start, end;
};

struct GaugeScale : GaugePart {
    GaugeValue minimum, maximum;
    GaugePart labels, majorTicks, minorTicks;
    std::vector<GaugePart> customLabels;
    std::vector<GaugeRange> ranges;
    std::vector<GaugePointer> pointers;
};

struct GaugeFrame : GaugePart {
    Style background;  // inside the frame
};

struct GaugeImage {  // Source, Value and MIMEType; the value is often empty
    Image::Source source = Image::Source::External;
    Expr value, mimeType;
};

struct GaugeState : GaugePart {
    GaugeValue start, end;
    GaugeImage image;
};

enum class GaugeItemKind { Radial, Linear, StateIndicator, NumericIndicator, Label, Image };

struct GaugeItem : GaugePart {
    GaugeItemKind kind = GaugeItemKind::Radial;
    int parent = -1;  // index of the enclosing item; -1: the panel
    Action action;
    GaugeFrame frame;
    std::vector<GaugeScale> scales;
    // Indicators
    GaugeValue value, minimum, maximum;
    std::vector<GaugeState> states;   // of a numeric indicator: colours by range
    std::string transformationScope;  // scope of percentages; empty: the region around the panel
    GaugeImage image;
};

struct GaugePanel : ReportItem {
    GaugePanel() : ReportItem(ItemKind::Gauge) {}
    Tablix data;  // rows: the groups; one column
    GaugePart panel;
    GaugeFrame frame;
    std::vector<GaugeItem> items;
};

// Visits every property of a panel that may be an expression, except those of its data region.
void WalkGauge(const GaugePanel& panel, const std::function<void(const Expr&)>& visit);

}  // namespace rdl
