#include "platform/rdl/writers/image_decoder.h"

#include <fcntl.h>
#include <unistd.h>

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include "platform/rdl/error.h"
#include "platform/rdl/writers/flow.h"

namespace rdl::writers {
namespace {

constexpr std::int64_t MostPixels = 64'000'000;

// The PNG library tells of a damaged picture on standard error by itself; programs have one line there, their
// own.
class NothingOnStandardError {
 public:
    NothingOnStandardError() : m_kept(dup(STDERR_FILENO)) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (m_kept >= 0 && nowhere >= 0) {
            dup2(nowhere, STDERR_FILENO);
        }
        if (nowhere >= 0) {
            close(nowhere);
        }
    }
    ~NothingOnStandardError() {
        if (m_kept >= 0) {
            dup2(m_kept, STDERR_FILENO);
            close(m_kept);
        }
    }
    NothingOnStandardError(const NothingOnStandardError&) = delete;
    NothingOnStandardError& operator=(const NothingOnStandardError&) = delete;

 private:
    const int m_kept;
};

const char* FormatOf(ImageType type) {
    switch (type) {
        case ImageType::Png:
            return "png";
        case ImageType::Jpeg:
            return "jpeg";
        case ImageType::Gif:
            return "gif";
        default:
            return "bmp";
    }
}

}  // namespace

void CheckImageSize(std::int64_t width, std::int64_t height, const std::string& item) {
    if (width * height > MostPixels) {
        throw Error("Image \"" + item + "\" has more than 64 million pixels");
    }
}

QImage DecodeImage(const std::string& bytes, const std::string& item) {
    const NothingOnStandardError quiet;
    QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    buffer.open(QIODevice::ReadOnly);
    // By its own first bytes: the library would guess at formats that reach for other files.
    QImageReader reader(&buffer, FormatOf(TypeOfImage(bytes, item)));
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isValid()) {
        CheckImageSize(size.width(), size.height(), item);
    }
    constexpr int Megabytes = static_cast<int>(MostPixels * 4 >> 20) + 1;
    QImageReader::setAllocationLimit(Megabytes);  // holds where the size is not told beforehand
    QImage image = reader.read();
    if (image.isNull()) {
        throw Error("Image \"" + item + "\" is damaged and cannot be read");
    }
    CheckImageSize(image.width(), image.height(), item);
    return image;
}

std::string AsPng(const std::string& bytes, const std::string& item) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!DecodeImage(bytes, item).save(&buffer, "PNG")) {
        throw Error("Image \"" + item + "\" cannot be written as a PNG");
    }
    return png.toStdString();
}

}  // namespace rdl::writers
