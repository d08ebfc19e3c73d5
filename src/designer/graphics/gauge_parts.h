// SPDX-License-Identifier: GPL-3.0-or-later
// What the gauges and indicators of a panel show, each by its first scale and pointer, as the dialog has them
// (MS-RDL, GaugePanel).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// A range of a scale, or a state of an indicator. Numbers and colours may be expressions.
struct GaugeRange {
    int old = -1;  // its number in the report; -1: a new one
    std::string from = {}, to = {}, colour = {};
    std::string icon = {};  // of a state
    bool operator==(const GaugeRange&) const = default;
};

enum class GaugeKind { Dial, Linear, Indicator };

struct GaugeDesign {
    ElementId gauge = NoElement;  // its element; NoElement: a new one
    GaugeKind kind = GaugeKind::Dial;
    std::string name = {};
    std::string value = {}, least = {}, most = {};
    std::vector<GaugeRange> ranges = {};
    bool operator==(const GaugeDesign&) const = default;
};

// Returns the dials and linear gauges that have a scale with a pointer, and the state indicators.
std::vector<GaugeDesign> ReadGauges(const Document& document, ElementId panel);

// The element of a gauge that has the value at GaugeInputValue/Value: a pointer or an indicator.
ElementId GaugePointerOf(const Document& document, ElementId gauge);
// The element that has the limits at MinimumValue/Value and MaximumValue/Value: a scale or an indicator.
ElementId GaugeScaleOf(const Document& document, ElementId gauge);

// Writes what differs from the panel as it is, as one step. A gauge that is not among the designs goes; one
// of another kind becomes that, without what only its old kind has. A dial or a linear gauge does not become
// an indicator. Raises EditError for new limits and ranges that contradict each other as constants.
void PutGauges(Document& document, ElementId panel, const std::vector<GaugeDesign>& designs);

// Returns a new gauge of the panel with its collection, as InsertXml takes it.
std::string NewGaugesXml(const GaugeDesign& design);

}  // namespace designer
