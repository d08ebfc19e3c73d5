// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in Word documents.
#include <gmock/gmock.h>

#include "rdl/image_bytes.h"
#include "rdl/raises.h"
#include "rdl/writers/docx_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using testing::ElementsAre;
using testing::HasSubstr;

Instance Picture(const std::string& bytes) {
    Instance image = PictureItem(bytes);
    image.toolTip = "The \"logo\"";
    return image;
}

TEST(Docx, PicturesHaveTheirSizeAndAlternativeText) {
    const std::string docx = Docx(SampleReport({Picture(SmallPicture("PNG"))}));
    EXPECT_EQ(ZipPart(docx, "word/media/image1.png"), SmallPicture("PNG"));
    const DocxRead document(ZipPart(docx, "word/document.xml"));
    EXPECT_THAT(document.xml(), HasSubstr("<wp:extent cx=\"635000\" cy=\"317500\"/><wp:docPr id=\"1\" "
                                          "name=\"Logo\" descr=\"The &quot;logo&quot;\"/>"));
    const std::string id = document.Texts("//a:blip/@r:embed").at(0);
    EXPECT_THAT(DocxRead(ZipPart(docx, "word/_rels/document.xml.rels"))
                    .Texts("//Relationship[@Id='" + id + "']/@Target"),
                ElementsAre("media/image1.png"));
}

TEST(Docx, EqualPicturesAreStoredOnce) {
    Instance second = Picture(SmallPicture("PNG")), third = Picture(SmallPicture("JPG"));
    second.y = 30;
    third.y = 60;
    const std::string docx = Docx(SampleReport({Picture(SmallPicture("PNG")), second, third}, {second}));
    EXPECT_EQ(Count(docx, "word/media/image1.png"), 2U);  // its header, and its entry of the directory
    EXPECT_EQ(Count(docx, "word/media/image2.jpeg"), 2U);
    EXPECT_EQ(Count(docx, "word/media/"), 4U);
    EXPECT_THAT(ZipPart(docx, "word/_rels/header1.xml.rels"), HasSubstr("Target=\"media/image1.png\""));
    EXPECT_THAT(DocxRead(ZipPart(docx, "word/document.xml")).Texts("//wp:docPr/@id"),
                ElementsAre("2", "3", "4"));
}

TEST(Docx, PicturesOfOtherKindsBecomePng) {
    EXPECT_EQ(
        ZipPart(Docx(SampleReport({Picture(SmallPicture("BMP"))})), "word/media/image1.png").substr(1, 3),
        "PNG");
    EXPECT_THAT(ErrorRaisedBy([] { Docx(SampleReport({Picture("<svg>")})); }), HasSubstr("\"Logo\""));
}

TEST(Docx, ClippedPicturesAreCut) {
    Instance image = Picture(SmallPicture("PNG"));  // 8 by 4 pixels: 6 by 3 points
    image.sizing = Instance::Sizing::Clip;
    image.width = 4.5;
    EXPECT_THAT(DocxRead(SampleReport({image})).xml(), HasSubstr("<a:srcRect r=\"25000\" b=\"0\"/>"));
    EXPECT_THAT(DocxRead(SampleReport({image})).Texts("//wp:extent/@cx"), ElementsAre("57150"));
}

}  // namespace
}  // namespace rdl::writers
