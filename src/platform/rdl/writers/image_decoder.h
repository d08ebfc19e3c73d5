// Images that a format cannot hold as they are stored, as pixels.
#pragma once

#include <QImage>
#include <string>

namespace rdl::writers {

// The first picture of a PNG, JPEG, GIF or BMP. Raises rdl::Error when it cannot be read or has more than 64
// million pixels.
QImage DecodeImage(const std::string& bytes);

// The same written anew as a PNG.
std::string AsPng(const std::string& bytes);

}  // namespace rdl::writers
