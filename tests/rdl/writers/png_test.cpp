// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtGui/QImage>

#include "rdl/layout/report_kit.h"
#include "rdl/raises.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

// Two pages of 400 by 300 points; the second one is red.
std::string TwoPages() {
    return layout::Report(
        layout::Box("a", "first", "<Height>20pt</Height><Width>100pt</Width>") +
        "<Rectangle Name=\"b\"><PageBreak><BreakLocation>Start</BreakLocation></PageBreak><Top>20pt</Top>"
        "<Height>200pt</Height><Width>400pt</Width><Style><BackgroundColor>#ff0000</BackgroundColor></Style>"
        "</Rectangle>");
}

QImage Picture(const std::string& report, int page, double dots = 96) {
    const layout::BuiltKit kit = layout::BuildKit(report, layout::Sales({}));
    test::StringOutput output;
    Options options;
    options.choices.page = page;
    options.choices.dotsPerInch = dots;
    WritePng(*kit.report, output, options);
    return QImage::fromData(QByteArray::fromStdString(output.bytes));
}

TEST(Png, PageHasItsSizeAndColours) {
    const QImage first = Picture(TwoPages(), 1);
    EXPECT_EQ(first.size(), QSize(533, 400));
    EXPECT_EQ(first.pixelColor(200, 100), QColor(Qt::white));
    EXPECT_EQ(first.dotsPerMeterX(), 3780);
    EXPECT_EQ(Picture(TwoPages(), 2).pixelColor(200, 100), QColor(Qt::red));
}

TEST(Png, ResolutionIsTheWantedOne) {
    EXPECT_EQ(Picture(TwoPages(), 1, 192).size(), QSize(1067, 800));
}

TEST(Png, PageThatDoesNotExistIsAnError) {
    EXPECT_EQ(ErrorRaisedBy([] { Picture(TwoPages(), 3); }), "There is no page 3: the report has 2 pages");
}

TEST(Png, PictureOfTooManyPixelsIsAnError) {
    EXPECT_EQ(ErrorRaisedBy([] { Picture(TwoPages(), 1, 2400); }),
              "The page has more than 64 million pixels");
}

}  // namespace
}  // namespace rdl::writers
