// SPDX-License-Identifier: GPL-3.0-or-later
// What the first scale or indicator of a gauge panel shows, as its dialog has it (MS-RDL, GaugePanel).
#pragma once

#include <optional>
#include <string>
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

struct GaugeDesign {
    std::string value = {}, least = {}, most = {};
    std::vector<GaugeRange> ranges = {};
    bool isIndicator = false;
    bool operator==(const GaugeDesign&) const = default;
};

// Returns nothing for a panel without a scale with a pointer and without a state indicator.
std::optional<GaugeDesign> ReadGaugeDesign(const Document& document, ElementId panel);

// The element that has the value at GaugeInputValue/Value: a pointer or an indicator.
ElementId GaugePointerOf(const Document& document, ElementId panel);
// The element that has the limits at MinimumValue/Value and MaximumValue/Value: a scale or an indicator.
ElementId GaugeScaleOf(const Document& document, ElementId panel);

// Writes what differs from the panel as it is, as one step.
void PutGaugeDesign(Document& document, ElementId panel, const GaugeDesign& design);

}  // namespace designer
