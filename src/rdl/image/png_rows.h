// SPDX-License-Identifier: GPL-3.0-or-later
// The pixels of a PNG image (ISO/IEC 15948:2004, sections 8 Interlacing, 9 Filtering and 11 Chunks) row by
// row: memory does not grow with the image.
#pragma once

#include <functional>
#include <string>

namespace rdl::image {

class PngRows {
 public:
    using Take = std::function<void(const unsigned char* row)>;

    // `bytes` is a PNG and must outlive the object. Raises rdl::Error naming `item` if the image is damaged
    // or has more than 64 million pixels.
    PngRows(const std::string& bytes, std::string item);
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    bool HasAlpha() const { return m_hasAlpha; }
    // Passes each row from top to bottom: Width() pixels of RGBA, or of RGB without alpha. An interlaced
    // image is decoded several times, for a band of rows each. Every call begins at the top. Raises
    // rdl::Error naming the item if the image is damaged.
    void Read(const Take& take) const;

 private:
    bool ReadInOrder(const Take& take) const;
    bool ReadInBands(const Take& take) const;

    const std::string& m_bytes;
    const std::string m_item;
    int m_width = 0, m_height = 0;
    bool m_hasAlpha = false, m_isInterlaced = false;
};

}  // namespace rdl::image
