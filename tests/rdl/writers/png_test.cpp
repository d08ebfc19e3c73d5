// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <algorithm>
#include <cstdlib>

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

// What a band can cut: texts, a turned text, dashes, a gradient, and a picture below a
// text.
std::string FullPage() {
    const std::string frame =
        "<Border><Style>Dashed</Style><Width>3pt</Width><Color>Blue</Color></Border>"
        "<BackgroundColor>Gold</BackgroundColor>";
    return layout::Report(
        layout::Box("a", "Many words that stand in several lines and are cut",
                    "<Height>60pt</Height><Width>90pt</Width><Style>" + frame +
                        "<BackgroundGradientType>DiagonalLeft</BackgroundGradientType>"
                        "<BackgroundGradientEndColor>Green</BackgroundGradientEndColor></Style>") +
        layout::Box("b", "turned",
                    "<Top>70pt</Top><Height>90pt</Height><Width>40pt</Width><Style><WritingMode>Vertical"
                    "</WritingMode><FontSize>20pt</FontSize></Style>") +
        "<Rectangle Name=\"c\"><Top>20pt</Top><Left>110pt</Left><Height>170pt</Height><Width>200pt</Width>"
        "<Style>" +
        frame +
        "<BackgroundGradientType>Center</BackgroundGradientType>"
        "<BackgroundGradientEndColor>White</BackgroundGradientEndColor></Style></Rectangle>"
        "<Line "
        "Name=\"d\"><Top>200pt</Top><Height>-190pt</Height><Width>390pt</Width><Style><Border><Style>DashDot"
        "</Style><Width>2pt</Width></Border></Style></Line>");
}

QImage Picture(const std::string& report, int page, double dots = 96, int pixelsOfBand = 16'000'000) {
    const layout::BuiltKit kit = layout::BuildKit(report, layout::Sales({}));
    StringOutput output;
    Options options;
    options.choices.page = page;
    options.choices.dotsPerInch = dots;
    options.pixelsOfBand = pixelsOfBand;
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

// The largest difference of a colour of two pictures, of 255.
int Difference(const QImage& left, const QImage& right) {
    int most = left.size() == right.size() ? 0 : 255;
    for (int y = 0; y < left.height() && most < 255; ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb one = left.pixel(x, y), other = right.pixel(x, y);
            most = std::max({most, std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                             std::abs(qBlue(one) - qBlue(other))});
        }
    }
    return most;
}

// An edge that a band cuts is rounded in another place: its shade may be another one by a hundredth.
TEST(Png, PageInBandsIsThePageAtOnce) {
    for (const double dots : {96.0, 131.0}) {
        const QImage whole = Picture(FullPage(), 1, dots);
        ASSERT_GT(whole.height(), 300);
        for (const int rows : {1, 37, 150}) {
            EXPECT_LE(Difference(Picture(FullPage(), 1, dots, rows * whole.width()), whole), 4)
                << rows << " rows";
        }
    }
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
