// SPDX-License-Identifier: GPL-3.0-or-later
// Lines, areas, clips and images of PDF pages.
#include <gmock/gmock.h>
#include <libdeflate.h>

#include <QImage>

#include "rdl/image_bytes.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"
#include "rdl/writers/pdf/content.h"
#include "rdl/writers/pdf/pdf_kit.h"

namespace rdl::writers::test {
namespace {

using layout::LineStyle;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
        ++count;
    }
    return count;
}

class PdfDrawing : public testing::Test {
 protected:
    std::string Draw(std::vector<layout::Op> ops) {
        layout::Page page;
        page.ops = std::move(ops);
        return m_content.Draw(page, 100);
    }
    StringOutput m_output;
    PdfFile m_file{m_output};
    PdfFonts m_fonts;
    PdfImages m_images{m_file};
    PdfContent m_content{m_fonts, m_images};
};

layout::LineOp LineOf(LineStyle style, layout::Color color = layout::Black) {
    return {10, 20, 60, 20, 2, color, style};
}

TEST_F(PdfDrawing, YIsMeasuredFromTheBottom) {
    EXPECT_THAT(Draw({layout::RectOp{10, 20, 30, 5, 0xFF00FF00}}), HasSubstr("0 1 0 rg 10 75 30 5 re f"));
    EXPECT_THAT(Draw({LineOf(LineStyle::Solid)}), HasSubstr("2 w 10 80 m 60 80 l S"));
}

TEST_F(PdfDrawing, LinesAlikeSayOnceHowTheyAreDrawn) {
    const auto solid = LineOf(LineStyle::Solid), dotted = LineOf(LineStyle::Dotted);
    const std::string out = Draw({solid, solid, dotted, dotted, solid});
    EXPECT_EQ(CountOf("2 w ", out), 1u);
    EXPECT_EQ(CountOf("[2 2 ] 0 d ", out), 1u);
    EXPECT_EQ(CountOf("[] 0 d ", out), 1u);
    EXPECT_EQ(CountOf(" S\n", out), 5u);
}

TEST_F(PdfDrawing, DashesGoWithTheWidth) {
    EXPECT_THAT(Draw({LineOf(LineStyle::Dotted)}), HasSubstr("[2 2 ] 0 d"));
    EXPECT_THAT(Draw({LineOf(LineStyle::Dashed)}), HasSubstr("[6 4 ] 0 d"));
    EXPECT_THAT(Draw({LineOf(LineStyle::DashDot)}), HasSubstr("[6 4 2 4 ] 0 d"));
    EXPECT_THAT(Draw({LineOf(LineStyle::DashDotDot)}), HasSubstr("[6 4 2 4 2 4 ] 0 d"));
    EXPECT_THAT(Draw({LineOf(LineStyle::None)}), Not(HasSubstr(" S")));
}

TEST_F(PdfDrawing, ADoubleLineIsTwoOfAThird) {
    const std::string out = Draw({LineOf(LineStyle::Double)});
    EXPECT_EQ(CountOf(" S\n", out), 2u);
    EXPECT_THAT(out, AllOf(HasSubstr("0.667 w"), HasSubstr("79.333 m"), HasSubstr("80.667 m")));
}

TEST_F(PdfDrawing, SeeThroughColoursAreStatesOfTheirOwn) {
    const std::string out =
        Draw({layout::RectOp{0, 0, 9, 9, 0x80FF0000}, layout::RectOp{0, 0, 9, 9, 0xFFFF0000},
              layout::RectOp{0, 0, 8, 8, 0x00FF0000}});
    EXPECT_LT(out.find("/A128 gs"), out.find("/A255 gs"));
    EXPECT_THAT(m_content.Resources(), HasSubstr("/A128<</ca 0.502/CA 0.502>>"));
    EXPECT_THAT(out, Not(HasSubstr("8 8 re")));  // not there at all
}

TEST_F(PdfDrawing, FillAndOutlineMayBeSeeThroughDifferently) {
    layout::PathOp path;
    using Segment = layout::PathOp::Segment;
    path.segments = {{Segment::Move, {0}, {0}},
                     {Segment::LineTo, {9}, {0}},
                     {Segment::LineTo, {9}, {9}},
                     {Segment::Close, {}, {}}};
    path.fill = 0x40FF0000;
    path.stroke = layout::Black;
    path.strokeWidth = 1;
    path.strokeStyle = LineStyle::Solid;
    const std::string out = Draw({path});
    EXPECT_LT(out.find("/A64 gs"), out.find("h f\n"));
    EXPECT_LT(out.find("h f\n"), out.find("/A255 gs"));
    EXPECT_LT(out.find("/A255 gs"), out.find("h S\n"));
}

TEST_F(PdfDrawing, ClipsAlwaysEnd) {
    const layout::ClipOp clip{0, 0, 5, 5};
    for (const std::vector<layout::Op>& ops : {std::vector<layout::Op>{clip},
                                               {clip, clip, layout::UnclipOp{}},
                                               {layout::UnclipOp{}, clip},
                                               {clip, layout::UnclipOp{}, layout::UnclipOp{}},
                                               {}}) {
        const std::string out = Draw(ops);
        EXPECT_EQ(CountOf("q ", out) + CountOf("q\n", out), CountOf("Q\n", out)) << out;
        EXPECT_EQ(out.substr(0, 2), "q\n");
        EXPECT_TRUE(out.ends_with("Q\n"));
    }
}

TEST_F(PdfDrawing, ColoursAfterAClipAreTheOnesBeforeIt) {
    const std::string out = Draw({layout::ClipOp{0, 0, 5, 5}, layout::RectOp{0, 0, 9, 9, 0xFFFF0000},
                                  layout::UnclipOp{}, layout::RectOp{0, 0, 7, 7, 0xFFFF0000}});
    EXPECT_EQ(CountOf("1 0 0 rg", out), 2u);
}

std::shared_ptr<const std::string> Stored(const QImage& image, const char* format) {
    return std::make_shared<const std::string>(FileOf(image, format));
}

QImage Picture(bool alpha = false) {
    QImage image(20, 10, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image.fill(alpha ? QColor(255, 0, 0, 128) : QColor(0, 0, 255));
    return image;
}

layout::ImageOp ImageOf(std::shared_ptr<const std::string> bytes) {
    return {10, 20, 40, 30, std::move(bytes), "Logo"};
}

TEST_F(PdfDrawing, AJpegGoesInAsItIs) {
    const auto jpeg = Stored(Picture(), "JPEG");
    const std::string out = Draw({ImageOf(jpeg)});
    EXPECT_THAT(out, HasSubstr("40 0 0 30 10 50 cm /I"));
    EXPECT_THAT(m_output.bytes,
                AllOf(HasSubstr(*jpeg), HasSubstr("/DCTDecode"), HasSubstr("/Width 20/Height 10")));
}

TEST_F(PdfDrawing, AGreyJpegIsGrey) {
    Draw({ImageOf(Stored(Picture().convertToFormat(QImage::Format_Grayscale8), "JPEG"))});
    EXPECT_THAT(m_output.bytes, HasSubstr("/DeviceGray"));
}

TEST_F(PdfDrawing, TransparencyOfAPngIsAMask) {
    Draw({ImageOf(Stored(Picture(true), "PNG"))});
    EXPECT_THAT(m_output.bytes, AllOf(HasSubstr("/SMask"), HasSubstr("/DeviceGray")));
}

TEST_F(PdfDrawing, APngWithoutTransparencyHasNoMask) {
    Draw({ImageOf(Stored(Picture(), "PNG"))});
    EXPECT_THAT(m_output.bytes, AllOf(Not(HasSubstr("/SMask")), HasSubstr("/DeviceRGB")));
}

// The pixels of the image whose entries have `mark`, unpacked.
std::string PixelsOf(const std::string& pdf, const std::string& mark, std::size_t size) {
    const std::size_t entries = pdf.find(mark), begin = pdf.find("stream\n", entries) + 7;
    const std::size_t end = pdf.find("\nendstream", begin);
    std::string pixels(size, '\0');
    std::size_t written = 0;
    libdeflate_decompressor* const reader = libdeflate_alloc_decompressor();
    EXPECT_EQ(
        libdeflate_zlib_decompress(reader, pdf.data() + begin, end - begin, pixels.data(), size, &written),
        LIBDEFLATE_SUCCESS);
    libdeflate_free_decompressor(reader);
    pixels.resize(written);
    return pixels;
}

// More than four million pixels come row by row.
TEST_F(PdfDrawing, ALargePngHasItsPixelsAndItsMask) {
    constexpr int Width = 2050, Height = 2000;
    QImage image(Width, Height, QImage::Format_RGBA8888);
    for (int y = 0; y < Height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill(line, line + Width, static_cast<QRgb>(0x01020300 + (y % 200) * 0x01000001));
    }
    Draw({ImageOf(Stored(image, "PNG"))});
    EXPECT_EQ(CountOf("/Subtype/Image/Width 2050/Height 2000/BitsPerComponent 8", m_output.bytes), 2u);
    EXPECT_THAT(m_output.bytes, HasSubstr("/ColorSpace/DeviceRGB/SMask 1 0 R"));
    std::string colors, mask;
    for (int y = 0; y < Height; ++y) {
        const auto* line = image.constScanLine(y);
        for (int x = 0; x < Width; ++x, line += 4) {
            colors.append(line, line + 3);
            mask.append(1, static_cast<char>(line[3]));
        }
    }
    EXPECT_TRUE(PixelsOf(m_output.bytes, "/DeviceRGB", colors.size() + 1) == colors);
    EXPECT_TRUE(PixelsOf(m_output.bytes, "/DeviceGray", mask.size() + 1) == mask);
}

TEST_F(PdfDrawing, TheSameImageIsWrittenOnce) {
    const auto one = Stored(Picture(), "PNG");
    const auto loadedAgain = std::make_shared<const std::string>(*one);
    Draw({ImageOf(one), ImageOf(one), ImageOf(loadedAgain)});
    EXPECT_EQ(CountOf("/Subtype/Image", m_output.bytes), 1u);
    Draw({ImageOf(Stored(Picture(true), "BMP"))});
    EXPECT_GT(CountOf("/Subtype/Image", m_output.bytes), 1u);
}

TEST_F(PdfDrawing, ADamagedImageIsAnErrorThatNamesTheItem) {
    const std::string png = *Stored(Picture(), "PNG"), jpeg = *Stored(Picture(), "JPEG");
    const std::string noPicture =
        "<svg xmlns=\"http://www.w3.org/2000/svg\"><image href=\"/etc/passwd\"/></svg>";
    for (const std::string& bytes : {png.substr(0, png.size() / 2), png.substr(0, 20), jpeg.substr(0, 30),
                                     std::string("GIF89a"), std::string("BM"), noPicture}) {
        const auto stored = std::make_shared<const std::string>(bytes);
        EXPECT_THAT(ErrorRaisedBy([&] { Draw({ImageOf(stored)}); }),
                    testing::StartsWith("Image \"Logo\" is "))
            << bytes;
    }
}

// A PNG up to where its pixels begin, of any size.
std::string PngHeader(std::uint32_t width, std::uint32_t height) {
    std::string chunk = "IHDR";
    for (const std::uint32_t number : {width, height}) {
        for (const int shift : {24, 16, 8, 0}) {
            chunk += static_cast<char>(number >> shift);
        }
    }
    chunk += std::string("\x08\x02\0\0\0", 5);
    const auto sum = static_cast<std::uint32_t>(libdeflate_crc32(0, chunk.data(), chunk.size()));
    std::string png = std::string("\x89PNG\r\n\x1A\n\0\0\0\x0D", 12) + chunk;
    for (const int shift : {24, 16, 8, 0}) {
        png += static_cast<char>(sum >> shift);
    }
    return png + std::string("\0\0\0\x10IDAT", 8);
}

TEST_F(PdfDrawing, ABombIsRefusedBeforeItIsUnpacked) {
    const auto png = std::make_shared<const std::string>(PngHeader(60'000, 60'000));
    EXPECT_EQ(ErrorRaisedBy([&] { Draw({ImageOf(png)}); }), "Image \"Logo\" has more than 64 million pixels");
    std::string jpeg = *Stored(Picture(), "JPEG");
    const std::size_t frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    jpeg.replace(frame + 5, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(ErrorRaisedBy([&] { Draw({ImageOf(std::make_shared<const std::string>(jpeg))}); }),
              "Image \"Logo\" has more than 64 million pixels");
}

TEST_F(PdfDrawing, RandomlyChangedImagesAreReadOrRefused) {
    std::uint32_t seed = 7;
    const auto next = [&seed] { return (seed = seed * 1664525u + 1013904223u) >> 8; };
    for (const char* format : {"PNG", "JPEG", "BMP"}) {
        const std::string whole = *Stored(Picture(), format);
        for (int round = 0; round < 40; ++round) {
            std::string bytes = whole;
            for (int change = 0; change < 3; ++change) {
                bytes[2 + next() % (bytes.size() - 2)] = static_cast<char>(next());
            }
            const std::string said =
                ErrorRaisedBy([&] { Draw({ImageOf(std::make_shared<const std::string>(bytes))}); });
            EXPECT_TRUE(said.empty() || said.rfind("Image \"Logo\" ", 0) == 0) << said;
        }
    }
}

TEST_F(PdfDrawing, PagesWithImagesAreSound) {
    NEEDS_PROGRAM("qpdf");
    layout::Instance image = TextItem("");
    image.kind = layout::InstanceKind::Image;
    image.paragraphs.clear();
    image.imageBytes = Stored(Picture(true), "PNG");
    layout::Instance photo = image;
    photo.y = 50;
    photo.imageBytes = Stored(Picture(), "JPEG");
    ExpectSound(PdfOf({image, photo}));
}

TEST_F(PdfDrawing, APictureAfterASeeThroughBoxIsNotSeeThrough) {
    const std::string out = Draw({layout::RectOp{0, 0, 9, 9, 0x80FF0000}, ImageOf(Stored(Picture(), "PNG"))});
    EXPECT_THAT(out, HasSubstr("q /A255 gs 40 0 0 30 10 50 cm /I1 Do Q\n"));
}

TEST_F(PdfDrawing, ALineWithoutWidthHasDashesAllTheSame) {
    layout::LineOp line = LineOf(LineStyle::Dashed);
    line.width = 0;
    EXPECT_THAT(Draw({line}), HasSubstr("0 w [0.75 0.5 ] 0 d "));
    line.width = 0.2F;
    EXPECT_THAT(Draw({line}), HasSubstr("0.2 w [0.75 0.5 ] 0 d "));
}

TEST_F(PdfDrawing, DashesFollowTheWidthOfEachLine) {
    layout::LineOp wide = LineOf(LineStyle::Dashed);
    wide.width = 4;
    EXPECT_THAT(Draw({LineOf(LineStyle::Dashed), wide}),
                AllOf(HasSubstr("2 w [6 4 ] 0 d "), HasSubstr("4 w [12 8 ] 0 d ")));
}

// A bare carriage return in a string is read as a line feed, and parentheses and the backslash have a
// meaning.
TEST_F(PdfDrawing, BytesOfGlyphsKeepTheirValueInStrings) {
    const auto drawn = [this](std::uint16_t glyph) {
        layout::Page page;
        page.text = "x";
        page.glyphs = {{glyph, 5, 0, 0, 0}};
        page.ops = {
            layout::TextOp{1, 2, 10, layout::Black, text::FindFont({"Arial", false, false}), 0, 1, 0, 1, 0}};
        const std::string out = m_content.Draw(page, 100);
        const std::size_t begin = out.find(" Td ") + 4;
        return out.substr(begin, out.find("Tj ") - begin);
    };
    EXPECT_EQ(drawn(0x000D), std::string("(\0\\r)", 5));
    EXPECT_EQ(drawn(0x0D41), "(\\rA)");
    EXPECT_EQ(drawn(0x000A), std::string("(\0\n)", 4));
    EXPECT_EQ(drawn(0x2829), "(\\(\\))");
    EXPECT_EQ(drawn(0x415C), "(A\\\\)");
}

}  // namespace
}  // namespace rdl::writers::test
