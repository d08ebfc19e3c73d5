// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/image_size.h"

#include "rdl/image/picture_bytes.h"

namespace rdl::layout {
namespace {

constexpr double PointsPerPixel = 0.75;

ImageSize Pixels(std::uint32_t width, std::uint32_t height) {
    return {width * PointsPerPixel, height * PointsPerPixel};
}

// The frame header (ITU-T T.81, B.2.2) is one of the segments before the picture's data. Every kind of frame
// has a size; ReadJpeg of writers/pdf/images.cpp takes only those that a PDF may hold.
ImageSize JpegSize(const image::Bytes& file) {
    std::size_t at = 2;
    while (at + 9 < file.size()) {
        const std::uint32_t marker = file.Big16(at);
        const bool isFrame =
            marker >= 0xFFC0 && marker <= 0xFFCF && marker != 0xFFC4 && marker != 0xFFC8 && marker != 0xFFCC;
        if (isFrame) {
            return Pixels(file.Big16(at + 7), file.Big16(at + 5));
        }
        const std::uint32_t length = file.Big16(at + 2);
        if (marker >> 8 != 0xFF || length < 2) {
            break;
        }
        at += 2 + length;
    }
    return {};
}

}  // namespace

ImageSize SizeOfImage(std::string_view bytes) {
    const image::Bytes file(bytes);
    if (bytes.starts_with("\x89PNG")) {
        return Pixels(file.Big32(16), file.Big32(20));
    }
    if (bytes.starts_with("GIF8")) {
        return Pixels(file.Little16(6), file.Little16(8));
    }
    if (bytes.starts_with("BM")) {
        const auto height = static_cast<std::int32_t>(file.Little32(22));
        return Pixels(file.Little32(18),
                      static_cast<std::uint32_t>(height < 0 ? -static_cast<std::int64_t>(height) : height));
    }
    if (bytes.starts_with("\xFF\xD8")) {
        return JpegSize(file);
    }
    return {};
}

}  // namespace rdl::layout
