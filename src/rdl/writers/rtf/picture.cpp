// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/picture.h"

#include <algorithm>
#include <cmath>

#include "rdl/image/decoder.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/values/ascii.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::ImageSize;
using layout::Instance;

constexpr std::size_t BytesInLine = 64;
constexpr double PixelsPerPoint = 96.0 / 72;

void AppendHex(const std::string& bytes, std::string& out) {
    out.reserve(out.size() + bytes.size() * 2 + bytes.size() / BytesInLine + 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % BytesInLine == 0) {
            out += '\n';
        }
        AppendHexByte(bytes[i], out, SmallHexDigits);
    }
}

void AppendSize(const Instance& item, const ImageSize& natural, std::string& out) {
    const ImageSize shown = ShownSize(item, natural);
    AppendWord("\\picw", static_cast<int>(std::lround(std::min(natural.width, 1e6) * PixelsPerPoint)), out);
    AppendWord("\\pich", static_cast<int>(std::lround(std::min(natural.height, 1e6) * PixelsPerPoint)), out);
    AppendTwips("\\picwgoal", shown.width, out);
    AppendTwips("\\pichgoal", shown.height, out);
    if (item.sizing == Instance::Sizing::Clip) {
        AppendTwips("\\piccropr", std::max(shown.width - std::fabs(item.width), 0.0), out);
        AppendTwips("\\piccropb", std::max(shown.height - std::fabs(item.height), 0.0), out);
    }
}

}  // namespace

const std::string& RtfPictures::Converted(const Instance& item) {
    if (m_source != item.imageBytes) {
        m_converted = image::AsPng(*item.imageBytes, item.name);
        m_source = item.imageBytes;
    }
    return m_converted;
}

void RtfPictures::Append(const Instance& item, std::string& out) {
    if (!item.imageBytes || item.imageBytes->empty()) {
        return;
    }
    const image::Type type = TypeOfImage(item);
    const bool stays = type == image::Type::Png || type == image::Type::Jpeg;
    const std::string& bytes = stays ? *item.imageBytes : Converted(item);
    out += type == image::Type::Jpeg ? "{\\pict\\jpegblip" : "{\\pict\\pngblip";
    AppendSize(item, layout::SizeOfImage(*item.imageBytes), out);
    AppendHex(bytes, out);
    out += '}';
}

}  // namespace rdl::writers
