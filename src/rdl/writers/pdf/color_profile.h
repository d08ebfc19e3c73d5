// SPDX-License-Identifier: GPL-3.0-or-later
// The sRGB colour space (IEC 61966-2-1) as an ICC profile of version 4.2 (ICC.1:2004-10).
#pragma once

#include <string>

namespace rdl::writers {

// Returns the bytes of a display profile with matrix and tone curves; always the same.
std::string SrgbProfile();

}  // namespace rdl::writers
