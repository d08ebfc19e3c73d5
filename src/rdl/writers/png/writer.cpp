// SPDX-License-Identifier: GPL-3.0-or-later
// One page of a report as a picture: Portable Network Graphics (ISO/IEC 15948), which image/png_writer
// writes.
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "rdl/api/size_units.h"
#include "rdl/image/png_writer.h"
#include "rdl/screen/page_codec.h"
#include "rdl/screen/page_painter.h"
#include "rdl/values/error.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers {
namespace {

constexpr double MostPixels = 64e6;

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
    const int width = PixelsOf(page.width, dots), height = PixelsOf(page.height, dots);
    const int dotsPerMeter = static_cast<int>(std::lround(dots * InchesPerMeter));
    image::PngWriter writer(width, height, dotsPerMeter);
    screen::PagePainter pages;
    const int bandHeight = std::max(1, options.pixelsOfBand / width);
    for (int top = 0; top < height; top += bandHeight) {
        QImage band(width, std::min(bandHeight, height - top), QImage::Format_RGB32);
        if (band.isNull()) {
            throw Error("There is no memory for the picture of a page");
        }
        band.fill(Qt::white);
        QPainter painter(&band);
        painter.translate(0, -top);
        painter.scale(scale, scale);
        pages.Draw(page, painter);
        painter.end();
        writer.Add(band);
        output.Write(writer.TakeBytes());
    }
}

}  // namespace rdl::writers
