// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a PNG image row by row, so that it need not be in memory (ISO/IEC 15948:2004, sections 9 Filtering,
// 11.2 for IHDR, IDAT and IEND, 11.3.5.3 for pHYs).
#pragma once

#include <png.h>

#include <QImage>
#include <string>

namespace rdl::image {

class PngWriter {
 public:
    // Begins an opaque image of 8 bits a colour.
    PngWriter(int width, int height, int dotsPerMeter);
    ~PngWriter();
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    // Adds the next rows, of Format_RGB32. Raises rdl::Error if memory is short.
    void Add(const QImage& rows);
    // Returns the bytes that are complete and were not returned before; after the last row all that is left.
    std::string TakeBytes();

 private:
    static void Write(png_structp png, png_bytep bytes, std::size_t length);
    bool Begin(int dotsPerMeter);
    bool AddRows(const QImage& rows);

    const int m_width, m_height;
    int m_rows = 0;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
    std::string m_bytes;
    bool m_isGood = false;
};

}  // namespace rdl::image
