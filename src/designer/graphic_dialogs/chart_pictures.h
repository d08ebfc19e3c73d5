// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the types of charts, drawn by the engine with sample data.
#pragma once

#include <QPixmap>
#include <vector>

namespace designer {

// Their size in pixels at a device pixel ratio of 1.
inline constexpr int ChartPictureWidth = 96, ChartPictureHeight = 72;

// Returns a picture for each of ChartTypes(), in its order, for a screen with this device pixel ratio. They
// are drawn once; what cannot be drawn is blank paper.
const std::vector<QPixmap>& ChartPictures(double ratio);

}  // namespace designer
