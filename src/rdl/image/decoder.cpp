// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <string_view>

#include "rdl/image/png_decoder.h"
#include "rdl/image/type.h"
#include "rdl/image/whole.h"
#include "rdl/values/error.h"

namespace rdl::image {
namespace {

constexpr std::int64_t MostPixels = 64'000'000;

// Qt's plug-ins report a damaged picture in a line of their own each; programs have one line, theirs.
void KeepPluginsQuiet() {
    static QLoggingCategory::CategoryFilter others = nullptr;
    static const bool done = [] {
        others = QLoggingCategory::installFilter([](QLoggingCategory* category) {
            if (others) {
                others(category);
            }
            if (std::string_view(category->categoryName()).starts_with("qt.gui.imageio")) {
                category->setEnabled(QtWarningMsg, false);
            }
        });
        return true;
    }();
    static_cast<void>(done);
}

const char* FormatOf(Type type) {
    switch (type) {
        case Type::Jpeg:
            return "jpeg";
        case Type::Gif:
            return "gif";
        default:
            return "bmp";
    }
}

QImage DecodePng(const std::string& bytes, const std::string& item) {
    PngDecoder decoder(bytes);
    if (!decoder.ReadHead()) {
        return {};
    }
    CheckImageSize(decoder.Width(), decoder.Height(), item);
    return decoder.ReadPixels();
}

bool IsWhole(Type type, const std::string& bytes) {
    switch (type) {
        case Type::Jpeg:
            return IsWholeJpeg(bytes);
        case Type::Gif:
            return IsWholeGif(bytes);
        case Type::Bmp:
            return IsWholeBitmap(bytes);
        case Type::Png:
            break;
    }
    return true;  // its decoder is as strict
}

enum class Detail { Full, Rough };

// Takes the type by the first bytes: the library would also guess at formats that read other files.
QImage DecodeByPlugin(Type type, const std::string& bytes, const std::string& item,
                      Detail detail = Detail::Full) {
    KeepPluginsQuiet();
    QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, FormatOf(type));
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isValid()) {
        CheckImageSize(size.width(), size.height(), item);
    }
    if (type == Type::Jpeg && detail == Detail::Rough && size.isValid()) {
        constexpr int Smallest = 8;  // the library's own reduction, which reads the same data
        reader.setScaledSize({std::max(size.width() / Smallest, 1), std::max(size.height() / Smallest, 1)});
    }
    constexpr int Megabytes = static_cast<int>(MostPixels * 4 >> 20) + 1;
    QImageReader::setAllocationLimit(Megabytes);  // limits formats whose size is not known in advance
    return reader.read();
}

}  // namespace

void CheckImageSize(std::int64_t width, std::int64_t height, const std::string& item) {
    if (width * height > MostPixels) {
        throw Error("Image \"" + item + "\" has more than 64 million pixels");
    }
}

QImage DecodeImage(const std::string& bytes, const std::string& item) {
    const Type type = TypeOf(bytes, item);
    const QImage image = type == Type::Png ? DecodePng(bytes, item) : DecodeByPlugin(type, bytes, item);
    if (image.isNull()) {
        throw Error("Image \"" + item + "\" is damaged and cannot be read");
    }
    CheckImageSize(image.width(), image.height(), item);
    return image;
}

void CheckImage(const std::string& bytes, const std::string& item) {
    if (bytes.empty()) {
        throw Error("Image \"" + item + "\" is empty");
    }
    const Type type = TypeOf(bytes, item);
    bool isWhole = false;
    if (type == Type::Png) {
        PngDecoder decoder(bytes);
        if (decoder.ReadHead()) {
            CheckImageSize(decoder.Width(), decoder.Height(), item);
            isWhole = decoder.SkipPixels();
        }
    } else {
        isWhole = IsWhole(type, bytes) && !DecodeByPlugin(type, bytes, item, Detail::Rough).isNull();
    }
    if (!isWhole) {
        throw Error("Image \"" + item + "\" is damaged and cannot be read");
    }
}

std::string PngOf(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? png.toStdString() : std::string();
}

std::string AsPng(const std::string& bytes, const std::string& item) {
    std::string png = PngOf(DecodeImage(bytes, item));
    if (png.empty()) {
        throw Error("Image \"" + item + "\" cannot be written as a PNG");
    }
    return png;
}

}  // namespace rdl::image
