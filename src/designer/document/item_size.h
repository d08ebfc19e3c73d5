// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes as reports write them: "2.5cm" (MS-RDL, Size).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"
#include "rdl/api/size_units.h"

namespace designer {

// Returns the size in points (1/72 inch), which may be negative. nullopt if the text is no size.
std::optional<double> PointsOf(std::string_view text);

// Whether the text is a size from 0 to the largest.
bool IsReportSize(std::string_view text);

// Returns the size with the unit that `like` has; in inches if `like` is no size. It is written with at most
// five digits after the point.
std::string SizeText(double points, std::string_view like);

// Sets the size at the path and keeps the unit in which it is written; one that is missing gets the unit of
// the report's width. A size that differs from the written one by less than what is written is not touched.
void SetSize(Document& document, ElementId owner, std::string_view path, double points,
             const std::string& step = {});

struct SizeChange {
    ElementId owner = NoElement;
    std::string path;
    double points = 0;
};
// The same for many sizes as one step: what moves and resizes items.
void SetSizes(Document& document, const std::vector<SizeChange>& changes, const std::string& step);

}  // namespace designer
