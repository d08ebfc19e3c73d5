// SPDX-License-Identifier: GPL-3.0-or-later
// PDF documents with their logical structure, and those for archives.
#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <sstream>

#include "rdl/image_bytes.h"
#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/drawing.h"
#include "rdl/values/error.h"
#include "rdl/writers/pdf/color_profile.h"
#include "rdl/writers/pdf/file.h"
#include "rdl/writers/pdf/pdf_structure_kit.h"

namespace rdl::writers::test {
namespace {

using layout::Instance;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST_F(PdfStructureTest, IsLeftOutUnlessWanted) {
    const std::string pdf = PdfOf({TextItem("Hello")});
    EXPECT_THAT(pdf,
                AllOf(Not(HasSubstr("/StructTreeRoot")), Not(HasSubstr("/ObjStm")), HasSubstr("xref\n")));
    EXPECT_THAT(PdfOnDisk(pdf).Unpacked(), AllOf(Not(HasSubstr("BDC")), Not(HasSubstr("BMC"))));
}

TEST_F(PdfStructureTest, TextsAreParagraphsAndThoseOfTheDocumentMapHeadings) {
    auto first = TextItem("One"), second = TextItem("Two", 0, 20);
    first.documentMapLabel = "1";
    EXPECT_EQ(Structure(Tagged({first, second})),
              "Document\n"
              "  H1 (block)\n"
              "    \"One\"\n"
              "  P (block)\n"
              "    \"Two\"\n");
}

TEST_F(PdfStructureTest, WordsAreToldApartAtTheEndsOfLines) {
    auto item = TextItem("one two Donau\u00ADdampf\u00ADschiff", 0, 0, 45, 60);
    item.paragraphs.push_back(item.paragraphs.front());
    item.paragraphs.back().runs.front().text = "three";
    item.paragraphs.back().bulleted = true;
    EXPECT_EQ(Structure(Tagged({item})),
              "Document\n"
              "  Div\n"
              "    P (block)\n"
              "      \"one two Donau-dampf-schiff \"\n"
              "    L (block):\n"
              "       /ListNumbering /Disc\n"
              "      LI (block)\n"
              "        Lbl (block)\n"
              "          \"\u2022 \"\n"
              "        LBody (block)\n"
              "          \"three\"\n");
}

TEST_F(PdfStructureTest, HeaderAndFooterAreArtifacts) {
    const std::string pdf = PdfWith({TextItem("Body")}, Choices(false, true), {TextItem("Head")});
    EXPECT_THAT(Structure(pdf), AllOf(HasSubstr("\"Body\""), Not(HasSubstr("Head"))));
    EXPECT_THAT(PdfOnDisk(pdf).Unpacked(), HasSubstr("/Artifact BMC"));
}

TEST_F(PdfStructureTest, ATableOverPagesIsOneAndRepeatedRowsAreArtifacts) {
    const auto table = NumberedRows(120);
    table->repeated = {0};
    const std::string said = Structure(Tagged({TableItem(table)}));
    EXPECT_EQ(Count(said, "Table (block)"), 1u);
    EXPECT_THAT(said, HasSubstr("  Table (block)\n    THead\n      TR\n        TH:"));
    EXPECT_EQ(Count(said, "THead"), 1u);
    EXPECT_EQ(Count(said, "TBody"), 1u);
    EXPECT_LT(said.find("TBody"), said.find("\"Row 1\""));
    EXPECT_EQ(Count(said, " TR\n"), 120u);
    EXPECT_EQ(Count(said, " TH:\n"), 2u);
    EXPECT_EQ(Count(said, " TD\n"), 238u);
    EXPECT_EQ(Count(said, "\"Name\""), 1u);
    EXPECT_EQ(Count(said, "\"Row 119\""), 1u);
    EXPECT_LT(said.find("\"Row 9\""), said.find("\"Row 10\""));
}

TEST_F(PdfStructureTest, CellsSayWhatTheyCover) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {50, 50, 50};
    table->headerColumns = 1;
    table->rows = 2;
    table->make = [](std::size_t i, layout::TableRow& row) {
        if (i == 0) {
            AddCell(row, TextItem("North"), 1, 2);
            AddCell(row, TextItem("Both"), 2);
            return;
        }
        AddCell(row, TextItem("a"));
        AddCell(row, TextItem("b"));
        for (layout::TableCell& cell : row.cells) {
            ++cell.column;
        }
    };
    const std::string unpacked = PdfOnDisk(Tagged({TableItem(table)})).Unpacked();
    EXPECT_THAT(unpacked, HasSubstr("/RowSpan 2"));
    EXPECT_THAT(unpacked, HasSubstr("/ColSpan 2"));
    EXPECT_THAT(unpacked, HasSubstr("/Scope /Row"));
    const std::string said = Structure(Tagged({TableItem(table)}));
    EXPECT_LT(said.find("\"North\""), said.find("\"Both\""));
    EXPECT_EQ(Count(said, "\"North\""), 1u);
}

TEST_F(PdfStructureTest, AGroupsLabelMakesAHeadingOfItsCellAndLevelsAreNotSkipped) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {50, 50};
    table->rows = 2;
    table->make = [](std::size_t i, layout::TableRow& row) {
        row.labels = {{i == 0 ? "North" : "Tea", static_cast<int>(i) * 3 + 2}};
        AddCell(row, TextItem("x"));
        AddCell(row, TextItem(row.labels[0].text));
    };
    EXPECT_THAT(Structure(Tagged({TableItem(table)})), AllOf(HasSubstr("H1 (block)\n          \"North\""),
                                                             HasSubstr("H2 (block)\n          \"Tea\"")));
}

// Each label takes the cell that says it first, and only then one of the cells that are left.
TEST_F(PdfStructureTest, LabelsOfTwoGroupsAreTwoHeadings) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {50, 50};
    table->rows = 1;
    table->make = [](std::size_t, layout::TableRow& row) {
        row.labels = {{"Region North", 0}, {"Tea", 1}};
        AddCell(row, TextItem("Tea"));
        AddCell(row, TextItem("North"));
    };
    EXPECT_THAT(Structure(Tagged({TableItem(table)})),
                AllOf(HasSubstr("(block)\n          \"Tea\""), HasSubstr("H1 (block)\n          \"North\"")));
}

TEST_F(PdfStructureTest, PicturesHaveATextInsteadAndLinksTheirAnnotation) {
    Instance picture = TextItem("");
    picture.paragraphs.clear();
    picture.kind = layout::InstanceKind::Image;
    picture.imageBytes =
        std::make_shared<const std::string>(FileOf(QImage(2, 2, QImage::Format_RGB32), "PNG"));
    picture.toolTip = "A logo";
    auto link = TextItem("Go", 0, 30), dead = TextItem("Lost", 0, 50);
    link.hyperlink = "https://example.com/";
    dead.bookmarkLink = "Nowhere";
    const std::string pdf = Tagged({picture, link, dead});
    const std::string unpacked = PdfOnDisk(pdf).Unpacked();
    EXPECT_THAT(unpacked, AllOf(HasSubstr("/Alt (A logo)"), HasSubstr("/StructParent 1"), HasSubstr("/OBJR"),
                                HasSubstr("/BBox ["), HasSubstr("/O /Layout")));
    EXPECT_THAT(Structure(pdf),
                AllOf(HasSubstr("Figure"), HasSubstr("Link (inline)"), HasSubstr("Span (inline)")));
}

// The objects of a document whose streams are unpacked, by number.
std::string ObjectOf(const std::string& unpacked, const std::string& number) {
    const std::size_t begin = unpacked.find("\n" + number + " 0 obj\n");
    return begin == std::string::npos ? "" : unpacked.substr(begin, unpacked.find("endobj", begin) - begin);
}

// What the parent tree leads to (ISO 32000-1, 14.7.4.4): a list for each page, an element for each link.
TEST_F(PdfStructureTest, TheParentTreeLeadsFromPagesToTheirElementsAndFromLinksToTheirs) {
    std::vector<Instance> items;
    for (int page = 0; page < 3; ++page) {
        for (int link = 0; link < page; ++link) {
            items.push_back(TextItem("Go", 0, 40 * page + 15 * link));
            items.back().hyperlink = "https://example.com/";
            items.back().breakBefore = link == 0;
        }
    }
    items.insert(items.begin(), TextItem("First"));
    const std::string pdf = Tagged(items);
    const std::string unpacked = PdfOnDisk(pdf).Unpacked();
    const std::size_t begin = unpacked.find("/Nums [");
    ASSERT_NE(begin, std::string::npos);
    const std::string nums = unpacked.substr(begin, unpacked.find(']', begin) - begin);
    const std::regex entry(R"((\d+)\s+(\d+) 0 R)");
    std::map<std::string, std::string> kinds;
    for (std::sregex_iterator at(nums.begin(), nums.end(), entry); at != std::sregex_iterator(); ++at) {
        const std::string object = ObjectOf(unpacked, at->str(2));
        kinds[at->str(1)] = object.find("/S /Link") != std::string::npos ? "link"
                            : object.find("obj\n[") != std::string::npos ? "page"
                                                                         : "nothing";
    }
    EXPECT_THAT(kinds, testing::ElementsAre(testing::Pair("0", "page"), testing::Pair("1", "page"),
                                            testing::Pair("2", "link"), testing::Pair("3", "page"),
                                            testing::Pair("4", "link"), testing::Pair("5", "link")));
    for (const char* key : {"/StructParents 0\n", "/StructParents 1\n", "/StructParent 2\n",
                            "/StructParents 3\n", "/StructParent 4\n", "/StructParent 5\n"}) {
        EXPECT_EQ(Count(unpacked, key), 1u) << key;
    }
    EXPECT_EQ(Count(Structure(pdf), "Link (inline)"), 3u);
}

Instance DrawingItem(double x, double width, const std::string& description) {
    Instance item = TextItem("", x, 0, width, 50);
    item.paragraphs.clear();
    item.kind = layout::InstanceKind::Drawing;
    item.name = "Code1";
    auto drawing = std::make_shared<layout::DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = 50;
    drawing->description = description;
    drawing->content.ops.emplace_back(layout::RectOp{0, 0, width, 50, 0xFF000000});
    item.drawing = drawing;
    return item;
}

TEST_F(PdfStructureTest, DrawingsSayWhatTheyShow) {
    const auto textOf = [](const std::string& toolTip, const std::string& description) {
        Instance item = DrawingItem(0, 50, description);
        item.toolTip = toolTip;
        const std::string unpacked = PdfOnDisk(Tagged({item})).Unpacked();
        const std::size_t begin = unpacked.find("/Alt (");
        return begin == std::string::npos ? "" : unpacked.substr(begin, unpacked.find(')', begin) - begin);
    };
    EXPECT_EQ(textOf("Tip", "QR code: 42"), "/Alt (Tip");
    EXPECT_EQ(textOf("", "QR code: 42"), "/Alt (QR code: 42");
    EXPECT_EQ(textOf("", ""), "/Alt (Code1");
}

// Left, bottom, right and top of the only figure.
std::vector<double> BoundsOf(const Instance& item) {
    const std::string unpacked = PdfOnDisk(Tagged({item})).Unpacked();
    const std::size_t begin = unpacked.find("/BBox [");
    std::vector<double> bounds;
    if (begin != std::string::npos) {
        std::istringstream numbers(unpacked.substr(begin + 7));
        for (double number = 0; numbers >> number;) {
            bounds.push_back(number);
        }
    }
    return bounds;
}

TEST_F(PdfStructureTest, AFigureIsAsWideAsItsTexts) {
    const auto drawn = [](double degrees) {
        auto drawing = std::make_shared<layout::DrawingInstance>();
        drawing->content.width = drawing->content.height = 200;
        layout::CharStyle textStyle;
        textStyle.size = 10;
        layout::Canvas(drawing->content).Text("Sales of a year", textStyle, {100, 100}, {}, degrees);
        Instance item = DrawingItem(0, 200, "Sales");
        item.height = 200;
        item.drawing = drawing;
        return BoundsOf(item);
    };
    layout::CharStyle textStyle;
    textStyle.size = 10;
    const double width = layout::Canvas::Measure("Sales of a year", textStyle).width;
    const std::vector<double> level = drawn(0), upright = drawn(90);
    ASSERT_EQ(level.size(), 4u);
    EXPECT_NEAR(level[0], 100 - width / 2, 0.1);
    EXPECT_NEAR(level[2], 100 + width / 2, 0.1);
    EXPECT_NEAR(level[3] - level[1], 10, 0.1);
    ASSERT_EQ(upright.size(), 4u);
    EXPECT_NEAR(upright[3] - upright[1], width, 0.1);
    EXPECT_NEAR(upright[2] - upright[0], 10, 0.1);
}

TEST_F(PdfStructureTest, ADrawingOverTwoPagesSideBySideIsOneFigureOnBoth) {
    auto report = SampleReport({DrawingItem(0, 300, "Sales")});
    report->sections.front()->bodyWidth = 300;
    report->sections.front()->page.width = 200;
    StringOutput output;
    Options options;
    options.choices = Choices(false, true);
    WritePdf(*report, output, options);
    const std::string unpacked = PdfOnDisk(output.bytes).Unpacked();
    EXPECT_EQ(Count(unpacked, "/Alt (Sales)"), 1U);
    EXPECT_EQ(Count(unpacked, "/Figure"), 3U);  // the element, and its part on each page
}

class PdfArchive : public PdfStructureTest {};

// A picture of 8 by 8 points in CMYK: each component has one block, all of whose coefficients are 0 (ITU-T
// T.81).
std::string CmykJpeg() {
    const auto bytes = [](std::initializer_list<int> numbers) {
        std::string out;
        for (const int number : numbers) {
            out += static_cast<char>(number);
        }
        return out;
    };
    const auto table = [&](int kind) {  // one code of one bit, for 0
        return bytes({0xFF, 0xC4, 0, 20, kind, 1}) + std::string(15, '\0') + std::string(1, '\0');
    };
    return bytes({0xFF, 0xD8, 0xFF, 0xDB, 0, 67, 0}) + std::string(64, '\1') +
           bytes({0xFF, 0xC0, 0, 20, 8, 0, 8, 0, 8, 4, 1, 0x11, 0, 2, 0x11, 0, 3, 0x11, 0, 4, 0x11, 0}) +
           table(0x00) + table(0x10) + bytes({0xFF, 0xDA, 0, 14, 4, 1, 0, 2, 0, 3, 0, 4, 0, 0, 63, 0}) +
           bytes({0x00, 0xFF, 0xD9});
}

TEST_F(PdfArchive, PicturesInCmykAreDecoded) {
    Instance picture = TextItem("");
    picture.paragraphs.clear();
    picture.kind = layout::InstanceKind::Image;
    picture.imageBytes = std::make_shared<const std::string>(CmykJpeg());
    EXPECT_THAT(PdfOf({picture}), HasSubstr("/DeviceCMYK"));
    const std::string pdf = ForArchive({picture});
    ExpectSound(pdf);
    EXPECT_THAT(pdf, AllOf(HasSubstr("/ColorSpace/DeviceRGB"), Not(HasSubstr("/DeviceCMYK"))));
}

TEST_F(PdfArchive, StringsEndWhereTheyMust) {
    const std::string many(40'000, 'x');
    EXPECT_EQ(PdfText(many).size(), MostStringBytes + 2);
    const std::string wide = PdfText(many + "\xC3\xA4");
    EXPECT_LE(wide.size(), 2 * MostStringBytes + 2);
    auto link = TextItem("Go");
    link.bookmarkLink = link.bookmark = many;
    EXPECT_THAT(ForArchive({link}), AllOf(Not(HasSubstr("/Annot")), Not(HasSubstr("/Dests"))));
    auto item = TextItem(many.substr(0, 17'000), 0, 0, 9000);
    auto textStyle = std::make_shared<layout::CharStyle>();
    textStyle->size = 1;
    item.paragraphs[0].runs[0].style = textStyle;
    auto report = SampleReport({item});
    report->sections.front()->page.width = 10'000;
    const std::string unpacked = PdfOnDisk(PdfOf(*report)).Unpacked();
    EXPECT_EQ(Count(unpacked, "Tj ") + Count(unpacked, "TJ "), 3u);
}

TEST_F(PdfArchive, HasOutputIntentAndMetadataOnlyIfWanted) {
    EXPECT_THAT(PdfOf({TextItem("x")}), AllOf(Not(HasSubstr("pdfaid")), Not(HasSubstr("/OutputIntents"))));
    const std::string pdf = ForArchive({TextItem("x")});
    ExpectSound(pdf);
    EXPECT_THAT(pdf,
                AllOf(HasSubstr("<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>"),
                      HasSubstr("/S/GTS_PDFA1"), Not(HasSubstr("/StructTreeRoot"))));
}

TEST_F(PdfArchive, PropertiesOfMetadataAndInformationAreEqualWhateverTheyHold) {
    auto report = SampleReport({TextItem("x")});
    report->title = "A <b> & \x01 \xC3\xA4 \xFF";
    report->author = "Ann & Bo";
    StringOutput output;
    Options options;
    options.choices.forArchive = true;
    WritePdf(*report, output, options);
    EXPECT_THAT(
        output.bytes,
        AllOf(HasSubstr("<rdf:li xml:lang=\"x-default\">A &lt;b&gt; &amp;   \xC3\xA4 \xEF\xBF\xBD</rdf:li>"),
              HasSubstr("<rdf:li>Ann &amp; Bo</rdf:li>"), HasSubstr("/Author(Ann & Bo)")));
    EXPECT_THAT(output.bytes, HasSubstr("/Title" + PdfText("A <b> &   \xC3\xA4 \xEF\xBF\xBD")));
    EXPECT_THAT(output.bytes, Not(HasSubstr("dc:description")));
}

TEST_F(PdfArchive, CharactersThatNoFontHasAreBoxesAndStillRead) {
    const PdfOnDisk pdf(ForArchive({TextItem("a\U0010FFF0z\U0010FFF1", 0, 0, 300)}));
    EXPECT_THAT(pdf.Text(), HasSubstr("a\U0010FFF0z\U0010FFF1"));
    const std::string unpacked = pdf.Run("qpdf --qdf --normalize-content=n {} -").said;
    EXPECT_EQ(Count(unpacked, " re S"), 2u);
    const std::size_t begin = unpacked.find("BT "), end = unpacked.find("ET\n");
    ASSERT_LT(begin, end);
    EXPECT_EQ(unpacked.substr(begin, end - begin).find(std::string("\0\0", 2)), std::string::npos);
}

TEST_F(PdfArchive, LinksArePrinted) {
    auto link = TextItem("Go");
    link.hyperlink = "https://example.com/";
    EXPECT_THAT(ForArchive({link}), HasSubstr("/F 4>>"));
}

TEST_F(PdfArchive, APageThatIsTooLargeIsAnError) {
    auto report = SampleReport({TextItem("x")});
    report->sections.front()->page.width = 20'000;
    StringOutput output;
    Options options;
    options.choices.forArchive = true;
    try {
        WritePdf(*report, output, options);
        FAIL();
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), HasSubstr("PDF/A: a page of 20000 x "));
    }
}

TEST(PdfFile, TooManyObjectsAreAnError) {
    StringOutput output;
    PdfFile file(output);
    file.Limit(2, "PDF/A");
    file.Reserve();
    file.Reserve();
    try {
        file.Reserve();
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "PDF/A: the document has more than 2 objects");
    }
}

TEST(SrgbProfile, HasItsSizeAndSignature) {
    const std::string profile = SrgbProfile();
    EXPECT_EQ(profile.size() % 4, 0u);
    EXPECT_LT(profile.size(), 700u);
    EXPECT_EQ(static_cast<std::size_t>(static_cast<unsigned char>(profile[2])) << 8 |
                  static_cast<unsigned char>(profile[3]),
              profile.size());
    EXPECT_EQ(profile.substr(36, 4), "acsp");
}

}  // namespace
}  // namespace rdl::writers::test
