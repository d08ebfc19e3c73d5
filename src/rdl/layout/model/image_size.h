// SPDX-License-Identifier: GPL-3.0-or-later
// The size of an image from its header without decoding: the IHDR chunk of PNG, the frame header of JPEG
// (ITU-T T.81, B.2.2), the headers of GIF and BMP.
#pragma once

#include <string_view>

namespace rdl::layout {

struct ImageSize {
    double width = 0, height = 0;  // points, at 96 pixels per inch; 0 for any other format
};
ImageSize SizeOfImage(std::string_view bytes);

}  // namespace rdl::layout
