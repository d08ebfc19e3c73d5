// SPDX-License-Identifier: GPL-3.0-or-later
// Large images that are drawn small.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

namespace rdl::image {

struct Decoded {
    QImage image;
    bool isWhole = true;
};

// Returns the image for a place of `pixels`, premultiplied. A PNG of more than 16 million pixels is reduced
// to fewer while it is read, but to no less than twice the place in each direction. Raises errors as
// DecodeImage does, and if memory is short.
Decoded DecodeFor(const QSize& pixels, const std::string& bytes, const std::string& item);

}  // namespace rdl::image
