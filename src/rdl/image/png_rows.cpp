// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/png_rows.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "rdl/image/decoder.h"
#include "rdl/image/png_decoder.h"
#include "rdl/values/error.h"

namespace rdl::image {
namespace {

constexpr std::size_t BandSize = std::size_t{48} << 20;  // bytes of an interlaced image at a time

[[noreturn]] void RefuseAsDamaged(const std::string& item) {
    throw Error("Image \"" + item + "\" is damaged and cannot be read");
}

}  // namespace

PngRows::PngRows(const std::string& bytes, std::string item) : m_bytes(bytes), m_item(std::move(item)) {
    PngDecoder decoder(m_bytes);
    if (!decoder.ReadHead()) {
        RefuseAsDamaged(m_item);
    }
    m_width = decoder.Width();
    m_height = decoder.Height();
    m_hasAlpha = decoder.HasAlpha();
    m_isInterlaced = decoder.IsInterlaced();
    CheckImageSize(m_width, m_height, m_item);
}

void PngRows::Read(const Take& take) const {
    if (!(m_isInterlaced ? ReadInBands(take) : ReadInOrder(take))) {
        RefuseAsDamaged(m_item);
    }
}

bool PngRows::ReadInOrder(const Take& take) const {
    PngDecoder decoder(m_bytes);
    if (!decoder.ReadHead()) {
        return false;
    }
    std::vector<png_byte> row(decoder.RowSize());
    for (int y = 0; y < m_height; ++y) {
        if (!decoder.ReadRow(row.data())) {
            return false;
        }
        take(row.data());
    }
    return decoder.ReadEnd();
}

bool PngRows::ReadInBands(const Take& take) const {
    std::vector<png_byte> band, other;
    for (int first = 0, count = 0; first < m_height; first += count) {
        PngDecoder decoder(m_bytes);
        if (!decoder.ReadHead()) {
            return false;
        }
        other.resize(decoder.RowSize());
        count = static_cast<int>(
            std::clamp<std::size_t>(BandSize / other.size(), 1, static_cast<std::size_t>(m_height - first)));
        band.resize(other.size() * static_cast<std::size_t>(count));
        if (!decoder.ReadBand(band.data(), first, count, other.data()) || !decoder.ReadEnd()) {
            return false;
        }
        for (int y = 0; y < count; ++y) {
            take(band.data() + other.size() * static_cast<std::size_t>(y));
        }
    }
    return true;
}

}  // namespace rdl::image
