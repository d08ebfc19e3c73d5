// PNG pictures as pixels. What the library says of a damaged one goes nowhere; the caller tells.
#pragma once

#include <png.h>

#include <QImage>
#include <cstddef>
#include <string_view>

namespace rdl::image {

class PngDecoder {
 public:
    // The bytes must outlive the decoder.
    explicit PngDecoder(std::string_view bytes);
    ~PngDecoder();
    PngDecoder(const PngDecoder&) = delete;
    PngDecoder& operator=(const PngDecoder&) = delete;

    // False when the bytes do not begin as a PNG does. To be called once, before the size is asked for.
    bool ReadHead();
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // RGBA8888, or RGB888 where nothing is transparent. Null when the picture is damaged or there is no room
    // for it.
    QImage ReadPixels();

 private:
    static void Read(png_structp png, png_bytep into, std::size_t length);
    bool ReadRows(png_bytepp rows);

    std::string_view m_rest;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
    int m_width = 0, m_height = 0;
    bool m_hasAlpha = false;
};

}  // namespace rdl::image
