// Images that a format cannot hold as they are stored, as pixels.
#pragma once

#include <QImage>
#include <cstdint>
#include <string>

namespace rdl::image {

// The first picture of a PNG, JPEG, GIF or BMP. Raises rdl::Error, which names the item, when it cannot be
// read or has more than 64 million pixels.
QImage DecodeImage(const std::string& bytes, const std::string& item);

// Raises rdl::Error when a picture of that size is too large for any document.
void CheckImageSize(std::int64_t width, std::int64_t height, const std::string& item);

// The same written anew as a PNG.
std::string AsPng(const std::string& bytes, const std::string& item);

}  // namespace rdl::image
