// Lengths as reports write them.
#pragma once

#include <string_view>

namespace rdl::layout {

// A number with a unit (in, cm, mm, pt, pc, px; spaces allowed between), as points. False when it is none.
bool ParseSize(std::string_view text, double& points);

}  // namespace rdl::layout
