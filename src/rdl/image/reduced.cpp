// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/reduced.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "rdl/image/decoder.h"
#include "rdl/image/png_rows.h"
#include "rdl/image/type.h"
#include "rdl/values/error.h"

namespace rdl::image {
namespace {

constexpr std::int64_t MostWhole = 16'000'000;  // pixels

// Returns the number by which both sides are divided, 1 for none. It is no larger than needed, and the sides
// stay twice as long as those of the place.
int Reduction(int width, int height, const QSize& pixels) {
    const int most =
        std::min(width / std::max(1, 2 * pixels.width()), height / std::max(1, 2 * pixels.height()));
    int side = 1;
    while (side < most && std::int64_t{width / side} * (height / side) > MostWhole) {
        ++side;
    }
    return side;
}

// Averages squares of pixels, of which some are a pixel longer: together they cover the image.
class Squares {
 public:
    Squares(const PngRows& rows, int side)
        : m_width(rows.Width()),
          m_height(rows.Height()),
          m_channels(rows.HasAlpha() ? 4 : 3),
          m_image(m_width / side, m_height / side, QImage::Format_ARGB32_Premultiplied),
          m_sums(static_cast<std::size_t>(m_image.width())) {
        for (int x = 0; x < m_width; ++x) {
            m_squares.push_back(Scaled(x, m_image.width(), m_width));
        }
    }

    void Add(const unsigned char* row) {
        for (const std::size_t square : m_squares) {
            Sum& sum = m_sums[square];
            const std::uint64_t alpha = m_channels == 4 ? row[3] : 255;
            for (std::size_t i = 0; i < 3; ++i) {
                sum.colours[i] += row[i] * alpha;
            }
            sum.alpha += alpha;
            ++sum.count;
            row += m_channels;
        }
        const std::size_t line = Scaled(m_rows, m_image.height(), m_height);
        ++m_rows;
        if (m_rows == m_height || Scaled(m_rows, m_image.height(), m_height) > line) {
            EndLine(static_cast<int>(line));
        }
    }
    QImage Image() const { return m_image; }

 private:
    struct Sum {
        std::array<std::uint64_t, 3> colours{};  // times opacity
        std::uint64_t alpha = 0, count = 0;
    };

    static std::size_t Scaled(int at, int to, int from) {
        return static_cast<std::size_t>(std::int64_t{at} * to / from);
    }

    void EndLine(int line) {
        auto* to = reinterpret_cast<QRgb*>(m_image.scanLine(line));
        for (Sum& sum : m_sums) {
            const auto average = [](std::uint64_t total, std::uint64_t divisor) {
                return static_cast<int>((total + divisor / 2) / divisor);
            };
            const std::uint64_t whole = 255 * sum.count;
            *to++ = qRgba(average(sum.colours[0], whole), average(sum.colours[1], whole),
                          average(sum.colours[2], whole), average(sum.alpha, sum.count));
            sum = {};
        }
    }

    const int m_width, m_height, m_channels;
    QImage m_image;
    std::vector<std::size_t> m_squares;  // of each column of pixels
    std::vector<Sum> m_sums;             // of a line of squares
    int m_rows = 0;
};

}  // namespace

Decoded DecodeFor(const QSize& pixels, const std::string& bytes, const std::string& item) {
    if (TypeOf(bytes, item) == Type::Png) {
        const PngRows rows(bytes, item);
        const int side = Reduction(rows.Width(), rows.Height(), pixels);
        if (side > 1) {
            Squares squares(rows, side);
            if (squares.Image().isNull()) {
                throw Error("There is no memory for the image \"" + item + "\"");
            }
            rows.Read([&squares](const unsigned char* row) { squares.Add(row); });
            return {squares.Image(), false};
        }
    }
    return {DecodeImage(bytes, item).convertToFormat(QImage::Format_ARGB32_Premultiplied), true};
}

}  // namespace rdl::image
