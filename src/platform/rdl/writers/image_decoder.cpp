#include "platform/rdl/writers/image_decoder.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include "platform/rdl/error.h"

namespace rdl::writers {
namespace {

constexpr qint64 MostPixels = 64'000'000;

}  // namespace

QImage DecodeImage(const std::string& bytes) {
    QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isValid() && qint64{size.width()} * size.height() > MostPixels) {
        throw Error("An image has more than 64 million pixels");
    }
    QImage image = reader.read();
    if (image.isNull()) {
        throw Error("An image is no PNG, JPEG, GIF or BMP that can be read");
    }
    return image;
}

std::string AsPng(const std::string& bytes) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!DecodeImage(bytes).save(&buffer, "PNG")) {
        throw Error("An image cannot be written as a PNG");
    }
    return png.toStdString();
}

}  // namespace rdl::writers
