// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/picture.h"

#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <cmath>

#include "rdl/api/size_units.h"
#include "rdl/screen/page_painter.h"
#include "rdl/values/error.h"

namespace rdl::screen {
namespace {

constexpr double DotsPerInch = 192, MostPixels = 16e6;

}  // namespace

std::shared_ptr<const std::string> PictureOf(const layout::DrawingInstance& drawing) {
    const double width = std::max(drawing.content.width, 1.0), height = std::max(drawing.content.height, 1.0);
    const double scale = std::min(DotsPerInch / PointsPerInch, std::sqrt(MostPixels / (width * height)));
    QImage image(std::max(1, static_cast<int>(std::lround(width * scale))),
                 std::max(1, static_cast<int>(std::lround(height * scale))),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        throw Error("There is no memory for the picture of a chart");
    }
    image.fill(QColor::fromRgba(drawing.background));
    const int perMeter = static_cast<int>(std::lround(scale * PointsPerInch * InchesPerMeter));
    image.setDotsPerMeterX(perMeter);
    image.setDotsPerMeterY(perMeter);
    {
        QPainter painter(&image);
        painter.scale(scale, scale);
        PagePainter().Draw(drawing.content, painter);
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw Error("The picture of a chart cannot be written");
    }
    return std::make_shared<const std::string>(png.toStdString());
}

}  // namespace rdl::screen
