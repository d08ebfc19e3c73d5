// The process's fonts by id.
#pragma once

#include "rdl/text/face.h"
#include "rdl/text/fonts.h"

namespace rdl::text {

Face& FaceOf(FontId font);
// The font itself if it has the character, else a substitute that has it, else the font itself.
FontId FontWith(FontId font, char32_t character);

}  // namespace rdl::text
