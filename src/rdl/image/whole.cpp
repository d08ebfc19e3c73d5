// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/whole.h"

#include <cstdlib>

#include "rdl/image/picture_bytes.h"

namespace rdl::image {
namespace {

// Returns where the first marker after a scan's data is: a byte FF that neither a zero nor a restart follows.
std::size_t AfterScan(const Bytes& bytes, std::size_t at) {
    for (; at + 1 < bytes.size(); ++at) {
        const std::uint32_t next = bytes.At(at + 1);
        if (bytes.At(at) == 0xFF && next != 0 && next != 0xFF && (next < 0xD0 || next > 0xD7)) {
            return at;
        }
    }
    return bytes.size();
}

// Returns where the sub-blocks from `at` on end, after the empty one; a place beyond the end if they do not.
std::size_t AfterBlocks(const Bytes& bytes, std::size_t at) {
    while (at < bytes.size() && bytes.At(at) != 0) {
        at += 1 + bytes.At(at);
    }
    return at + 1;
}

// The size of the colour table that the flags of a GIF announce.
std::size_t ColorTable(std::uint32_t flags) {
    constexpr std::uint32_t HasTable = 0x80, SizeMask = 7;
    return flags & HasTable ? std::size_t{6} << (flags & SizeMask) : 0;
}

}  // namespace

bool IsWholeJpeg(std::string_view file) {
    constexpr std::uint32_t EndOfImage = 0xD9, StartOfScan = 0xDA;
    const Bytes bytes(file);
    bool hasScan = false;
    for (std::size_t at = 2; at + 1 < bytes.size();) {
        const std::uint32_t marker = bytes.At(at + 1);
        if (bytes.At(at) != 0xFF) {
            return false;
        }
        if (marker == 0xFF) {  // fills
            ++at;
            continue;
        }
        if (marker == EndOfImage) {
            return hasScan;
        }
        at += 2 + bytes.Big16(at + 2);
        if (marker == StartOfScan) {
            hasScan = true;
            at = AfterScan(bytes, at);
        }
    }
    return false;
}

bool IsWholeGif(std::string_view file) {
    constexpr std::size_t Head = 13, Descriptor = 10;
    constexpr std::uint32_t Extension = 0x21, Picture = 0x2C;
    const Bytes bytes(file);
    std::size_t at = Head + ColorTable(bytes.At(10));
    while (at < bytes.size() && bytes.At(at) == Extension) {
        at = AfterBlocks(bytes, at + 2);
    }
    if (at >= bytes.size() || bytes.At(at) != Picture) {
        return false;
    }
    const std::size_t data = at + Descriptor + ColorTable(bytes.At(at + 9)) + 1;
    return AfterBlocks(bytes, data) <= bytes.size();
}

bool IsWholeBitmap(std::string_view file) {
    constexpr std::uint32_t CoreHeader = 12, RunLength8 = 1, RunLength4 = 2;
    const Bytes bytes(file);
    const std::uint64_t offset = bytes.Little32(10);
    const bool isCore = bytes.Little32(14) == CoreHeader;
    const std::uint32_t compression = isCore ? 0 : bytes.Little32(30);
    if (compression == RunLength8 || compression == RunLength4) {
        return offset + bytes.Little32(34) <= bytes.size();
    }
    const std::uint64_t width = isCore ? bytes.Little16(18) : bytes.Little32(18);
    const auto height = isCore ? static_cast<std::int64_t>(bytes.Little16(20))
                               : static_cast<std::int64_t>(static_cast<std::int32_t>(bytes.Little32(22)));
    const std::uint64_t bits = bytes.Little16(isCore ? 24 : 28);
    const std::uint64_t row = (width * bits + 31) / 32 * 4;
    constexpr std::uint64_t Most = 1u << 31;  // no file is so large, and no product overflows
    return row < Most && offset + row * static_cast<std::uint64_t>(std::llabs(height)) <= bytes.size();
}

}  // namespace rdl::image
