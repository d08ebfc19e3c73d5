// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a picture has all of its data. Decoders show what there is of a picture that is cut short.
#pragma once

#include <string_view>

namespace rdl::image {

// A JPEG is whole if its marker EOI follows the scans (ITU-T T.81, B.2).
bool IsWholeJpeg(std::string_view bytes);

// A GIF is whole if the data of its first picture ends (GIF89a, 15 Data Sub-blocks and 20 Image Descriptor).
bool IsWholeGif(std::string_view bytes);

// A BMP is whole if it has all rows of pixels, or as many bytes as its header says where they are compressed
// (BITMAPCOREHEADER, BITMAPINFOHEADER).
bool IsWholeBitmap(std::string_view bytes);

}  // namespace rdl::image
