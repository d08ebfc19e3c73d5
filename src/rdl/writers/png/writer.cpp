// SPDX-License-Identifier: GPL-3.0-or-later
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "rdl/screen/page_codec.h"
#include "rdl/screen/page_painter.h"
#include "rdl/values/error.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers {
namespace {

constexpr double PointsPerInch = 72, InchesPerMeter = 1 / 0.0254, MostPixels = 64e6;

// Makes the pages up to the wanted one, and all of them if it shows their number.
layout::Page PageOf(layout::ReportInstance& report, int wanted) {
    const std::unique_ptr<layout::PageStream> stream = layout::OpenPages(report);
    layout::Page page, other;
    int count = 0;
    while (count < wanted || stream->UsesTotals()) {
        layout::Page& target = count + 1 == wanted ? page : other;
        target.Clear();
        if (!stream->NextBody(target)) {
            break;
        }
        ++count;
    }
    if (count < wanted) {
        throw Error("There is no page " + std::to_string(wanted) + ": the report has " +
                    std::to_string(count) + (count == 1 ? " page" : " pages"));
    }
    layout::Page margins;
    stream->MarginsOf(wanted - 1, stream->UsesTotals() ? count : 0, margins);
    screen::AppendPage(page, margins);
    return page;
}

int PixelsOf(double points, double dotsPerInch) {
    return std::max(1, static_cast<int>(std::lround(points / PointsPerInch * dotsPerInch)));
}

}  // namespace

void WritePng(layout::ReportInstance& report, Output& output, const Options& options) {
    const layout::Page page = PageOf(report, options.choices.page);
    const double dots = options.choices.dotsPerInch;
    const double scale = dots / PointsPerInch;
    if (page.width * scale * page.height * scale > MostPixels) {
        throw Error("The page has more than 64 million pixels");
    }
    QImage image(PixelsOf(page.width, dots), PixelsOf(page.height, dots), QImage::Format_RGB32);
    if (image.isNull()) {
        throw Error("There is no memory for the picture of a page");
    }
    image.fill(Qt::white);
    image.setDotsPerMeterX(static_cast<int>(std::lround(dots * InchesPerMeter)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    {
        QPainter painter(&image);
        painter.scale(scale, scale);
        screen::PagePainter().Draw(page, painter);
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw Error("The picture of a page cannot be written");
    }
    output.Write(png.constData(), static_cast<std::size_t>(png.size()));
}

}  // namespace rdl::writers
