// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cstdlib>
#include <iostream>

#include "rdl/definition/rdl_text.h"
#include "rdl/raises.h"
#include "support/sanitizer.h"

namespace rdl::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(BadReportFile, EmptyFileIsSaidToBeEmpty) {
    EXPECT_EQ(ErrorOf(""), "sales.rpt is empty");
}

TEST(BadReportFile, BlanksOnly) {
    EXPECT_THAT(ErrorOf(" \r\n\t"), HasSubstr("nothing but blanks"));
}

TEST(BadReportFile, CompoundBinaryDocumentIsNamed) {
    EXPECT_THAT(ErrorOf(std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0\0", 11)),
                HasSubstr("compound binary document"));
}

TEST(BadReportFile, ZipArchiveIsNamed) {
    EXPECT_THAT(ErrorOf("PK\x03\x04rest"), HasSubstr("zip archive"));
}

TEST(BadReportFile, OtherBinaryFileIsNamed) {
    EXPECT_THAT(ErrorOf(std::string("\x7F"
                                    "ELF\x02\x01\x00\x00",
                                    8)),
                HasSubstr("binary file"));
}

TEST(BadReportFile, PlainTextIsNamed) {
    EXPECT_THAT(ErrorOf("Dear Ann,\nhello"), HasSubstr("plain text"));
    for (const char* text : {"{not json}", "[2024]\nkey=1", "[1] A note", "[, 1]"}) {
        EXPECT_THAT(ErrorOf(text), HasSubstr("plain text")) << text;
    }
    for (const char* page : {"\xEF\xBB\xBF\n<!DOCTYPE html><html/>", "<!doctype HTML public>", "<HTML><p>x",
                             "  <!-- x --><HTML>", "<!-- a --> <!-- b -->\n<!DOCTYPE html>"}) {
        EXPECT_THAT(ErrorOf(page), HasSubstr("sales.rpt is an HTML page, not an RDL report")) << page;
    }
    for (const char* json :
         {"{\"a\": 1}", " [ {} ]", "{}", "[\"a\"]", "[1,2]", "[ -1.5e3 ]", "[true, null]"}) {
        EXPECT_THAT(ErrorOf(json), HasSubstr("sales.rpt is JSON, not an RDL report")) << json;
    }
}

TEST(BadReportFile, XmlOfAnotherKindNamesItsRoot) {
    EXPECT_THAT(ErrorOf("<page><body/></page>"), AllOf(HasSubstr("another kind"), HasSubstr("\"page\"")));
}

TEST(BadReportFile, ReportOfAnotherNamespaceNamesIt) {
    EXPECT_THAT(ErrorOf("<Report xmlns=\"urn:other\"/>"), HasSubstr("urn:other"));
}

TEST(BadReportFile, CutOffFileSaysWhere) {
    const std::string whole = WithItems("<Textbox Name=\"a\">\n<Value>x</Value></Textbox>");
    for (std::size_t length = whole.find("<Report"); length < whole.size(); ++length) {
        const std::string error = ErrorOf(whole.substr(0, length));
        ASSERT_FALSE(error.empty()) << length;
    }
    EXPECT_THAT(ErrorOf(whole.substr(0, whole.find("x</Value>"))),
                AllOf(HasSubstr("cut off"), HasSubstr("line 3")));
}

TEST(BadReportFile, MalformedXmlNamesTheLine) {
    EXPECT_THAT(ErrorOf("<Report>\n<Body>\n</Width></Report>"),
                AllOf(HasSubstr("line 3"), HasSubstr("well-formed")));
}

TEST(BadReportFile, DocumentTypeIsRefused) {
    std::string laughs = "<?xml version=\"1.0\"?><!DOCTYPE Report [<!ENTITY a \"ha\">";
    for (char c = 'b'; c <= 'j'; ++c) {
        const std::string before(1, static_cast<char>(c - 1));
        laughs += "<!ENTITY " + std::string(1, c) + " \"";
        for (int i = 0; i < 10; ++i) {
            laughs += "&" + before + ";";
        }
        laughs += "\">";
    }
    EXPECT_THAT(ErrorOf(laughs + "]><Report><Description>&j;</Description></Report>"),
                HasSubstr("document type"));
}

TEST(BadReportFile, ExternalEntityIsRefused) {
    EXPECT_THAT(ErrorOf("<!DOCTYPE Report SYSTEM \"file:///etc/passwd\"><Report/>"),
                HasSubstr("document type"));
}

TEST(BadReportFile, UndeclaredEntityIsAnError) {
    EXPECT_THAT(ErrorOf(Report("<Description>&nope;</Description>")), HasSubstr("well-formed"));
}

TEST(BadReportFile, MegabyteOfNestingIsRefused) {
    std::string nested = "<Report>";
    while (nested.size() < (1u << 20)) {
        nested += "<a>";
    }
    EXPECT_THAT(ErrorOf(nested), HasSubstr("nested more than 200 deep"));
}

TEST(BadReportFile, NestingInsideForeignElementsCountsToo) {
    std::string nested = "<Report xmlns:o=\"urn:o\"><o:x>";
    for (int i = 0; i < 300; ++i) {
        nested += "<y>";
    }
    EXPECT_THAT(ErrorOf(nested), HasSubstr("nested"));
}

TEST(BadReportFile, LargerThanTheLimit) {
    DefinitionLimits limits;
    limits.bytes = 1u << 20;
    const std::string blank(limits.bytes, ' ');
    EXPECT_THAT(ErrorOf(Report(blank + "<Body/>"), limits), HasSubstr("larger"));
}

TEST(BadReportFile, TooManyElements) {
    DefinitionLimits limits;
    limits.elements = 100;
    std::string many;
    for (int i = 0; i < 200; ++i) {
        many += "<x/>";
    }
    EXPECT_THAT(ErrorOf(Report(many), limits), HasSubstr("more than 100 elements"));
}

std::string WithAttributes(int count) {
    std::string attributes;
    for (int i = 0; i < count; ++i) {
        attributes += " a" + std::to_string(i) + "='= \"='";
    }
    return WithItems("<Textbox\nName=\"a\"" + attributes + "><Value>x</Value></Textbox>");
}

TEST(BadReportFile, TooManyAttributesOfAnElementNameTheLine) {
    EXPECT_EQ(ErrorOf(WithAttributes(255)), "");
    EXPECT_EQ(ErrorOf(WithAttributes(256)), "sales.rpt, line 3: an element has more than 256 attributes");
}

TEST(BadReportFile, NothingBeforeAnElementHidesItsAttributes) {
    for (const char* before :
         {"<?x '?>", "<?x \"?>", "<!-- ' -->", "<?xml version='1.0'?><?x '<a ?>", "\n"}) {
        std::string report = before + std::string("<Report");
        for (int i = 0; i < 200'000; ++i) {
            report += " a" + std::to_string(i) + "=\"x\"";
        }
        EXPECT_THAT(ErrorOf(report + "><Body/></Report>"), HasSubstr("more than 256 attributes")) << before;
    }
}

TEST(BadReportFile, TooManyAttributesAreSeenInUtf16AsWell) {
    const std::string text = WithAttributes(256);
    std::string little = "\xFF\xFE", big = "\xFE\xFF";
    for (const char c : text) {
        little += {c, '\0'};
        big += {'\0', c};
    }
    EXPECT_THAT(ErrorOf(little), HasSubstr("line 3: an element has more than 256 attributes"));
    EXPECT_THAT(ErrorOf(big), HasSubstr("line 3: an element has more than 256 attributes"));
}

TEST(BadReportFile, EqualSignsOutsideOfTagsAreNoAttributes) {
    const std::string many(1000, '=');
    EXPECT_EQ(ErrorOf(WithItems("<!-- <a " + many + " \" -->" + "<Textbox Name=\"a\"><Value><![CDATA[<a " +
                                many + "']]>" + many + "</Value></Textbox>")),
              "");
}

TEST(BadReportFile, TotalsOfAMatrixCountAsItems) {
    // Each level with a subtotal adds a row and a column: 50 by 50 cells out of one.
    const auto levels = [](const std::string& side, const std::string& size) {
        std::string text;
        for (int i = 0; i < 50; ++i) {
            text += "<" + side + "Grouping><" + size + ">1cm</" + size + "><Dynamic" + side +
                    "s><Grouping/><Subtotal/></Dynamic" + side + "s></" + side + "Grouping>";
        }
        return "<" + side + "Groupings>" + text + "</" + side + "Groupings>";
    };
    DefinitionLimits limits;
    limits.items = 2000;
    const std::string matrix =
        "<Matrix>" + levels("Column", "Height") + levels("Row", "Width") +
        "<MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell/></MatrixCells></MatrixRow></"
        "MatrixRows>"
        "<MatrixColumns><MatrixColumn><Width>1cm</Width></MatrixColumn></MatrixColumns></Matrix>";
    EXPECT_THAT(ErrorOf(WithItems(matrix), limits), HasSubstr("more than 2000 items"));
    EXPECT_EQ(ErrorOf(WithItems(matrix)), "");
}

TEST(BadReportFile, ErrorsNeverHoldAnApostrophe) {
    EXPECT_THAT(ErrorRaisedBy([&] { ParseDefinition("<it/>", "Ann's.rpt"); }),
                AllOf(Not(HasSubstr("'")), HasSubstr("Ann\"s.rpt")));
    EXPECT_THAT(ErrorOf(WithItems("<Textbox Name=\"O'Brien\"><Width>wi'de</Width></Textbox>")),
                Not(HasSubstr("'")));
}

TEST(BadReportFile, MissingFileIsAnError) {
    EXPECT_THROW(ParseDefinitionFile("/nonexistent/nothing.rdl"), Error);
}

TEST(BadReportFile, TooManyOpenFilesAreToldAsSuch) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    const auto openWithoutHandles = [] {
        const std::filesystem::path file = std::filesystem::canonical("/proc/self/exe");
        const rlimit none{3, 3};
        setrlimit(RLIMIT_NOFILE, &none);
        try {
            ParseDefinitionFile(file);
        } catch (const Error& error) {
            std::cerr << error.what();
            std::_Exit(0);
        }
        std::_Exit(1);
    };
    EXPECT_EXIT(openWithoutHandles(), testing::ExitedWithCode(0),
                "^rdl_definition_test cannot be read: Too many open files$");
}

TEST(BadReportFile, ReportWithoutBodyIsAnError) {
    EXPECT_THAT(ErrorOf(Report("")), HasSubstr("no Body"));
}

TEST(BadReportFile, Utf16IsRead) {
    std::u16string text = u"\xFEFF<Report><Body/><Description>Gr\x00FC\x00DF e</Description></Report>";
    const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * 2);
    EXPECT_EQ(Parse(bytes).description, "Gr\xC3\xBC\xC3\x9F e");
}

}  // namespace
}  // namespace rdl::test
