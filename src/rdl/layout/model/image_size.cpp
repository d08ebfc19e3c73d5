// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/image_size.h"

#include <cstddef>
#include <cstdint>

namespace rdl::layout {
namespace {

constexpr double PointsPerPixel = 0.75;

std::uint32_t Byte(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}
std::uint32_t Big16(std::string_view bytes, std::size_t at) {
    return Byte(bytes, at) << 8 | Byte(bytes, at + 1);
}
std::uint32_t Little16(std::string_view bytes, std::size_t at) {
    return Byte(bytes, at + 1) << 8 | Byte(bytes, at);
}
std::uint32_t Big32(std::string_view bytes, std::size_t at) {
    return Big16(bytes, at) << 16 | Big16(bytes, at + 2);
}
std::uint32_t Little32(std::string_view bytes, std::size_t at) {
    return Little16(bytes, at + 2) << 16 | Little16(bytes, at);
}

ImageSize Pixels(std::uint32_t width, std::uint32_t height) {
    return {width * PointsPerPixel, height * PointsPerPixel};
}

// The frame header is one of the segments before the picture's data.
ImageSize JpegSize(std::string_view bytes) {
    std::size_t at = 2;
    while (at + 9 < bytes.size()) {
        const std::uint32_t marker = Big16(bytes, at);
        const bool isFrame =
            marker >= 0xFFC0 && marker <= 0xFFCF && marker != 0xFFC4 && marker != 0xFFC8 && marker != 0xFFCC;
        if (isFrame) {
            return Pixels(Big16(bytes, at + 7), Big16(bytes, at + 5));
        }
        const std::uint32_t length = Big16(bytes, at + 2);
        if (marker >> 8 != 0xFF || length < 2) {
            break;
        }
        at += 2 + length;
    }
    return {};
}

}  // namespace

ImageSize SizeOfImage(std::string_view bytes) {
    if (bytes.starts_with("\x89PNG")) {
        return Pixels(Big32(bytes, 16), Big32(bytes, 20));
    }
    if (bytes.starts_with("GIF8")) {
        return Pixels(Little16(bytes, 6), Little16(bytes, 8));
    }
    if (bytes.starts_with("BM")) {
        const auto height = static_cast<std::int32_t>(Little32(bytes, 22));
        return Pixels(Little32(bytes, 18),
                      static_cast<std::uint32_t>(height < 0 ? -static_cast<std::int64_t>(height) : height));
    }
    if (bytes.starts_with("\xFF\xD8")) {
        return JpegSize(bytes);
    }
    return {};
}

}  // namespace rdl::layout
