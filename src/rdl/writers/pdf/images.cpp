// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/images.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QImage>
#include <cstdint>
#include <optional>

#include "rdl/image/decoder.h"
#include "rdl/image/png_rows.h"
#include "rdl/image/type.h"

namespace rdl::writers {
namespace {

struct Jpeg {
    unsigned width = 0, height = 0, components = 0;
    bool inverted = false;  // Adobe's CMYK
};

// Codes of markers of a JPEG, which follow a byte 0xFF (ITU-T T.81, B.1.1.3).
constexpr unsigned StartOfImage = 0xD8, FirstFrame = 0xC0, LastFrame = 0xC2, AdobeSegment = 0xEE;

// Returns the frame header of a JPEG (ITU-T T.81, B.2.2); nullopt if a PDF cannot hold the bytes as they are:
// readers of PDF decode Huffman-coded frames only (C0-C2). SizeOfImage of layout/model/image_size.h reads any
// kind of frame.
std::optional<Jpeg> ReadJpeg(const std::string& bytes) {
    const auto at = [&](std::size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]));
    };
    if (bytes.size() < 4 || at(0) != 0xFF || at(1) != StartOfImage) {
        return std::nullopt;
    }
    Jpeg jpeg;
    for (std::size_t i = 2; i + 10 < bytes.size();) {
        if (at(i) != 0xFF) {
            return std::nullopt;
        }
        const unsigned marker = at(i + 1);
        if (marker == 0xFF) {  // a byte that fills (B.1.1.2)
            ++i;
            continue;
        }
        const std::size_t length = at(i + 2) << 8 | at(i + 3);
        if (marker == AdobeSegment && bytes.compare(i + 4, 5, "Adobe") == 0) {
            jpeg.inverted = true;
        }
        if (marker >= FirstFrame && marker <= LastFrame) {
            jpeg.height = at(i + 5) << 8 | at(i + 6);
            jpeg.width = at(i + 7) << 8 | at(i + 8);
            jpeg.components = at(i + 9);
            const bool usable = at(i + 4) == 8 && jpeg.width && jpeg.height &&
                                (jpeg.components == 1 || jpeg.components == 3 || jpeg.components == 4);
            return usable ? std::optional(jpeg) : std::nullopt;
        }
        i += 2 + length;
    }
    return std::nullopt;
}

std::string Entries(qint64 width, qint64 height, const char* space) {
    return "/Type/XObject/Subtype/Image/Width " + std::to_string(width) + "/Height " +
           std::to_string(height) + "/BitsPerComponent 8/ColorSpace/" + space;
}

int WriteJpeg(PdfFile& file, const Jpeg& jpeg, const std::string& bytes) {
    const char* space = jpeg.components == 1   ? "DeviceGray"
                        : jpeg.components == 3 ? "DeviceRGB"
                                               : "DeviceCMYK";
    std::string entries = Entries(jpeg.width, jpeg.height, space) + "/Filter/DCTDecode";
    if (jpeg.components == 4 && jpeg.inverted) {
        entries += "/Decode[1 0 1 0 1 0 1 0]";
    }
    return file.Stream(entries, bytes, PdfFile::Filter::None);
}

int WritePixels(PdfFile& file, const QImage& decoded) {
    const bool alpha = decoded.hasAlphaChannel();
    const QImage image = decoded.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    const int step = alpha ? 4 : 3;
    std::string colors, opacity;
    colors.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) * 3);
    for (int y = 0; y < image.height(); ++y) {
        const char* line = reinterpret_cast<const char*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x, line += step) {
            colors.append(line, 3);
            if (alpha) {
                opacity += line[3];
            }
        }
    }
    std::string entries = Entries(image.width(), image.height(), "DeviceRGB");
    if (alpha) {
        const int mask = file.Stream(Entries(image.width(), image.height(), "DeviceGray"), opacity);
        entries += "/SMask " + PdfReference(mask);
    }
    return file.Stream(entries, colors);
}

// Passes the bytes `from` to `to`, excluded, of each pixel to the stream, row by row. `step` is the size of a
// pixel.
PdfFile::Produce Part(const image::PngRows& rows, int step, int from, int to) {
    return [&rows, step, from, to](const Spool::Take& take) {
        std::string part;
        rows.Read([&](const unsigned char* row) {
            part.clear();
            for (int x = 0; x < rows.Width(); ++x, row += step) {
                part.append(row + from, row + to);
            }
            take(part);
        });
    };
}

// A large PNG is decoded once for its colors and once for its transparency, and is never in memory as a
// whole.
int WriteRows(PdfFile& file, const image::PngRows& rows) {
    std::string entries = Entries(rows.Width(), rows.Height(), "DeviceRGB");
    const int step = rows.HasAlpha() ? 4 : 3;
    if (rows.HasAlpha()) {
        const int mask =
            file.Stream(Entries(rows.Width(), rows.Height(), "DeviceGray"), Part(rows, step, 3, 4));
        entries += "/SMask " + PdfReference(mask);
    }
    return file.Stream(entries, Part(rows, step, 0, 3));
}

int WriteDecoded(PdfFile& file, const std::string& bytes, const std::string& item) {
    constexpr std::int64_t MostAtOnce = 4'000'000;  // pixels
    if (image::TypeOf(bytes, item) == image::Type::Png) {
        const image::PngRows rows(bytes, item);
        if (std::int64_t{rows.Width()} * rows.Height() > MostAtOnce) {
            return WriteRows(file, rows);
        }
    }
    return WritePixels(file, image::DecodeImage(bytes, item));
}

int WriteImage(PdfFile& file, const std::string& bytes, const std::string& item, bool takesCmyk) {
    const std::optional<Jpeg> jpeg = ReadJpeg(bytes);
    if (!jpeg || (jpeg->components == 4 && !takesCmyk)) {
        return WriteDecoded(file, bytes, item);
    }
    image::CheckImageSize(jpeg->width, jpeg->height, item);
    return WriteJpeg(file, *jpeg, bytes);
}

}  // namespace

int PdfImages::Use(const std::shared_ptr<const std::string>& bytes, const std::string& item) {
    if (const auto known = m_byAddress.find(bytes.get());
        known != m_byAddress.end() && known->second.bytes.lock() == bytes) {
        return known->second.number;
    }
    const QByteArray digest = QCryptographicHash::hash(
        QByteArrayView(bytes->data(), static_cast<qsizetype>(bytes->size())), QCryptographicHash::Sha256);
    const auto [place, isNew] = m_byDigest.try_emplace(digest.toStdString(), 0);
    if (isNew) {
        place->second = WriteImage(m_file, *bytes, item, m_takesCmyk);
    }
    m_byAddress[bytes.get()] = {bytes, place->second};
    return place->second;
}

std::string PdfImages::Resources() const {
    std::map<int, int> numbers;
    for (const auto& [digest, number] : m_byDigest) {
        numbers[number] = number;
    }
    std::string out;
    for (const auto& [number, same] : numbers) {
        out += "/I" + std::to_string(number) + " " + PdfReference(same);
    }
    return out;
}

}  // namespace rdl::writers
