// SPDX-License-Identifier: GPL-3.0-or-later
// The fonts of the process by id.
#pragma once

#include <mutex>

#include "rdl/text/face.h"
#include "rdl/text/fonts.h"

namespace rdl::text {

// The table and its faces are for one thread at a time. Every function of fonts.h and outline.h holds this
// lock while it works; it may be taken several times by one thread.
std::unique_lock<std::recursive_mutex> LockFonts();

// The table owns the face for the life of the process.
Face& FaceOf(FontId font);
// Returns `font` if it has the character, else a substitute that has it, else `font`.
FontId FontWith(FontId font, char32_t character);

}  // namespace rdl::text
