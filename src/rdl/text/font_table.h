// SPDX-License-Identifier: GPL-3.0-or-later
// The fonts of the process by id.
#pragma once

#include "rdl/text/face.h"
#include "rdl/text/fonts.h"

namespace rdl::text {

// The table owns the face for the life of the process.
Face& FaceOf(FontId font);
// Returns `font` if it has the character, else a substitute that has it, else `font`.
FontId FontWith(FontId font, char32_t character);

}  // namespace rdl::text
