// SPDX-License-Identifier: GPL-3.0-or-later
// The table of properties in parts, each in a file of its own. Only properties.cpp includes this.
#pragma once

#include <span>
#include <string_view>

#include "designer/document/properties/properties.h"

namespace designer {

// The properties that some elements share, or of one element.
struct PropertyGroup {
    std::string_view elements;  // separated by blanks
    std::span<const Property> properties;
};

std::span<const PropertyGroup> ItemProperties();
std::span<const PropertyGroup> StyleProperties();
std::span<const PropertyGroup> DataProperties();
std::span<const PropertyGroup> ChartProperties();
std::span<const PropertyGroup> GaugeProperties();

}  // namespace designer
