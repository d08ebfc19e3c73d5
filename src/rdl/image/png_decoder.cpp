// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/png_decoder.h"

#include <csetjmp>
#include <cstring>
#include <vector>

namespace rdl::image {
namespace {

[[noreturn]] void Fail(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void Ignore(png_structp, png_const_charp) {}

}  // namespace

PngDecoder::PngDecoder(std::string_view bytes)
    : m_rest(bytes), m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore)) {
    if (m_png) {
        m_info = png_create_info_struct(m_png);
        png_set_read_fn(m_png, this, Read);
    }
}

PngDecoder::~PngDecoder() {
    png_destroy_read_struct(&m_png, &m_info, nullptr);
}

void PngDecoder::Read(png_structp png, png_bytep into, std::size_t length) {
    auto& rest = static_cast<PngDecoder*>(png_get_io_ptr(png))->m_rest;
    if (rest.size() < length) {
        png_error(png, "cut off");
    }
    std::memcpy(into, rest.data(), length);
    rest.remove_prefix(length);
}

// The library leaves a function by a jump: no object with a destructor lives in those that it may come back
// to.
bool PngDecoder::ReadHead() {
    if (!m_info || setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr,
                                -1);  // texts, profiles: only pixels count
    png_read_info(m_png, m_info);
    m_width = static_cast<int>(png_get_image_width(m_png, m_info));
    m_height = static_cast<int>(png_get_image_height(m_png, m_info));
    m_hasAlpha = (png_get_color_type(m_png, m_info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                 png_get_valid(m_png, m_info, PNG_INFO_tRNS) != 0;
    png_set_expand(m_png);
    png_set_scale_16(m_png);
    png_set_gray_to_rgb(m_png);
    m_passes = png_set_interlace_handling(m_png);
    png_read_update_info(m_png, m_info);
    return true;
}

bool PngDecoder::ReadRows(png_bytepp rows) {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    png_read_image(m_png, rows);
    png_read_end(m_png, nullptr);
    return true;
}

std::size_t PngDecoder::RowSize() const {
    return png_get_rowbytes(m_png, m_info);
}

bool PngDecoder::ReadRow(png_bytep row) {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    png_read_row(m_png, row, nullptr);
    return true;
}

bool PngDecoder::ReadBand(png_bytep band, int first, int count, png_bytep other) {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    for (int pass = 0; pass < m_passes; ++pass) {
        for (int y = 0; y < m_height; ++y) {
            const bool isKept = y >= first && y - first < count;
            png_read_row(m_png, isKept ? band + RowSize() * static_cast<std::size_t>(y - first) : other,
                         nullptr);
        }
    }
    return true;
}

bool PngDecoder::ReadEnd() {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    png_read_end(m_png, nullptr);
    return true;
}

bool PngDecoder::SkipPixels() {
    std::vector<png_byte> row(RowSize());
    return ReadBand(nullptr, 0, 0, row.data()) && ReadEnd();
}

QImage PngDecoder::ReadPixels() {
    QImage image(m_width, m_height, m_hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    if (image.isNull() || static_cast<std::size_t>(image.bytesPerLine()) < png_get_rowbytes(m_png, m_info)) {
        return {};
    }
    std::vector<png_bytep> rows(static_cast<std::size_t>(m_height));
    for (int y = 0; y < m_height; ++y) {
        rows[static_cast<std::size_t>(y)] = image.scanLine(y);
    }
    return ReadRows(rows.data()) ? image : QImage();
}

}  // namespace rdl::image
