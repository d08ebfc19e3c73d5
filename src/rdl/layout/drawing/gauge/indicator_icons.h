// The small pictures of indicators: arrows, lights, signs, symbols, ratings.
#pragma once

#include <string>

#include "rdl/layout/drawing/canvas.h"

namespace rdl::layout {

// By the word that reports use for it: ArrowUp, TrafficLight, StarQuartersTwoFilled ... A word that is not
// known is a circle, None is nothing. `area` is a square.
void DrawIcon(const std::string& word, const Rect& area, Color color, Canvas& canvas);

// "arrow up incline" for ArrowUpIncline.
std::string WordsOf(const std::string& icon);

}  // namespace rdl::layout
