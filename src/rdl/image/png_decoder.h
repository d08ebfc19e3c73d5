// SPDX-License-Identifier: GPL-3.0-or-later
// Decodes PNG images. Messages of the PNG library are discarded; the caller reports the error.
#pragma once

#include <png.h>

#include <QImage>
#include <cstddef>
#include <string_view>

namespace rdl::image {

class PngDecoder {
 public:
    // `bytes` must outlive the decoder.
    explicit PngDecoder(std::string_view bytes);
    ~PngDecoder();
    PngDecoder(const PngDecoder&) = delete;
    PngDecoder& operator=(const PngDecoder&) = delete;

    // Reads signature and IHDR. Returns false if they are not those of a PNG. Call this once, before Width().
    bool ReadHead();
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    bool HasAlpha() const { return m_hasAlpha; }
    bool IsInterlaced() const { return m_passes > 1; }
    // Returns the bytes of a row: RGBA, or RGB if nothing is transparent.
    std::size_t RowSize() const;
    // Returns RGBA8888, or RGB888 if nothing is transparent. Returns a null image if the data is damaged or
    // memory is short.
    QImage ReadPixels();
    // Reads the next row of a PNG without interlace. Returns false if the data is damaged.
    bool ReadRow(png_bytep row);
    // Reads all pixels and keeps `count` rows from `first`, in `band`; `other` is room for one more. Returns
    // false if the data is damaged.
    bool ReadBand(png_bytep band, int first, int count, png_bytep other);
    // Reads what follows the pixels. Returns false if the data is damaged.
    bool ReadEnd();
    // Reads all pixels and keeps none. Returns false if the data is damaged.
    bool SkipPixels();

 private:
    static void Read(png_structp png, png_bytep into, std::size_t length);
    bool ReadRows(png_bytepp rows);

    std::string_view m_rest;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
    int m_width = 0, m_height = 0, m_passes = 1;
    bool m_hasAlpha = false;
};

}  // namespace rdl::image
