// SPDX-License-Identifier: GPL-3.0-or-later
// Evaluates one layer of a map: the looks of its shapes, and its rules.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/map/data.h"
#include "rdl/layout/drawing/map/layer_shapes.h"

namespace rdl::layout {

// A rule after evaluation: the look of each bucket.
struct MapRuleResult {
    const MapRule* rule = nullptr;
    MapBuckets buckets;
    std::vector<Color> colors;  // one of these three is as long as the buckets, or all are empty
    std::vector<double> sizes;
    std::vector<std::string> markers;
    MapLegendEntry sample;  // how a shape without the rule looks
    std::string legendText;
};

struct MapLayerResult {
    MapLayerData data;
    std::vector<MapRuleResult> rules;
};

// `around` is the place of the map. Raises rdl::Error as EvaluateMap does.
MapLayerResult EvaluateMapLayer(MapPlan& plan, std::size_t layer, const std::vector<MapRegion>& regions,
                                const Scope& around, const PartStyles& styles, PropertyReader& reader,
                                spatial::Allowance& allowance);

}  // namespace rdl::layout
