// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/png_writer.h"

#include <QtEndian>
#include <csetjmp>
#include <new>
#include <utility>

#include "rdl/values/error.h"

namespace rdl::image {
namespace {

[[noreturn]] void FailToWrite(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

void Flush(png_structp) {}

}  // namespace

PngWriter::PngWriter(int width, int height, int dotsPerMeter)
    : m_width(width),
      m_height(height),
      m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, FailToWrite, IgnoreWarning)) {
    if (m_png) {
        m_info = png_create_info_struct(m_png);
        png_set_write_fn(m_png, this, Write, Flush);
    }
    m_isGood = m_info && Begin(dotsPerMeter);
}

PngWriter::~PngWriter() {
    png_destroy_write_struct(&m_png, &m_info);
}

// An exception must not pass through the library.
void PngWriter::Write(png_structp png, png_bytep bytes, std::size_t length) {
    bool isStored = true;
    try {
        static_cast<PngWriter*>(png_get_io_ptr(png))
            ->m_bytes.append(reinterpret_cast<const char*>(bytes), length);
    } catch (const std::bad_alloc&) {
        isStored = false;
    }
    if (!isStored) {
        png_error(png, "no memory");
    }
}

// The library leaves a function by a jump: no object with a destructor lives in those that it may come back
// to.
bool PngWriter::Begin(int dotsPerMeter) {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(m_width), static_cast<png_uint_32>(m_height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    const auto dots = static_cast<png_uint_32>(dotsPerMeter);
    png_set_pHYs(m_png, m_info, dots, dots, PNG_RESOLUTION_METER);
    png_write_info(m_png, m_info);
    // A pixel is 0xFFRRGGBB in the order of the machine.
    if (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) {
        png_set_bgr(m_png);
        png_set_filler(m_png, 0, PNG_FILLER_AFTER);
    } else {
        png_set_filler(m_png, 0, PNG_FILLER_BEFORE);
    }
    return true;
}

bool PngWriter::AddRows(const QImage& rows) {
    if (setjmp(png_jmpbuf(m_png)) != 0) {
        return false;
    }
    for (int y = 0; y < rows.height() && m_rows < m_height; ++y, ++m_rows) {
        png_write_row(m_png, rows.constScanLine(y));
    }
    if (m_rows == m_height) {
        png_write_end(m_png, m_info);
    }
    return true;
}

void PngWriter::Add(const QImage& rows) {
    m_isGood = m_isGood && AddRows(rows);
    if (!m_isGood) {
        throw Error("The picture of a page cannot be written");
    }
}

std::string PngWriter::TakeBytes() {
    return std::exchange(m_bytes, {});
}

}  // namespace rdl::image
