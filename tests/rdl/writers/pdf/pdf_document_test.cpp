// SPDX-License-Identifier: GPL-3.0-or-later
// The outer form of PDF documents, their texts, fonts, facts, links and outline.
#include <gmock/gmock.h>

#include <cmath>
#include <regex>

#include "rdl/text/fonts.h"
#include "rdl/values/error.h"
#include "rdl/writers/pdf/file.h"
#include "rdl/writers/pdf/pdf_kit.h"

namespace rdl::writers::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

bool HasFont(const std::string& family) {
    return text::File(text::FindFont({family})).family == family;
}

class PdfDocument : public testing::Test {
 protected:
    void SetUp() override {
        NEEDS_PROGRAM("qpdf");
        NEEDS_PROGRAM("pdftotext");
    }
};

TEST_F(PdfDocument, IsVersion17AndSound) {
    const std::string pdf = PdfOf({TextItem("Hello")});
    EXPECT_THAT(pdf, StartsWith("%PDF-1.7\n"));
    EXPECT_TRUE(pdf.ends_with("%%EOF\n"));
    ExpectSound(pdf);
}

TEST_F(PdfDocument, TableOfPlacesLeadsToEachObject) {
    const std::string pdf = PdfOf({TextItem("Hello")});
    const std::size_t start = std::stoul(pdf.substr(pdf.rfind("startxref\n") + 10));
    ASSERT_EQ(pdf.substr(start, 7), "xref\n0 ");
    const int count = std::stoi(pdf.substr(start + 7));
    std::size_t entry = pdf.find('\n', start + 7) + 1;
    for (int i = 0; i < count; ++i, entry += 20) {
        if (pdf[entry + 17] == 'n') {
            const std::string head = std::to_string(i) + " 0 obj";
            EXPECT_EQ(pdf.substr(std::stoul(pdf.substr(entry, 10)), head.size()), head);
        }
    }
    EXPECT_EQ(pdf.substr(entry, 7), "trailer");
}

TEST_F(PdfDocument, AReportWithoutAnythingIsAPage) {
    const std::string pdf = PdfOf(std::vector<layout::Instance>());
    ExpectSound(pdf);
    EXPECT_THAT(PdfOnDisk(pdf).Unpacked(), HasSubstr("/Count 1"));
}

TEST_F(PdfDocument, IsTheSameBytesWhateverRanBefore) {
    const auto make = [] { return PdfOf({TextItem("Totals äöü \u2603 1,234.50")}); };
    const std::string first = make();
    // Fonts that no report asked for before change the numbers of those that come later, but not the
    // document.
    text::FindFont({"Courier New", true, true});
    auto other = TextItem("Other");
    auto textStyle = std::make_shared<layout::CharStyle>();
    textStyle->family = "Times New Roman";
    other.paragraphs[0].runs[0].style = textStyle;
    PdfOf({other});
    EXPECT_EQ(make(), first);
}

TEST_F(PdfDocument, FontsAreNumberedByTheDocument) {
    auto item = TextItem("Only");
    auto textStyle = std::make_shared<layout::CharStyle>();
    textStyle->family = "Courier New";
    textStyle->bold = true;
    item.paragraphs[0].runs[0].style = textStyle;
    text::FindFont({"Times New Roman"});
    const std::string unpacked = PdfOnDisk(PdfOf({item})).Unpacked();
    EXPECT_THAT(unpacked, HasSubstr("/F1 10 Tf"));
    EXPECT_THAT(unpacked, Not(HasSubstr("/F0")));
}

TEST_F(PdfDocument, WordsAndSpacesAreRead) {
    const PdfOnDisk pdf(PdfOf({TextItem("Größe über 12 µm (50 %) fi \\ )(", 0, 0, 300)}));
    EXPECT_THAT(pdf.Text(), HasSubstr("Größe über 12 µm (50 %) fi \\ )("));
}

TEST_F(PdfDocument, MarksAreReadWithTheirLetter) {
    const PdfOnDisk pdf(
        PdfOf({TextItem("re\u0301sume\u0301 end", 0, 0, 300), TextItem("q\u0301x", 0, 20, 300)}));
    const std::string said = pdf.Text();
    EXPECT_TRUE(said.find("résumé end") != std::string::npos ||
                said.find("re\u0301sume\u0301 end") != std::string::npos)
        << said;
    EXPECT_THAT(said, HasSubstr("q\u0301x"));
}

TEST_F(PdfDocument, ArabicIsReadInItsOrder) {
    if (!HasFont("DejaVu Sans")) {
        GTEST_SKIP() << "this machine has no font with Arabic letters";
    }
    const std::string word = "\u0645\u0631\u062D\u0628\u0627";
    const PdfOnDisk pdf(PdfOf({TextItem("See " + word + " here", 0, 0, 300)}));
    EXPECT_THAT(pdf.Text(), HasSubstr(word));
}

TEST_F(PdfDocument, ASoftHyphenShowsWhereALineEndsAndOnlyThere) {
    const std::string word = "Donau\u00ADdampf\u00ADschiff";
    const PdfOnDisk broken(PdfOf({TextItem(word, 0, 0, 62)}));
    EXPECT_THAT(broken.Run("pdftotext -raw {} -").said, HasSubstr("dampf-\nschiff"));
    const PdfOnDisk whole(PdfOf({TextItem(word, 0, 0, 300)}));
    EXPECT_THAT(whole.Run("pdftotext -raw {} -").said, Not(HasSubstr("-")));
}

TEST_F(PdfDocument, LinesOfRightToLeftTextBeginAtTheRight) {
    if (!HasFont("DejaVu Sans")) {
        GTEST_SKIP() << "this machine has no font with Hebrew letters";
    }
    auto item = TextItem("\u05D0\u05D1\u05D2\u05D3 \u05D4\u05D5\u05D6 abc.", 0, 0, 40);
    auto box = std::make_shared<layout::BoxStyle>(*item.box);
    box->rightToLeft = true;
    item.box = box;
    // The full stop after Latin text is to the left of it.
    EXPECT_THAT(PdfOnDisk(PdfOf({item})).Text(), HasSubstr(".abc"));
}

TEST_F(PdfDocument, SignsOfAnotherFontAreRead) {
    if (!HasFont("DejaVu Sans")) {
        GTEST_SKIP() << "this machine has no font with signs";
    }
    const PdfOnDisk pdf(PdfOf({TextItem("snow \u2603 man \u2660", 0, 0, 300)}));
    EXPECT_THAT(pdf.Text(), HasSubstr("snow \u2603 man \u2660"));
}

TEST_F(PdfDocument, CharactersThatNoFontHasAreReadAllTheSame) {
    const PdfOnDisk pdf(PdfOf({TextItem("a\U0010FFF0z\U0010FFF1", 0, 0, 300)}));
    EXPECT_THAT(pdf.Unpacked(), HasSubstr("ActualText"));
    EXPECT_THAT(pdf.Text(), HasSubstr("a\U0010FFF0z\U0010FFF1"));
}

TEST_F(PdfDocument, BrokenTextsMakeASoundDocument) {
    ExpectSound(PdfOf({TextItem("a\xFF\xC3 \xED\xA0\x80 \xF0\x9F", 0, 0, 300),
                       TextItem(std::string("a\0b\r\n\x01\x1B) Tj ET", 15), 0, 20, 300)}));
}

TEST_F(PdfDocument, FontsAreEmbeddedAsSubsetsWithTheirCharacters) {
    NEEDS_PROGRAM("pdffonts");
    const std::string said =
        PdfOnDisk(PdfOf({TextItem("Hello äöü \u2603", 0, 0, 300)})).Run("pdffonts {}").said;
    std::smatch found;
    int fonts = 0;
    const std::regex line("([A-Z]{6})\\+\\S+ +CID TrueType +Identity-H +(\\w+) +(\\w+) +(\\w+)");
    for (auto from = said.cbegin(); std::regex_search(from, said.cend(), found, line);
         from = found[0].second) {
        EXPECT_EQ(found[2], "yes") << "embedded\n" << said;
        EXPECT_EQ(found[3], "yes") << "subset\n" << said;
        EXPECT_EQ(found[4], "yes") << "unicode\n" << said;
        ++fonts;
    }
    EXPECT_GE(fonts, 1) << said;
}

TEST_F(PdfDocument, HoldsTitleAuthorAndDate) {
    NEEDS_PROGRAM("pdfinfo");
    auto report = SampleReport({TextItem("x")});
    report->title = "Umsätze (Süd) \\ 2022";
    report->author = "Ann \u4E2D";
    report->description = "By region";
    const std::string said = PdfOnDisk(PdfOf(*report)).Run("pdfinfo -enc UTF-8 {}").said;
    EXPECT_THAT(said,
                AllOf(HasSubstr("Umsätze (Süd) \\ 2022"), HasSubstr("Ann \u4E2D"), HasSubstr("By region")));
    EXPECT_THAT(said, HasSubstr("CreationDate:    Wed Sep 28"));
}

TEST_F(PdfDocument, HostileFactsStayWithinTheirString) {
    NEEDS_PROGRAM("pdfinfo");
    auto report = SampleReport({TextItem("x")});
    report->title = ")>>endobj 1 0 obj<</OpenAction<</S/JavaScript/JS(app.alert(1))>>>>endobj\\";
    report->author = std::string("\r\n\0%)\\( \xFF\xD8\xED\xA0\x80", 14);
    report->language = ")/OpenAction 1 0 R(";
    const std::string pdf = PdfOf(*report);
    ExpectSound(pdf);
    EXPECT_THAT(PdfOnDisk(pdf).Run("pdfinfo {}").said,
                AllOf(HasSubstr(report->title), HasSubstr("JavaScript:      no")));
    EXPECT_THAT(PdfOnDisk(pdf).Run("qpdf --json {}").said, Not(HasSubstr("\"/OpenAction\"")));
}

TEST_F(PdfDocument, HeaderAndFooterAreDrawnInTheirOwnColours) {
    auto body = TextItem("Body", 0, 0, 100, 20);
    auto red = std::make_shared<layout::CharStyle>();
    red->color = 0x80FF0000;
    body.paragraphs[0].runs[0].style = red;
    auto report = SampleReport({body}, {TextItem("Head")});
    auto& section = static_cast<SampleSection&>(*report->sections[0]);
    section.page.footerHeight = 20;
    section.footer = {TextItem("Foot")};
    const PdfOnDisk pdf(PdfOf(*report));
    const std::string said = pdf.Text();
    EXPECT_LT(said.find("Head"), said.find("Body"));
    EXPECT_LT(said.find("Body"), said.find("Foot"));
    NEEDS_PROGRAM("pdftoppm");
    // The header is black, whatever colour the body ended with.
    const std::string picture = pdf.Run("pdftoppm -r 72 -x 0 -y 0 -W 60 -H 19 {}").said;
    const std::string pixels = picture.substr(picture.find("255\n") + 4);
    int darkest = 255;
    for (std::size_t i = 0; i + 2 < pixels.size(); i += 3) {
        darkest = std::min<int>(darkest, static_cast<unsigned char>(pixels[i]));
    }
    EXPECT_LT(darkest, 100);
}

class PdfLinks : public PdfDocument {};

TEST_F(PdfLinks, LeadToAddresses) {
    auto item = TextItem("Go");
    item.hyperlink = "https://example.com/a(b)?q=ä b";
    const std::string pdf = PdfOf({item});
    ExpectSound(pdf);
    EXPECT_THAT(PdfOnDisk(pdf).Run("qpdf --json {}").said,
                HasSubstr("https://example.com/a(b)?q=%C3%A4%20b"));
}

TEST_F(PdfLinks, NeverRunScript) {
    for (const char* uri :
         {"javascript:app.alert(1)", " JavaScript:x", "java\nscript:x", "vbscript:x", "file:///etc/passwd"}) {
        auto item = TextItem("Go");
        item.hyperlink = uri;
        EXPECT_THAT(PdfOf({item}), Not(HasSubstr("/Annot"))) << uri;
    }
}

TEST_F(PdfLinks, LeadToBookmarksAfterAndBeforeThem) {
    auto target = TextItem("There", 0, 40);
    target.bookmark = "Ziel (ä)";
    auto before = TextItem("Down"), after = TextItem("Up", 0, 60);
    before.bookmarkLink = after.bookmarkLink = "Ziel (ä)";
    const std::string pdf = PdfOf({before, target, after});
    ExpectSound(pdf);
    const std::string unpacked = PdfOnDisk(pdf).Unpacked();
    EXPECT_THAT(unpacked, HasSubstr("/Names"));
    std::size_t links = 0;
    for (std::size_t at = 0; (at = unpacked.find("/Subtype /Link", at)) != std::string::npos; ++at) {
        ++links;
    }
    EXPECT_EQ(links, 2u);
}

TEST_F(PdfLinks, BookmarksAreAsHighOnThePageAsTheirItem) {
    auto item = TextItem("There", 10, 30);
    item.bookmark = "There";
    const std::string pdf = PdfOf({item});
    const std::size_t place = pdf.find("/Names[(There)[");
    ASSERT_NE(place, std::string::npos);
    const std::size_t at = pdf.find("/XYZ ", place) + 5;
    double x = 0, y = 0;
    ASSERT_EQ(std::sscanf(pdf.c_str() + at, "%lf %lf", &x, &y), 2);
    const layout::PageSetup page;
    EXPECT_NEAR(x, page.marginLeft + 10, 0.01);
    EXPECT_NEAR(y, page.height - page.marginTop - 30, 0.01);
}

TEST_F(PdfLinks, ToABookmarkThatDoesNotExistAreLeftOut) {
    auto item = TextItem("Go");
    item.bookmarkLink = "Nowhere";
    const std::string pdf = PdfOf({item});
    ExpectSound(pdf);
    EXPECT_THAT(pdf, AllOf(Not(HasSubstr("/Annot")), Not(HasSubstr("Nowhere"))));
}

TEST_F(PdfLinks, LabelsMakeAnOutline) {
    auto first = TextItem("1"), second = TextItem("2", 0, 20);
    first.documentMapLabel = "Nord";
    second.documentMapLabel = "Süd (\\";
    const std::string pdf = PdfOf({first, second});
    ExpectSound(pdf);
    const std::string said = PdfOnDisk(pdf).Run("qpdf --json --json-key=outlines {}").said;
    EXPECT_THAT(said, AllOf(HasSubstr("\"Nord\""), HasSubstr("Süd (\\\\\"")));
    EXPECT_LT(said.find("Nord"), said.find("Süd"));
    EXPECT_THAT(pdf, HasSubstr("/PageMode/UseOutlines"));
    EXPECT_THAT(PdfOf({TextItem("x")}), Not(HasSubstr("/Outlines")));
}

std::string Printed(double number) {
    std::string out;
    PdfNumber(out, number);
    return out;
}

TEST(PdfNumber, HasNoExponentAndAtMostThreeDecimals) {
    EXPECT_EQ(Printed(0), "0");
    EXPECT_EQ(Printed(12), "12");
    EXPECT_EQ(Printed(-1.5), "-1.5");
    EXPECT_EQ(Printed(0.05), "0.05");
    EXPECT_EQ(Printed(1200.03), "1200.03");
    EXPECT_EQ(Printed(70.1), "70.1");
    EXPECT_EQ(Printed(-9.999), "-9.999");
    EXPECT_EQ(Printed(1.0 / 3), "0.333");
    EXPECT_EQ(Printed(-0.0001), "0");
    EXPECT_EQ(Printed(1e-12), "0");
}

TEST(PdfNumber, IsHeldWhereViewersEnd) {
    EXPECT_EQ(Printed(1e300), "1000000");
    EXPECT_EQ(Printed(-HUGE_VAL), "-1000000");
    EXPECT_EQ(Printed(std::nan("")), "0");
}

TEST(PdfText, IsLiteralOrUtf16) {
    EXPECT_EQ(PdfText("a(b)\\"), "(a\\(b\\)\\\\)");
    EXPECT_EQ(PdfText("ä"), "<FEFF00E4>");
    EXPECT_EQ(PdfText("\U0001F600"), "<FEFFD83DDE00>");
    EXPECT_EQ(PdfText("\xFF"), "<FEFFFFFD>");
    EXPECT_EQ(PdfLiteral("a\rb"), "(a\\rb)");
}

}  // namespace
}  // namespace rdl::writers::test
