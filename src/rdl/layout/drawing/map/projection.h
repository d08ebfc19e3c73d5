// SPDX-License-Identifier: GPL-3.0-or-later
// Projections of geographic coordinates (MS-RDL, MapViewport.MapProjection), on a sphere.
#pragma once

#include <string_view>

#include "rdl/spatial/geometry.h"

namespace rdl::layout {

enum class Projection {
    Planar,  // coordinates as they are
    Equirectangular,
    Mercator,
    Robinson,
    Fahey,
    Eckert1,
    Eckert3,
    HammerAitoff,
    Wagner3,
    Bonne
};

// Returns Equirectangular for an unknown name.
Projection ProjectionNamed(std::string_view name);

// Returns the place on the plane, in degrees at the equator, of a longitude and a latitude. `center` has the
// longitude that is straight and, for Bonne, the latitude of the true scale. Latitudes are limited to those
// that the projection can show.
spatial::Position Project(Projection projection, spatial::Position place, spatial::Position center);

// Returns the kilometres between two places on the Earth.
double GroundDistance(spatial::Position from, spatial::Position to);

}  // namespace rdl::layout
