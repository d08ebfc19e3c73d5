// SPDX-License-Identifier: GPL-3.0-or-later
// Checks images, and decodes those that an output format cannot embed as they are.
#pragma once

#include <QImage>
#include <cstdint>
#include <string>

namespace rdl::image {

// Decodes the first frame of a PNG, JPEG, GIF or BMP. Raises rdl::Error naming `item` if the image is damaged
// or has more than 64 million pixels.
QImage DecodeImage(const std::string& bytes, const std::string& item);

// Raises rdl::Error naming `item` if the image is empty, damaged, cut short, of another format or too large.
// A PNG is read row by row and a JPEG at an eighth of its size, so that the check takes little memory.
void CheckImage(const std::string& bytes, const std::string& item);

// Raises rdl::Error naming `item` if an image of this size (pixels) exceeds the limit.
void CheckImageSize(std::int64_t width, std::int64_t height, const std::string& item);

// Returns the image as a PNG file; empty if it cannot be written.
std::string PngOf(const QImage& image);

// Decodes the image and returns it encoded as a PNG. Raises errors as DecodeImage does.
std::string AsPng(const std::string& bytes, const std::string& item);

}  // namespace rdl::image
