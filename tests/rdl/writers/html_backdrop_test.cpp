// SPDX-License-Identifier: GPL-3.0-or-later
// Background images and gradients in style sheets.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::BackgroundPicture;
using layout::BoxStyle;
using layout::Gradient;
using layout::Instance;

const std::string Png = "\x89PNG\r\n\x1a\n";

std::string HtmlOf(const std::vector<BoxStyle>& boxes) {
    std::vector<Instance> items;
    for (const BoxStyle& box : boxes) {
        items.push_back(TextItem("x", 0, 20.0 * static_cast<double>(items.size())));
        items.back().box = std::make_shared<const BoxStyle>(box);
    }
    StringOutput output;
    WriteHtml(*SampleReport(std::move(items)), output, {});
    return output.bytes;
}

BoxStyle WithPicture(BackgroundPicture::Repeat repeat, float alignX = 0, float alignY = 0) {
    BackgroundPicture picture;
    picture.bytes = std::make_shared<const std::string>(Png);
    picture.mimeType = "text/html;x";
    picture.repeat = repeat;
    picture.alignX = alignX;
    picture.alignY = alignY;
    BoxStyle box;
    box.picture = std::make_shared<const BackgroundPicture>(picture);
    return box;
}

TEST(HtmlBackdrop, APictureStandsInTheFileOnceAndIsWhatItsBytesSay) {
    const std::string html = HtmlOf(
        {WithPicture(BackgroundPicture::Repeat::Both), WithPicture(BackgroundPicture::Repeat::Across)});
    EXPECT_EQ(Count(html, "url(data:image/png;base64,iVBORw0KGgo=)"), 1U);
    EXPECT_EQ(Count(html, "text/html;x"), 0U);
    EXPECT_EQ(Count(html, "background-image:var(--p1);background-repeat:repeat;"), 1U);
    EXPECT_EQ(Count(html, "background-image:var(--p1);background-repeat:repeat-x;"), 1U);
}

TEST(HtmlBackdrop, APictureThatStandsOnceHasItsPlace) {
    EXPECT_EQ(Count(HtmlOf({WithPicture(BackgroundPicture::Repeat::None, 0.5F, 1)}),
                    "background-repeat:no-repeat;background-position:50% 100%;"),
              1U);
    EXPECT_EQ(Count(HtmlOf({WithPicture(BackgroundPicture::Repeat::Stretch)}), "background-size:100% 100%;"),
              1U);
}

TEST(HtmlBackdrop, GradientsRunTheWayTheyAreTold) {
    const auto gradient = [](Gradient kind) {
        BoxStyle box;
        box.background = 0xFF102030;
        box.gradient = kind;
        box.gradientEnd = 0xFF405060;
        return HtmlOf({box});
    };
    EXPECT_EQ(Count(gradient(Gradient::LeftRight), "linear-gradient(to right,#102030,#405060)"), 1U);
    EXPECT_EQ(
        Count(gradient(Gradient::HorizontalCenter), "linear-gradient(to bottom,#405060,#102030,#405060)"),
        1U);
    EXPECT_EQ(Count(gradient(Gradient::Center), "radial-gradient(farthest-side,#102030,#405060)"), 1U);
}

}  // namespace
}  // namespace rdl::writers
