// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/content.h"

#include <algorithm>
#include <cmath>

#include "rdl/values/ascii.h"

namespace rdl::writers {

std::string WithoutPageMarks(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        // The four marks are U+E000 to U+E003.
        if (text[i] == '\xEE' && i + 2 < text.size() && text[i + 1] == '\x80' &&
            (text[i + 2] & 0xFC) == 0x80) {
            plain += '1';
            i += 2;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::string SafeLink(const std::string& link) {
    std::string clean;
    for (const char c : link) {
        if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F) {
            clean += c;  // browsers read over control characters within a scheme
        }
    }
    clean.erase(0, clean.find_first_not_of(' '));
    const std::size_t end = clean.find_first_of(":/?#");
    if (end == std::string::npos || clean[end] != ':') {
        return clean;
    }
    const std::string scheme = LowerAscii(std::string_view(clean).substr(0, end));
    for (const char* allowed : {"http", "https", "mailto", "ftp", "ftps", "tel"}) {
        if (scheme == allowed) {
            return clean;
        }
    }
    return {};
}

image::Type TypeOfImage(const layout::Instance& image) {
    return image::TypeOf(*image.imageBytes, image.name);
}

std::string WebAddress(const std::string& link) {
    return PercentEncoded(SafeLink(link), [](char c) {
        return c > 0x20 && c < 0x7F && std::string_view("\"<>\\^`{|}").find(c) == std::string_view::npos;
    });
}

layout::HAlign AlignmentOf(const layout::Instance& item, layout::HAlign paragraph) {
    layout::HAlign align = paragraph;
    if (align == layout::HAlign::General && item.box) {
        align = item.box->hAlign;
    }
    if (align != layout::HAlign::General) {
        return align;
    }
    const bool isNumeric = item.isNumeric || item.value.IsNumber() || item.value.kind() == Kind::DateTime;
    const bool rightToLeft = item.box && item.box->rightToLeft;
    return isNumeric != rightToLeft ? layout::HAlign::Right : layout::HAlign::Left;
}

layout::ImageSize ShownSize(const layout::Instance& item, const layout::ImageSize& natural) {
    constexpr double LeastSide = 0.5;  // points
    using Sizing = layout::Instance::Sizing;
    const layout::ImageSize box{std::max(std::fabs(item.width), LeastSide),
                                std::max(std::fabs(item.height), LeastSide)};
    if (natural.width <= 0 || natural.height <= 0 || item.sizing == Sizing::Fit) {
        return box;
    }
    if (item.sizing != Sizing::FitProportional) {
        return natural;
    }
    const double scale = std::min(box.width / natural.width, box.height / natural.height);
    return {natural.width * scale, natural.height * scale};
}

}  // namespace rdl::writers
