// A gauge panel's definition: radial and linear gauges, indicators and labels. The panel is a data region
// whose rows are the groups of its data; it has no cells, its gauges' values are worked out for each leaf of
// the groups. Most of what a part says is a number, a word or an expression and is kept by its element's
// name, as it stands; what is not said has its default where it is used.
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
    // An expression that is not set when there is no such property.
    const Expr& operator[](std::string_view property) const;
};

enum class GaugeFormula { None, Average, Linear, Max, Min, Median, Variance };

// One number made of the values of all the panel's groups.
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

struct GaugeImage {  // Source, Value and MIMEType; the value is empty in most files
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
    int parent = -1;  // the item of the panel that it lies in; -1: the panel
    Action action;
    GaugeFrame frame;
    std::vector<GaugeScale> scales;
    // Indicators
    GaugeValue value, minimum, maximum;
    std::vector<GaugeState> states;   // of a number: its colours by range
    std::string transformationScope;  // what percentages are of; empty: the region around the panel
    GaugeImage image;
};

struct GaugePanel : ReportItem {
    GaugePanel() : ReportItem(ItemKind::Gauge) {}
    Tablix data;  // rows: the groups; one column
    GaugePart panel;
    GaugeFrame frame;
    std::vector<GaugeItem> items;
};

// Every property of a panel that may be an expression, those of its data region excepted.
void WalkGauge(const GaugePanel& panel, const std::function<void(const Expr&)>& visit);

}  // namespace rdl
