// SPDX-License-Identifier: GPL-3.0-or-later
// The icons of indicators: arrows, lights, signs, symbols, ratings.
#pragma once

#include <string>

#include "rdl/layout/drawing/canvas.h"

namespace rdl::layout {

// Draws an icon by its name in the report format: ArrowUp, TrafficLight, StarQuartersTwoFilled ... An unknown
// name draws a circle, None nothing. `area` is a square.
void DrawIcon(const std::string& word, const Rect& area, Color color, Canvas& canvas);

// Returns "arrow up incline" for ArrowUpIncline.
std::string WordsOf(const std::string& icon);

}  // namespace rdl::layout
