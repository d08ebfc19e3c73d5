// SPDX-License-Identifier: GPL-3.0-or-later
// A map prepared for evaluation.
#pragma once

#include <memory>
#include <vector>

#include "rdl/definition/map/map.h"
#include "rdl/layout/plan/plan.h"

namespace rdl::layout {

// Its properties are resolved when it is drawn, as those of charts are. Definition and programs must outlive
// the plan.
struct MapPlan {
    const Map* definition = nullptr;
    const Programs* programs = nullptr;
    std::vector<std::unique_ptr<TablixPlan>> regions;  // beside those of the definition

    // The shapes of a layer that are the same in each instance of the map: in the report or in a file.
    struct Kept {
        std::string file;
        std::shared_ptr<const spatial::Shapes> shapes;  // null: not read yet
    };
    std::vector<Kept> kept;  // by layer
};

}  // namespace rdl::layout
