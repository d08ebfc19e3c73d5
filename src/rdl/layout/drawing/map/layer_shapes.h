// SPDX-License-Identifier: GPL-3.0-or-later
// The shapes of a map's layer, from the report, a file or a data region, and the data that they are bound to.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/drawing/part_styles.h"
#include "rdl/layout/plan/map_plan.h"
#include "rdl/layout/region/leaves.h"

namespace rdl::layout {

// A data region of the map with the groups of its data.
struct MapRegion {
    std::shared_ptr<Region> region;
    std::vector<Leaf> leaves;
};

struct MapLayerShapes {
    std::shared_ptr<const spatial::Shapes> source;
    // By shape: its group instance (the place of the map without one), whether it has one, and the values
    // that bind it as a text.
    std::vector<Scope> scopes;
    std::vector<bool> isBound;
    std::vector<std::string> names;

    // Returns the value of a field, by its name without regard to case; Null if there is none.
    Value FieldOf(std::size_t shape, std::string_view name) const;
    bool HasField(std::string_view name) const;
};

// Returns a text that is the same for equal values: those that bind shapes to data.
std::string MapBindingKey(const Value& value, const Culture& culture);

// `around` is the place of the map. A shapefile is read once and kept in the plan. Raises rdl::Error as
// EvaluateMap does.
MapLayerShapes LoadMapShapes(MapPlan& plan, std::size_t layer, const std::vector<MapRegion>& regions,
                             const Scope& around, const PartStyles& styles, PropertyReader& reader,
                             spatial::Allowance& allowance);

}  // namespace rdl::layout
